#include "density_method.h"

#include <Eigen/OrderingMethods>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"

namespace quillane {
namespace {

constexpr double kVoidModulus = 1e-9;  ///< of a cell of density 0, over the material's
constexpr double kSmallestDensity = 1e-3;
constexpr double kFilterRadius = 1.5;  ///< cells
constexpr double kLargestMove = 0.2;   ///< of a density, in one update

/// The model with material in every cell of its domain.
Model WholeDomain(Model model) {
  for (Integer& state : model.CellState.Raw()) {
    if (state == kCellEmpty) state = kCellDesign;
  }
  MarkActiveNodes(model);
  NumberComponents(model);
  AssembleLoads(model);
  CalcElementStiffness(model);
  return model;
}

/// Calls use(entry, row, column) for the entries of the triangle of an element stiffness.
template <class Use>
void ForEachEntry(const Use& use) {
  std::size_t entry = 0;
  for (std::size_t row = 0; row < 8; ++row) {
    for (std::size_t column = 0; column <= row; ++column) use(entry++, row, column);
  }
}

std::size_t Index(int number) { return static_cast<std::size_t>(number); }

}  // namespace

DensityMethod::DensityMethod(const Model& model, double share) : model_(model) {
  const Model domain = WholeDomain(model);
  ForEachEntry([&](std::size_t entry, std::size_t row, std::size_t column) {
    elementStiffness_[entry] = domain.ElementStiffness[row + 1][column + 1];
  });
  NumberCells(domain);
  NumberEquations(domain);
  LayOutStiffness();
  FindNeighbours();
  const auto present =
      std::ranges::count_if(model.CellState.Raw(), [](Integer state) { return state > 0; });
  const auto others = static_cast<double>(elements_.size() - freeCells_.size());
  freeVolume_ = std::round(share * static_cast<double>(present)) - others;
  if (freeVolume_ <= 0) throw std::invalid_argument("the non-design cells are more than the wish");
  freeVolume_ = std::min(freeVolume_, static_cast<double>(freeCells_.size()));
  densities_.assign(freeCells_.size(), freeVolume_ / static_cast<double>(freeCells_.size()));
}

void DensityMethod::NumberCells(const Model& domain) {
  std::vector<Element> others;
  ForEachPresentCell(domain, [&](int row, int column, int cell) {
    Element element{};
    for (int k = 1; k <= 8; ++k) {
      element.equations[Index(k - 1)] = domain.ElementDofs(cell, k) - 1;
    }
    const bool isFree = domain.CellState(row, column) == kCellDesign;
    if (isFree) freeCells_.push_back({row, column});
    (isFree ? elements_ : others).push_back(element);
  });
  elements_.insert(elements_.end(), others.begin(), others.end());
}

/// Numbers the equations anew, in the order in which they are eliminated with little fill.
void DensityMethod::NumberEquations(const Model& domain) {
  std::vector<Eigen::Triplet<double>> couplings;
  for (const Element& element : elements_) {
    for (const int row : element.equations) {
      for (const int column : element.equations) {
        if (row >= 0 && column >= 0) couplings.emplace_back(row, column, 1.0);
      }
    }
  }
  const int count = domain.EquationCount;
  Sparse pattern(count, count);
  pattern.setFromTriplets(couplings.begin(), couplings.end());
  Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> order;
  Eigen::AMDOrdering<int>()(pattern, order);
  std::vector<int> place(Index(count));
  for (int k = 0; k < count; ++k) place[Index(order.indices()[k])] = k;
  load_.resize(count);
  for (int k = 0; k < count; ++k) load_[place[Index(k)]] = domain.LoadVector(k + 1);
  for (Element& element : elements_) {
    for (int& equation : element.equations) {
      if (equation >= 0) equation = place[Index(equation)];
    }
  }
}

void DensityMethod::LayOutStiffness() {
  std::vector<Eigen::Triplet<double>> couplings;
  const auto forEachCoupling = [this](Element& element, const auto& use) {
    ForEachEntry([&](std::size_t entry, std::size_t row, std::size_t column) {
      const auto [low, high] = std::minmax(element.equations[row], element.equations[column]);
      if (low >= 0) use(entry, low, high);
    });
  };
  for (Element& element : elements_) {
    forEachCoupling(
        element, [&](std::size_t, int low, int high) { couplings.emplace_back(low, high, 0.0); });
  }
  const auto count = load_.size();
  stiffness_.resize(count, count);
  stiffness_.setFromTriplets(couplings.begin(), couplings.end());
  solver_.analyzePattern(stiffness_);
  for (Element& element : elements_) {
    element.entries.fill(-1);
    forEachCoupling(element, [&](std::size_t entry, int low, int high) {
      element.entries[entry] =
          static_cast<int>(&stiffness_.coeffRef(low, high) - stiffness_.valuePtr());
    });
  }
}

void DensityMethod::FindNeighbours() {
  Array2<Integer> number{"number"};  // of a free cell, from 1
  number.ReDim({0, model_.CellRowCount + 1}, {0, model_.CellColumnCount + 1});
  for (std::size_t k = 0; k < freeCells_.size(); ++k) {
    number(freeCells_[k].row, freeCells_[k].column) = static_cast<Integer>(k + 1);
  }
  for (const FreeCell& cell : freeCells_) {
    for (int i = -1; i <= 1; ++i) {
      for (int j = -1; j <= 1; ++j) {
        const int neighbour = number(cell.row + i, cell.column + j);
        const double weight = kFilterRadius - std::hypot(i, j);
        if (neighbour > 0) neighbours_.push_back({neighbour - 1, weight});
      }
    }
    neighboursEnd_.push_back(neighbours_.size());
  }
}

double DensityMethod::Modulus(std::size_t element) const {
  if (element >= freeCells_.size()) return 1.0;
  const double density = densities_[element];
  return kVoidModulus + (1 - kVoidModulus) * density * density * density;
}

double DensityMethod::Analyse() {
  double* const values = stiffness_.valuePtr();
  std::fill_n(values, stiffness_.nonZeros(), 0.0);
  for (std::size_t k = 0; k < elements_.size(); ++k) {
    const double modulus = Modulus(k);
    for (std::size_t entry = 0; entry < kEntries; ++entry) {
      const int at = elements_[k].entries[entry];
      if (at >= 0) values[at] += modulus * elementStiffness_[entry];
    }
  }
  solver_.factorize(stiffness_);
  if (solver_.info() == Eigen::Success) displacement_ = solver_.solve(load_);
  if (solver_.info() != Eigen::Success || !displacement_.allFinite()) {
    throw std::runtime_error("the plate is not held");
  }
  return load_.dot(displacement_);
}

/// Twice the strain energy (N mm) of an element of full material.
double DensityMethod::Energy(const Element& element) const {
  std::array<double, 8> u;
  for (std::size_t k = 0; k < 8; ++k) {
    u[k] = element.equations[k] < 0 ? 0.0 : displacement_[element.equations[k]];
  }
  double energy = 0;
  ForEachEntry([&](std::size_t entry, std::size_t row, std::size_t column) {
    energy += (row == column ? 1 : 2) * u[row] * elementStiffness_[entry] * u[column];
  });
  return energy;
}

std::vector<double> DensityMethod::Sensitivities() const {
  std::vector<double> sensitivities(densities_.size());
  for (std::size_t k = 0; k < densities_.size(); ++k) {
    const double slope = 3 * (1 - kVoidModulus) * densities_[k] * densities_[k];
    sensitivities[k] = -slope * Energy(elements_[k]);
  }
  return sensitivities;
}

std::vector<double> DensityMethod::FilteredSensitivities() const {
  const std::vector<double> raw = Sensitivities();
  std::vector<double> filtered(raw.size());
  std::size_t from = 0;
  for (std::size_t k = 0; k < raw.size(); ++k) {
    double sum = 0, weights = 0;
    for (; from < neighboursEnd_[k]; ++from) {
      const auto& [cell, weight] = neighbours_[from];
      sum += weight * densities_[Index(cell)] * raw[Index(cell)];
      weights += weight;
    }
    filtered[k] = sum / (weights * densities_[k]);
  }
  return filtered;
}

void DensityMethod::Update() {
  std::vector<double> aims = FilteredSensitivities();  // of the densities, at the multiplier 1
  for (std::size_t k = 0; k < aims.size(); ++k) aims[k] = densities_[k] * std::sqrt(-aims[k]);
  const auto moved = [&](std::size_t k, double scale) {
    const double low = std::max(kSmallestDensity, densities_[k] - kLargestMove);
    const double high = std::min(1.0, densities_[k] + kLargestMove);
    return std::clamp(scale * aims[k], low, high);
  };
  const double largestAim = *std::ranges::max_element(aims);
  if (largestAim == 0) return;
  double below = 0, above = 1 / largestAim;
  const auto volume = [&](double scale) {
    double sum = 0;
    for (std::size_t k = 0; k < aims.size(); ++k) sum += moved(k, scale);
    return sum;
  };
  while (volume(above) < freeVolume_ && std::isfinite(above)) above *= 2;
  while (above - below > 1e-6 * above) {
    const double middle = (below + above) / 2;
    (volume(middle) < freeVolume_ ? below : above) = middle;
  }
  for (std::size_t k = 0; k < aims.size(); ++k) densities_[k] = moved(k, above);
}

void DensityMethod::Run() {
  for (int iteration = 0; iteration < kIterations; ++iteration) {
    Analyse();
    Update();
  }
}

Model DensityMethod::BlackAndWhite() const {
  std::vector<std::size_t> order(densities_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(
      order, [this](std::size_t a, std::size_t b) { return densities_[a] > densities_[b]; });
  Model model = model_;
  const auto filled = static_cast<std::size_t>(freeVolume_);
  for (std::size_t k = 0; k < order.size(); ++k) {
    const auto& [row, column] = freeCells_[order[k]];
    model.CellState(row, column) = k < filled ? kCellDesign : kCellEmpty;
  }
  MarkActiveNodes(model);
  return model;
}

}  // namespace quillane
