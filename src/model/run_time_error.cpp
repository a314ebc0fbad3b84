#include "model/run_time_error.h"

#include <utility>

namespace quillane {
namespace {

const char* KindName(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::kOverflow:
      return "Overflow";
    case ErrorKind::kSubscript:
      return "Subscript out of range";
    case ErrorKind::kFloatingPoint:
      return "Floating-point error";
    case ErrorKind::kOutOfMemory:
      return "Out of memory";
    case ErrorKind::kFile:
      return "File error";
  }
  return "Error";
}

}  // namespace

RunTimeError::RunTimeError(ErrorKind kind, const std::string& what, std::string advice)
    : kind_(kind),
      advice_(std::move(advice)),
      message_(std::string(KindName(kind)) + ": " + what + ".") {}

}  // namespace quillane
