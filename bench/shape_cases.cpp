#include "shape_cases.h"

#include <fmt/format.h>
#include <time.h>

#include <cmath>
#include <utility>

#include "density_method.h"
#include "examples/recipes.h"
#include "fem/analysis.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "fem/stress.h"
#include "optimize/optimization_step.h"
#include "optimize/volume_search.h"
#include "random_plates.h"

namespace quillane {
namespace {

/// Processor time of all threads, s.
double Now() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Analyses the layout anew.
void Judge(FoundShape& shape, double volume) {
  MarkActiveNodes(shape.model);
  shape.model.Solved = {};
  shape.sound = AnalyseStructure(shape.model).converged && LostLoads(shape.model).empty();
  shape.compliance = Compliance(shape.model);
  shape.share = shape.model.Volume / volume;
}

SearchedShape Search(const ShapeCase& plate, double secondsLimit) {
  const double start = Now();
  SearchedShape result;
  result.ended = true;
  Model model = plate.model;
  StressAnalysis(model);
  const double volume = model.Volume;
  SearchOptions options;
  options.share = plate.wish;
  options.fullVolume = volume;
  SearchWatch watch;
  watch.goOn = [&] {
    ++result.steps;
    result.ended = Now() - start < secondsLimit;
    return result.ended;
  };
  SearchResult found = SearchVolume(model, options, watch);
  result.claimed = found.Best().reached;
  result.shape.seconds = Now() - start;
  result.shape.model = std::move(found.attempts[found.best].model);
  Judge(result.shape, volume);
  return result;
}

FoundShape SearchDensities(const ShapeCase& plate, double volume) {
  const double start = Now();
  DensityMethod method(plate.model, plate.wish);
  method.Run();
  FoundShape result;
  result.model = method.BlackAndWhite();
  result.seconds = Now() - start;
  Judge(result, volume);
  return result;
}

/// A place of a grid mirrored: the column, the row, or both.
struct Mirror {
  bool columns, rows;
  int Row(int row, int count) const { return rows ? count + 1 - row : row; }
  int Column(int column, int count) const { return columns ? count + 1 - column : column; }
};

/// Whether cells and supports lie as mirrored, and the loads likewise or all reversed.
bool IsSymmetric(const Model& model, const Mirror& mirror) {
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  bool same = true, reversed = true;
  for (int i = 1; i <= rows + 1; ++i) {
    for (int j = 1; j <= columns + 1; ++j) {
      const int node = (i - 1) * (columns + 1) + j;
      const int image =
          (mirror.Row(i, rows + 1) - 1) * (columns + 1) + mirror.Column(j, columns + 1);
      for (int d = 1; d <= 2; ++d) {
        if (model.NodeFreedom(node, d) != model.NodeFreedom(image, d)) return false;
        const bool turned = d == 1 ? mirror.columns : mirror.rows;
        const double load = model.NodeLoad(node, d);
        const double other = (turned ? -1 : 1) * model.NodeLoad(image, d);
        same = same && load == other;
        reversed = reversed && load == -other;
      }
    }
  }
  return same || reversed;
}

int CellsThatDiffer(const Model& model, const Mirror& mirror) {
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  int count = 0;
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const Integer image = model.CellState(mirror.Row(i, rows), mirror.Column(j, columns));
      if ((model.CellState(i, j) > 0) != (image > 0)) ++count;
    }
  }
  return count;
}

int AsymmetricCells(const Model& problem, const Model& layout) {
  int count = 0;
  for (const Mirror& mirror : {Mirror{true, false}, Mirror{false, true}, Mirror{true, true}}) {
    if (CellsThatDiffer(problem, mirror) > 0 || !IsSymmetric(problem, mirror)) continue;
    count = std::max(count, CellsThatDiffer(layout, mirror));
  }
  return count;
}

}  // namespace

std::vector<ShapeCase> RandomCases(std::uint32_t seed, int first, int last) {
  std::vector<ShapeCase> cases;
  for (int number = first; number <= last; ++number) {
    RandomPlate plate = MakeRandomPlate(seed, number);
    cases.push_back({fmt::format("{:03}-{}", number, plate.kind), plate.kind,
                     std::move(plate.model), plate.wish});
  }
  return cases;
}

std::vector<ShapeCase> ExampleCases() {
  std::vector<ShapeCase> cases;
  for (const std::string_view name : ExampleNames()) {
    const bool isMedium = name == "half-mbb-beam" || name == "l-bracket";
    const int finest = name == "cantilever" ? 4 : isMedium ? 3 : 2;
    for (const int refinement : {1, finest}) {
      Model model = MakeExample(name, ExampleStart::kFullDomain, refinement);
      MarkActiveNodes(model);
      cases.push_back({fmt::format("{}-x{}", name, refinement), "example", std::move(model), 0.5});
    }
  }
  return cases;
}

bool ShapePair::Reached() const {
  return ours.ended && ours.claimed && ours.shape.sound &&
         std::fabs(ours.shape.share - plate->wish) <= kVolumeTolerance;
}

std::optional<double> ShapePair::Ratio() const {
  if (!ours.shape.sound || !density.sound) return std::nullopt;
  return ours.shape.compliance * ours.shape.share / (density.compliance * density.share);
}

ShapePair Compare(const ShapeCase& plate, double secondsLimit) {
  ShapePair pair;
  pair.plate = &plate;
  pair.ours = Search(plate, secondsLimit);
  Model full = plate.model;
  AnalyseStructure(full);
  pair.density = SearchDensities(plate, full.Volume);
  pair.asymmetricCells = AsymmetricCells(plate.model, pair.ours.shape.model);
  return pair;
}

}  // namespace quillane
