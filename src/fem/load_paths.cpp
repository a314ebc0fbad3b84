#include "fem/load_paths.h"

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

/// Walks over one piece at a time and marks the nodes of the held ones.
class PieceWalk {
 public:
  explicit PieceWalk(const Model& model)
      : model_(model), isCarried_(static_cast<std::size_t>(model.NodeCount) + 1) {
    visited_.ReDim({1, model.CellRowCount}, {1, model.CellColumnCount});
    ForEachPresentCell(model, [this](int i, int j, int) { WalkFrom(i, j); });
  }

  bool Carries(int node) const { return isCarried_[static_cast<std::size_t>(node)]; }

 private:
  void WalkFrom(int row, int column) {
    piece_.clear();
    Visit(row, column);
    for (std::size_t next = 0; next < piece_.size(); ++next) {
      const auto [i, j] = piece_[next];
      Visit(i - 1, j);
      Visit(i, j - 1);
      Visit(i, j + 1);
      Visit(i + 1, j);
    }
    if (PieceIsHeld()) {
      ForEachNode([this](int node) { isCarried_[static_cast<std::size_t>(node)] = true; });
    }
  }

  void Visit(int row, int column) {
    if (!HasMaterial(model_, row, column) || visited_(row, column) != 0) return;
    visited_(row, column) = 1;
    piece_.emplace_back(row, column);
  }

  template <class Use>
  void ForEachNode(const Use& use) const {
    for (const auto& [row, column] : piece_) {
      for (int k = 1; k <= 4; ++k) {
        use(model_.ElementNodes(ElementOfCell(model_, row, column), k));
      }
    }
  }

  /// A plate held in x and in y can still turn about the point where the lines of all its supports
  /// meet: all those in x at one height and all those in y at one place.
  bool PieceIsHeld() const {
    Extent heightsHeldInX, placesHeldInY;
    ForEachNode([&](int node) {
      if (model_.NodeFreedom(node, 1) != 0) heightsHeldInX.Include(model_.NodeXY(node, 2));
      if (model_.NodeFreedom(node, 2) != 0) placesHeldInY.Include(model_.NodeXY(node, 1));
    });
    return !heightsHeldInX.Empty() && !placesHeldInY.Empty() &&
           (heightsHeldInX.Wide() || placesHeldInY.Wide());
  }

  const Model& model_;
  Array2<Integer> visited_{"visited"};
  std::vector<std::pair<int, int>> piece_;  ///< row and column of its cells
  std::vector<bool> isCarried_;
};

}  // namespace

std::vector<int> LostLoads(const Model& model) {
  const PieceWalk walk(model);
  std::vector<int> lost;
  for (int node = 1; node <= model.NodeCount; ++node) {
    if (IsLoaded(model, node) && !walk.Carries(node)) lost.push_back(node);
  }
  return lost;
}

}  // namespace quillane
