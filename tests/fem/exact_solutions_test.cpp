// Known solutions of elasticity that the elements must reproduce.
#include <gtest/gtest.h>

#include <cmath>

#include "fem/analysis.h"
#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "fem/stress.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::Node;

/// Gives every node the displacement u = a + c y + d x, v = b + e x + f y.
struct LinearField {
  double a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
  double U(double x, double y) const { return a + c * y + d * x; }
  double V(double x, double y) const { return b + e * x + f * y; }
};

TEST(Element, HasExactlyItsRigidBodyModesAndIsSymmetric) {
  Model model;
  CalcElementStiffness(model);
  const double corner[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  const double scale = model.ElementStiffness[1][1];
  for (const LinearField& mode :
       {LinearField{.a = 1}, LinearField{.b = 1}, LinearField{.c = -1, .e = 1}}) {
    for (int row = 1; row <= 8; ++row) {
      double force = 0;
      for (int k = 0; k < 4; ++k) {
        force += model.ElementStiffness[row][2 * k + 1] * mode.U(corner[k][0], corner[k][1]);
        force += model.ElementStiffness[row][2 * k + 2] * mode.V(corner[k][0], corner[k][1]);
      }
      EXPECT_NEAR(force, 0, 1e-14 * scale);
    }
  }
  for (int row = 1; row <= 8; ++row) {
    for (int column = 1; column <= 8; ++column) {
      EXPECT_EQ(model.ElementStiffness[row][column], model.ElementStiffness[column][row]);
    }
  }
  const double c = 210000 / (1 - 0.09);
  EXPECT_NEAR(model.ElementStiffness[1][1], 0.45 * c, 1e-9 * c);
  EXPECT_NEAR(model.ElementStiffness[1][2], 0.1625 * c, 1e-9 * c);
  EXPECT_NEAR(model.ElementStiffness[1][3], -0.275 * c, 1e-9 * c);
  EXPECT_NEAR(model.ElementStiffness[4][1], -0.0125 * c, 1e-9 * c);
}

/// A constant strain needs no force inside the plate and gives its stress in every element.
TEST(Patch, ConstantStrainIsCarriedExactly) {
  const double e = 210000, nu = 0.3, g = e / (2 * (1 + nu));
  const struct {
    LinearField field;
    double vonMises;
  } cases[] = {{{.d = 1e-3}, e / (1 - nu * nu) * 1e-3 * std::sqrt(1 + nu * nu - nu)},
               {{.d = 1e-3, .f = -nu * 1e-3}, e * 1e-3},
               {{.c = 1e-3}, std::sqrt(3.0) * g * 1e-3},
               {{.c = -2e-3, .e = 2e-3}, 0}};
  for (const auto& c : cases) {
    Model model = test::Plate(4, 5, 20);
    CalcElementStiffness(model);
    NumberEquations(model);
    AssembleStiffness(model);
    for (int k = 1; k <= model.NodeCount; ++k) {
      model.NodeDisp(k, 1) = c.field.U(model.NodeXY(k, 1), model.NodeXY(k, 2));
      model.NodeDisp(k, 2) = c.field.V(model.NodeXY(k, 1), model.NodeXY(k, 2));
    }
    for (int i = 2; i <= 4; ++i) {
      for (int p = model.DofNumber(Node(model, i, 2), 1);
           p <= model.DofNumber(Node(model, i, 5), 2); ++p) {
        double force = 0;
        for (int q = 1; q <= model.EquationCount; ++q) {
          force += model.StiffnessMatrix(p, q) * model.NodeDisp((q + 1) / 2, 2 - q % 2);
        }
        EXPECT_NEAR(force, 0, 1e-8);
      }
    }
    ElementStresses(model, model.ElementSize, model.YoungModulus, model.PoissonRatio);
    EXPECT_NEAR(model.MaxStress, c.vonMises, 1e-9);
    EXPECT_NEAR(model.MinStress, c.vonMises, 1e-9);
    EXPECT_NEAR(model.AvgStress, c.vonMises, 1e-9);
  }
}

TEST(Uniaxial, DisplacementIsStressTimesLengthOverModulus) {
  Model model = test::Plate(6, 12, 10);
  const double stress = 50, force = stress * 10 * model.Thickness;
  for (int i = 1; i <= 7; ++i) {
    model.NodeFreedom(Node(model, i, 1), 1) = 1;
    model.NodeLoad(Node(model, i, 13), 1) = i == 1 || i == 7 ? force / 2 : force;
  }
  model.NodeFreedom(Node(model, 1, 1), 2) = 1;
  const SolveReport report = AnalyseStructure(model);
  EXPECT_TRUE(report.converged);
  const double u = stress * 120 / model.YoungModulus;
  for (int i = 1; i <= 7; ++i) EXPECT_NEAR(model.NodeDisp(Node(model, i, 13), 1), u, 1e-5 * u);
  EXPECT_NEAR(model.MaxStress, stress, 1e-4 * stress);
  EXPECT_NEAR(model.MinStress, stress, 1e-4 * stress);
  EXPECT_EQ(model.NodeDisp(Node(model, 3, 1), 1), 0.0);
  EXPECT_EQ(model.Volume, 120.0 * 60.0);
}

/// A fully integrated plate element is too stiff, less and less so as the grid is refined.
TEST(Bending, CantileverConvergesToTimoshenkoFromBelow) {
  const double length = 800, height = 200, force = 1000, e = 210000, nu = 0.3;
  const double inertia = height * height * height / 12;
  const double exact = force * length * length * length / (3 * e * inertia) +
                       force * length * 2 * (1 + nu) / (5.0 / 6.0 * e * height);
  double before = 0;
  for (int cells : {2, 4, 8, 16}) {
    Model model = test::Cantilever(cells, 4 * cells, 0);
    model.ElementSize = static_cast<Single>(height / cells);
    for (int i = 1; i <= cells + 1; ++i) {
      model.NodeLoad(Node(model, i, 4 * cells + 1), 2) =
          -force / cells * (i == 1 || i == cells + 1 ? 0.5 : 1.0);
    }
    AnalyseStructure(model);
    const double tip = -model.NodeDisp(Node(model, cells / 2 + 1, 4 * cells + 1), 2);
    EXPECT_GT(tip, before);
    EXPECT_LT(tip, exact);
    before = tip;
  }
  EXPECT_NEAR(before, exact, 0.02 * exact);
}

TEST(Energy, ComplianceIsTwiceTheStrainEnergy) {
  Model model = test::RandomPlate(11);
  model.StepCount = 0;
  AnalyseStructure(model);
  double work = 0, energy = 0;
  for (int p = 1; p <= model.EquationCount; ++p)
    work += model.LoadVector(p) * model.SolutionVector(p);
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      if (model.CellState(i, j) <= 0) continue;
      const int e = ElementOfCell(model, i, j);
      const auto d = [&](int k) {
        return model.NodeDisp(model.ElementNodes(e, (k + 1) / 2), 2 - k % 2);
      };
      for (int a = 1; a <= 8; ++a) {
        for (int b = 1; b <= 8; ++b) energy += 0.5 * d(a) * model.ElementStiffness[a][b] * d(b);
      }
    }
  }
  EXPECT_GT(energy, 0);
  EXPECT_NEAR(work, 2 * energy, 1e-9 * work);
}

}  // namespace
}  // namespace quillane
