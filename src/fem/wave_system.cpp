// From the model's cells and equation numbers to quads and their stiffness.
#include "fem/wave_system.h"

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>
#include <utility>

#include "fem/regular_grid.h"

namespace quillane {
namespace {

/// Stiffness rows of one node: [neighbour][its component][component of the row].
using NodeRows = std::array<std::array<std::array<double, 2>, 2>, kNeighbours>;

/// Those rows for each of the 16 sets of present cells around the node.
using RowsOfCells = std::array<NodeRows, 16>;

/// Adds up each set's rows in the order of assembly, cells ascending.
RowsOfCells SumStiffness(const double (&element)[9][9]) {
  constexpr struct {
    int code, row, column;  // the cell's lower left node, seen from the node
    int local;              // the node's number in the cell
  } kCells[] = {{kCellLowerLeft, -1, -1, 3},
                {kCellLowerRight, -1, 0, 4},
                {kCellUpperLeft, 0, -1, 2},
                {kCellUpperRight, 0, 0, 1}};
  constexpr int kNodeRow[] = {0, 0, 0, 1, 1};
  constexpr int kNodeColumn[] = {0, 0, 1, 1, 0};
  RowsOfCells rows{};
  for (std::size_t set = 0; set < rows.size(); ++set) {
    for (const auto& cell : kCells) {
      if ((static_cast<int>(set) & cell.code) == 0) continue;
      for (int other = 1; other <= 4; ++other) {
        const int up = cell.row + kNodeRow[other];
        const int right = cell.column + kNodeColumn[other];
        auto& couplings = rows[set][static_cast<std::size_t>(3 * (up + 1) + right + 1)];
        for (int d = 0; d < 2; ++d) {
          for (int c = 0; c < 2; ++c) {
            couplings[static_cast<std::size_t>(d)][static_cast<std::size_t>(c)] +=
                element[2 * cell.local - 1 + c][2 * other - 1 + d];
          }
        }
      }
    }
  }
  return rows;
}

std::vector<NodeCode> NodeCodes(const Model& model) {
  const auto rows = static_cast<std::size_t>(model.CellRowCount);
  const auto columns = static_cast<std::size_t>(model.CellColumnCount);
  const std::size_t up = columns + 1;
  std::vector<NodeCode> codes((rows + 1) * up, 0);
  const Integer* state = model.CellState.Raw().data();
  for (std::size_t j = 0; j < columns; ++j) {
    for (std::size_t i = 0; i < rows; ++i, ++state) {
      if (*state <= 0) continue;
      NodeCode* const code = &codes[i * up + j];
      code[0] |= kCellUpperRight;
      code[1] |= kCellUpperLeft;
      code[up] |= kCellLowerRight;
      code[up + 1] |= kCellLowerLeft;
    }
  }
  const auto numbersU = model.DofNumber.Column(1, model.NodeCount);
  const auto numbersV = model.DofNumber.Column(2, model.NodeCount);
  for (std::size_t node = 0; node < codes.size(); ++node) {
    const bool hasU = numbersU[node + 1] != 0;
    const bool hasV = numbersV[node + 1] != 0;
    if (hasU) codes[node] |= kEquationU;
    if (hasV) codes[node] |= kEquationV;
    if (!hasU && !hasV) codes[node] = 0;
  }
  return codes;
}

constexpr std::uint32_t kFullCode =
    kCellLowerLeft + kCellLowerRight + kCellUpperLeft + kCellUpperRight + kEquationU + kEquationV;
static_assert(std::numeric_limits<Integer>::max() <= std::numeric_limits<QuadIndex>::max());

StiffnessPattern MakePattern(std::uint32_t codes, const RowsOfCells& rows) {
  StiffnessPattern pattern{};
  pattern.isFull = true;
  for (int lane = 0; lane < kLanes; ++lane) {
    const std::uint32_t code = codes >> (8 * lane) & 0xFF;
    pattern.isFull = pattern.isFull && (code == 0 || code == kFullCode);
    const NodeRows& couplings = rows[code % 16];
    const auto fill = [&](std::size_t c, LaneNumbers QuadNumbers::*row) {
      (pattern.equation.*row).lane[lane] = 1.0;
      for (std::size_t n = 0; n < kNeighbours; ++n) {
        for (std::size_t d = 0; d < 2; ++d) (pattern.k[n][d].*row).lane[lane] = couplings[n][d][c];
      }
    };
    if ((code & kEquationU) != 0) fill(0, &QuadNumbers::u);
    if ((code & kEquationV) != 0) fill(1, &QuadNumbers::v);
  }
  return pattern;
}

/// Empty unless all numbers are equal as in a square cell.
std::optional<FullMaterial> FullRows(const NodeRows& k) {
  const FullMaterial full{.cornerU = k[kLowerLeft][0][0],
                          .cornerV = k[kLowerLeft][1][1],
                          .cross = k[kLowerLeft][1][0],
                          .lowerU = k[kLower][0][0],
                          .lowerV = k[kLower][1][1],
                          .leftU = k[kLeft][0][0],
                          .leftV = k[kLeft][1][1],
                          .ownU = k[kOwn][0][0],
                          .ownV = k[kOwn][1][1]};
  using Coupling = NodeRows::value_type;
  const auto coupling = [](double u, double v, double cross) {
    return Coupling{{{u, cross}, {cross, v}}};
  };
  const Coupling rising = coupling(full.cornerU, full.cornerV, full.cross);
  const Coupling falling = coupling(full.cornerU, full.cornerV, -full.cross);
  const Coupling vertical = coupling(full.lowerU, full.lowerV, 0.0);
  const Coupling horizontal = coupling(full.leftU, full.leftV, 0.0);
  const NodeRows square = {
      rising,     vertical, falling,  horizontal, coupling(full.ownU, full.ownV, 0.0),
      horizontal, falling,  vertical, rising};
  return k == square ? std::optional(full) : std::nullopt;
}

void MakePatterns(WaveSystem& system, const RowsOfCells& rows) {
  std::unordered_map<std::uint32_t, std::uint16_t> known;
  system.patternOf.push_back(0);
  system.patterns.push_back({});
  for (std::size_t quad = 1; quad <= system.order.Quads(); ++quad) {
    const std::uint32_t codes = system.order.Codes(quad);
    const auto number = static_cast<std::uint16_t>(system.patterns.size());
    const auto [place, isNew] = known.try_emplace(codes, number);
    if (isNew) system.patterns.push_back(MakePattern(codes, rows));
    system.patternOf.push_back(place->second);
  }
}

}  // namespace

std::optional<WaveSystem> LayOutWaves(const Model& model) {
  if (!IsRegularGrid(model)) return std::nullopt;
  const RowsOfCells rowsOfCells = SumStiffness(model.ElementStiffness);
  const std::optional<FullMaterial> full = FullRows(rowsOfCells.back());
  if (!full) return std::nullopt;
  const int rows = model.CellRowCount + 1;
  const int columns = model.CellColumnCount + 1;
  std::vector<NodeCode> codes = NodeCodes(model);
  WaveSystem system{.order = WaveOrder(rows, columns, codes),
                    .rows = rows,
                    .columns = columns,
                    .codes = std::move(codes),
                    .full = *full};
  MakePatterns(system, rowsOfCells);
  const std::size_t places = system.order.Quads() + 1;
  system.factor.resize(places);
  system.rest.resize(places);
  for (auto* flags : {&system.fullForward, &system.fullBackward}) flags->resize(places);
  for (auto* vector : {&system.x, &system.p, &system.r, &system.zq}) vector->resize(places);
  const auto load = model.LoadVector.Raw();
  system.ForEachEquation(system.r, [&load](int equation, double& number) {
    number = load[static_cast<std::size_t>(equation)];
  });
  return system;
}

}  // namespace quillane
