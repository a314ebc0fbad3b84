// The rule case by case; courses of steps: their invariances, what is told of them, their history.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "model/run_time_error.h"
#include "optimize/history.h"
#include "optimize/optimization_course.h"
#include "optimize/optimization_step.h"
#include "optimize/potential.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// A 3 x 3 plate with saturated potentials and the given rule.
Model Ruled(Single lambda, Integer epsilon) {
  Model model = test::Plate(3, 3);
  model.Lambda = lambda, model.Epsilon = epsilon, model.StressTarget = 100;
  InitPotential(model);
  return model;
}

TEST(Potential, DecaysAndIsFedByTheCellAndItsFourNeighbours) {
  Model model = Ruled(0.5F, 5);
  model.CellStress(2, 2) = 100.00001;   // above the target as a Single
  model.CellStress(1, 1) = 100;         // equal to the target feeds nothing
  model.CellStress(3, 3) = 100.000001;  // equal to it once it is a Single
  UpdatePotential(model);
  const double expected[3][3] = {{5, 6, 5}, {6, 6, 6}, {5, 6, 5}};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      EXPECT_EQ(model.Potential(i, j), expected[i - 1][j - 1]) << i << j;
      model.CellStress(i, j) = 500, model.Potential(i, j) = 10;
    }
  }
  EXPECT_EQ(model.CellState(1, 1), kCellDesign) << "equal to the threshold keeps the material";
  UpdatePotential(model);
  EXPECT_EQ(model.Potential(2, 2), 10) << "fed from all five sides it stays saturated";
  EXPECT_EQ(model.Potential(1, 1), 8) << "the border never feeds";
}

TEST(Potential, ChangesDesignCellsOnlyAndRegrowsThem) {
  Model model = Ruled(0.5F, 9);
  model.CellState(1, 1) = kCellNonDesign, model.CellState(1, 2) = kCellCutOut;
  UpdatePotential(model);
  EXPECT_EQ(model.CellState(1, 1), kCellNonDesign);
  EXPECT_EQ(model.CellState(1, 2), kCellCutOut);
  EXPECT_EQ(model.CellState(2, 2), kCellEmpty);
  model.Potential(2, 2) = 19;
  UpdatePotential(model);
  EXPECT_EQ(model.CellState(2, 2), kCellDesign);
}

TEST(Potential, LambdaAtItsLimits) {
  Model model = Ruled(0.05F, 1);
  model.Lambda = 0;
  EXPECT_THROW(InitPotential(model), RunTimeError);
  UpdatePotential(model);  // nothing is forgotten, nothing fed
  EXPECT_NEAR(model.Potential(1, 1), 10, 1e-5);
  std::ranges::fill(model.CellState.Raw(), kCellEmpty);
  EXPECT_NO_THROW(InitPotential(model));  // no occupied cell, no division
  model.Lambda = std::numeric_limits<Single>::max();
  EXPECT_THROW(UpdatePotential(model), RunTimeError);
}

using Layout = Array2<Integer>;

struct Course {
  std::vector<Layout> layouts;
  std::vector<double> maxStress;
  double volume = 0, tip = 0;
};

Course CourseOf(Model model) {
  Course course;
  History history;
  StressAnalysis(model);
  course.tip = model.NodeDisp(model.NodeCount, 2);
  for (int step = 0; step < 20; ++step) {
    Optimization(model, history);
    course.layouts.push_back(model.CellState);
    course.maxStress.push_back(model.MaxStress);
  }
  course.volume = model.Volume;
  return course;
}

Model Loaded(Single scale = 1, double modulus = 210000) {
  Model model = test::Cantilever(10, 20, 1000.0 * double{scale});
  model.NodeLoad(test::Node(model, 11, 21), 1) = 300.0 * double{scale};
  model.StressTarget = 4.0F * scale;
  model.Lambda = 0.1F;
  model.Epsilon = 3;
  model.YoungModulus = modulus;
  return model;
}

TEST(Course, LoadAndTargetTimesTheSameGiveTheSameLayouts) {
  const Course one = CourseOf(Loaded()), eight = CourseOf(Loaded(8)),
               stiff = CourseOf(Loaded(1, 840000));
  EXPECT_LT(one.volume, 0.9 * 200 * 100 * 100);  // the course does remove material
  for (std::size_t step = 0; step < one.layouts.size(); ++step) {
    EXPECT_TRUE(std::ranges::equal(one.layouts[step].Raw(), eight.layouts[step].Raw())) << step;
    EXPECT_TRUE(std::ranges::equal(one.layouts[step].Raw(), stiff.layouts[step].Raw())) << step;
    EXPECT_EQ(8 * one.maxStress[step], eight.maxStress[step]);
    EXPECT_EQ(one.maxStress[step], stiff.maxStress[step]);
  }
  EXPECT_EQ(one.tip, 4 * stiff.tip);  // the modulus changes displacements only
}

