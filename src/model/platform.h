// What paths and saving need of the operating system beyond the standard library; one source per
// platform.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace quillane {

/// Returns the path of a text in the encoding of path.string(). The library's own conversion
/// expects another encoding on Windows.
std::filesystem::path PathFromText(std::string_view text);

/// Opens a file as std::fopen does, with any characters in its path.
std::FILE* OpenFile(const std::filesystem::path& path, const char* mode);

/// Creates a file and opens it for binary writing; fails with EEXIST if the name is taken.
std::FILE* CreateNewFile(const std::filesystem::path& path);

/// Flushes the file and waits until it is on the disk. Returns false on failure.
bool SyncToDisk(std::FILE* file);

/// Renames a closed file within its folder atomically, replacing any file of the new name.
std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace quillane
