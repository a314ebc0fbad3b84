// The errors of the checked arrays, kept out of the templates.
#include "model/arrays.h"

namespace quillane::detail {

void CheckRange(const char* name, IndexRange range) {
  if (range.upper > kIntegerMax) {
    throw RunTimeError(ErrorKind::kOverflow, std::string("the index range ") + range.Text() +
                                                 " of " + name + " passes " +
                                                 std::to_string(kIntegerMax));
  }
  if (range.upper < range.lower) {
    throw RunTimeError(ErrorKind::kSubscript,
                       std::string(name) + " cannot be sized " + range.Text());
  }
}

void ThrowSubscript(const char* name, int i, IndexRange range) {
  throw RunTimeError(ErrorKind::kSubscript, std::string(name) + "(" + std::to_string(i) +
                                                ") lies outside its range (" + range.Text() + ")");
}

void ThrowSubscript(const char* name, int i, int j, IndexRange first, IndexRange second) {
  throw RunTimeError(ErrorKind::kSubscript, std::string(name) + "(" + std::to_string(i) + ", " +
                                                std::to_string(j) + ") lies outside its range (" +
                                                first.Text() + ", " + second.Text() + ")");
}

}  // namespace quillane::detail
