// quillane-batch as a user calls it, in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "edit/settings.h"
#include "model/model_file.h"
#include "support/plates.h"

namespace quillane {

using test::ReadFile;

class Batch : public ::testing::Test {
 protected:
  void SetUp() override {
    model_ = test::Cantilever(6, 12);
    SetParameters(model_, "3", "3", "0.1");
    SaveModelFile(model_, folder_ / "plate.model");
  }

  /// Runs the program in the scratch folder; keeps standard output and error.
  int Run(const std::string& arguments) { return Shell("'" QUILLANE_BATCH "' " + arguments); }

  int Shell(const std::string& command) {
    const int status = std::system(
        ("cd '" + folder_.Path().string() + "' && " + command + " >out.txt 2>err.txt </dev/null")
            .c_str());
    out_ = test::ReadFile(folder_ / "out.txt");
    err_ = test::ReadFile(folder_ / "err.txt");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  test::ScratchFolder folder_;
  Model model_;
  std::string out_, err_;
};

inline bool Contains(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

}  // namespace quillane
