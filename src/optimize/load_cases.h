// Several load cases on one layout: each is analysed, and the largest stress of every cell counts.
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

/// What one case gave.
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
  /// Adds the supports and loads of `other`, of whose grid and material LoadCaseFault finds no
  /// fault.
  void Add(Model other) { others_.push_back(std::move(other)); }

  /// Analyses at most so many cases at a time; else as many as there are cores.
  void SetThreads(int threads) { threads_ = threads; }

  /// How many cases there are, the model's own among them.
  std::size_t Count() const { return others_.size() + 1; }

  /// The cases added: supports and loads count.
  std::span<const Model> Others() const { return others_; }

  /// Analyses the model, as AnalyseStructure does, and every further case on the model's layout.
  /// Then CellStress holds the largest stress of all cases, and MaxStress, MinStress and AvgStress
  /// are of these; displacements and equation system are of the model's own case. The report has
  /// the worst of each number, and has converged where all cases have. The results do not depend on
  /// the number of threads. Throws RunTimeError; of several cases it is that of the first that
  /// fails, and its message begins with "load case" and the number, from 1 for the model's own.
  SolveReport Analyse(Model& model);

  /// Analyse as what takes the place of AnalyseStructure. This must outlive it.
  Analysis AsAnalysis() {
    return [this](Model& model) { return Analyse(model); };
  }

  /// Of the last Analyse that succeeded: the model's own case, then the others in their order.
  /// Empty where the model's is the only case.
  const std::vector<LoadCaseResult>& Results() const { return results_; }

  /// The compliances of all cases together (N mm), of the last Analyse; model: the one analysed.
  double Compliance(const Model& model) const;

  /// The nodes of each case, the model's own first, whose loads are lost on the model's layout.
  std::vector<std::vector<int>> LostLoads(const Model& model) const;

  /// Whether no load is lost in any case.
  bool Connected(const Model& model) const;

 private:
  LoadCaseResult AnalyseOne(Model& model, std::size_t number);

  std::vector<Model> others_;
  std::vector<LoadCaseResult> results_;
  int threads_ = AllCores();
};

}  // namespace quillane
