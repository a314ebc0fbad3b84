#include "model/safe_file.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "model/platform.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

using File = std::unique_ptr<std::FILE, decltype([](std::FILE* file) { std::fclose(file); })>;

/// Creates a file beside target. Its name is short, whatever the length of target's, and unused, so
/// that two programs never write to the same file.
File CreateNeighbour(const fs::path& target, fs::path& fresh) {
  for (int number = 1; number <= 10000; ++number) {
    fresh = target.parent_path() / ("quillane" + std::to_string(number) + ".part");
    File file(CreateNewFile(fresh));
    if (file) return file;
    if (errno != EEXIST) break;
  }
  throw FileWriteError("the folder does not let a file be created in it: " + SystemReason());
}

void WriteWhole(File file, std::string_view content) {
  const std::size_t written = std::fwrite(content.data(), 1, content.size(), file.get());
  const bool synced = written == content.size() && SyncToDisk(file.get());
  if (!synced) throw FileWriteError("the file could not be written: " + SystemReason());
  if (std::fclose(file.release()) != 0) {
    throw FileWriteError("the file could not be written: " + SystemReason());
  }
}

/// Throws unless target may be created or replaced.
void CheckTarget(const fs::path& target, fs::file_status old) {
  std::error_code error;
  if (target.filename().empty() || fs::is_directory(old)) {
    throw FileWriteError("the path names a folder, not a file");
  }
  if (fs::exists(old) && !fs::is_regular_file(old)) {
    throw FileWriteError("the path does not name an ordinary file");
  }
  if (!target.parent_path().empty() && !fs::is_directory(target.parent_path(), error)) {
    throw FileWriteError("the folder does not exist");
  }
  if (fs::exists(old) && !File(OpenFile(target, "r+b"))) {
    throw FileWriteError("the file may not be written to: " + SystemReason());
  }
}

}  // namespace

std::string SystemReason() { return std::generic_category().message(errno); }

fs::path LinkTarget(fs::path path) {
  std::error_code error;
  for (int links = 0; links < 40 && fs::is_symlink(fs::symlink_status(path, error)); ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) throw FileWriteError("the link cannot be followed: " + error.message());
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return path;
}

void ReplaceFile(const fs::path& path, std::string_view content) {
  std::error_code error;
  const fs::path target = LinkTarget(path);
  const fs::file_status old = fs::status(target, error);
  CheckTarget(target, old);
  fs::path fresh;
  File file = CreateNeighbour(target, fresh);
  try {
    WriteWhole(std::move(file), content);
    if (fs::exists(old)) fs::permissions(fresh, old.permissions(), error);
    error = MoveOver(fresh, target);
    if (error) throw FileWriteError("the file could not be replaced: " + error.message());
  } catch (const FileWriteError&) {
    fs::remove(fresh, error);
    throw;
  }
}

void TryReplaceFile(const fs::path& path) {
  std::error_code error;
  const fs::path target = LinkTarget(path);
  CheckTarget(target, fs::status(target, error));
  fs::path fresh;
  CreateNeighbour(target, fresh).reset();
  fs::remove(fresh, error);
}

}  // namespace quillane
