// No exception of the file system leaves this file.
#include "ui/folder.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <QUtf8StringView>
#include <algorithm>
#include <iterator>

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr char16_t kByteBase = 0xDC00;

/// Returns the length of the character at the start of the bytes; 0 if there is none.
std::size_t CharacterLength(std::string_view bytes) {
  for (std::size_t length = 1; length <= std::min<std::size_t>(4, bytes.size()); ++length) {
    if (QUtf8StringView(bytes.substr(0, length)).isValidUtf8()) return length;
  }
  return 0;
}

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
  std::error_code unreadable;  // such an entry counts as neither
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

QString FileNameText(std::string_view bytes) {
  QString text;
  while (!bytes.empty()) {
    const std::size_t length = CharacterLength(bytes);
    if (length > 0) {
      text += QString::fromUtf8(bytes.data(), static_cast<qsizetype>(length));
    } else {
      text += QChar(static_cast<char16_t>(kByteBase + static_cast<unsigned char>(bytes.front())));
    }
    bytes.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return text;
}

std::string FileNameBytes(const QString& text) {
  std::string bytes;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i].unicode();
    if (text[i].isHighSurrogate() && i + 1 < text.size()) {
      bytes += text.mid(i++, 2).toStdString();
    } else if (unit >= kByteBase + 0x80 && unit <= kByteBase + 0xFF) {
      bytes += static_cast<char>(unit - kByteBase);
    } else {
      bytes += text.mid(i, 1).toStdString();
    }
  }
  return bytes;
}

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
