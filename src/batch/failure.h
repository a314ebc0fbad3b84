// Failures that end a batch run early.
#pragma once

#include <new>
#include <string>
#include <vector>

#include "batch/advice.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

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

/// Does one part of a run; what it throws becomes a Failure that names the part.
template <class Part>
void Named(const std::string& name, Part&& part) {
  try {
    part();
  } catch (const RunTimeError& error) {
    const bool file = error.Kind() == ErrorKind::kFile;
    throw Failure{file ? kExitUsageOrFile : kExitRunTimeError,
                  name + ": " + error.what() + Advice(error)};
  } catch (const ModelFileError& error) {
    throw Failure{kExitUsageOrFile, name + ": " + error.what()};
  } catch (const FileWriteError& error) {
    throw Failure{kExitUsageOrFile, name + ": " + error.what()};
  } catch (const std::bad_alloc&) {
    throw Failure{kExitRunTimeError, name + ": out of memory"};
  }
}

/// Likewise, but adds the message of a failure to `faults` and goes on.
template <class Part>
void Tried(std::vector<std::string>& faults, const std::string& name, Part&& part) {
  try {
    Named(name, part);
  } catch (const Failure& failure) {
    faults.push_back(failure.message);
  }
}

}  // namespace quillane
