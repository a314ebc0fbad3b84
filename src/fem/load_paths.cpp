#include "fem/load_paths.h"

#include "fem/pieces.h"

namespace quillane {

std::vector<int> LostLoads(const Model& model) { return LostLoads(model, model); }

std::vector<int> LostLoads(const Model& model, const Model& loadCase) {
  const Pieces found = FindPieces(model, loadCase);
  std::vector<bool> isCarried(static_cast<std::size_t>(model.NodeCount) + 1);
  ForEachPresentCell(model, [&](int row, int column, int element) {
    const auto piece = static_cast<std::size_t>(found.pieceOfCell(row, column)) - 1;
    if (!found.pieces[piece].held) return;
    for (int k = 1; k <= 4; ++k) {
      isCarried[static_cast<std::size_t>(model.ElementNodes(element, k))] = true;
    }
  });
  std::vector<int> lost;
  for (int node = 1; node <= model.NodeCount; ++node) {
    const auto loads = [&loadCase, node](int d) {
      return loadCase.NodeLoad(node, d) != 0 && loadCase.NodeFreedom(node, d) == 0;
    };
    if ((loads(1) || loads(2)) && !isCarried[static_cast<std::size_t>(node)]) lost.push_back(node);
  }
  return lost;
}

}  // namespace quillane
