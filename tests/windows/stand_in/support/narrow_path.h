// File names in the narrow form that the service takes.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace tavdtest {

// Letters beyond ASCII, as many as narrow file names have: here those that stand at these places of the
// system's code page, whichever that is.
inline std::filesystem::path letters_of_narrow_names() {
  constexpr char kBytes[] = "\x80\x8A\xC4\xE6";
  wchar_t letters[sizeof kBytes] = {};
  MultiByteToWideChar(CP_ACP, 0, kBytes, -1, letters, static_cast<int>(sizeof kBytes));
  return letters;
}

inline std::string narrow_name(const std::filesystem::path& path) {
  std::string name(path.native().size() * 2 + 1, '\0');
  const int size = WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, name.data(),
                                       static_cast<int>(name.size()), nullptr, nullptr);
  name.resize(static_cast<std::size_t>(size > 0 ? size - 1 : 0));
  return name;
}

}  // namespace tavdtest
