// Conversions between narrow text of a code page and UTF-16, through the platform's own converter.
#pragma once

#include <cstddef>

#include "tavd/types.h"

namespace codepage {

// Code page numbers as Windows counts them. kDefault is the system's default: windows-1252 outside Windows,
// so that a database reads the same everywhere.
enum Page : unsigned {
  kDefault = 0,
  kWindows1250 = 1250,
  kWindows1251 = 1251,
  kWindows1252 = 1252,
  kWindows1257 = 1257,
  kUtf8 = 65001
};

// Converts `length` bytes of `text` to at most `capacity` UTF-16 units and returns how many were written.
// Nothing is terminated. A character that does not fit whole is left out together with all that follows; an
// invalid UTF-8 sequence gives U+FFFD, one for each longest beginning of a valid one; a byte to which its
// single-byte code page assigns nothing gives the control character of the same number if there is one (0x80
// to 0x9F), else U+FFFD. An unknown page number counts as kDefault.
std::size_t widen(unsigned page, const char* text, std::size_t length, tavd_wchar* wide,
                  std::size_t capacity);

// Converts `length` units of UTF-16 to at most `capacity` bytes and returns how many were written. Nothing is
// terminated. A character that the code page does not have gives "?", a surrogate pair two of them; in UTF-8
// a lone surrogate gives U+FFFD. A character that does not fit whole is left out together with all that
// follows. `lost`, if not null, is set to whether any character up to there had no place.
std::size_t narrow(unsigned page, const tavd_wchar* wide, std::size_t length, char* text,
                   std::size_t capacity, bool* lost = nullptr);

// Length of terminated UTF-16, at most `limit`.
std::size_t length(const tavd_wchar* wide, std::size_t limit);

}  // namespace codepage
