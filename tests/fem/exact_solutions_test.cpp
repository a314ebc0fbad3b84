// Known solutions that the elements must reproduce, the mesh, and the load paths.
#include <gtest/gtest.h>

#include <cmath>

#include "fem/analysis.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "fem/stress.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::Node;

/// The displacements u = a + c y + d x, v = b + e x + f y.
struct LinearField {
  double a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
  double operator()(int component, double x, double y) const {
    return component == 1 ? a + c * y + d * x : b + e * x + f * y;
  }
};

TEST(Element, HasExactlyItsRigidBodyModesAndIsSymmetric) {
  Model model;
  CalcElementStiffness(model);
  const auto& k = model.ElementStiffness;
  const double corner[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  for (const LinearField& mode :
       {LinearField{.a = 1}, LinearField{.b = 1}, LinearField{.c = -1, .e = 1}}) {
    for (int row = 1; row <= 8; ++row) {
      double force = 0;
      for (int p = 0; p < 8; ++p) {
        force += k[row][p + 1] * mode(1 + p % 2, corner[p / 2][0], corner[p / 2][1]);
        EXPECT_EQ(k[row][p + 1], k[p + 1][row]);
      }
      EXPECT_NEAR(force, 0, 1e-14 * k[1][1]);
    }
  }
  const double c = 210000 / (1 - 0.09);
  EXPECT_NEAR(k[1][1], 0.45 * c, 1e-9 * c);
  EXPECT_NEAR(k[1][2], 0.1625 * c, 1e-9 * c);
  EXPECT_NEAR(k[1][3], -0.275 * c, 1e-9 * c);
  EXPECT_NEAR(k[4][1], -0.0125 * c, 1e-9 * c);
}

/// A constant strain needs no force inside the plate and gives its stress in every element.
TEST(Patch, ConstantStrainIsCarriedExactly) {
  const double e = 210000, nu = 0.3, g = e / (2 * (1 + nu));
  const std::pair<LinearField, double> kCases[] = {
      {{.d = 1e-3}, e / (1 - nu * nu) * 1e-3 * std::sqrt(1 + nu * nu - nu)},
      {{.d = 1e-3, .f = -nu * 1e-3}, e * 1e-3},
      {{.c = 1e-3}, std::sqrt(3.0) * g * 1e-3},
      {{.c = -2e-3, .e = 2e-3}, 0}};
  for (const auto& [field, vonMises] : kCases) {
    Model model = test::Plate(4, 5, 20);
    AssembleEquations(model);
    for (int k = 1; k <= model.NodeCount; ++k) {
      for (int d = 1; d <= 2; ++d) {
        model.NodeDisp(k, d) = field(d, model.NodeXY(k, 1), model.NodeXY(k, 2));
      }
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
    for (const double stress : {model.MinStress, model.AvgStress, model.MaxStress}) {
      EXPECT_NEAR(stress, vonMises, 1e-9);
    }
  }
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
    for (int i = 1; i <= cells + 1; ++i) {  // half as much at the two ends of the edge
      model.NodeLoad(Node(model, i, 4 * cells + 1), 2) =
          -force / cells / (i == 1 || i == cells + 1 ? 2 : 1);
    }
    AnalyseStructure(model);
    const double tip = -model.NodeDisp(Node(model, cells / 2 + 1, 4 * cells + 1), 2);
    EXPECT_GT(tip, before);
    EXPECT_LT(tip, exact);
    before = tip;
  }
  EXPECT_NEAR(before, exact, 0.02 * exact);
}

TEST(Mesh, NumbersNodesFromTheLowerLeftAndFreeComponentsWithoutGaps) {
  Model model = test::Plate(2, 2);
  const int nodes[] = {1, 2, 5, 4};
  for (int k = 1; k <= 4; ++k) EXPECT_EQ(model.ElementNodes(1, k), nodes[k - 1]);
  model.CellState(2, 2) = kCellEmpty;  // node 9 belongs to this cell alone
  model.NodeFreedom(1, 1) = 1;
  model.NodeFreedom(2, 2) = -5;  // any code but 0 is fixed
  MarkActiveNodes(model);
  NumberEquations(model);
  EXPECT_EQ(model.EquationCount, 14);
  const int expected[][2] = {{0, 1}, {2, 0}, {3, 4}};
  for (int k = 1; k <= 3; ++k) {
    for (int d = 1; d <= 2; ++d) EXPECT_EQ(model.DofNumber(k, d), expected[k - 1][d - 1]);
  }
  EXPECT_EQ(model.DofNumber(9, 1), 0);
  EXPECT_EQ(model.ElementDofs(4, 1), model.DofNumber(5, 1));  // filled though the cell is absent

  model.ElementSize = 0.1F;
  BuildMesh(model, 1, 20);
  Single x = 0;  // a sum in single precision, not twenty times a tenth
  for (int j = 1; j <= 21; ++j, x += 0.1F) EXPECT_EQ(model.NodeXY(j, 1), double{x});
}

TEST(Mesh, RefusesWhatAnIntegerCannotCount) {
  Model model;
  EXPECT_THROW(BuildMesh(model, 200, 200), RunTimeError);  // 40401 nodes
  EXPECT_THROW(BuildMesh(model, 32767, 1), RunTimeError);
  EXPECT_EQ(model.NodeCount, 0);
  model = test::Plate(127, 254);  // 32640 nodes, 65280 components
  EXPECT_THROW(NumberEquations(model), RunTimeError);
}

using Nodes = std::vector<int>;

TEST(LostLoads, AWayLeadsOverEdgesAndNotOverCorners) {
  Model model = test::Cantilever(2, 4);
  const int tip = test::Node(model, 2, 5);
  EXPECT_EQ(LostLoads(model), Nodes{});
  model.CellState(1, 3) = kCellCutOut;
  EXPECT_EQ(LostLoads(model), Nodes{}) << "the upper row still reaches the wall";
  model.CellState(2, 4) = kCellEmpty;
  EXPECT_EQ(LostLoads(model), Nodes{tip}) << "cells (2, 3) and (1, 4) touch at a corner only";
  model.CellState(1, 4) = kCellEmpty;
  model.NodeLoad(1, 1) = 5;
  EXPECT_EQ(LostLoads(model), Nodes{tip}) << "no material at all there; node 1 is at the wall";
}

TEST(Pieces, AreEdgeConnectedAndTheLooseOnesCanBeDropped) {
  Model model = test::Cantilever(3, 9);
  test::SetCells(model, 1, 7, 3, 7, kCellEmpty);   // disconnects the tip
  test::SetCells(model, 1, 3, 3, 3, kCellCutOut);  // and the middle
  model.CellState(2, 5) = kCellEmpty;
  model.CellState(1, 5) = model.CellState(3, 4) = kCellNonDesign;
  Pieces found = FindPieces(model);
  ASSERT_EQ(found.pieces.size(), 3U);
  EXPECT_EQ(found.pieceOfCell(3, 1), 1);
  EXPECT_EQ(found.pieceOfCell(3, 6), 2);
  EXPECT_EQ(found.pieceOfCell(2, 5), 0);
  EXPECT_EQ(found.pieceOfCell(1, 9), 3);
  EXPECT_TRUE(found.pieces[0].held && !found.pieces[0].touchesLoad);
  EXPECT_FALSE(found.pieces[1].touchesLoad || found.pieces[1].touchesSupport);
  EXPECT_EQ(found.pieces[1].cells, 8);
  EXPECT_TRUE(found.pieces[2].touchesLoad && !found.pieces[2].held);
  EXPECT_EQ(DropLoosePieces(model), 1);
  found = FindPieces(model);
  EXPECT_EQ(found.pieces.size(), 4U) << "the two non-design cells stay";
  EXPECT_EQ(model.CellState(3, 4), kCellNonDesign);
  EXPECT_EQ(model.CellState(3, 6), kCellEmpty);
}

TEST(LostLoads, ALoadAgainstItsOwnSupportNeedsNoPlate) {
  Model model = test::Cantilever(2, 3);
  model.CellState(2, 3) = kCellEmpty;
  const int corner = test::Node(model, 3, 4);
  model.NodeLoad(corner, 2) = 7;
  EXPECT_EQ(LostLoads(model), Nodes{corner});
  model.NodeFreedom(corner, 2) = 1;
  EXPECT_EQ(LostLoads(model), Nodes{});
  model.NodeLoad(corner, 1) = 7;
  EXPECT_EQ(LostLoads(model), Nodes{corner});
}

TEST(LostLoads, APieceIsHeldAgainstMovingAndTurning) {
  const struct {
    const char* what;
    int supports[3][3];  // row, column and component
    bool held;
  } cases[] = {
      {"a pin and a roller", {{1, 1, 1}, {1, 1, 2}, {1, 5, 2}}, true},
      {"two nodes in x above each other, one in y", {{1, 1, 1}, {3, 1, 1}, {1, 1, 2}}, true},
      {"free in x", {{1, 1, 2}, {1, 3, 2}, {1, 5, 2}}, false},
      {"free in y", {{1, 1, 1}, {3, 1, 1}, {2, 5, 1}}, false},
      {"turns about the crossing of x and y", {{1, 1, 1}, {1, 5, 1}, {3, 2, 2}}, false},
  };
  for (const auto& c : cases) {
    Model model = test::Plate(2, 4);
    for (const auto& [row, column, d] : c.supports) {
      model.NodeFreedom(test::Node(model, row, column), d) = 1;
    }
    model.NodeLoad(test::Node(model, 3, 4), 2) = -1;
    EXPECT_EQ(LostLoads(model).empty(), c.held) << c.what;
  }
}

}  // namespace
}  // namespace quillane
