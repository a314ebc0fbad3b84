// Names of files and folders as text to show and edit, without loss of bytes.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quillane {

/// Returns the name's bytes as text. A byte that is not part of UTF-8 becomes the lone surrogate
/// U+DC00 + byte, so every name has its own text.
QString FileNameText(std::string_view bytes);

/// Returns the bytes that FileNameText made the text from, or else the text's UTF-8.
std::string FileNameBytes(const QString& text);

}  // namespace quillane
