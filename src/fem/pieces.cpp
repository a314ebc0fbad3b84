#include "fem/pieces.h"

#include <algorithm>
#include <limits>

#include "model/regular_grid.h"

namespace quillane {
namespace {

/// The extent of some coordinates; `low` above `high` while there is none.
struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void Include(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  bool Empty() const { return low > high; }
  bool Wide() const { return low < high; }
};

/// Describes a piece. Held in x and in y, it can still rotate about the point where the lines of
/// all its supports meet: those in x all at one height and those in y all at one place.
Piece Describe(const Model& model, const Model& loadCase, const std::vector<CellIndex>& cells) {
  Piece piece{.cells = static_cast<int>(cells.size())};
  Extent heightsHeldInX, placesHeldInY;
  for (const auto& [row, column] : cells) {
    for (const int node : NodesOfElement(model, ElementOfCell(model, row, column))) {
      if (loadCase.NodeFreedom(node, 1) != 0) heightsHeldInX.Include(model.NodeXY(node, 2));
      if (loadCase.NodeFreedom(node, 2) != 0) placesHeldInY.Include(model.NodeXY(node, 1));
      piece.touchesLoad = piece.touchesLoad || IsLoaded(loadCase, node);
    }
  }
  piece.touchesSupport = !heightsHeldInX.Empty() || !placesHeldInY.Empty();
  piece.held = !heightsHeldInX.Empty() && !placesHeldInY.Empty() &&
               (heightsHeldInX.Wide() || placesHeldInY.Wide());
  return piece;
}

}  // namespace

Pieces FindPieces(const Model& model) { return FindPieces(model, model); }

Pieces FindPieces(const Model& model, const Model& loadCase) {
  Pieces found;
  found.pieceOfCell.ReDim({1, model.CellRowCount}, {1, model.CellColumnCount});
  const auto isPresent = [&model](int i, int j) { return model.CellState(i, j) > 0; };
  for (const std::vector<CellIndex>& cells : ConnectedCells(model, isPresent)) {
    found.pieces.push_back(Describe(model, loadCase, cells));
    const auto number = static_cast<Integer>(found.pieces.size());
    for (const auto& [row, column] : cells) found.pieceOfCell(row, column) = number;
  }
  return found;
}

int DropLoosePieces(Model& model, std::span<const Model> loadCases) {
  Pieces found = FindPieces(model);
  for (const Model& loadCase : loadCases) {
    const Pieces others = FindPieces(model, loadCase);
    for (std::size_t k = 0; k < found.pieces.size(); ++k) {
      Piece& piece = found.pieces[k];
      piece.touchesLoad = piece.touchesLoad || others.pieces[k].touchesLoad;
      piece.touchesSupport = piece.touchesSupport || others.pieces[k].touchesSupport;
    }
  }
  const auto isLoose = [](const Piece& piece) {
    return !piece.touchesLoad && !piece.touchesSupport;
  };
  ForEachPresentCell(model, [&](int i, int j, int) {
    const auto piece = static_cast<std::size_t>(found.pieceOfCell(i, j)) - 1;
    Integer& state = model.CellState(i, j);
    if (state == kCellDesign && isLoose(found.pieces[piece])) state = kCellEmpty;
  });
  return static_cast<int>(std::ranges::count_if(found.pieces, isLoose));
}

std::vector<int> LostLoads(const Model& model) { return LostLoads(model, model); }

std::vector<int> LostLoads(const Model& model, const Model& loadCase) {
  const Pieces found = FindPieces(model, loadCase);
  std::vector<bool> isCarried(static_cast<std::size_t>(model.NodeCount) + 1);
  ForEachPresentCell(model, [&](int row, int column, int element) {
    const auto piece = static_cast<std::size_t>(found.pieceOfCell(row, column)) - 1;
    if (!found.pieces[piece].held) return;
    for (const int node : NodesOfElement(model, element)) {
      isCarried[static_cast<std::size_t>(node)] = true;
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
