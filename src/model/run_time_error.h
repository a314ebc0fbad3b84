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

/// What in the model or its surroundings makes a statement fail, where that is known.
enum class ErrorCause {
  kNone,            ///< not known beyond what the message tells
  kNoMaterial,      ///< no cell holds material
  kAllHeld,         ///< every node of the material is held in x and y
  kNoLoad,          ///< no node has a load
  kIdleLoads,       ///< every load acts on a held component or on a node without material
  kNoStiffness,     ///< Young's modulus or the thickness is 0
  kPoissonRatio,    ///< Poisson's ratio is 1 or -1
  kNotHeld,         ///< a load is not connected to adequate supports
  kUnsolvable,      ///< none of these, but the equations have no finite solution
  kLambdaZero,      ///< Lambda is 0
  kGridTooLarge,    ///< more nodes, elements or equations than an Integer counts
  kFileUnwritable,  ///< the folder, its rights or the disk
  kNotAFile,        ///< the path names something other than a file
};

/// Thrown at the statement that fails, reported once at the edge: the window and the command line
/// each word their advice from the cause.
class RunTimeError : public std::exception {
 public:
  /// what: what failed, a sentence without the final stop.
  RunTimeError(ErrorKind kind, const std::string& what, ErrorCause cause = ErrorCause::kNone);

  /// Makes a copy of an error whose cause has become known.
  RunTimeError(const RunTimeError& error, ErrorCause cause);

  /// Makes a copy of an error whose message is prefixed with the part of the work that failed.
  RunTimeError(const std::string& part, const RunTimeError& error);

  ErrorKind Kind() const { return kind_; }
  ErrorCause Cause() const { return cause_; }

  /// "Overflow: the grid has more than 32767 nodes."
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  ErrorKind kind_;
  ErrorCause cause_;
  std::string message_;
};

}  // namespace quillane
