// The residual from the elements, without the assembled matrix.
#include "fem/residual.h"

#include <array>
#include <cmath>
#include <vector>

namespace quillane {

double TrueResidual(const Model& model) {
  constexpr std::size_t kSize = 8;
  std::array<std::array<double, kSize>, kSize> columns;
  for (std::size_t a = 0; a < kSize; ++a) {
    for (std::size_t b = 0; b < kSize; ++b) columns[b][a] = model.ElementStiffness[a + 1][b + 1];
  }
  const auto loads = model.LoadVector.Raw();
  std::vector<double> residual(loads.begin(), loads.end());
  ForEachPresentCell(model, [&](int, int, int e) {
    std::array<std::size_t, kSize> equation;
    std::array<double, kSize> force{};
    for (std::size_t b = 0; b < kSize; ++b) {
      const int number = model.ElementDofs(e, static_cast<int>(b) + 1);
      equation[b] = static_cast<std::size_t>(number);
      const double displacement = number == 0 ? 0.0 : model.SolutionVector(number);
      for (std::size_t a = 0; a < kSize; ++a) force[a] += columns[b][a] * displacement;
    }
    for (std::size_t a = 0; a < kSize; ++a) residual[equation[a]] -= force[a];
  });
  double residualSquared = 0.0;
  double loadSquared = 0.0;
  for (std::size_t equation = 1; equation < loads.size(); ++equation) {
    residualSquared += residual[equation] * residual[equation];
    loadSquared += loads[equation] * loads[equation];
  }
  return std::sqrt(residualSquared / loadSquared);
}

}  // namespace quillane
