// Several load cases on one layout: the envelope, a course with it, and what is refused.
#include "optimize/load_cases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fem/mesh.h"
#include "fem/stress.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "optimize/course.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// A plate held at its left edge with a force (N) at a node of its right edge, row from 1.
Model Held(int row, double fx, double fy) {
  Model model = test::Cantilever(12, 24);
  std::ranges::fill(model.NodeLoad.Raw(), 0);
  model.NodeLoad(test::Node(model, row, 25), 1) = fx;
  model.NodeLoad(test::Node(model, row, 25), 2) = fy;
  test::SetCells(model, 1, 24, 12, 24, kCellNonDesign);
  model.StressTarget = 2.5F, model.Lambda = 0.2F, model.Epsilon = 3;
  return model;
}

template <class T>
bool Same(const Array2<T>& one, const Array2<T>& other) {
  return std::ranges::equal(one.Raw(), other.Raw());
}

LoadCases Cases(const std::vector<Model>& models) {
  LoadCases cases;
  for (const Model& model : models) cases.Add(model);
  return cases;
}

/// The results of single analyses of the cases on the layout of `model`; `solve` is the worst.
struct Envelope {
  Array2<Double> stress{"stress"};
  double compliance = 0;
  SolveReport solve{.converged = true};
};

Envelope ByHand(const Model& model, std::vector<Model> cases) {
  Envelope envelope{.stress = model.CellStress};
  std::ranges::fill(envelope.stress.Raw(), 0);
  for (Model& single : cases) {
    single.CellState = model.CellState;
    single.Solved = {};
    MarkActiveNodes(single);
    const SolveReport solve = AnalyseStructure(single);
    std::ranges::transform(single.CellStress.Raw(), envelope.stress.Raw(),
                           envelope.stress.Raw().begin(),
                           [](double a, double b) { return std::max(a, b); });
    envelope.compliance += Compliance(single);
    envelope.solve.iterations = std::max(envelope.solve.iterations, solve.iterations);
    envelope.solve.trueResidual = std::max(envelope.solve.trueResidual, solve.trueResidual);
  }
  return envelope;
}

TEST(LoadCases, EveryStepHasTheLargestStressOfEachCellAlsoWhereNothingIsSolvedAnew) {
  const std::vector<Model> singles = {Held(1, 0, -1000), Held(13, 500, 700), Held(7, 2000, 0)};
  Model model = singles.front();
  Course course(model);
  LoadCases cases = Cases({singles[1], singles[2]});
  course.SetLoadCases(cases);
  course.Analyse();
  for (int step = 0; step < 12; ++step) {
    const Envelope envelope = ByHand(model, singles);
    const auto holds = [&](const char* after) {
      EXPECT_TRUE(Same(model.CellStress, envelope.stress)) << after << step;
      EXPECT_EQ(model.MaxStress, std::ranges::max(envelope.stress.Raw())) << after << step;
      EXPECT_LE(model.MinStress, model.AvgStress);
      EXPECT_DOUBLE_EQ(course.Compliance(), envelope.compliance) << after << step;
      EXPECT_GT(course.Cases().Results()[2].compliance, 0);
    };
    holds("a step");
    EXPECT_EQ(course.Figures().lastSolve.iterations, envelope.solve.iterations);
    EXPECT_EQ(course.Figures().lastSolve.trueResidual, envelope.solve.trueResidual);
    course.AnalyseAgain();
    holds("an analysis of the same layout");
    course.Step();
  }
  EXPECT_LT(model.Volume, course.Figures().startVolume);
}

