// What the shape benchmark searches: plates with a wish each, and what became of them.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/model.h"

namespace quillane {

struct ShapeCase {
  std::string name;  ///< with its number or refinement
  std::string kind;
  Model model;      ///< the full domain
  double wish = 0;  ///< share of its volume
};

/// Random plates `first` to `last` of a seed.
std::vector<ShapeCase> RandomCases(std::uint32_t seed, int first, int last);

/// The examples, coarse and about as fine as the equations can be counted, to half their volume.
std::vector<ShapeCase> ExampleCases();

/// A layout found by a method, analysed.
struct FoundShape {
  Model model;
  bool sound = false;     ///< every load is carried to supports, and the solve converged
  double compliance = 0;  ///< work of the loads, N mm
  double share = 0;       ///< of the volume at the start
  double seconds = 0;     ///< processor time
};

struct SearchedShape {
  FoundShape shape;
  bool ended = false;    ///< by itself, within the limit
  bool claimed = false;  ///< the search says that it reached its wish
  int steps = 0;         ///< all that were tried
};

struct ShapePair {
  const ShapeCase* plate = nullptr;
  SearchedShape ours;
  FoundShape density;
  int asymmetricCells = 0;  ///< of ours, where the problem is symmetric

  /// The search ended, says that it met its wish and did.
  bool Reached() const;
  /// Compliance times volume over the density method's; only where both shapes are sound.
  std::optional<double> Ratio() const;
};

/// Searches with both methods; ours is stopped after so much processor time.
ShapePair Compare(const ShapeCase& plate, double secondsLimit);

}  // namespace quillane
