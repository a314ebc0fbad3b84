// From a full domain to the stiffest plate of a wished volume: several ways, of which the best
// wins.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "model/model.h"
#include "optimize/search_attempt.h"

namespace quillane {

/// Attempts of one search at most. Each tries at most kMostVotes votes, of VoteSteps steps each.
inline constexpr int kMostAttempts = 6;

struct SearchOptions {
  double share = 0;                ///< of the full volume, above 0 and at most kLargestWish
  double fullVolume = 0;           ///< mm^3
  std::optional<Single> lambda;    ///< for all attempts, above 0 and up to 1
  std::optional<Integer> epsilon;  ///< likewise, 1 to 10
  int jobs = 1;                    ///< threads; they do not change the result
};

/// A plate at this share or above meets a wish of it as it is.
inline constexpr double kLargestWish = 1 - kVolumeTolerance;

/// Told by the threads of the attempts, one call at a time.
struct SearchWatch {
  /// Before every step; false stops all attempts.
  std::function<bool()> goOn = [] { return true; };
  /// The first attempt of a round keeps a layout; index: of the attempt, from 0.
  std::function<void(const Attempt& soFar, std::size_t index)> kept;
};

struct SearchResult {
  std::vector<Attempt> attempts;  ///< in a fixed order; only the best one still has its model
  std::size_t best = 0;           ///< index

  const Attempt& Best() const { return attempts[best]; }
};

/// Makes the design cells at nodes that are loaded in some case non-design cells, so that a search
/// cannot take them. Returns how many.
int KeepLoadedCells(Model& model, const LoadCases& cases = {});

/// The volume (mm^3) of so many cells.
double VolumeOfCells(const Model& model, std::ptrdiff_t cells);

/// The volume (mm^3) of the plate with material in every cell that is not cut out.
double FullVolume(const Model& model);

/// Tries ways from a model, analysed with its load cases, to the wished share of its full volume,
/// two at a time. Ends after a round once a shape was reached that no stage made worse by more than
/// 10 % of compliance times volume (25 % after the second round), once one was reached and the
/// attempts have taken a million steps times cells, or when all ways have been tried. The best is
/// the reached one with the smallest compliance times volume, else the one with the smallest
/// volume. The result depends on neither jobs nor the machine. Throws RunTimeError as TryWay.
SearchResult SearchVolume(const Model& analysed, const SearchOptions& options,
                          const SearchWatch& watch, const LoadCases& cases = {});

}  // namespace quillane
