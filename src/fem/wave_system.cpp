// From the model's cells and equation numbers to quads and their stiffness.
#include "fem/wave_system.h"

#include <limits>
#include <unordered_map>

#include "model/regular_grid.h"

namespace quillane {
namespace {

/// Returns the codes of all nodes in the layout that WaveOrder takes. Empty if not all equation
/// numbers are those of NumberComponents, which are consecutive along the nodes.
std::vector<NodeCode> NodeCodes(const Model& model) {
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  constexpr int kShear = WaveOrder::kShear, kMostOutside = WaveOrder::kMostOutside;
  const int width = columns + 1 + 2 * kShear;
  std::vector<NodeCode> codes(static_cast<std::size_t>((rows + 1 + 2 * kMostOutside) * width), 0);
  int equations = 0;
  for (int i = 0; i <= rows; ++i) {
    for (int j = 0; j <= columns; ++j) {
      const int node = NodeOfCorner(model, i + 1, j + 1);
      const bool hasU = model.DofNumber(node, 1) != 0, hasV = model.DofNumber(node, 2) != 0;
      if (!hasU && !hasV) continue;
      equations += hasU + hasV;
      const int code = kCellLowerLeft * HasMaterial(model, i, j) +
                       kCellLowerRight * HasMaterial(model, i, j + 1) +
                       kCellUpperLeft * HasMaterial(model, i + 1, j) +
                       kCellUpperRight * HasMaterial(model, i + 1, j + 1) + kEquationU * hasU +
                       kEquationV * hasV;
      const int place = (i + kMostOutside) * width + kShear + j;
      codes[static_cast<std::size_t>(place)] = static_cast<NodeCode>(code);
    }
  }
  if (equations != model.EquationCount) codes.clear();
  return codes;
}

constexpr std::uint32_t kFullCode =
    kCellLowerLeft + kCellLowerRight + kCellUpperLeft + kCellUpperRight + kEquationU + kEquationV;
static_assert(std::numeric_limits<Integer>::max() <= std::numeric_limits<QuadIndex>::max());

/// Adds the stiffness of the present cells around a node to its rows, in the order of assembly:
/// cells ascending.
void AddCells(const double (&element)[9][9], std::uint32_t code, int lane, StiffnessPattern& to) {
  constexpr struct {
    std::uint32_t code;
    int row, column;  // the cell's lower left node, seen from the node
    int local;        // the node's number in the cell
  } kCells[] = {{kCellLowerLeft, -1, -1, 3},
                {kCellLowerRight, -1, 0, 4},
                {kCellUpperLeft, 0, -1, 2},
                {kCellUpperRight, 0, 0, 1}};
  constexpr int kNodeRow[] = {0, 0, 0, 1, 1};
  constexpr int kNodeColumn[] = {0, 0, 1, 1, 0};
  for (const auto& cell : kCells) {
    if ((code & cell.code) == 0) continue;
    for (int other = 1; other <= 4; ++other) {
      const int up = cell.row + kNodeRow[other];
      const int right = cell.column + kNodeColumn[other];
      for (int d = 0; d < 2; ++d) {
        QuadNumbers& k = to.k[3 * (up + 1) + right + 1][d];
        const int u = 2 * cell.local - 1;
        const int column = 2 * other - 1 + d;
        if ((code & kEquationU) != 0) k.u.lane[lane] += element[u][column];
        if ((code & kEquationV) != 0) k.v.lane[lane] += element[u + 1][column];
      }
    }
  }
}

StiffnessPattern MakePattern(const double (&element)[9][9], std::uint32_t codes) {
  StiffnessPattern pattern{};
  for (int lane = 0; lane < kLanes; ++lane) {
    const std::uint32_t code = codes >> (8 * lane) & 0xFF;
    pattern.equation.u.lane[lane] = (code & kEquationU) != 0 ? 1.0 : 0.0;
    pattern.equation.v.lane[lane] = (code & kEquationV) != 0 ? 1.0 : 0.0;
    AddCells(element, code, lane, pattern);
  }
  pattern.onlyCornersCross = true;
  for (const int n : {kLower, kLeft, kOwn, kRight, kUpper}) {
    const bool crosses = pattern.k[n][0].v != LaneNumbers{} || pattern.k[n][1].u != LaneNumbers{};
    if (crosses) pattern.onlyCornersCross = false;
  }
  return pattern;
}

void MakePatterns(const double (&element)[9][9], WaveSystem& system) {
  std::unordered_map<std::uint32_t, std::uint16_t> known;
  system.kinds.resize(system.order.Quads() + 1);
  for (std::size_t quad = 0; quad < system.kinds.size(); ++quad) {
    const std::uint32_t codes = system.order.Codes(quad);
    const auto number = static_cast<std::uint16_t>(system.patterns.size());
    const auto [place, isNew] = known.try_emplace(codes, number);
    if (isNew) system.patterns.push_back(MakePattern(element, codes));
    system.kinds[quad].pattern = place->second;
  }
}

}  // namespace

std::optional<WaveSystem> LayOutWaves(const Model& model) {
  if (!HasRegularElements(model)) return std::nullopt;
  const std::vector<NodeCode> codes = NodeCodes(model);
  if (codes.empty()) return std::nullopt;
  const int rows = model.CellRowCount + 1;
  const int columns = model.CellColumnCount + 1;
  WaveSystem system{.order = WaveOrder(rows, columns, codes), .rows = rows, .columns = columns};
  MakePatterns(model.ElementStiffness, system);
  const std::size_t quads = system.order.Quads() + 1;
  system.factor.resize(quads);
  const StiffnessPattern full = MakePattern(model.ElementStiffness, kFullCode * 0x01010101U);
  system.rests.resize(1);
  system.rests[0].lowerLeft = {full.k[kLowerLeft][0].u, full.k[kLowerLeft][1].v};
  for (const int n : {kLowerLeft, kLowerRight}) {
    system.rests[0].cross[n] = {full.k[n][1].u, full.k[n][0].v};
  }
  system.toLane3.resize(quads);
  for (auto* vector : {&system.x, &system.p, &system.r, &system.yq}) vector->resize(quads);
  const auto load = model.LoadVector.Raw();
  system.ForEachEquation(system.r, [&load](int equation, double& number) {
    number = load[static_cast<std::size_t>(equation)];
  });
  return system;
}

}  // namespace quillane