TEST(Course, AMirroredModelGivesTheMirroredLayout) {
  const Model model = Loaded();
  Model mirrored = model;
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  for (const int i : {1, rows / 2 + 1, rows + 1}) {
    const int from = test::Node(model, i, columns + 1);
    const int to = test::Node(model, rows + 2 - i, columns + 1);
    mirrored.NodeLoad(to, 1) = model.NodeLoad(from, 1);
    mirrored.NodeLoad(to, 2) = -model.NodeLoad(from, 2);
  }
  const Layout layout = CourseOf(model).layouts.back(), image = CourseOf(mirrored).layouts.back();
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) EXPECT_EQ(layout(i, j), image(rows + 1 - i, j)) << i << j;
  }
}

TEST(OptimizationCourse, TellsRestAlternationChangeAndConvergence) {
  Model model = test::Plate(1, 2);
  model.Volume = 80;
  OptimizationCourse course;
  const SolveReport good{.converged = true}, bad{.converged = false};
  course.Begin(model, bad);
  EXPECT_EQ(course.UnconvergedSolves(), 1);
  const auto step = [&](Integer first, const SolveReport& report) {
    model.CellState(1, 1) = first;
    model.CellState(1, 2) = kCellEmpty;
    model.Volume = 40;
    course.Add(model, report);
  };
  step(kCellEmpty, bad);
  EXPECT_EQ(course.UnconvergedSolves(), 2);
  EXPECT_EQ(course.CellsChanged(), 2);
  step(kCellEmpty, good);
  EXPECT_EQ(course.UnconvergedSolves(), 0);
  EXPECT_EQ(course.RepeatedSteps(), 1);
  for (int times = 0; times < 10; ++times) {
    for (const Integer first : {kCellDesign, kCellEmpty}) step(first, good);
  }
  EXPECT_EQ(course.CellsChanged(), 1);
  EXPECT_EQ(course.RepeatedSteps(1), 0);
  EXPECT_EQ(course.RepeatedSteps(2), 19);
  EXPECT_EQ(course.RepeatedSteps(3), 0);
  EXPECT_EQ(course.StartVolume(), 80);
  course.Begin(model, good);
  EXPECT_EQ(course.RepeatedSteps(2), 0);
}

TEST(History, HoldsOneRecordAnEventUntilTheStepNumberOverflows) {
  const test::ScratchFolder folder;
  Model model = test::Cantilever(4, 8);
  StressAnalysis(model);
  model.StepCount = 32765;
  model.MaxStress = 245.125, model.AvgStress = 87.5, model.MinStress = 0.25;
  History history;
  history.Start(model, folder / "History.tmp");
  for (int step = 0; step < 2; ++step) Optimization(model, history);
  EXPECT_THROW(Optimization(model, history), RunTimeError);
  for (int times = 0; times < 2; ++times) history.Close(model);
  const std::string text = test::ReadFile(folder / "History.tmp");
  EXPECT_TRUE(text.starts_with("Iteration, Max, Avg, Min\r\n32765,245.125,87.5,0.25\r\n")) << text;
  std::size_t at = 0;
  for (const char* number : {"\n32765,", "\n32765,", "\n32766,", "\n32767,"}) {
    at = text.find(number, at + 1);
    EXPECT_NE(at, std::string::npos) << number;
  }
}

TEST(History, KeepsTheEarlierOneAndRefusesWhatIsNoFile) {
  const test::ScratchFolder folder;
  const std::filesystem::path path = folder / "History.tmp";
  test::WriteFile(path, "earlier");
  test::WriteFile(folder / "History.tmp~", "earlier still");
  for (int times = 0; times < 2; ++times) KeepEarlierHistory(path);  // then nothing is there
  EXPECT_EQ(test::ReadFile(folder / "History.tmp~"), "earlier");
  EXPECT_FALSE(std::filesystem::exists(path));

  Model model;
  for (const std::filesystem::path& bad : {folder / "none/H", folder.Path(), {"/dev/null"}}) {
    History history;
    EXPECT_THROW(history.Start(model, bad), RunTimeError) << bad;
    EXPECT_EQ(model.HistoryRecording, kTrue) << "set before the attempt";
  }
}

}  // namespace
}  // namespace quillane
