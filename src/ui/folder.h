// Folders, model files and drives for the file dialogs, and their names as text.
#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillane {

/// Returns the name's bytes as text. A byte that is not part of UTF-8 becomes the lone surrogate
/// U+DC00 + byte, so every name has its own text.
QString FileNameText(std::string_view bytes);

/// Returns the bytes that FileNameText made the text from, or else the text's UTF-8.
std::string FileNameBytes(const QString& text);

/// The names in a folder in case-insensitive order, without those that begin with a dot. Empty,
/// with the reason in `error`, if the folder cannot be read.
struct FolderContents {
  std::vector<std::string> folders;
  std::vector<std::string> modelFiles;  ///< files named "*.model", in any case
  std::error_code error;
};
FolderContents ReadFolder(const std::filesystem::path& folder);

/// Returns the roots, the home folder and the mount points of volumes, in this order.
std::vector<std::filesystem::path> Drives();

/// Returns the index of the drive that contains the folder: the one with the longest matching path.
int DriveOf(const std::vector<std::filesystem::path>& drives, const std::filesystem::path& folder);

}  // namespace quillane
