// Several load cases on one layout: each is analysed; the largest stress of every cell decides.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "model/model.h"
#include "optimize/optimization_step.h"
#include "optimize/side_by_side.h"

namespace quillane {

/// The results of one case.
struct LoadCaseResult {
  SolveReport solve;
  Array2<Double> stress{"CellStress"};                  ///< as Model::CellStress
  double maxStress = 0, meanStress = 0, minStress = 0;  ///< MPa
  double compliance = 0;                                ///< N mm
};

/// Returns why `other` is no load case of `model`: the first difference of their grids or
/// materials, in words with both values. Empty if there is none.
std::string LoadCaseFault(const Model& model, const Model& other);

/// The load cases beside the one that a model itself holds. Supports and loads make a case; layout,
/// potentials and parameters are those of the model.
class LoadCases {
 public:
  /// Adds the supports and loads of `other`, which LoadCaseFault must accept.
  void Add(Model other) { others_.push_back(std::move(other)); }

  /// Sets how many cases are analysed at a time; by default one per core.
  void SetThreads(int threads) { threads_ = threads; }

  /// Returns the number of cases, the model's own included.
  std::size_t Count() const { return others_.size() + 1; }

  /// Returns the added cases; only their supports and loads are meaningful.
  std::span<const Model> Others() const { return others_; }

  /// Analyses the model, as AnalyseStructure does, and every further case on the model's layout.
  /// CellStress then holds the largest stress of all cases, from which MaxStress, MinStress and
  /// AvgStress follow; displacements and equation system are those of the model's own case. The
  /// report holds the worst value of each figure and has converged if all cases have. The results
  /// do not depend on the number of threads. Throws RunTimeError: with several cases, the error of
  /// the first one that fails, its message prefixed with "load case" and the number, from 1 for the
  /// model's own.
  SolveReport Analyse(Model& model);

  /// Returns Analyse as a replacement for AnalyseStructure, which this object must outlive.
  Analysis AsAnalysis() {
    return [this](Model& model) { return Analyse(model); };
  }

  /// Returns the results of the last successful Analyse: the model's own case, then the others in
  /// their order. Empty if the model's is the only case.
  const std::vector<LoadCaseResult>& Results() const { return results_; }

  /// Returns the sum of the compliances (N mm) of all cases after Analyse(model).
  double Compliance(const Model& model) const;

  /// Returns, for each case, the model's own first, the nodes whose loads are lost on the model's
  /// layout.
  std::vector<std::vector<int>> LostLoads(const Model& model) const;

  /// Returns whether no load is lost in any case.
  bool Connected(const Model& model) const;

 private:
  LoadCaseResult AnalyseOne(Model& model, std::size_t number);

  std::vector<Model> others_;
  std::vector<LoadCaseResult> results_;
  int threads_ = AllCores();
};

}  // namespace quillane
