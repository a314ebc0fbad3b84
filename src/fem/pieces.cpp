#include "fem/pieces.h"

#include <algorithm>
#include <limits>
#include <utility>

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

/// Walks over one piece at a time.
class PieceWalk {
 public:
  PieceWalk(const Model& model, const Model& loadCase) : model_(model), loadCase_(loadCase) {
    found_.pieceOfCell.ReDim({1, model.CellRowCount}, {1, model.CellColumnCount});
    ForEachPresentCell(model, [this](int i, int j, int) {
      if (found_.pieceOfCell(i, j) == 0) WalkFrom(i, j);
    });
  }

  Pieces Found() && { return std::move(found_); }

 private:
  void WalkFrom(int row, int column) {
    cells_.clear();
    found_.pieces.emplace_back();
    Visit(row, column);
    for (std::size_t next = 0; next < cells_.size(); ++next) {
      const auto [i, j] = cells_[next];
      Visit(i - 1, j);
      Visit(i, j - 1);
      Visit(i, j + 1);
      Visit(i + 1, j);
    }
    Describe(found_.pieces.back());
  }

  void Visit(int row, int column) {
    if (!HasMaterial(model_, row, column) || found_.pieceOfCell(row, column) != 0) return;
    found_.pieceOfCell(row, column) = static_cast<Integer>(found_.pieces.size());
    cells_.emplace_back(row, column);
  }

  /// A piece held in x and in y can still turn about the point where the lines of all its supports
  /// meet: all those in x at one height and all those in y at one place.
  void Describe(Piece& piece) const {
    piece.cells = static_cast<int>(cells_.size());
    Extent heightsHeldInX, placesHeldInY;
    for (const auto& [row, column] : cells_) {
      for (int k = 1; k <= 4; ++k) {
        const int node = model_.ElementNodes(ElementOfCell(model_, row, column), k);
        if (loadCase_.NodeFreedom(node, 1) != 0) heightsHeldInX.Include(model_.NodeXY(node, 2));
        if (loadCase_.NodeFreedom(node, 2) != 0) placesHeldInY.Include(model_.NodeXY(node, 1));
        piece.touchesLoad = piece.touchesLoad || IsLoaded(loadCase_, node);
      }
    }
    piece.touchesSupport = !heightsHeldInX.Empty() || !placesHeldInY.Empty();
    piece.held = !heightsHeldInX.Empty() && !placesHeldInY.Empty() &&
                 (heightsHeldInX.Wide() || placesHeldInY.Wide());
  }

  const Model& model_;
  const Model& loadCase_;
  Pieces found_;
  std::vector<std::pair<int, int>> cells_;  ///< row and column, of the present piece
};

}  // namespace

Pieces FindPieces(const Model& model) { return FindPieces(model, model); }

Pieces FindPieces(const Model& model, const Model& loadCase) {
  return PieceWalk(model, loadCase).Found();
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
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const Integer piece = found.pieceOfCell(i, j);
      Integer& state = model.CellState(i, j);
      if (piece > 0 && state == kCellDesign &&
          isLoose(found.pieces[static_cast<std::size_t>(piece) - 1])) {
        state = kCellEmpty;
      }
    }
  }
  return static_cast<int>(std::ranges::count_if(found.pieces, isLoose));
}

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
