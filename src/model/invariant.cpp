#include "model/invariant.h"

#include <cstdio>
#include <cstdlib>

namespace quillane {

void InvariantBroken(const char* file, int line, const char* condition) {
  std::fprintf(stderr, "%s:%d: broken invariant: %s\n", file, line, condition);
  std::abort();
}

}  // namespace quillane
