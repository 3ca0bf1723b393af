// The standard library reads narrow file names byte for byte as the first 256 characters of Unicode, whatever
// the system's code page is, so that they are converted here.
#include <cstring>

#include "codepage/codepage.h"
#include "codepage/system.h"

namespace codepage {

namespace {

// No character takes more units than bytes.
std::wstring widened(const char* text, std::size_t length) {
  std::wstring wide(length, L'\0');
  wide.resize(widen(kDefault, text, length, wide.data(), wide.size()));
  return wide;
}

}  // namespace

std::filesystem::path path_of(const char* name) {
  return widened(name, std::strlen(name));
}

std::string utf8_of(const std::string& text) {
  constexpr std::size_t kMostBytes = 3;  // of one unit of UTF-16
  const std::wstring wide = widened(text.data(), text.size());
  std::string utf8(wide.size() * kMostBytes, '\0');
  utf8.resize(narrow(kUtf8, wide.data(), wide.size(), utf8.data(), utf8.size()));
  return utf8;
}

}  // namespace codepage
