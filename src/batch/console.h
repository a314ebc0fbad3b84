// The system that calls quillane-batch: arguments, standard streams, signals, the terminal. One
// source per platform.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>

namespace quillane {

/// Converts the arguments to UTF-8 if necessary; they last until the program ends.
void TakeArguments(int& argc, char**& argv);

/// Makes the standard streams binary, and keeps a closed one from becoming the next file that is
/// opened.
void PrepareStreams();

/// Lets the toolkit, which draws the text of pictures, start without a screen.
void PrepareToolkit();

/// Notes the first signal that asks the program to end; a second one ends it at once. Ignored
/// signals stay ignored. Writing to a pipe without a reader or beyond the file size limit becomes
/// an error.
void CatchSignals();

/// Returns the number of the noted signal; 0 before there is one. Any thread may call it.
int NotedSignal();

/// Returns a path of the file behind a standard stream; empty if the system has none.
std::filesystem::path StreamPath(std::FILE* stream);

/// Returns whether the path is one of the system's names for a standard stream, or a link to one.
bool NamesStream(const std::filesystem::path& path, std::FILE* stream);

/// Opens a file, pipe or device for ReadSome. Returns null and sets errno on failure.
std::FILE* OpenToRead(const std::filesystem::path& path);

/// Opens a pipe or device for writing; waits for the reader of a named pipe. Returns null and sets
/// errno on failure; EINTR if a noted signal ended the wait.
std::FILE* OpenToWrite(const std::filesystem::path& path);

/// Reads at most `size` bytes; waits for the first one. Returns their number, 0 at the end, or -1
/// with errno set, to EINTR if a noted signal ended the wait. Must not be mixed with buffered
/// reading.
std::ptrdiff_t ReadSome(std::FILE* stream, char* bytes, std::size_t size);

/// The number of bytes that may be written to a stream after WaitToWrite without waiting again.
inline constexpr std::size_t kBytesAtOnce = 4096;

/// Waits until the stream can be written to. Returns false if it could not for a second after a
/// noted signal.
bool WaitToWrite(std::FILE* stream);

/// Locks a file or folder against other runs until the program ends; creates a missing file.
/// Returns false if another run has locked it.
bool Claim(const std::filesystem::path& path, bool isFolder);

/// Returns whether the stream is a terminal that can redraw a line.
bool CanRedrawLines(std::FILE* stream);

/// Returns the width of the terminal in characters; 80 if unknown.
int TerminalWidth(std::FILE* stream);

}  // namespace quillane
