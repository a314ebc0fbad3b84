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
  kNotAFile,        ///< something else than a file bears the name
};

/// Thrown at the statement that fails, reported once at the edge: the window and the command line
/// each word their advice from the cause.
class RunTimeError : public std::exception {
 public:
  /// what: what failed, a sentence without the final stop.
  RunTimeError(ErrorKind kind, const std::string& what, ErrorCause cause = ErrorCause::kNone);

  /// Likewise with the message of another error, whose cause is known by now.
  RunTimeError(const RunTimeError& error, ErrorCause cause);

  /// The same error, with the part of the work that threw it in front of the message.
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
