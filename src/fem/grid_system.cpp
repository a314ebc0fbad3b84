// From the numbered model to the solver's layout and back.
#include "fem/grid_system.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "fem/mesh.h"
#include "fem/regular_grid.h"
#include "model/invariant.h"

namespace quillane {
namespace {

constexpr std::size_t kAlignment = 64;
/// Arrays of equal length would otherwise all start in the same set of the first-level cache.
constexpr std::size_t kStagger = 5 * kAlignment;

/// Elements per node beyond which a large grid, of few columns, is not worth the space.
constexpr std::size_t kSparestLayout = 3;

/// Hands out aligned pieces of a block of bytes; with no block it only adds up their sizes.
class Carver {
 public:
  explicit Carver(std::byte* block)
      : block_(block), used_((0 - reinterpret_cast<std::uintptr_t>(block)) % kAlignment) {}

  /// A piece of `count` elements; what is returned points `guard` elements into it.
  template <class T>
  T* Take(std::size_t count, std::size_t guard = 0) {
    const std::size_t at = used_ + guard * sizeof(T);
    used_ += (count * sizeof(T) + kAlignment - 1) / kAlignment * kAlignment + kStagger;
    return block_ == nullptr ? nullptr : reinterpret_cast<T*>(block_ + at);
  }
  /// Bytes that a block needs for all pieces so far, wherever it begins.
  std::size_t Taken() const { return used_ + kAlignment; }

