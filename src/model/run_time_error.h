// The error of a statement of the numeric core that could not be carried out.
#pragma once

#include <exception>
#include <string>

namespace quillane {

enum class ErrorKind {
  kOverflow,       ///< a value does not fit its type
  kSubscript,      ///< an array subscript is out of range
  kFloatingPoint,  ///< a division by zero, an infinite result or not a number
  kOutOfMemory,
  kFile,  ///< a file that the program itself must write cannot be written
};

/// Thrown at the statement that fails, reported once at the edge (window or command line).
class RunTimeError : public std::exception {
 public:
  /// what: what failed, a sentence without the final stop. advice: what a user can do about it,
  /// a whole sentence, or empty.
  RunTimeError(ErrorKind kind, const std::string& what, std::string advice = {});

  ErrorKind Kind() const { return kind_; }
  const std::string& Advice() const { return advice_; }

  /// "Overflow: the grid has more than 32767 nodes."
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  ErrorKind kind_;
  std::string advice_;
  std::string message_;
};

}  // namespace quillane
