// One optimization step beside the factor-and-solve of library solvers on the same systems.
#include <benchmark/benchmark.h>

#include <Eigen/IterativeLinearSolvers>
#include <Eigen/SparseCholesky>
#include <algorithm>
#include <cmath>
#include <vector>

#include "fem/analysis.h"
#include "fem/mesh.h"
#include "fem/stress.h"
#include "library_system.h"
#include "optimize/potential.h"

namespace {

using namespace quillane;

/// rows x columns cells held at the left edge, a downward force at the middle of the right one.
Model Cantilever(int rows, int columns) {
  Model model;
  BuildMesh(model, rows, columns);
  for (Integer& state : model.CellState.Raw()) state = kCellDesign;
  for (int row = 0; row <= rows; ++row) {
    for (int d = 1; d <= 2; ++d) model.NodeFreedom(row * (columns + 1) + 1, d) = 1;
  }
  model.NodeLoad((rows / 2 + 1) * (columns + 1), 2) = -1000.0;
  MarkActiveNodes(model);
  return model;
}

/// The plate after the potential rule has emptied its least stressed third.
Model Optimized(int rows, int columns) {
  Model model = Cantilever(rows, columns);
  AnalyseStructure(model);
  InitPotential(model);
  model.Lambda = 0.3F;
  model.StressTarget = static_cast<Single>(0.9 * model.AvgStress);
  const auto emptied = [&model] {
    return std::ranges::count(model.CellState.Raw(), kCellEmpty) > 0;
  };
  while (!emptied()) UpdatePotential(model);
  MarkActiveNodes(model);
  return model;
}

/// The plate with a third of its cells empty: round holes in a regular pattern.
Model Perforated(int rows, int columns) {
  Model model = Cantilever(rows, columns);
  constexpr int kPitch = 14;
  constexpr double kRadius = 4.65;
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const double dx = (j + kPitch / 2) % kPitch - kPitch / 2 + 0.5;
      const double dy = (i + kPitch / 2) % kPitch - kPitch / 2 + 0.5;
      if (std::hypot(dx, dy) < kRadius) model.CellState(i, j) = kCellEmpty;
    }
  }
  MarkActiveNodes(model);
  return model;
}

enum Material { kFull, kOptimized, kPerforated };

Model Layout(const benchmark::State& state) {
  const int rows = static_cast<int>(state.range(1));
  const int columns = static_cast<int>(state.range(0));
  if (state.range(2) == kFull) return Cantilever(rows, columns);
  return state.range(2) == kOptimized ? Optimized(rows, columns) : Perforated(rows, columns);
}

/// The part of an optimization step from the new layout to its stresses.
void Step(benchmark::State& state) {
  Model model = Layout(state);
  SolveReport report;
  for (auto _ : state) {
    model.Solved.report.reset();  // else the solution stands
    MarkActiveNodes(model);
    report = AnalyseStructure(model);
  }
  state.counters["equations"] = report.equations;
  state.counters["iterations"] = report.iterations;
}

/// The same part by the plain procedures.
void PlainStep(benchmark::State& state) {
  Model m = Layout(state);
  for (auto _ : state) {
    MarkActiveNodes(m);
    AssembleEquations(m);
    SolveAssembledEquations(m, kSolverTolerance);
    ScatterDisplacements(m);
    ElementStresses(m, m.ElementSize, m.YoungModulus, m.PoissonRatio);
    DesignVolume(m);
  }
}

/// Factorization and solution by a library; iterative ones to the tolerance of ours.
template <class Solver>
void Library(benchmark::State& state) {
  Model model = Layout(state);
  const auto [stiffness, load] = LibrarySystem(model, true);
  for (auto _ : state) {
    Solver solver;
    if constexpr (requires { solver.setTolerance(1e-6); }) solver.setTolerance(kSolverTolerance);
    solver.compute(stiffness);
    Eigen::VectorXd solution = solver.solve(load);
    benchmark::DoNotOptimize(solution.data());
    if (solver.info() != Eigen::Success) state.SkipWithError("the library did not solve it");
  }
}

using DirectLDLT = Eigen::SimplicialLDLT<Sparse>;
using DirectLLT = Eigen::SimplicialLLT<Sparse>;
using IncompleteCholeskyCG =
    Eigen::ConjugateGradient<Sparse, Eigen::Lower, Eigen::IncompleteCholesky<double>>;
using JacobiCG = Eigen::ConjugateGradient<Sparse, Eigen::Lower | Eigen::Upper>;

/// Columns, rows and material.
void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Args({20, 20, kFull})->Args({40, 20, kFull})->Args({63, 63, kFull});
  for (const Material material : {kFull, kOptimized, kPerforated})
    bench->Args({127, 126, material});
  bench->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Step)->Apply(Sizes);
BENCHMARK(PlainStep)->Apply(Sizes);
BENCHMARK(Library<DirectLDLT>)->Name("EigenLDLT")->Apply(Sizes);
BENCHMARK(Library<DirectLLT>)->Name("EigenLLT")->Apply(Sizes);
BENCHMARK(Library<IncompleteCholeskyCG>)->Name("EigenIncompleteCholeskyCG")->Apply(Sizes);
BENCHMARK(Library<JacobiCG>)->Name("EigenJacobiCG")->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
