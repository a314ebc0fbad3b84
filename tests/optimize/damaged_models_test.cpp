// Mutations of a valid model file: opening, analysis and steps end with a result or a named error.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

std::string Valid() {
  Model model = test::Cantilever(6, 9);
  model.CellState(2, 3) = kCellNonDesign;
  model.CellState(5, 5) = kCellCutOut;
  model.StressTarget = 1.5F;
  return ModelFileText(model);
}

class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  std::string Mutate(std::string text) {
    for (int times = Below(4); times >= 0; --times) {
      switch (Below(5)) {
        case 0:
          text[At(text)] = static_cast<char>(Below(256));
          break;
        case 1:
          ReplaceField(text, Below(40));
          break;  // counts, view, material
        case 2:
          ReplaceField(text, Below(static_cast<int>(std::count(text.begin(), text.end(), ','))));
          break;
        case 3:
          text.resize(At(text));
          break;
        default:
          text.insert(At(text), text.substr(At(text), static_cast<std::size_t>(Below(60))));
          break;
      }
      if (text.empty()) text.assign(1, '1');
    }
    return text;
  }

 private:
  int Below(int limit) {
    return static_cast<int>(random_() % static_cast<unsigned>(limit > 0 ? limit : 1));
  }
  std::size_t At(const std::string& text) { return random_() % text.size(); }

  void ReplaceField(std::string& text, int number) {
    static const char* const kValues[] = {
        "0",   "-1", "1",  "2",     "7",      "32767", "-32768", "1e38", "1e308", "-1e300", "1e-45",
        "0.5", "3",  "40", "16382", "1e-300", "",      "x",      "1e99", "54",    "70"};
    std::size_t begin = 0;
    for (int i = 0; i < number; ++i) {
      const std::size_t next = text.find_first_of(",\n", begin);
      if (next == std::string::npos) break;
      begin = next + 1;
    }
    const std::size_t end = std::min(text.find_first_of(",\r\n", begin), text.size());
    text.replace(begin, end - begin, kValues[Below(static_cast<int>(std::size(kValues)))]);
  }

  std::mt19937 random_;
};

TEST(DamagedModels, EndWithAResultOrANamedError) {
  test::ScratchFolder folder;
  const std::string valid = Valid();
  Mutator mutator(2026);
  int opened = 0, refused = 0, failed = 0;
  for (int round = 0; round < 2000; ++round) {
    test::WriteFile(folder / "damaged.model", mutator.Mutate(valid));
    Model model;
    try {
      OpenModelFile(model, folder / "damaged.model");
      ++opened;
      MarkActiveNodes(model);
      StressAnalysis(model);
      History history;
      for (int step = 0; step < 2; ++step) Optimization(model, history);
      (void)ModelFileText(model);
    } catch (const ModelFileError& error) {
      EXPECT_GT(error.Line(), 0);
      ++refused;
    } catch (const RunTimeError& error) {
      EXPECT_NE(std::string(error.what()), "");
      ++failed;
    }
  }
  EXPECT_GT(opened, 300);
  EXPECT_GT(refused, 300);
  EXPECT_GT(failed, 100);
}

}  // namespace
}  // namespace quillane
