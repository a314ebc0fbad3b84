// Invariances of a whole course of optimization, and courses of damaged models.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
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

TEST(DamagedModels, EndWithAResultOrANamedError) {
  const test::ScratchFolder folder;
  Model plate = test::Cantilever(6, 9);
  plate.CellState(2, 3) = kCellNonDesign;
  plate.CellState(5, 5) = kCellCutOut;
  plate.StressTarget = 1.5F;
  const std::string valid = ModelFileText(plate);
  std::mt19937 random(2026);
  int opened = 0, refused = 0, failed = 0;
  for (int round = 0; round < 2000; ++round) {
    test::WriteFile(folder / "damaged.model", test::Damaged(valid, random));
    Model model;
    try {
      OpenModelFile(model, folder / "damaged.model");
      ++opened;
      MarkActiveNodes(model);
      StressAnalysis(model);
      History history;
      for (int step = 0; step < 2; ++step) Optimization(model, history);
      (void)ModelFileText(model);
    } catch (const ModelFileError& error) {
      EXPECT_GT(error.Line(), 0);
      ++refused;
    } catch (const RunTimeError& error) {
      EXPECT_NE(std::string(error.what()), "");
      ++failed;
    }
  }
  EXPECT_GT(opened, 300);
  EXPECT_GT(refused, 300);
  EXPECT_GT(failed, 100);
}

}  // namespace
}  // namespace quillane
