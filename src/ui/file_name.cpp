#include "ui/file_name.h"

#include <QByteArray>
#include <algorithm>

namespace quillane {
namespace {

constexpr char16_t kByteBase = 0xDC00;

bool IsUtf8(std::string_view bytes) {
  return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())).isValidUtf8();
}

/// Returns the length of the character at the start of the bytes; 0 if there is none.
std::size_t CharacterLength(std::string_view bytes) {
  for (std::size_t length = 1; length <= std::min<std::size_t>(4, bytes.size()); ++length) {
    if (IsUtf8(bytes.substr(0, length))) return length;
  }
  return 0;
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

}  // namespace quillane