TEST(LoadCases, MirroredCasesGiveASymmetricLayoutInEitherOrder) {
  std::vector<Array2<Integer>> layouts;
  for (const bool swapped : {false, true}) {
    Model model = Held(swapped ? 13 : 1, 0, 1000);
    Course course(model);
    LoadCases cases = Cases({Held(swapped ? 1 : 13, 0, 1000)});
    cases.SetThreads(swapped ? 1 : 2);
    course.SetLoadCases(cases);
    course.Analyse();
    while (course.Figures().steps < 30) course.Step();
    layouts.push_back(model.CellState);
  }
  EXPECT_TRUE(Same(layouts[0], layouts[1]));
  for (int i = 1; i <= 12; ++i) {
    for (int j = 1; j <= 24; ++j) EXPECT_EQ(layouts[0](i, j), layouts[0](13 - i, j)) << i << j;
  }
  EXPECT_GT(std::ranges::count(layouts[0].Raw(), kCellEmpty), 10);
}

TEST(LoadCases, ALoadIsLostWhereItIsLostInOneCase) {
  Model model = Held(7, 0, 1000);
  Model lower = Held(1, 0, 1000), loose = model;
  std::ranges::fill(loose.NodeFreedom.Raw(), 0);
  LoadCases cases = Cases({lower}), three = Cases({lower, loose, lower});
  EXPECT_TRUE(cases.Connected(model));
  EXPECT_FALSE(Cases({lower, loose}).Connected(model)) << "each case has its own supports";
  for (int j = 21; j <= 24; ++j) model.CellState(1, j) = kCellEmpty;
  const std::vector<std::vector<int>> lost = {{}, {25}};
  EXPECT_EQ(cases.LostLoads(model), lost) << "no material under the load of the second";
  EXPECT_FALSE(cases.Connected(model)) << "no analysis is needed";

  Course course(model);
  course.SetLoadCases(three);
  EXPECT_FALSE(course.Connected());
  for (int times = 0; times < 20; ++times) {
    try {
      course.Analyse();
      FAIL() << "a case's load acts where there is no material";
    } catch (const RunTimeError& error) {
      EXPECT_TRUE(std::string(error.what()).starts_with("load case 2: Floating-point error: "))
          << error.what() << ": the first failing case is reported, whichever ends first";
      EXPECT_EQ(error.Cause(), ErrorCause::kIdleLoads);
    }
  }
  std::ranges::fill(model.CellState.Raw(), kCellDesign);
  MarkActiveNodes(model);
  course.Analyse();
  EXPECT_FALSE(course.Figures().lastSolve.converged) << "one case does not converge";
  EXPECT_TRUE(course.Cases().Results()[0].solve.converged);
}

TEST(LoadCases, AnotherGridOrMaterialIsNoCaseAndTheDifferenceIsTold) {
  const Model model = Held(7, 0, 1000);
  const struct {
    const char* difference;
    void (*change)(Model& model);
  } cases[] = {
      {"", [](Model& m) { m.StressTarget = 7, m.CellState(3, 3) = kCellCutOut; }},
      {"the grid has 24 x 12 cells, not 12 x 24", [](Model& m) { m = test::Plate(24, 12); }},
      {"a cell measures 50 mm, not 100", [](Model& m) { m = test::Plate(12, 24, 50); }},
      {"Young's modulus is 70000 MPa, not 210000", [](Model& m) { m.YoungModulus = 70000; }},
      {"Poisson's ratio is 0.25, not 0.3", [](Model& m) { m.PoissonRatio = 0.25; }},
      {"the thickness is 2 mm, not 1", [](Model& m) { m.Thickness = 2; }},
      {"the mesh has 325 nodes and 2 elements, not 325 nodes and 288",
       [](Model& m) {
         m.ElementCount = 2, m.ElementNodes.ReDim({0, 2}, {1, 4});
       }},
      {"node 3 lies at (200, 0.5) mm, not (200, 0)", [](Model& m) { m.NodeXY(3, 2) = 0.5; }},
      {"element 2 has node 1, not 2", [](Model& m) { m.ElementNodes(2, 1) = 1; }},
  };
  for (const auto& [difference, change] : cases) {
    Model other = model;
    change(other);
    const std::string prefix = *difference == 0 ? "" : "not a load case of this model: ";
    EXPECT_EQ(LoadCaseFault(model, other), prefix + difference);
  }
}

}  // namespace
}  // namespace quillane
