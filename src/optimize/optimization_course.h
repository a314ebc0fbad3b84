// How the steps since the last stress analysis go: what moves, what rests, how they were solved.
#pragma once

#include <array>
#include <deque>

#include "fem/solver.h"
#include "model/model.h"

namespace quillane {

/// Follows an optimization step by step. It only looks on: nothing is computed from it.
class OptimizationCourse {
 public:
  /// The longest cycle of layouts that is looked for, in steps.
  static constexpr int kLongestCycle = 8;

  /// A stress analysis was done: a new course begins with its layout and volume.
  void Begin(const Model& model, const SolveReport& report);

  /// A step was done.
  void Add(const Model& model, const SolveReport& report);

  /// The volume of the analysed layout, mm^3.
  double StartVolume() const { return startVolume_; }

  /// Cells whose state the last step changed.
  int CellsChanged() const { return cellsChanged_; }

  /// How many steps in a row, up to the last, gave the layout that stood `cycle` steps before: 1
  /// for a layout at rest, 2 for two layouts that alternate, and so on to kLongestCycle.
  int RepeatedSteps(int cycle = 1) const;

  /// How many solves in a row, up to the last, did not converge; the analysis is one of them.
  int UnconvergedSolves() const { return unconvergedSolves_; }

 private:
  std::deque<Array2<Integer>> layouts_;           ///< the last ones, the present one first
  std::array<int, kLongestCycle> repeated_ = {};  ///< [cycle - 1]
  double startVolume_ = 0;
  int cellsChanged_ = 0;
  int unconvergedSolves_ = 0;
};

}  // namespace quillane
