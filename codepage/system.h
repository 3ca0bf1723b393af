// Narrow text as the system itself takes and gives it: file names and the texts of its errors.
#pragma once

#include <filesystem>
#include <string>

namespace codepage {

// The file that a terminated narrow name names: on Windows in the default code page, elsewhere byte for byte.
std::filesystem::path path_of(const char* name);

// A text of the system's, such as an error's, in UTF-8.
std::string utf8_of(const std::string& text);

}  // namespace codepage
