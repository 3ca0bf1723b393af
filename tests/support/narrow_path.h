// File names in the narrow form that the service takes.
#pragma once

#include <filesystem>
#include <string>

namespace tavdtest {

// Letters beyond ASCII, as many as narrow file names have: here all, as UTF-8.
inline std::filesystem::path letters_of_narrow_names() {
  return u8"\u00C4nderung-\u0416-\u65E5-\U0001F600";
}

inline std::string narrow_name(const std::filesystem::path& path) {
  return path.string();
}

}  // namespace tavdtest
