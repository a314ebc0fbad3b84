// Presses at the bounds of what a grid can be, and by a user without a window who opens damaged
// files, presses anywhere in any mode, and analyses and steps what comes of it.
#include "edit/press.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

using enum PressResult;

TEST(Press, WhatTheGridDoesNotHaveIsRefusedAsAValue) {
  const struct {
    const char* why;
    Single size, x, y;
  } rows[] = {{"no number", 100, std::numeric_limits<Single>::quiet_NaN(), 10},
              {"no place", 100, 10, std::numeric_limits<Single>::infinity()},
              {"no cell size", 0, 10, 10},
              {"more cells than the mesh has", 10, 390, 390},
              {"more cells than an Integer counts", 1e-3F, 390, 10}};
  for (const auto& [why, size, x, y] : rows) {
    SCOPED_TRACE(why);
    for (const Integer mode : {kModeDesign, kModeLoad, kModeFixX}) {
      Model model = test::Plate(4, 4);
      EditState state;
      const std::string before = ModelFileText(model);
      model.ElementSize = size;
      BeginMode(model, mode);
      EXPECT_EQ(Press(model, state, x, y), mode == kModeDesign ? kElementOutside : kNodeOutside);
      model.ElementSize = 100;
      EXPECT_EQ(ModelFileText(model), before);
    }
  }
  // The end of a rectangle may pass the arrays where both of its presses do not.
  Model mixture = test::Plate(4, 4);
  EditState state;
  mixture.CellColumnCount = 7;
  mixture.DomainX2 = 700;
  BeginMode(mixture, kModeDesign);
  EXPECT_EQ(Press(mixture, state, 350, 10), kFirstCorner);
  EXPECT_EQ(Press(mixture, state, 10, 210), kElementOutside);
}

TEST(Press, ADomainHasAtMostAsManyNodesAsAnIntegerCounts) {
  const struct {
    Single columns, rows, size;
    PressResult result;
  } rows[] = {{216, 150, 100, kNewDomain},  // 32767 nodes
              {255, 127, 100, kImpossibleDomain},
              {10, -10, 100, kNewDomain},
              {10, 0, 100, kImpossibleDomain},
              {10, 10, 0.01F, kImpossibleDomain}};  // more columns than an Integer counts
  for (const auto& row : rows) {
    Model model;
    EditState state;
    model.ElementSize = row.size;
    BeginMode(model, kModeDomain);
    EXPECT_EQ(Press(model, state, 0, 0), kFirstCorner);
    EXPECT_EQ(Press(model, state, 100 * row.columns, 100 * row.rows), row.result);
    EXPECT_EQ(model.DomainDefined != 0, row.result == kNewDomain);
    EXPECT_EQ(model.EditMode, row.result == kNewDomain ? kModeNothing : kModeDomain);
    EXPECT_EQ(Press(model, state, 0, 0), row.result == kNewDomain ? kNothing : kFirstCorner);
  }
}

class RandomPresses : public testing::Test {
 protected:
  unsigned Below(unsigned count) { return static_cast<unsigned>(random_() % count); }
  Single About(Single low, Single high) {
    const Single share = static_cast<Single>(Below(1300)) / 1000 - 0.15F;
    return low + share * (high - low);
  }

  /// A plate, mostly with what a damaged file leaves of it, opened or not.
  void NewModel() {
    model_ = test::RandomPlate(Below(1000));
    if (Below(4) == 0) return;
    test::WriteFile(path_, test::Damaged(ModelFileText(test::RandomPlate(Below(1000))), random_));
    try {
      OpenModelFile(model_, path_);
      ++opened_;
    } catch (const ModelFileError& error) {
      EXPECT_GT(error.Line(), 0);
      ++refused_;
    }
  }

  std::optional<std::string> TextOfModel() const {
    try {
      return ModelFileText(model_);
    } catch (const RunTimeError&) {
      return std::nullopt;
    }
  }

  /// A press that edits nothing changes nothing, none makes a model that cannot be saved.
  void PressAnywhere() {
    if (Below(9) == 0) model_.ElementSize = std::ldexp(100.0F, static_cast<int>(Below(9)) - 4);
    if (Below(4) == 0) BeginMode(model_, static_cast<Integer>(static_cast<int>(Below(18)) - 3));
    const std::optional<std::string> before = TextOfModel();
    const PressResult result = Press(model_, state_, About(model_.DomainX1, model_.DomainX2),
                                     About(model_.DomainY1, model_.DomainY2));
    ++results_[static_cast<int>(result)];
    const bool edits = result == kEdited || result == kLoaded || result == kNewDomain;
    EXPECT_TRUE(edits || TextOfModel() == before);
    savable_ = savable_ || result == kNewDomain;
  }

  /// What could be saved is still whole: it reads back as the same text.
  void CheckFile() {
    const std::optional<std::string> text = TextOfModel();
    EXPECT_EQ(text.has_value(), savable_);
    if (!text) return;
    test::WriteFile(path_, *text);
    Model again;
    OpenModelFile(again, path_);
    EXPECT_EQ(ModelFileText(again), *text);
  }

  /// Ends with a result or a named error.
  void AnalyseAndStep() {
    try {
      MarkActiveNodes(model_);
      StressAnalysis(model_);
      for (int step = 0; step < 2; ++step) Optimization(model_);
    } catch (const RunTimeError& error) {
      EXPECT_NE(std::string(error.what()), "");
      ++failed_;
    }
  }

  test::ScratchFolder folder_;
  std::filesystem::path path_ = folder_ / "any.model";
  std::mt19937 random_{7};
  Model model_;
  EditState state_;
  bool savable_ = false;
  int results_[static_cast<int>(kImpossibleDomain) + 1] = {};
  int opened_ = 0, refused_ = 0, failed_ = 0;
};

TEST_F(RandomPresses, LeaveAModelThatSavesAsBeforeAndIsAnalysedOrRefused) {
  const char* const given = std::getenv("QUILLANE_TEST_ACTIONS");
  const int models = (given != nullptr ? std::atoi(given) : 8000) / 5;
  for (int round = 0; round < models; ++round) {
    NewModel();
    savable_ = TextOfModel().has_value();
    for (int press = 0; press < 5; ++press) PressAnywhere();
    CheckFile();
    ASSERT_FALSE(HasFailure()) << "round " << round;
    AnalyseAndStep();
  }
  for (const int count : results_) EXPECT_GT(count, 0);
  for (const int count : {opened_, refused_, failed_}) EXPECT_GT(count, models / 10);
}

}  // namespace
}  // namespace quillane
