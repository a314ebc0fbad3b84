// Invariances of a whole course of optimization.
#include <gtest/gtest.h>

#include <vector>

#include "fem/mesh.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

struct Course {
  std::vector<Array2<Integer>> layouts;
  std::vector<double> maxStress;
  double volume = 0;
  double tip = 0;
};

Course CourseOf(Model model, int steps) {
  Course course;
  History history;
  MarkActiveNodes(model);
  StressAnalysis(model);
  course.tip = model.NodeDisp(model.NodeCount, 2);
  for (int step = 0; step <= steps; ++step) {
    course.layouts.push_back(model.CellState);
    course.maxStress.push_back(model.MaxStress);
    if (step < steps) Optimization(model, history);
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

bool SameCells(const Array2<Integer>& a, const Array2<Integer>& b) {
  return std::equal(a.Raw().begin(), a.Raw().end(), b.Raw().begin(), b.Raw().end());
}

TEST(Course, LoadAndTargetTimesTheSameGiveTheSameLayouts) {
  const Course one = CourseOf(Loaded(), 20);
  const Course eight = CourseOf(Loaded(8), 20);
  const Course stiff = CourseOf(Loaded(1, 840000), 20);
  EXPECT_LT(one.volume, 0.9 * 200 * 100 * 100);  // the course does remove material
  EXPECT_GT(one.volume, 0);
  for (std::size_t step = 0; step < one.layouts.size(); ++step) {
    EXPECT_TRUE(SameCells(one.layouts[step], eight.layouts[step])) << step;
    EXPECT_EQ(8 * one.maxStress[step], eight.maxStress[step]);
    EXPECT_TRUE(SameCells(one.layouts[step], stiff.layouts[step])) << step;
    EXPECT_EQ(one.maxStress[step], stiff.maxStress[step]);
  }
  EXPECT_EQ(one.tip, 4 * stiff.tip);  // the modulus changes displacements only
}

TEST(Course, AMirroredModelGivesTheMirroredLayout) {
  const Model model = Loaded();
  Model mirrored = model;
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  for (int i = 1; i <= rows + 1; ++i) {
    for (int j = 1; j <= columns + 1; ++j) {
      const int from = test::Node(model, i, j), to = test::Node(model, rows + 2 - i, j);
      mirrored.NodeLoad(to, 1) = model.NodeLoad(from, 1);
      mirrored.NodeLoad(to, 2) = -model.NodeLoad(from, 2);
    }
  }
  const Array2<Integer> layout = CourseOf(model, 15).layouts.back();
  const Array2<Integer> image = CourseOf(mirrored, 15).layouts.back();
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j)
      EXPECT_EQ(layout(i, j), image(rows + 1 - i, j)) << i << " " << j;
  }
}

TEST(Course, TheShowingSeesTheStepsOwnNumberAndANewAnalysisStartsAfresh) {
  Model model = Loaded();
  History history;
  StressAnalysis(model);
  const double first = model.MaxStress;
  std::vector<int> shown;
  for (int step = 0; step < 3; ++step) {
    model.EditMode = 4;
    Optimization(model, history, [&] { shown.push_back(model.StepCount); });
    EXPECT_EQ(model.EditMode, 0);
  }
  EXPECT_EQ(shown, (std::vector<int>{0, 1, 2}));
  for (Integer& state : model.CellState.Raw()) state = kCellDesign;
  MarkActiveNodes(model);
  StressAnalysis(model);
  EXPECT_EQ(model.StepCount, 0);
  EXPECT_EQ(model.MaxStress, first);
}

}  // namespace
}  // namespace quillane
