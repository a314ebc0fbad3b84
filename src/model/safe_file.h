// Writing a file so that a failure leaves the old one whole.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillane {

/// A file could not be written; what() gives the reason.
class FileWriteError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Returns the system's text for errno, the reason of the call that failed last.
std::string SystemReason();

/// Follows symbolic links, even if their target does not exist, and returns the path at their end.
/// Throws FileWriteError if a link cannot be read.
std::filesystem::path LinkTarget(std::filesystem::path path);

/// Writes content to a new file beside path and then replaces path with it; keeps the old file's
/// permissions and follows a link. Throws FileWriteError and then leaves the old file as it is.
void ReplaceFile(const std::filesystem::path& path, std::string_view content);

/// Checks whether ReplaceFile can write path, except free space: name, folder, permission. Throws
/// FileWriteError if it cannot.
void TryReplaceFile(const std::filesystem::path& path);

}  // namespace quillane