 private:
  std::byte* block_;
  std::size_t used_;  ///< counted from the block; begins at its first aligned place
};

std::size_t Elements(const SkewedGrid& grid) {
  return static_cast<std::size_t>((grid.Slots() + 2 * grid.GuardSlots()) * kGridLanes);
}

/// Points every array of the system into the block.
Carver Carve(GridSystem& system, std::byte* block) {
  Carver carver(block);
  const std::size_t elements = Elements(system.grid);
  const auto guardSlots = static_cast<std::size_t>(system.grid.GuardSlots());
  const std::size_t guard = guardSlots * kGridLanes;
  const auto numbers = [&] { return carver.Take<double>(elements, guard); };
  for (NodeNumbers* vector : {&system.x, &system.r, &system.z, &system.p, &system.invDiag}) {
    for (double*& component : *vector) component = numbers();
  }
  system.q = system.z;
  for (auto& row : system.lower) {
    for (double*& coupling : row) coupling = numbers();
  }
  system.code = carver.Take<std::uint8_t>(elements, guard);
  const auto slots = static_cast<std::size_t>(system.grid.Slots()) + 2 * guardSlots;
  system.ordinaryForward = carver.Take<std::uint16_t>(slots, guardSlots);
  system.ordinaryBackward = carver.Take<std::uint16_t>(slots, guardSlots);
  system.unusual = {carver.Take<UnusualNode>(elements), elements};
  const auto pieces = static_cast<std::size_t>(system.grid.Segments() * kGridLanes);
  for (SumPieces& sum : system.pieces) {
    for (double** numbersOfPieces : {&sum.total, &sum.size, &sum.limit}) {
      *numbersOfPieces = carver.Take<double>(pieces);
    }
  }
  return carver;
}

/// Adds up the stiffness rows of a node from the cells around it, cells ascending as assembly does.
StiffnessRows SumStiffness(const double (&element)[9][9]) {
  // The cell around the node and which of the cell's nodes, from 1, the node is.
  constexpr struct {
    int code, row, column, local;
  } kCells[] = {{kCellLowerLeft, -1, -1, 3},
                {kCellLowerRight, -1, 0, 4},
                {kCellUpperLeft, 0, -1, 2},
                {kCellUpperRight, 0, 0, 1}};
  constexpr int kNodeRow[] = {0, 0, 0, 1, 1};
  constexpr int kNodeColumn[] = {0, 0, 1, 1, 0};
  StiffnessRows rows{};
  for (std::size_t set = 0; set < rows.size(); ++set) {
    for (const auto& cell : kCells) {
      if ((static_cast<int>(set) & cell.code) == 0) continue;
      for (std::size_t other = 1; other <= 4; ++other) {
        const int up = cell.row + kNodeRow[other];
        const int right = cell.column + kNodeColumn[other];
        const auto coupling = 2 * static_cast<std::size_t>(3 * (up + 1) + right + 1);
        for (std::size_t c = 0; c < 2; ++c) {
          const double* values = element[2 * cell.local - 1 + static_cast<int>(c)];
          rows[set][c][coupling] += values[2 * other - 1];
          rows[set][c][coupling + 1] += values[2 * other];
        }
      }
    }
  }
  return rows;
}

/// True if an ordinary node's rows have the symmetry that the product and the sweeps rely on, and
/// all numbers are finite.
bool HasOrdinaryForm(const StiffnessRows& rows) {
  for (const auto& set : rows) {
    for (const auto& row : set) {
      if (!std::all_of(row.begin(), row.end(), [](double k) { return std::isfinite(k); })) {
        return false;
      }
    }
  }
  for (std::size_t c = 0; c < 2; ++c) {
    const auto& row = rows[kAllCells][c];
    const std::size_t other = 1 - c;
    const double cross = row[kLowerLeft + other];
    for (std::size_t m = 0; m < kOwn; m += 2) {  // opposite neighbours, then those without crossing
      if (row[m + c] != row[16 - m + c] || row[m + other] != row[16 - m + other]) return false;
      if ((m == kLower || m == kLeft) && row[m + other] != 0.0) return false;
    }
    if (row[kOwn + other] != 0.0 || row[kLowerRight + c] != row[kLowerLeft + c] ||
        row[kLowerRight + other] != -cross || cross != rows[kAllCells][0][kLowerLeft + 1]) {
      return false;
    }
  }
  return true;
}

/// Writes the code of every node; zero where an element of a slot is no node.
void WriteCodes(const Model& model, GridSystem& system) {
  const SkewedGrid& grid = system.grid;
  const std::ptrdiff_t guard = grid.GuardSlots() * kGridLanes;
  std::fill_n(system.code - guard, Elements(grid), std::uint8_t{0});
  const auto rows = static_cast<std::size_t>(model.CellRowCount);
  const Integer* state = model.CellState.Raw().data();
  const std::ptrdiff_t up = grid.Offset(1, 0);
  const std::ptrdiff_t right = grid.Offset(0, 1);
  for (int i = 0; i + 1 < grid.Rows(); ++i) {
    std::uint8_t* code = system.code + grid.At(i, 0);
    for (std::size_t j = 0; j + 1 < static_cast<std::size_t>(grid.Columns()); ++j, code += right) {
      if (state[j * rows + static_cast<std::size_t>(i)] <= 0) continue;
      code[0] |= kCellUpperRight;
      code[right] |= kCellUpperLeft;
      code[up] |= kCellLowerRight;
      code[up + right] |= kCellLowerLeft;
    }
  }
  const auto numbersU = model.DofNumber.Column(1, model.NodeCount);
  const auto numbersV = model.DofNumber.Column(2, model.NodeCount);
  std::size_t node = 0;
  for (int i = 0; i < grid.Rows(); ++i) {
    std::uint8_t* code = system.code + grid.At(i, 0);
    for (int j = 0; j < grid.Columns(); ++j, code += right) {
      ++node;
      if (numbersU[node] != 0) *code |= kEquationU;
      if (numbersV[node] != 0) *code |= kEquationV;
    }
  }
}

bool HasNeighbourWithEquation(const GridSystem& system, const std::uint8_t* code) {
  for (int up = -1; up <= 1; ++up) {
    for (int right = -1; right <= 1; ++right) {
      if (code[system.grid.Offset(up, right)] > kAllCells) return true;
    }
  }
  return false;
}

/// Lists the nodes whose product differs from the ordinary one. Elements without equation whose
/// neighbours have none need no correction: all they are multiplied with is zero.
void ListUnusual(GridSystem& system) {
  std::size_t count = 0;
  const std::ptrdiff_t elements = system.grid.Slots() * kGridLanes;
  for (std::ptrdiff_t at = 0; at < elements; ++at) {
    const std::uint8_t code = system.code[at];
    if (code == kOrdinary) continue;
    if (code > kAllCells || HasNeighbourWithEquation(system, system.code + at)) {
      system.unusual[count++] = {static_cast<std::int32_t>(at), code};
    }
  }
  system.unusual = system.unusual.first(count);
}

void ClearVectors(GridSystem& system) {
  const std::size_t elements = Elements(system.grid);
  const std::ptrdiff_t guard = system.grid.GuardSlots() * kGridLanes;
  for (const NodeNumbers* vector : {&system.x, &system.r, &system.z, &system.p, &system.invDiag}) {
    for (double* component : *vector) std::fill_n(component - guard, elements, 0.0);
  }
  const std::ptrdiff_t end = system.grid.Slots() * kGridLanes;
  for (const auto& row : system.lower) {
    for (double* coupling : row) {
      std::fill_n(coupling - guard, guard, 0.0);
      std::fill_n(coupling + end, guard, 0.0);
    }
  }
}

/// Calls visit(equation, component, place) for every equation in ascending order.
template <class Visit>
void ForEachEquation(const GridSystem& system, const Visit& visit) {
  int equation = 0;
  for (int i = 0; i < system.grid.Rows(); ++i) {
    std::ptrdiff_t at = system.grid.At(i, 0);
    for (int j = 0; j < system.grid.Columns(); ++j, at += system.grid.Offset(0, 1)) {
      if ((system.code[at] & kEquationU) != 0) visit(++equation, 0, at);
      if ((system.code[at] & kEquationV) != 0) visit(++equation, 1, at);
    }
  }
}

}  // namespace

std::optional<GridSystem> LayOutGrid(Model& model, double tolerance) {
  if (!IsRegularGrid(model)) return std::nullopt;
  GridSystem system;
  system.stiffness = SumStiffness(model.ElementStiffness);
  if (!HasOrdinaryForm(system.stiffness)) return std::nullopt;
  system.grid = SkewedGrid(model.CellRowCount + 1, model.CellColumnCount + 1);
  if (Elements(system.grid) > kSparestLayout * static_cast<std::size_t>(model.NodeCount) + 8192) {
    return std::nullopt;
  }
  system.tolerance = tolerance;
  const std::size_t bytes = Carve(system, nullptr).Taken();
  try {
    if (model.SolverSpace.size() < bytes) model.SolverSpace.resize(bytes);
  } catch (const std::bad_alloc&) {
    throw RunTimeError(ErrorKind::kOutOfMemory, "no memory for SolverSpace");
  }
  const std::size_t taken = Carve(system, model.SolverSpace.data()).Taken();
  QUILLANE_INVARIANT(taken <= model.SolverSpace.size() + kAlignment);
  WriteCodes(model, system);
  ListUnusual(system);
  ClearVectors(system);
  const auto load = model.LoadVector.Raw();
  ForEachEquation(system, [&](int equation, std::size_t component, std::ptrdiff_t at) {
    system.r[component][at] = load[static_cast<std::size_t>(equation)];
  });
  return system;
}

void TakeSolution(const GridSystem& system, double alpha, Model& model) {
  const auto solution = model.SolutionVector.Raw();
  ForEachEquation(system, [&](int equation, std::size_t component, std::ptrdiff_t at) {
    solution[static_cast<std::size_t>(equation)] =
        system.x[component][at] + alpha * system.p[component][at];
  });
}

}  // namespace quillane
