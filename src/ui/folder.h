// What the file dialogs show of the file system: folders, model files and drives.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace quillane {

/// The names in a folder, sorted as people read them, those that begin with a dot left out. Empty,
/// with `error` telling why, where the folder cannot be read.
struct FolderContents {
  std::vector<std::string> folders;
  std::vector<std::string> modelFiles;  ///< files named "*.model", in any case
  std::error_code error;
};
FolderContents ReadFolder(const std::filesystem::path& folder);

/// "/", the home folder and the folders where volumes are mounted, in this order.
std::vector<std::filesystem::path> Drives();

/// The index of the drive that holds the folder: the one with the longest path above it.
int DriveOf(const std::vector<std::filesystem::path>& drives, const std::filesystem::path& folder);

}  // namespace quillane
