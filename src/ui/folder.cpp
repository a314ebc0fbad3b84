// No exception of the file system leaves this file.
#include "ui/folder.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <iterator>

namespace quillane {
namespace {

namespace fs = std::filesystem;

std::string LowerCase(const std::string& name) {
  return QByteArray::fromStdString(name).toLower().toStdString();
}

/// Sorts names case-insensitively; names that differ only in case by their bytes.
void Sort(std::vector<std::string>& names) {
  std::ranges::sort(names, {}, [](const auto& name) { return std::pair(LowerCase(name), name); });
}

/// Returns the name of an entry; empty if it has no UTF-8 form, as is possible on Windows.
std::string NameOf(const fs::directory_entry& entry) {
  try {
    return entry.path().filename().string();
  } catch (const std::exception&) {
    return {};
  }
}

void Add(FolderContents& contents, const fs::directory_entry& entry) {
  std::string name = NameOf(entry);
  if (name.empty() || name.starts_with('.')) return;
  std::error_code unreadable;  // such an entry is neither
  if (entry.is_directory(unreadable)) {
    contents.folders.push_back(std::move(name));
  } else if (LowerCase(name).ends_with(".model") && entry.is_regular_file(unreadable)) {
    contents.modelFiles.push_back(std::move(name));
  }
}

/// Returns the path with the platform's separators.
fs::path PathOf(const QString& text) {
  return QFileInfo(text).filesystemFilePath().make_preferred();
}

}  // namespace

FolderContents ReadFolder(const fs::path& folder) {
  FolderContents contents;
  fs::directory_iterator entry(folder, contents.error);
  while (!contents.error && entry != fs::directory_iterator()) {
    Add(contents, *entry);
    entry.increment(contents.error);
  }
  Sort(contents.folders);
  Sort(contents.modelFiles);
  return contents;
}

std::vector<fs::path> Drives() {
  std::vector<fs::path> drives;
  for (const QFileInfo& root : QDir::drives()) drives.push_back(PathOf(root.filePath()));
  const auto add = [&drives](const QString& root) {
    const fs::path path = PathOf(root);
    std::error_code unreadable;
    if (std::ranges::find(drives, path) == drives.end() && fs::is_directory(path, unreadable)) {
      drives.push_back(path);
    }
  };
  add(QDir::homePath());
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    if (volume.isReady() && volume.fileSystemType() != "squashfs") add(volume.rootPath());
  }
  return drives;
}

int DriveOf(const std::vector<fs::path>& drives, const fs::path& folder) {
  const auto depthAbove = [&folder](const fs::path& drive) {
    const auto end = std::mismatch(drive.begin(), drive.end(), folder.begin(), folder.end());
    return end.first == drive.end() ? std::distance(drive.begin(), drive.end()) : 0;
  };
  const auto holder = std::ranges::max_element(drives, {}, depthAbove);
  return static_cast<int>(std::distance(drives.begin(), holder));
}

}  // namespace quillane
