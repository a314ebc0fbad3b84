// What quillane-batch has from the system that calls it: arguments, standard streams, signals, the
// terminal. One source a platform.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>

namespace quillane {

/// Makes the arguments UTF-8 where they are not; they last until the program ends.
void TakeArguments(int& argc, char**& argv);

/// Has the standard streams carry bytes as they are. A closed one must not become the next file
/// that is opened.
void PrepareStreams();

/// Lets the toolkit, which pictures have their text from, start without a screen.
void PrepareToolkit();

/// Has the first request to end the program noted instead; a second one ends it at once. What the
/// caller ignores stays ignored. A pipe without a reader and a file at its size limit become errors
/// of the write.
void CatchSignals();

/// Returns the number of the noted signal; 0 before there is one. Any thread may call it.
int NotedSignal();

/// Path that leads to what a standard stream leads to; empty where the system has none.
std::filesystem::path StreamPath(std::FILE* stream);

/// Whether the path is one of the system's names for a standard stream, or a link to one.
bool NamesStream(const std::filesystem::path& path, std::FILE* stream);

/// Opens a file, pipe or device for ReadSome. Returns null and sets errno where it cannot.
std::FILE* OpenToRead(const std::filesystem::path& path);

/// Opens a pipe or device for writing; waits for the reader of a named pipe. Returns null and sets
/// errno, to EINTR where a noted signal ended the wait.
std::FILE* OpenToWrite(const std::filesystem::path& path);

/// Reads what the stream holds, up to `size` bytes; waits for the first one. Returns the number of
/// bytes, 0 at the end, or -1 with errno set, to EINTR where a noted signal ended the wait. Not to
/// be mixed with buffered reading.
std::ptrdiff_t ReadSome(std::FILE* stream, char* bytes, std::size_t size);

/// How many bytes may be written to a stream after WaitToWrite without waiting again.
inline constexpr std::size_t kBytesAtOnce = 4096;

/// Waits until somebody takes what is written to the stream. Returns false where nobody did for a
/// second after a noted signal.
bool WaitToWrite(std::FILE* stream);

/// Keeps a file or folder from other runs until the program ends; creates a file that is not there.
/// Returns false where another run keeps it.
bool Claim(const std::filesystem::path& path, bool isFolder);

/// Whether the stream is a terminal that can redraw a line.
bool CanRedrawLines(std::FILE* stream);

/// Characters in a line of the terminal; 80 where it does not tell.
int TerminalWidth(std::FILE* stream);

}  // namespace quillane
