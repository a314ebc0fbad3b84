// The rule case by case; courses of steps: their invariances, figures and history.
#include "optimize/course.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "model/model_file.h"
#include "model/run_time_error.h"
#include "optimize/history.h"
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
  model.CellStress(1, 1) = 100;         // a stress equal to the target does not feed
  model.CellStress(3, 3) = 100.000001;  // equal to it once it is a Single
  UpdatePotential(model);
  const double expected[3][3] = {{5, 6, 5}, {6, 6, 6}, {5, 6, 5}};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      EXPECT_EQ(model.Potential(i, j), expected[i - 1][j - 1]) << i << j;
      model.CellStress(i, j) = 500, model.Potential(i, j) = 10;
    }
  }
  EXPECT_EQ(model.CellState(1, 1), kCellDesign) << "the threshold itself keeps material";
  UpdatePotential(model);
  EXPECT_EQ(model.Potential(2, 2), 10) << "fed by five cells it stays saturated";
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
  UpdatePotential(model);  // no decay, no feeding
  EXPECT_NEAR(model.Potential(1, 1), 10, 1e-5);
  std::ranges::fill(model.CellState.Raw(), kCellEmpty);
  EXPECT_NO_THROW(InitPotential(model));  // no occupied cell, no division
  model.Lambda = std::numeric_limits<Single>::max();
  EXPECT_THROW(UpdatePotential(model), RunTimeError);
}

using Layout = Array2<Integer>;

struct Way {
  std::vector<Layout> layouts;
  std::vector<double> maxStress;
  double volume = 0, tip = 0;
};

Way WayOf(Model model) {
  Way course;
  StressAnalysis(model);
  course.tip = model.NodeDisp(model.NodeCount, 2);
  for (int step = 0; step < 20; ++step) {
    Optimization(model);
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
  const Way one = WayOf(Loaded()), eight = WayOf(Loaded(8)), stiff = WayOf(Loaded(1, 840000));
  EXPECT_LT(one.volume, 0.9 * 200 * 100 * 100);  // the course removes material
  for (std::size_t step = 0; step < one.layouts.size(); ++step) {
    EXPECT_TRUE(std::ranges::equal(one.layouts[step].Raw(), eight.layouts[step].Raw())) << step;
    EXPECT_TRUE(std::ranges::equal(one.layouts[step].Raw(), stiff.layouts[step].Raw())) << step;
    EXPECT_EQ(8 * one.maxStress[step], eight.maxStress[step]);
    EXPECT_EQ(one.maxStress[step], stiff.maxStress[step]);
  }
  EXPECT_EQ(one.tip, 4 * stiff.tip);  // the modulus changes displacements only
}

/// Counts notifications; can make a step fail.
struct Witness : CourseListener {
  void Analysed(const Course&) override { ++analyses; }
  void Stepped(const Course& course) override {
    numbers.push_back(course.State().StepCount);
    if (course.Figures().steps == failAt) throw RunTimeError(ErrorKind::kFile, "the disk is full");
  }
  int analyses = 0, failAt = -1;
  std::vector<int> numbers;
};

TEST(Course, TellsItsListenersAndPutsEverythingBackWhereAStepFails) {
  Model model = Loaded();
  Witness witness;
  Course course(model, {&witness});
  course.Analyse();
  witness.failAt = 12;
  while (course.Figures().steps < 11) course.Step();
  const Model before = model;
  for (int times = 0; times < 2; ++times) {
    EXPECT_THROW(course.Step(), RunTimeError);
    EXPECT_TRUE(std::ranges::equal(model.CellState.Raw(), before.CellState.Raw()));
    EXPECT_TRUE(std::ranges::equal(model.Potential.Raw(), before.Potential.Raw()));
    EXPECT_EQ(course.Figures().steps, 11);
    EXPECT_EQ(course.Figures().solves, 12);
  }
  course.AnalyseAgain();
  EXPECT_EQ(model.StepCount, before.StepCount);
  EXPECT_EQ(ModelFileText(model), ModelFileText(before));
  EXPECT_TRUE(std::ranges::equal(model.CellStress.Raw(), before.CellStress.Raw()));
  witness.failAt = -1;
  course.Step();
  Model calmModel = Loaded();
  Course calm(calmModel);
  calm.Analyse();
  while (calm.Figures().steps < 12) calm.Step();
  EXPECT_GT(calm.Figures().cellsChanged, 0);
  EXPECT_EQ(course.Figures().cellsChanged, calm.Figures().cellsChanged);
  EXPECT_EQ(course.Repeats().has_value(), calm.Repeats().has_value());
  EXPECT_EQ(witness.numbers, (std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 11, 11}));
  course.Analyse();
  EXPECT_EQ(witness.analyses, 2);
  EXPECT_EQ(course.Figures().steps, 12) << "in both series together";
}

