// Values of options, read as a whole and in decimal; the option library would read 010 as 8.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "image/picture.h"
#include "model/types.h"

namespace quillane {

/// Returns a decimal number such as 24.5 or 2.1e-3. All functions here throw CLI::ValidationError,
/// with the option's name, unless the whole text is such a value.
Single SingleNumber(const std::string& option, std::string_view text);

/// Return a whole number in decimal digits (010 is 10): any Integer, or one from 0 on.
Integer IntegerNumber(const std::string& option, std::string_view text);
int StepCount(const std::string& option, std::string_view text);

/// Returns a number of threads, from 1 to 256.
int Jobs(const std::string& option, std::string_view text);

/// Returns a number above 0 and up to kLargestWish.
double Share(const std::string& option, std::string_view text);

/// Returns the path of a file, a folder or "-", from a text that is not empty.
std::filesystem::path FileName(const std::string& option, std::string_view text);

/// Returns width and height in pixels from "1200x800".
PictureSize PixelSize(const std::string& option, std::string_view text);

/// Returns two numbers from "0,120", the first below the second, with a difference of single
/// precision.
ValueRange NumberRange(const std::string& option, std::string_view text);

}  // namespace quillane
