// Presses that meet a half-made edit or a grid that does not fit.
#include "edit/press.h"

#include <gtest/gtest.h>

#include <limits>

#include "edit/settings.h"
#include "model/model_file.h"
#include "support/plates.h"

namespace quillane {
namespace {

using enum PressResult;

TEST(Press, AHeldCornerIsDroppedByWhateverEndsItsMode) {
  const std::pair<Integer, PressResult> modes[] = {{kModeDomain, kNewDomain},
                                                   {kModeDesign, kEdited}};
  for (const auto& [mode, done] : modes) {
    Model model = test::Plate(4, 4, 100, kCellEmpty);
    EditState state;
    const std::string before = ModelFileText(model);
    ASSERT_TRUE(BeginMode(model, mode));
    EXPECT_EQ(Press(model, state, 10, 10), kFirstCorner);
    EXPECT_TRUE(HoldsCorner(model, state));
    const auto elsewhere = [&] { model.EditMode = kModeNothing; };  // a dialog, a step
    const auto another = [&] { BeginMode(model, kModeCutOut); };
    const auto again = [&] { BeginMode(model, mode); };
    for (const std::function<void()>& end :
         {std::function<void()>(elsewhere), std::function<void()>(another),
          std::function<void()>(again)}) {
      end();
      EXPECT_FALSE(HoldsCorner(model, state));
      EXPECT_EQ(ModelFileText(model), before);
      BeginMode(model, mode);
      EXPECT_EQ(Press(model, state, 310, 310), kFirstCorner) << "a first press again";
    }
    EXPECT_FALSE(state.changedSinceAnalysis);
    EXPECT_EQ(Press(model, state, 110, 110), done);
    EXPECT_TRUE(state.changedSinceAnalysis);
  }
}

TEST(Press, WhatTheGridDoesNotHaveIsRefusedAsAValue) {
  constexpr Single kInfinite = std::numeric_limits<Single>::infinity();
  const struct {
    const char* why;
    Single size, x, y;
  } rows[] = {{"no number", 100, std::numeric_limits<Single>::quiet_NaN(), 10},
              {"no place", 100, 10, kInfinite},
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

TEST(Settings, TellWhetherTheMaterialChanged) {
  Model model;
  EditState state;
  EXPECT_EQ(SetMaterial(model, state, "210000", "1", "0.3"), std::nullopt);
  EXPECT_FALSE(state.changedSinceAnalysis);
  EXPECT_EQ(SetMaterial(model, state, "7e4", "1", "1e999"), 2);
  EXPECT_EQ(model.YoungModulus, 210000);
  EXPECT_FALSE(state.changedSinceAnalysis);
  EXPECT_EQ(SetMaterial(model, state, "7e4", "1", "0.3"), std::nullopt);
  EXPECT_TRUE(state.changedSinceAnalysis);
}

}  // namespace
}  // namespace quillane