TEST(Course, TellsRestAndCycles) {
  Model model = Loaded();
  model.Lambda = 1;
  Course course(model);
  course.Analyse();
  EXPECT_EQ(course.Figures().startVolume, model.Volume);
  EXPECT_FALSE(course.Repeats());
  // Changes the layout by hand between steps: a non-design cell comes and goes.
  const auto step = [&](Integer state) {
    model.CellState(1, 1) = state;
    course.Step();
  };
  for (int times = 0; times < 6; ++times) step(kCellNonDesign);
  EXPECT_FALSE(course.Rest()) << "7 steps at Lambda 1";
  for (int times = 0; times < 20; ++times) step(kCellNonDesign);
  ASSERT_TRUE(course.Rest());
  EXPECT_EQ(course.Rest()->cycle, 1);
  for (int times = 0; times < 3; ++times) {
    for (const Integer state : {kCellCutOut, kCellNonDesign}) step(state);
  }
  ASSERT_TRUE(course.Repeats());
  EXPECT_EQ(course.Repeats()->cycle, 2);
  EXPECT_EQ(course.Repeats()->steps, 5);
  EXPECT_FALSE(course.Rest());
  EXPECT_GE(course.Figures().cellsChanged, 1);
  course.Analyse();
  EXPECT_FALSE(course.Repeats());
  EXPECT_EQ(Course::RestSteps(0.05F), 140);
  EXPECT_EQ(Course::RestSteps(1e-30F), std::numeric_limits<int>::max());
}

TEST(History, HoldsOneRecordAnEventUntilTheStepNumberOverflows) {
  const test::ScratchFolder folder;
  Model model = test::Cantilever(4, 8);
  StressAnalysis(model);
  model.StepCount = 32765;
  model.MaxStress = 245.125, model.AvgStress = 87.5, model.MinStress = 0.25;
  History history;
  history.Start(model, folder / "History.tmp");
  Course course(model, {&history});
  for (int step = 0; step < 2; ++step) course.Step();
  EXPECT_THROW(course.Step(), RunTimeError);
  for (int times = 0; times < 2; ++times) history.Close(model);
  const std::string text = test::ReadFile(folder / "History.tmp");
  EXPECT_TRUE(text.starts_with("Iteration, Max, Avg, Min\r\n32765,245.125,87.5,0.25\r\n")) << text;
  EXPECT_EQ(std::ranges::count(text, '\n'), 5) << text;
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
  for (int times = 0; times < 2; ++times) KeepEarlierHistory(path);  // then there is none
  EXPECT_EQ(test::ReadFile(folder / "History.tmp~"), "earlier");
  EXPECT_FALSE(std::filesystem::exists(path));

  Model model;
  std::vector<std::filesystem::path> refused = {folder / "none/H", folder.Path()};
#if !defined(_WIN32)
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  refused.push_back(folder / "pipe");
#endif
  for (const std::filesystem::path& bad : refused) {
    History history;
    EXPECT_THROW(history.Start(model, bad), RunTimeError) << bad;
    EXPECT_EQ(model.HistoryRecording, kTrue) << "set before the attempt";
  }
}

}  // namespace
}  // namespace quillane
