#include "batch/model_input.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <sstream>
#include <system_error>

#include "batch/console.h"
#include "batch/failure.h"

namespace quillane {
namespace {

constexpr std::size_t kLongestInput = std::size_t{64} << 20;  ///< bytes; a full grid needs four MiB

std::string SystemReason() { return std::generic_category().message(errno); }

std::string AllOf(std::FILE* input, std::uintmax_t expected) {
  std::string text;
  text.reserve(std::min<std::uintmax_t>(expected, kLongestInput));
  char piece[65536];
  std::ptrdiff_t count = 1;
  while (text.size() <= kLongestInput && (count = ReadSome(input, piece, sizeof piece)) > 0) {
    text.append(piece, static_cast<std::size_t>(count));
  }
  if (count < 0 && errno == EINTR) throw Interrupted("interrupted while the model was read");
  if (count < 0) throw ModelFileError(0, "the file cannot be read: " + SystemReason());
  if (text.size() > kLongestInput) throw ModelFileError(0, "the file is longer than any model");
  return text;
}

}  // namespace

std::string InputText(const std::filesystem::path& path) {
  if (path == "-") return AllOf(stdin, 0);
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) throw ModelFileError(0, "no such file");
  if (std::filesystem::is_directory(status)) throw ModelFileError(0, "this is a folder");
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenToRead(path), std::fclose);
  if (!file) throw ModelFileError(0, "the file cannot be opened: " + SystemReason());
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return AllOf(file.get(), error ? 0 : size);
}

ModelInput ModelFromText(const std::string& text) {
  ModelInput input;
  std::stringbuf buffer(text, std::ios::in);
  input.notes = ReadModel(input.model, buffer);
  input.model.DomainDefined = kTrue;
  return input;
}

}  // namespace quillane
