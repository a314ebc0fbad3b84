#include <unistd.h>

#include "model/platform.h"

namespace quillane {

std::filesystem::path PathFromText(std::string_view text) { return text; }

std::FILE* OpenFile(const std::filesystem::path& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

std::FILE* CreateNewFile(const std::filesystem::path& path) {
  return std::fopen(path.c_str(), "wbx");
}

bool SyncToDisk(std::FILE* file) { return std::fflush(file) == 0 && ::fsync(fileno(file)) == 0; }

std::error_code MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  return error;
}

}  // namespace quillane
