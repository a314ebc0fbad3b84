// Invariances of a whole course of optimization.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

using Layout = Array2<Integer>;

struct Course {
  std::vector<Layout> layouts;
  std::vector<double> maxStress;
  double volume = 0;
  double tip = 0;
};

Course CourseOf(Model model, int steps) {
  Course course;
  History history;
  StressAnalysis(model);
  course.tip = model.NodeDisp(model.NodeCount, 2);
  for (int step = 0; step < steps; ++step) {
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
  const Course one = CourseOf(Loaded(), 20);
  const Course eight = CourseOf(Loaded(8), 20);
  const Course stiff = CourseOf(Loaded(1, 840000), 20);
  EXPECT_LT(one.volume, 0.9 * 200 * 100 * 100);  // the course does remove material
  EXPECT_GT(one.volume, 0);
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
  for (int i = 1; i <= rows + 1; ++i) {
    for (int j = 1; j <= columns + 1; ++j) {
      const int from = test::Node(model, i, j), to = test::Node(model, rows + 2 - i, j);
      mirrored.NodeLoad(to, 1) = model.NodeLoad(from, 1);
      mirrored.NodeLoad(to, 2) = -model.NodeLoad(from, 2);
    }
  }
  const Layout layout = CourseOf(model, 15).layouts.back();
  const Layout image = CourseOf(mirrored, 15).layouts.back();
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) EXPECT_EQ(layout(i, j), image(rows + 1 - i, j)) << i << j;
  }
}

}  // namespace
}  // namespace quillane
