// How a batch run ends early, and what becomes of an error.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace quillane {

inline constexpr int kExitDone = 0;
inline constexpr int kExitRunTimeError = 1;
inline constexpr int kExitFindings = 1;  ///< of --check, or with --strict
inline constexpr int kExitUsageOrFile = 2;
inline constexpr int kExitNotConverged = 3;
inline constexpr int kExitWishNotReached = 4;
inline constexpr int kExitSignal = 128;  ///< plus the signal's number

/// Ends the run with this exit status and message.
struct Failure {
  int exitStatus;
  std::string message;
};

/// A signal ended a wait for another program; what() tells which wait.
class Interrupted : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Returns the exception being handled as a Failure whose message names the part of the run that
/// threw it. A Failure is returned as it is.
Failure CurrentFailure(const std::string& part);

/// Does one part of a run. Throws what `act` throws as a Failure, which ends the run.
template <class Act>
void EndRunOnError(const std::string& part, Act&& act) {
  try {
    act();
  } catch (...) {
    throw CurrentFailure(part);
  }
}

/// Does one part of a run. Adds what `act` throws to `faults`; the run goes on.
template <class Act>
void CollectError(std::vector<Failure>& faults, const std::string& part, Act&& act) {
  try {
    act();
  } catch (...) {
    faults.push_back(CurrentFailure(part));
  }
}

}  // namespace quillane
