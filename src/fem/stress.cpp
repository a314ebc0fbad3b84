#include "fem/stress.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "fem/element_stiffness.h"
#include "model/numbers.h"

namespace quillane {
namespace {

using StrainMatrix =
    std::array<std::array<double, 8>, 3>;  // rows as PlaneTensor, columns u1 v1 ...
using ElasticityMatrix = std::array<std::array<double, 3>, 3>;

/// From displacements to the strain at the centre of the bilinear square of edge a (1/mm).
StrainMatrix StrainAtCentre(Single a) {
  const double edge = double{a};
  const double x = double{a / 2.0F};
  const double y = double{a / 2.0F};
  const double dx[4] = {-(1 - y / edge) / edge, (1 - y / edge) / edge, (y / edge) / edge,
                        -(y / edge) / edge};
  const double dy[4] = {-(1 - x / edge) / edge, -(x / edge) / edge, (x / edge) / edge,
                        (1 - x / edge) / edge};
  StrainMatrix b{};
  for (std::size_t k = 0; k < 4; ++k) {
    b[0][2 * k] = dx[k];
    b[1][2 * k + 1] = dy[k];
    b[2][2 * k] = dy[k];
    b[2][2 * k + 1] = dx[k];
  }
  return b;
}

/// Plane-stress elasticity matrix (MPa).
ElasticityMatrix PlaneStress(double youngModulus, double nu) {
  const double c = Finite(youngModulus / (1.0 - nu * nu), "the plane-stress modulus E / (1 - nu^2)",
                          CauseOfPoissonRatio(nu));
  return {{{c, c * nu, 0.0}, {c * nu, c, 0.0}, {0.0, 0.0, (1.0 - nu) * c / 2.0}}};
}

double VonMises(const PlaneTensor& stress) {
  const auto [x, y, xy] = stress;
  return std::sqrt(x * x + y * y - x * y + 3.0 * (xy * xy));
}

template <std::size_t Columns>
PlaneTensor Product(const std::array<std::array<double, Columns>, 3>& matrix,
                    const std::array<double, Columns>& vector) {
  PlaneTensor result{};
  for (std::size_t k = 0; k < Columns; ++k) {
    for (std::size_t row = 0; row < 3; ++row) result[row] += matrix[row][k] * vector[k];
  }
  return result;
}

/// Returns u1 v1 u2 v2 ... of an element.
std::array<double, 8> ElementDisplacements(const Model& model, int element) {
  std::array<double, 8> d;
  std::size_t at = 0;
  for (const int node : NodesOfElement(model, element)) {
    d[at++] = model.NodeDisp(node, 1);
    d[at++] = model.NodeDisp(node, 2);
  }
  return d;
}

/// The stress components (MPa) at the centre of an element, from its nodes' displacements.
class CentreStress {
 public:
  CentreStress(const Model& model, Single elementSize, double youngModulus, double poissonRatio)
      : model_(model),
        strainMatrix_(StrainAtCentre(elementSize)),
        elasticity_(PlaneStress(youngModulus, poissonRatio)) {}

  PlaneTensor operator()(int element) const {
    return Product(elasticity_, Product(strainMatrix_, ElementDisplacements(model_, element)));
  }

 private:
  const Model& model_;
  StrainMatrix strainMatrix_;
  ElasticityMatrix elasticity_;
};

/// Writes stressOf(row, column, element) into the cells that hold an element, 0 into the others,
/// and the largest, smallest and mean value.
template <class StressOf>
void WriteStresses(Model& model, const StressOf& stressOf) {
  model.MaxStress = 0.0;
  model.MinStress = 1.0e10;
  double sum = 0.0;
  int count = 0;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      model.CellStress(i, j) = 0.0;
      if (model.CellState(i, j) <= 0) continue;
      const double stress = stressOf(i, j, ElementOfCell(model, i, j));
      model.CellStress(i, j) = stress;
      sum += stress;
      ++count;
      if (stress < model.MinStress) model.MinStress = stress;
      if (model.MaxStress < stress) model.MaxStress = stress;
    }
  }
  model.AvgStress = Finite(sum / count, "the mean stress",
                           count == 0 ? ErrorCause::kNoMaterial : ErrorCause::kNone);
}

}  // namespace

void ScatterDisplacements(Model& model) {
  for (int n = 1; n <= model.NodeCount; ++n) {
    for (int d = 1; d <= 2; ++d) {
      const int equation = model.DofNumber(n, d);
      model.NodeDisp(n, d) = equation == 0 ? 0.0 : model.SolutionVector(equation);
    }
  }
}

void ElementStresses(Model& model, Single elementSize, Double youngModulus, Double poissonRatio) {
  const CentreStress centreStress(model, elementSize, youngModulus, poissonRatio);
  WriteStresses(model, [&](int, int, int element) {
    return Finite(VonMises(centreStress(element)), "an element's stress");
  });
}

void EnvelopeStresses(Model& model, std::span<const Array2<Double>* const> fields) {
  WriteStresses(model, [&](int i, int j, int) {
    double largest = 0.0;
    for (const Array2<Double>* field : fields) largest = std::max(largest, (*field)(i, j));
    return largest;
  });
}

std::vector<PlaneTensor> ComponentStresses(const Model& model) {
  const CentreStress centreStress(model, model.ElementSize, model.YoungModulus, model.PoissonRatio);
  const int cells = ElementOfCell(model, model.CellRowCount, model.CellColumnCount);
  std::vector<PlaneTensor> stresses(static_cast<std::size_t>(cells) + 1);
  ForEachPresentCell(model, [&](int, int, int element) {
    stresses[static_cast<std::size_t>(element)] = centreStress(element);
  });
  return stresses;
}

double Compliance(const Model& model) {
  double work = 0;
  for (int node = 1; node <= model.NodeCount; ++node) {
    for (int d = 1; d <= 2; ++d) work += model.NodeLoad(node, d) * model.NodeDisp(node, d);
  }
  return work;
}

void DesignVolume(Model& model) {
  model.Volume = 0.0;
  for (const Integer state : model.CellState.Raw()) {
    if (state > 0) model.Volume += 1.0;
  }
  const double edge = double{model.ElementSize};
  model.Volume = Finite(edge * edge * model.Thickness * model.Volume, "the volume");
}

}  // namespace quillane
