#include "batch/failure.h"

#include <exception>
#include <filesystem>
#include <new>

#include "batch/console.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

/// Returns what the user of the command line can do about an error; empty if unknown.
std::string Advice(const RunTimeError& error) {
  switch (error.Cause()) {
    case ErrorCause::kNone:
      break;
    case ErrorCause::kNoMaterial:
      return " No cell holds material; where the steps removed it, lower --stress-target or use "
             "--volume-fraction.";
    case ErrorCause::kAllHeld:
      return " Every node of the material is held in x and y.";
    case ErrorCause::kNoLoad:
      return " The model has no load.";
    case ErrorCause::kIdleLoads:
      return " No load moves the plate: each acts on a held node or where no cell holds material; "
             "where the steps removed it, lower --stress-target or use --volume-fraction.";
    case ErrorCause::kNoStiffness:
      return " Young's modulus or the thickness, in the model's record of the material, is 0.";
    case ErrorCause::kPoissonRatio:
      return " Poisson's ratio, in the model's record of the material, must not be 1 or -1.";
    case ErrorCause::kNotHeld:
      return " A load is not connected to adequate supports: see --check; where the steps cut it "
             "off, lower --stress-target or use --volume-fraction.";
    case ErrorCause::kUnsolvable:
      return " Young's modulus, thickness or loads are too large or too small.";
    case ErrorCause::kLambdaZero:
      return " Lambda must not be 0: give --lambda.";
    case ErrorCause::kGridTooLarge:
      return " The grid is too large: make a model of fewer and larger cells.";
    case ErrorCause::kFileUnwritable:
      return " Check that its folder is writable and that the disk has room.";
    case ErrorCause::kNotAFile:
      return " Remove what has this name, or give another.";
  }
  return error.Kind() == ErrorKind::kSubscript
             ? " The parts of the model contradict each other: see --check."
             : "";
}

}  // namespace

Failure CurrentFailure(const std::string& part) {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const Interrupted& error) {
    return {kExitSignal + NotedSignal(), part + ": " + error.what()};
  } catch (const RunTimeError& error) {
    const bool file = error.Kind() == ErrorKind::kFile;
    return {file ? kExitUsageOrFile : kExitRunTimeError,
            part + ": " + error.what() + Advice(error)};
  } catch (const ModelFileError& error) {
    return {kExitUsageOrFile, part + ": " + error.what()};
  } catch (const FileWriteError& error) {
    return {kExitUsageOrFile, part + ": " + error.what()};
  } catch (const std::filesystem::filesystem_error& error) {
    return {kExitUsageOrFile, part + ": " + error.code().message()};
  } catch (const std::bad_alloc&) {
    return {kExitRunTimeError, part + ": out of memory"};
  } catch (const std::exception& error) {
    return {kExitRunTimeError, part + ": " + error.what()};
  }
}

}  // namespace quillane
