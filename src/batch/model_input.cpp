#include "batch/model_input.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <sstream>

namespace quillane {
namespace {

constexpr std::size_t kLongestInput = std::size_t{64} << 20;  ///< bytes; a full grid needs four MiB

std::string AllOf(std::streambuf& input, std::uintmax_t expected) {
  std::string text;
  text.reserve(std::min<std::uintmax_t>(expected, kLongestInput));
  char piece[65536];
  for (std::streamsize count = 1; count > 0 && text.size() <= kLongestInput;) {
    try {
      count = input.sgetn(piece, sizeof piece);
    } catch (const std::ios_base::failure& failure) {
      throw ModelFileError(0, "the file cannot be read: " + failure.code().message());
    }
    text.append(piece, static_cast<std::size_t>(count));
  }
  if (text.size() > kLongestInput) throw ModelFileError(0, "the file is longer than any model");
  return text;
}

}  // namespace

std::string InputText(const std::filesystem::path& path) {
  if (path == "-") return AllOf(*std::cin.rdbuf(), 0);
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) throw ModelFileError(0, "no such file");
  if (std::filesystem::is_directory(status)) throw ModelFileError(0, "this is a folder");
  std::filebuf file;
  if (file.open(path, std::ios::in | std::ios::binary) == nullptr) {
    throw ModelFileError(0, "the file cannot be opened for reading");
  }
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return AllOf(file, error ? 0 : size);
}

ModelInput ModelFromText(const std::string& text) {
  ModelInput input;
  std::stringbuf buffer(text, std::ios::in);
  input.notes = ReadModel(input.model, buffer);
  input.model.DomainDefined = kTrue;
  return input;
}

}  // namespace quillane
