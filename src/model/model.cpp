#include "model/model.h"

#include <algorithm>

namespace quillane {

void ReDimGridArrays(Model& model) {
  const int rows = model.CellRowCount;
  const int columns = model.CellColumnCount;
  const IndexRange nodes{0, model.NodeCount};
  const IndexRange elements{0, model.ElementCount};
  const IndexRange xy{1, 2};
  model.CellState.ReDim({1, rows}, {1, columns});
  model.Potential.ReDim({1, rows}, {1, columns});
  model.NodeXY.ReDim(nodes, xy);
  model.NodeFreedom.ReDim(nodes, xy);
  model.DofNumber.ReDim(nodes, xy);
  model.NodeLoad.ReDim(nodes, xy);
  model.NodeDisp.ReDim(nodes, xy);
  model.NodeActive.ReDim(nodes.lower, nodes.upper);
  model.ElementNodes.ReDim(elements, {1, 4});
  model.ElementDofs.ReDim(elements, {1, 8});
  model.CellStress.ReDim({0, rows + 1}, {0, columns + 1});
}

void ClearResults(Model& model) {
  for (Array2<Double>* results : {&model.NodeDisp, &model.CellStress, &model.Potential}) {
    std::ranges::fill(results->Raw(), 0.0);
  }
  model.MaxStress = model.MinStress = model.AvgStress = 0;
  model.Volume = 0;
  model.StepCount = 0;
}

}  // namespace quillane
