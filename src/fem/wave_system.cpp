// From the model's cells and equation numbers to quads and their stiffness.
#include "fem/wave_system.h"

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
        const int neighbour = 3 * (up + 1) + right + 1;
        auto& couplings = rows[set][static_cast<std::size_t>(neighbour)];
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

/// As WaveOrder takes them.
std::vector<NodeCode> NodeCodes(const Model& model) {
  const auto rows = static_cast<std::size_t>(model.CellRowCount);
  const auto columns = static_cast<std::size_t>(model.CellColumnCount);
  // Cells row by row, 1 where present, with a margin.
  const std::size_t up = columns + 2;
  std::vector<std::uint8_t> isPresent((rows + 2) * up, 0);
  const Integer* state = model.CellState.Raw().data();
  for (std::size_t j = 1; j <= columns; ++j) {
    for (std::size_t i = 1; i <= rows; ++i, ++state) isPresent[i * up + j] = *state > 0;
  }
  constexpr std::size_t kShear = WaveOrder::kShear;
  const std::size_t codeRows = (rows + kLanes) / kLanes * kLanes;
  std::vector<NodeCode> codes(codeRows * (columns + 1 + 2 * kShear), 0);
  const Integer* numberU = &model.DofNumber.Column(1, model.NodeCount)[1];
  const Integer* numberV = &model.DofNumber.Column(2, model.NodeCount)[1];
  NodeCode* code = codes.data();
  for (std::size_t i = 0; i <= rows; ++i, code += kShear) {
    code += kShear;
    for (std::size_t j = 0; j <= columns; ++j, ++code, ++numberU, ++numberV) {
      const std::uint8_t* const lowerLeft = &isPresent[i * up + j];
      const int cells = kCellLowerLeft * lowerLeft[0] + kCellLowerRight * lowerLeft[1] +
                        kCellUpperLeft * lowerLeft[up] + kCellUpperRight * lowerLeft[up + 1];
      const int equations = kEquationU * (*numberU != 0) + kEquationV * (*numberV != 0);
      *code = static_cast<NodeCode>(equations == 0 ? 0 : cells + equations);
    }
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

/// True if the rows of full material are what the short ways take them for: opposite neighbours
/// couple alike, u with v as v with u, diagonal ones all u with u and v with v, and only they
/// cross.
bool AllowsShortWays(const NodeRows& k) {
  for (std::size_t n = 0; n <= kOwn; ++n) {
    const bool isDiagonal = n == kLowerLeft || n == kLowerRight;
    if (k[n] != k[kNeighbours - 1 - n] || k[n][1][0] != k[n][0][1]) return false;
    if (!isDiagonal && k[n][0][1] != 0.0) return false;
  }
  return k[kLowerLeft][0][0] == k[kLowerRight][0][0] && k[kLowerLeft][1][1] == k[kLowerRight][1][1];
}

void MakePatterns(WaveSystem& system, const RowsOfCells& rows) {
  std::unordered_map<std::uint32_t, std::uint16_t> known;
  system.kinds.resize(system.order.Quads() + 1);
  for (std::size_t quad = 0; quad < system.kinds.size(); ++quad) {
    const std::uint32_t codes = system.order.Codes(quad);
    const auto number = static_cast<std::uint16_t>(system.patterns.size());
    const auto [place, isNew] = known.try_emplace(codes, number);
    if (isNew) system.patterns.push_back(MakePattern(codes, rows));
    system.kinds[quad].pattern = place->second;
  }
}

}  // namespace

std::optional<WaveSystem> LayOutWaves(const Model& model) {
  if (!IsRegularGrid(model)) return std::nullopt;
  const RowsOfCells rowsOfCells = SumStiffness(model.ElementStiffness);
  if (!AllowsShortWays(rowsOfCells.back())) return std::nullopt;
  const int rows = model.CellRowCount + 1;
  const int columns = model.CellColumnCount + 1;
  WaveSystem system{.order = WaveOrder(rows, columns, NodeCodes(model)),
                    .rows = rows,
                    .columns = columns,
                    .full = MakePattern(kFullCode * 0x01010101U, rowsOfCells)};
  MakePatterns(system, rowsOfCells);
  const std::size_t places = system.order.Quads() + 1;
  system.factor.resize(places);
  system.fromAbove.resize(places);
  for (auto* vector : {&system.x, &system.p, &system.r, &system.zq}) vector->resize(places);
  const auto load = model.LoadVector.Raw();
  system.ForEachEquation(system.r, [&load](int equation, double& number) {
    number = load[static_cast<std::size_t>(equation)];
  });
  return system;
}

}  // namespace quillane
