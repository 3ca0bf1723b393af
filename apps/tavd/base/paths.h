// Names of files between the program's texts and the platform: texts are UTF-8, or where names of files are
// bytes, those.
#pragma once

#include <filesystem>
#include <string>

namespace tavdhost {

inline std::filesystem::path to_path(const std::string& text) {
  return {std::u8string(text.begin(), text.end())};
}

inline std::string to_text(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace tavdhost
