// What is told about the steps of a course.
#include "optimize/optimization_course.h"

#include <gtest/gtest.h>

#include "support/plates.h"

namespace quillane {
namespace {

TEST(OptimizationCourse, TellsRestAlternationChangeAndConvergence) {
  Model model = test::Plate(1, 2);
  model.Volume = 80;
  OptimizationCourse course;
  const SolveReport good{.converged = true}, bad{.converged = false};
  course.Begin(model, bad);
  EXPECT_EQ(course.UnconvergedSolves(), 1);
  const auto step = [&](Integer first, Integer second, const SolveReport& report) {
    model.CellState(1, 1) = first;
    model.CellState(1, 2) = second;
    model.Volume = 40;
    course.Add(model, report);
  };
  step(kCellEmpty, kCellEmpty, bad);
  EXPECT_EQ(course.UnconvergedSolves(), 2);
  EXPECT_EQ(course.CellsChanged(), 2);
  step(kCellEmpty, kCellEmpty, good);
  EXPECT_EQ(course.UnconvergedSolves(), 0);
  EXPECT_EQ(course.RepeatedSteps(), 1);
  for (int times = 0; times < 10; ++times) {
    step(kCellDesign, kCellEmpty, good);
    EXPECT_EQ(course.CellsChanged(), 1);
    step(kCellEmpty, kCellEmpty, good);
  }
  EXPECT_EQ(course.RepeatedSteps(1), 0);
  EXPECT_EQ(course.RepeatedSteps(2), 19);
  EXPECT_EQ(course.RepeatedSteps(3), 0);
  EXPECT_EQ(course.StartVolume(), 80);
  course.Begin(model, good);
  EXPECT_EQ(course.RepeatedSteps(2), 0);
}

}  // namespace
}  // namespace quillane
