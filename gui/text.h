// Texts between the three forms that the library meets: narrow, UTF-16 and UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "codepage/codepage.h"
#include "tavd/types.h"

namespace tgui {

// Narrow text is windows-1252: each byte is one character and one unit of UTF-16.
inline std::u16string to_wide(std::string_view narrow) {
  std::u16string wide(narrow.size(), u'\0');
  wide.resize(
      codepage::widen(codepage::kWindows1252, narrow.data(), narrow.size(), wide.data(), wide.size()));
  return wide;
}

inline std::string to_narrow(std::u16string_view wide) {
  std::string narrow(wide.size(), '\0');
  narrow.resize(
      codepage::narrow(codepage::kWindows1252, wide.data(), wide.size(), narrow.data(), narrow.size()));
  return narrow;
}

inline std::string to_utf8(std::u16string_view wide) {
  std::string utf8(3 * wide.size(), '\0');  // no unit takes more than three bytes
  utf8.resize(codepage::narrow(codepage::kUtf8, wide.data(), wide.size(), utf8.data(), utf8.size()));
  return utf8;
}

// A host's narrow text, which may be null, as UTF-8.
inline std::string title_text(const char* narrow) {
  return narrow == nullptr ? std::string() : to_utf8(to_wide(narrow));
}

}  // namespace tgui
