// quillane-batch as a user calls it, in a folder of its own.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <cstdlib>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "edit/settings.h"
#include "model/model_file.h"
#include "support/plates.h"

namespace quillane {

namespace fs = std::filesystem;

inline bool Contains(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

class Batch : public ::testing::Test {
 protected:
  void SetUp() override {
    model_ = test::Cantilever(6, 12);
    SetParameters(model_, "3", "3", "0.1");
    SaveModelFile(model_, folder_ / "plate.model");
  }

  /// Saves a changed copy of the plate under a name.
  void Save(const std::string& name, void (*change)(Model& model)) {
    Model changed = model_;
    change(changed);
    SaveModelFile(changed, folder_ / name);
  }

  /// Runs the program in the scratch folder; keeps standard output and error.
  int Run(const std::string& arguments) { return Shell("'" QUILLANE_BATCH "' " + arguments); }

  int Shell(const std::string& command) {
    const int status = std::system(
        ("cd '" + folder_.Path().string() + "' && " + command + " >out.txt 2>err.txt </dev/null")
            .c_str());
    out_ = Text("out.txt");
    err_ = Text("err.txt");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  /// How a run ends: its exit status and part of its standard error.
  struct End {
    std::string arguments;
    int status;
    const char* words;
  };
  void ExpectEnds(std::initializer_list<End> ends) {
    for (const auto& [arguments, status, words] : ends) {
      EXPECT_EQ(Shell("('" QUILLANE_BATCH "' " + arguments + ")"), status) << arguments << err_;
      EXPECT_TRUE(Contains(err_, words)) << arguments << "\n" << err_;
      EXPECT_TRUE(out_.empty() || (status != 1 && status != 2)) << arguments << out_;
    }
  }

  /// Starts the program in the scratch folder; `input` becomes its standard input.
  pid_t Start(std::vector<std::string> arguments, int input = -1) {
    const pid_t child = fork();
    if (child != 0) return child;
    fs::current_path(folder_.Path());
    if (input >= 0) dup2(input, STDIN_FILENO);
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) signal(number, SIG_DFL);  // may be ignored
    dup2(open("started.txt", O_WRONLY | O_CREAT | O_TRUNC, 0666), STDERR_FILENO);
    std::vector<char*> pointers = {const_cast<char*>(QUILLANE_BATCH)};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execv(QUILLANE_BATCH, pointers.data());
    _exit(99);
  }

  /// Waits for the end; returns the exit status, or minus the signal that ended the program.
  static int StatusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  /// Waits until `reached` holds, at most a minute.
  template <class Reached>
  static bool Wait(const Reached& reached) {
    for (int i = 0; i < 6000 && !reached(); ++i) usleep(10000);
    return reached();
  }

  bool Exists(const std::string& name) { return fs::exists(folder_ / name); }
  std::string Text(const std::string& name) { return test::ReadFile(folder_ / name); }
  QJsonObject Json(const std::string& name) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(Text(name))).object();
  }

  /// Returns the fields of a table row by row, headings first.
  using Table = std::vector<std::vector<std::string>>;
  Table TableOf(const std::string& name) {
    Table table;
    std::istringstream lines(Text(name));
    for (std::string line, field; std::getline(lines, line);) {
      std::istringstream fields(line);
      table.emplace_back();
      while (std::getline(fields, field, ',')) table.back().push_back(field);
    }
    return table;
  }

  test::ScratchFolder folder_;
  Model model_;
  std::string out_, err_;
};

}  // namespace quillane
