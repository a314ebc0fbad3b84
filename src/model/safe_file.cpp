// Replacing a file by a complete new one.
#include "model/safe_file.h"

#include <fstream>
#include <string>
#include <system_error>

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace quillane {
namespace {

namespace fs = std::filesystem;

/// Puts a finished file on the disk itself, where the platform offers it.
bool SyncToDisk(const fs::path& path) {
#if defined(__unix__) || defined(__APPLE__)
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool synced = ::fsync(file) == 0;
  return (::close(file) == 0) && synced;
#else
  (void)path;
  return true;
#endif
}

/// A name beside target that nothing bears yet.
fs::path FreshNeighbour(const fs::path& target) {
  for (int number = 1;; ++number) {
    fs::path candidate = target;
    candidate += ".part" + std::to_string(number);
    std::error_code error;
    if (!fs::exists(fs::symlink_status(candidate, error))) return candidate;
  }
}

void WriteWhole(const fs::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) throw FileWriteError("the folder does not let a file of this name be created in it");
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file || !SyncToDisk(path)) throw FileWriteError("the file could not be written to its end");
}

}  // namespace

void ReplaceFile(const fs::path& path, std::string_view content) {
  std::error_code error;
  fs::path target = path;
  for (int links = 0; links < 40 && fs::is_symlink(fs::symlink_status(target, error)); ++links) {
    const fs::path next = fs::read_symlink(target, error);
    if (error) throw FileWriteError("the link cannot be followed: " + error.message());
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  if (target.filename().empty()) throw FileWriteError("the path names a folder, not a file");
  const fs::file_status old = fs::status(target, error);
  if (fs::is_directory(old)) throw FileWriteError("the path names a folder, not a file");
  if (fs::exists(old) && !fs::is_regular_file(old)) {
    throw FileWriteError("the path does not name an ordinary file");
  }
  if (!target.parent_path().empty() && !fs::is_directory(target.parent_path(), error)) {
    throw FileWriteError("the folder does not exist");
  }
  const fs::path fresh = FreshNeighbour(target);
  try {
    WriteWhole(fresh, content);
    if (fs::exists(old)) fs::permissions(fresh, old.permissions(), error);
    fs::rename(fresh, target, error);
    if (error) throw FileWriteError("the file could not be replaced: " + error.message());
  } catch (const FileWriteError&) {
    fs::remove(fresh, error);
    throw;
  }
}

}  // namespace quillane
