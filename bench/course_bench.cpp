// Whole optimizations beside library solvers: every step of ours that changes the layout against
// the factorization and solution of that layout by each library. Prints one JSON object a line.
#include <fmt/format.h>
#include <time.h>

#include <Eigen/CholmodSupport>
#include <Eigen/SparseCholesky>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "examples/recipes.h"
#include "fem/analysis.h"
#include "fem/mesh.h"
#include "library_system.h"
#include "optimize/optimization_step.h"

namespace {

using namespace quillane;

constexpr int kMostSteps = 100;
constexpr Single kLambda = 0.2F;

/// Processor time of this thread, ms.
double Now() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

template <class Work>
double Timed(const Work& work) {
  const double start = Now();
  work();
  return Now() - start;
}

constexpr double kNever = std::numeric_limits<double>::infinity();

/// kNever where the library gives up, as on a loose piece that nothing holds.
template <class Solver>
double TimeLibrary(const Sparse& stiffness, const Eigen::VectorXd& load) {
  bool solved = false;
  const double time = Timed([&] {
    Solver solver;
    if constexpr (requires { solver.cholmod(); }) solver.cholmod().print = 0;
    solver.compute(stiffness);
    if (solver.info() != Eigen::Success) return;
    const Eigen::VectorXd solution = solver.solve(load);
    solved = solution.allFinite();
  });
  return solved ? time : kNever;
}

struct Library {
  const char* name;
  double (*time)(const Sparse&, const Eigen::VectorXd&);
};
constexpr std::array kLibraries = {
    Library{"ldlt", TimeLibrary<Eigen::SimplicialLDLT<Sparse>>},
    Library{"llt", TimeLibrary<Eigen::SimplicialLLT<Sparse>>},
    Library{"cholmod", TimeLibrary<Eigen::CholmodSupernodalLLT<Sparse>>},
};

/// One step that changed the layout: smallest times in ms.
struct Change {
  double equations = 0, iterations = 0, ours = kNever;
  std::array<double, kLibraries.size()> libraries{};
};

/// Runs one step `repetitions` times from the same model, the libraries on its layout in between.
/// Returns false, nothing timed, where the layout stays as it was.
bool TimeStep(Model& model, int repetitions, Change& change) {
  const std::vector<Integer> before(model.CellState.Raw().begin(), model.CellState.Raw().end());
  change.libraries.fill(kNever);
  Model after = model;
  bool changes = true;
  for (int repetition = 0; repetition < repetitions && changes; ++repetition) {
    after = model;
    SolveReport report;
    change.ours = std::min(change.ours, Timed([&] { report = Optimization(after); }));
    changes = !std::ranges::equal(before, after.CellState.Raw());
    change.equations = report.equations;
    change.iterations = report.iterations;
    if (!changes) break;
    const auto [stiffness, load] = LibrarySystem(after, false);
    for (std::size_t k = 0; k < kLibraries.size(); ++k) {
      change.libraries[k] = std::min(change.libraries[k], kLibraries[k].time(stiffness, load));
    }
  }
  model = std::move(after);
  return changes;
}

void Run(const std::string& name, int refinement, int repetitions) {
  Model model = MakeExample(name, ExampleStart::kSketch, refinement);
  model.Lambda = kLambda;
  MarkActiveNodes(model);
  StressAnalysis(model);
  std::vector<Change> changes;
  constexpr int kRest = static_cast<int>(7 / kLambda);
  int step = 0;
  for (int quiet = 0; quiet < kRest && step < kMostSteps; ++step) {
    Change change;
    const bool changed = TimeStep(model, repetitions, change);
    if (changed) changes.push_back(change);
    quiet = changed ? 0 : quiet + 1;
  }
  const auto unsolved = std::erase_if(changes, [](const Change& change) {
    return std::ranges::all_of(change.libraries, [](double time) { return time == kNever; });
  });
  const auto mean = [&changes](const auto& value) {
    double sum = 0;
    for (const Change& change : changes) sum += value(change);
    return sum / static_cast<double>(changes.size());
  };
  fmt::print(R"({{"example": "{}", "refinement": {}, "steps": {}, "changed": {}, "unsolved": {}, )",
             name, refinement, step, changes.size() + unsolved, unsolved);
  fmt::print(R"("equations": {}, "iterations": {}, "ours": {}, "fastest": {})",
             mean([](const Change& change) { return change.equations; }),
             mean([](const Change& change) { return change.iterations; }),
             mean([](const Change& change) { return change.ours; }),
             mean([](const Change& change) { return std::ranges::min(change.libraries); }));
  for (std::size_t k = 0; k < kLibraries.size(); ++k) {
    fmt::print(R"(, "{}": {})", kLibraries[k].name,
               mean([k](const Change& change) { return std::min(change.libraries[k], 1e9); }));
  }
  fmt::print("}}\n");
  std::fflush(stdout);
}

}  // namespace

/// course_bench REPETITIONS EXAMPLE:REFINEMENT...
int main(int count, char** arguments) {
  for (int i = 2; i < count; ++i) {
    const std::string course = arguments[i];
    const std::size_t colon = course.find(':');
    Run(course.substr(0, colon), std::atoi(course.c_str() + colon + 1), std::atoi(arguments[1]));
  }
}
