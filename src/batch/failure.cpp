#include "batch/failure.h"

#include <exception>
#include <filesystem>
#include <new>

#include "batch/advice.h"
#include "batch/console.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

namespace quillane {

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
