// What quillane-batch has from the system that calls it: arguments, standard streams, signals, the
// terminal. One source a platform.
#pragma once

#include <csignal>
#include <cstdio>

namespace quillane {

/// Makes the arguments UTF-8 where they are not; they last until the program ends.
void TakeArguments(int& argc, char**& argv);

/// Has the standard streams carry bytes as they are. A closed one must not become the next file
/// that is opened.
void PrepareStreams();

/// Lets the toolkit, which pictures have their text from, start without a screen.
void PrepareToolkit();

/// Has what asks the program to end noted instead. What the caller ignores stays ignored.
void CatchSignals();

/// Number of the signal that was noted last; 0 before one was.
const volatile std::sig_atomic_t& NotedSignal();

/// Whether the stream is a terminal that can redraw a line.
bool CanRedrawLines(std::FILE* stream);

/// Characters in a line of the terminal; 80 where it does not tell.
int TerminalWidth(std::FILE* stream);

}  // namespace quillane
