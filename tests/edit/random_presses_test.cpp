// A user without a window who presses anywhere in any mode, on plates and on what damaged files
// leave. QUILLANE_TEST_ACTIONS sets how many presses it makes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <optional>
#include <random>

#include "edit/press.h"
#include "fem/mesh.h"
#include "model/model_file.h"
#include "support/plates.h"

namespace quillane {
namespace {

class RandomPresses : public testing::Test {
 protected:
  unsigned Below(unsigned count) { return static_cast<unsigned>(random_() % count); }
  Single About(Single low, Single high) {
    const Single share = static_cast<Single>(Below(1300)) / 1000 - 0.15F;
    return low + share * (high - low);
  }

  /// A plate, sometimes with what is left after a damaged file failed to open.
  void NewModel() {
    model_ = test::RandomPlate(Below(1000));
    if (Below(2) == 0) return;
    test::WriteFile(path_, test::Damaged(ModelFileText(test::RandomPlate(Below(1000))), random_));
    try {
      OpenModelFile(model_, path_);
    } catch (const ModelFileError&) {
    }
  }

  std::optional<std::string> TextOfModel() const {
    try {
      return ModelFileText(model_);
    } catch (const RunTimeError&) {
      return std::nullopt;
    }
  }

  /// What could be saved is still whole: it reads back as the same text.
  void CheckFile(bool couldBeSaved) {
    const std::optional<std::string> text = TextOfModel();
    ASSERT_EQ(text.has_value(), couldBeSaved);
    if (!text) return;
    test::WriteFile(path_, *text);
    Model again;
    OpenModelFile(again, path_);
    ASSERT_EQ(ModelFileText(again), *text);
  }

  test::ScratchFolder folder_;
  std::filesystem::path path_ = folder_ / "any.model";
  std::mt19937 random_{7};
  Model model_;
  EditState state_;
};

TEST_F(RandomPresses, LeaveAModelThatSavesAsItDidBefore) {
  const char* const given = std::getenv("QUILLANE_TEST_ACTIONS");
  const int presses = given != nullptr ? std::atoi(given) : 4000;
  int results[static_cast<int>(PressResult::kImpossibleDomain) + 1] = {};
  bool savable = false;
  for (int press = 0; press < presses; ++press) {
    if (press % 50 == 0) {
      NewModel();
      savable = TextOfModel().has_value();
    }
    if (Below(9) == 0) model_.ElementSize = std::ldexp(100.0F, static_cast<int>(Below(9)) - 4);
    if (Below(4) == 0) BeginMode(model_, static_cast<Integer>(static_cast<int>(Below(18)) - 3));
    const std::optional<std::string> before =
        press % 16 == 0 ? TextOfModel() : std::optional<std::string>();
    const PressResult result = Press(model_, state_, About(model_.DomainX1, model_.DomainX2),
                                     About(model_.DomainY1, model_.DomainY2));
    ++results[static_cast<int>(result)];
    if (result == PressResult::kNewDomain) savable = true;
    const bool stands = result != PressResult::kEdited && result != PressResult::kLoaded &&
                        result != PressResult::kNewDomain;
    if (before && stands) {
      ASSERT_EQ(TextOfModel(), before);
    }
    if (press % 50 == 49) CheckFile(savable);
  }
  for (const int count : results) EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace quillane
