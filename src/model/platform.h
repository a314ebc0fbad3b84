// What paths and saving need of the operating system beyond the standard library; one source per
// platform.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace quillane {

/// Returns the path whose text, as path.string() returns it, is given. The library's own conversion
/// expects another encoding on Windows.
std::filesystem::path PathFromText(std::string_view text);

/// Opens as std::fopen does, whatever characters the path is made of.
std::FILE* OpenFile(const std::filesystem::path& path, const char* mode);

/// Creates a file and opens it for writing bytes; fails with EEXIST where the name is taken.
std::FILE* CreateNewFile(const std::filesystem::path& path);

/// Returns once what was written to the file is on the disk itself; false where it may not be.
bool SyncToDisk(std::FILE* file);

/// Gives a closed file another name of its folder, in one piece and in place of what bears that
/// name.
std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace quillane
