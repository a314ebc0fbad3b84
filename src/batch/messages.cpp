#include "batch/messages.h"

#include <fmt/format.h>

#include <QUtf8StringView>
#include <algorithm>
#include <cstdio>

#include "batch/console.h"

namespace quillane {
namespace {

/// Returns the number of bytes of the first character; 0 if it is not UTF-8.
std::size_t LengthOfFirst(std::string_view text) {
  for (std::size_t length = 1; length <= 4 && length <= text.size(); ++length) {
    if (QUtf8StringView(text.substr(0, length)).isValidUtf8()) return length;
  }
  return 0;
}

bool IsControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  const auto last = static_cast<unsigned char>(character.back());
  return first < 0x20 || first == 0x7f || (first == 0xc2 && last < 0xa0);
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const std::size_t length = LengthOfFirst(text);
    const std::string_view first = text.substr(0, std::max<std::size_t>(length, 1));
    if (length > 0 && !IsControl(first)) {
      printable += first;
    } else {
      for (const char byte : first) {
        printable += fmt::format("\\x{:02x}", static_cast<unsigned char>(byte));
      }
    }
    text.remove_prefix(first.size());
  }
  return printable;
}

void Complain(std::string_view message) {
  const std::string line = "quillane-batch: " + Printable(message) + "\n";
  if (WaitToWrite(stderr)) std::fputs(line.c_str(), stderr);
}

}  // namespace quillane
