#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <string>

#include "model/platform.h"

namespace quillane {

std::FILE* OpenFile(const std::filesystem::path& path, const char* mode) {
  return _wfopen(path.c_str(),
                 std::wstring(mode, mode + std::char_traits<char>::length(mode)).c_str());
}

std::FILE* CreateNewFile(const std::filesystem::path& path) {
  constexpr int kNewBinary = _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY;
  const int descriptor = _wopen(path.c_str(), kNewBinary, _S_IREAD | _S_IWRITE);
  return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
}

bool SyncToDisk(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  // Virus scanners and indexers hold new files for a moment: half a second is granted them.
  constexpr int kAttempts = 10;
  constexpr DWORD kPause = 50;  // ms
  DWORD error = 0;
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return {};
    }
    error = GetLastError();
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) break;
    Sleep(kPause);
  }
  return {static_cast<int>(error), std::system_category()};
}

}  // namespace quillane
