#include "gui/cairo/utf8.h"

#include <algorithm>
#include <string_view>

#include "codepage/codepage.h"

namespace tavdcairo {

std::string to_utf8(const tavd_wchar* text, std::size_t length) {
  std::string utf8(length * 3, '\0');
  utf8.resize(codepage::narrow(codepage::kUtf8, text, length, utf8.data(), utf8.size()));
  std::replace(utf8.begin(), utf8.end(), '\0', ' ');
  return utf8;
}

std::string clean_utf8(const char* text) {
  const std::string_view bytes = text != nullptr ? text : "";
  std::basic_string<tavd_wchar> wide(bytes.size(), u'\0');
  wide.resize(codepage::widen(codepage::kUtf8, bytes.data(), bytes.size(), wide.data(), wide.size()));
  return to_utf8(wide.data(), wide.size());
}

}  // namespace tavdcairo
