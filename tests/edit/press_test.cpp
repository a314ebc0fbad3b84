// Presses at the limits of a grid.
#include "edit/press.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "model/model_file.h"
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
  // A rectangle can exceed the arrays although both of its corners lie inside.
  Model mixture = test::Plate(4, 4);
  EditState state;
  mixture.CellColumnCount = 7;
  mixture.DomainX2 = 700;
  BeginMode(mixture, kModeDesign);
  EXPECT_EQ(Press(mixture, state, 350, 10), kFirstCorner);
  EXPECT_EQ(Press(mixture, state, 10, 210), kElementOutside);
}

TEST(Press, ARectangleGetsItsStateAndAChangeIsNoted) {
  for (const auto& [mode, cellState] : {std::pair(kModeDesign, kCellDesign),
                                        {kModeNonDesign, kCellNonDesign},
                                        {kModeCutOut, kCellCutOut},
                                        {kModeRemove, kCellEmpty}}) {
    Model model = test::Plate(2, 2);
    EditState state;
    BeginMode(model, mode);
    for (const Single x : {150.0F, 10.0F}) Press(model, state, x, 10);
    EXPECT_EQ(state.changedSinceAnalysis, mode != kModeDesign) << mode;
    EXPECT_EQ(model.CellState(1, 2), cellState);
  }
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

}  // namespace
}  // namespace quillane
