// Writing a file so that a failure leaves the old one whole.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string_view>

namespace quillane {

/// A file could not be written; what() tells the reason.
class FileWriteError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Writes content to a new file beside path and then puts it in path's place, keeping the old
/// file's permissions. A link is followed. Throws FileWriteError; then the old file stands.
void ReplaceFile(const std::filesystem::path& path, std::string_view content);

/// Tries whether ReplaceFile could write path, but for the room on the disk: name, folder,
/// permission. Throws FileWriteError where it could not.
void TryReplaceFile(const std::filesystem::path& path);

}  // namespace quillane
