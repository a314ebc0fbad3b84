// Names of files and folders as text that can be shown and typed, without losing a byte.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quillane {

/// The name's bytes as text. A byte that is no part of UTF-8 becomes the lone surrogate
/// U+DC00 + byte, so every name has its own text.
QString FileNameText(std::string_view bytes);

/// The way back: the bytes that FileNameText made the text from, else the text's UTF-8.
std::string FileNameBytes(const QString& text);

}  // namespace quillane
