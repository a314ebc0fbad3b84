// The density method of topology optimization, to judge the shapes of our own search by.
#pragma once

#include <Eigen/SparseCholesky>
#include <array>
#include <span>
#include <vector>

#include "model/model.h"

namespace quillane {

/// Minimizes the compliance at a given volume by densities of the cells between 0 and 1: modulus
/// E (1e-9 + (1 - 1e-9) density^3), sensitivities filtered over a radius of 1.5 cells, densities
/// updated by the optimality criteria. Non-design cells keep the density 1; all others of the
/// domain are free, whether the model holds material in them or not. Source: M. P. Bendsoe and O.
/// Sigmund, Topology Optimization: Theory, Methods and Applications, Springer 2003, section 1.2.
class DensityMethod {
 public:
  static constexpr int kIterations = 80;

  /// share: of the volume of the cells that the model holds, more than its non-design cells take.
  /// Throws RunTimeError as numbering and element stiffness do.
  DensityMethod(const Model& model, double share);

  /// Analyses the present densities. Returns the compliance, the work of the loads (N mm). Throws
  /// std::runtime_error where the plate is not held.
  double Analyse();

  /// Moves the densities after an analysis.
  void Update();

  /// Analyses and updates kIterations times.
  void Run();

  /// The densities of the free cells, row by row.
  std::span<double> Densities() { return densities_; }

  /// d(compliance)/d(density) (N mm) of the free cells in the last analysis, not filtered.
  std::vector<double> Sensitivities() const;

  /// The model with material in its non-design cells and in the densest of the others, so many that
  /// the share is met to the cell; not analysed.
  Model BlackAndWhite() const;

 private:
  using Sparse = Eigen::SparseMatrix<double>;
  // Upper and natural: the equations are numbered in the order of elimination, so that the
  // stiffness is factorized where it stands.
  using Solver = Eigen::SimplicialLDLT<Sparse, Eigen::Upper, Eigen::NaturalOrdering<int>>;
  static constexpr std::size_t kEntries = 36;  ///< of one triangle of an element stiffness

  struct Element {
    std::array<int, 8> equations;       ///< from 0; -1 none
    std::array<int, kEntries> entries;  ///< in the values of the stiffness; -1 none
  };
  struct FreeCell {
    int row, column;
  };
  struct Neighbour {
    int cell;  ///< a free one
    double weight;
  };

  void NumberCells(const Model& domain);
  void NumberEquations(const Model& domain);
  void LayOutStiffness();
  void FindNeighbours();
  double Modulus(std::size_t element) const;
  double Energy(const Element& element) const;
  std::vector<double> FilteredSensitivities() const;

  Model model_;
  double freeVolume_;  ///< wished in the free cells, in cells
  std::array<double, kEntries> elementStiffness_;
  std::vector<Element> elements_;  ///< those of the free cells, in their order, then the others
  std::vector<FreeCell> freeCells_;
  std::vector<double> densities_;
  std::vector<Neighbour> neighbours_;       ///< of all free cells, one after the other
  std::vector<std::size_t> neighboursEnd_;  ///< [cell]
  Sparse stiffness_;
  Eigen::VectorXd load_, displacement_;
  Solver solver_;
};

}  // namespace quillane
