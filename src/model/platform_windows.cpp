#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <string>

#include "model/platform.h"

namespace quillane {
namespace {

/// Repeats for half a second what fails because somebody holds the file: virus scanners and
/// indexers do for a moment, and so does another program that saves under the same name.
template <class Action>
auto Patiently(const Action& action) {
  constexpr int kAttempts = 50;
  constexpr DWORD kPause = 10;  // ms
  auto result = action();
  for (int attempt = 1; !result && attempt < kAttempts; ++attempt) {
    const DWORD error = GetLastError();
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) break;
    Sleep(kPause);
    result = action();
  }
  return result;
}

}  // namespace

std::filesystem::path PathFromText(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');  // UTF-16 has no more units than UTF-8
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(length));
  return wide;
}

std::FILE* OpenFile(const std::filesystem::path& path, const char* mode) {
  const std::wstring wideMode(mode, mode + std::char_traits<char>::length(mode));
  return Patiently([&] { return _wfopen(path.c_str(), wideMode.c_str()); });
}

std::FILE* CreateNewFile(const std::filesystem::path& path) {
  return Patiently([&path]() -> std::FILE* {
    constexpr int kNewBinary = _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY;
    const int descriptor = _wopen(path.c_str(), kNewBinary, _S_IREAD | _S_IWRITE);
    return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
  });
}

bool SyncToDisk(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (Patiently([&] { return MoveFileExW(from.c_str(), to.c_str(), kHow); })) return {};
  return {static_cast<int>(GetLastError()), std::system_category()};
}

}  // namespace quillane
