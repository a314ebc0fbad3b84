// Whether a person looks at a stream, and how wide it is there.
#pragma once

#include <cstdio>

namespace quillane {

/// Whether the stream is a terminal that can redraw a line.
bool CanRedrawLines(std::FILE* stream);

/// Characters in a line of the terminal; 80 where it does not tell.
int TerminalWidth(std::FILE* stream);

}  // namespace quillane
