#include "model/run_time_error.h"

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

RunTimeError::RunTimeError(ErrorKind kind, const std::string& what, ErrorCause cause)
    : kind_(kind), cause_(cause), message_(std::string(KindName(kind)) + ": " + what + ".") {}

RunTimeError::RunTimeError(const RunTimeError& error, ErrorCause cause) : RunTimeError(error) {
  cause_ = cause;
}

RunTimeError::RunTimeError(const std::string& part, const RunTimeError& error)
    : RunTimeError(error) {
  message_ = part + ": " + message_;
}

}  // namespace quillane
