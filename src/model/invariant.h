// An always-on check of what this program itself guarantees; it never judges a user's input.
#pragma once

namespace quillane {

/// Prints file, line and condition to standard error and aborts.
[[noreturn]] void InvariantBroken(const char* file, int line, const char* condition);

}  // namespace quillane

#define QUILLANE_INVARIANT(condition) \
  ((condition) ? void() : ::quillane::InvariantBroken(__FILE__, __LINE__, #condition))
