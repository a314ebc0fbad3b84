// Messages on standard error.
#pragma once

#include <string>
#include <string_view>

namespace quillane {

/// Returns the text with control characters and bytes that are not UTF-8 as \xNN, safe for a
/// terminal. Names of files may hold any byte.
std::string Printable(std::string_view text);

/// Prints a line to standard error, headed by the program's name, in printable characters.
void Complain(std::string_view message);

}  // namespace quillane
