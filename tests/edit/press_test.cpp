// Presses where the grid has nothing for them.
#include "edit/press.h"

#include <gtest/gtest.h>

#include <limits>

#include "model/model_file.h"
#include "support/plates.h"

namespace quillane {
namespace {

using enum PressResult;

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

}  // namespace
}  // namespace quillane
