// The converter of Windows. Its functions are asked for one character at a time, since only so a text that
// does not fit is cut in front of a whole character. The default page is the system's, which may have
// characters of two bytes, or be UTF-8.
#include <windows.h>

#include <algorithm>
#include <array>

#include "codepage/codepage.h"
#include "codepage/surrogates.h"
#include "codepage/utf8.h"

namespace codepage {

namespace {

constexpr tavd_wchar kReplacement = 0xFFFD;
constexpr unsigned kFirstBeyondAscii = 0x80;

unsigned known_page(unsigned page);
std::size_t widen_character(unsigned page, const char* text, int size, std::array<tavd_wchar, 2>& wide);
std::size_t narrow_character(unsigned page, const tavd_wchar* wide, int units, std::array<char, 2>& text,
                             bool* lost);

}  // namespace

std::size_t widen(unsigned page, const char* text, std::size_t length, tavd_wchar* wide,
                  std::size_t capacity) {
  page = known_page(page);
  if (page == kUtf8) return widen_utf8(text, length, wide, capacity);
  std::size_t written = 0;
  for (std::size_t i = 0; i < length;) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool two = byte >= kFirstBeyondAscii && i + 1 < length && IsDBCSLeadByteEx(page, byte) != 0;
    std::array<tavd_wchar, 2> character{};
    const std::size_t units = widen_character(page, text + i, two ? 2 : 1, character);
    if (written + units > capacity) break;
    std::copy_n(character.begin(), units, wide + written);
    written += units;
    i += two ? 2 : 1;
  }
  return written;
}

std::size_t narrow(unsigned page, const tavd_wchar* wide, std::size_t length, char* text,
                   std::size_t capacity, bool* lost) {
  bool ignored = false;
  bool* without_place = lost != nullptr ? lost : &ignored;
  *without_place = false;
  page = known_page(page);
  if (page == kUtf8) return narrow_utf8(wide, length, text, capacity, without_place);
  std::size_t written = 0;
  for (std::size_t i = 0; i < length;) {
    const int units = pair_at(wide, length, i) ? 2 : 1;
    std::array<char, 2> character{};
    bool no_place = false;
    const std::size_t size = narrow_character(page, wide + i, units, character, &no_place);
    if (written + size > capacity) break;
    if (no_place) *without_place = true;
    std::copy_n(character.begin(), size, text + written);
    written += size;
    i += static_cast<std::size_t>(units);
  }
  return written;
}

namespace {

// Unknown page numbers are read as the default page, which has its own number here.
unsigned known_page(unsigned page) {
  switch (page) {
    case kWindows1250:
    case kWindows1251:
    case kWindows1252:
    case kWindows1257:
    case kUtf8:
      return page;
    default:
      return GetACP();
  }
}

// Where a page assigns nothing to a byte, Windows may give a character for private use.
bool is_private(char16_t unit) {
  return unit >= 0xE000 && unit <= 0xF8FF;
}

// The character of one or two bytes; its length.
std::size_t widen_character(unsigned page, const char* text, int size, std::array<tavd_wchar, 2>& wide) {
  if (static_cast<unsigned char>(*text) < kFirstBeyondAscii) {
    wide[0] = static_cast<tavd_wchar>(*text);
    return 1;
  }
  const int units = MultiByteToWideChar(page, MB_PRECOMPOSED, text, size, wide.data(), 2);
  if (units > 0 && !(size == 1 && is_private(wide[0]))) return static_cast<std::size_t>(units);
  wide[0] = kReplacement;
  return 1;
}

// The bytes of one character, of one or two units; their number.
std::size_t narrow_character(unsigned page, const tavd_wchar* wide, int units, std::array<char, 2>& text,
                             bool* lost) {
  if (*wide < kFirstBeyondAscii) {
    text[0] = static_cast<char>(*wide);
    return 1;
  }
  BOOL replaced = FALSE;
  int size = 0;
  if (units == 1) {
    size = WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide, units, text.data(), 2, nullptr, &replaced);
  }
  const bool unassigned = size == 1 && is_private(*wide);
  if (size > 0 && replaced == FALSE && !unassigned) return static_cast<std::size_t>(size);
  *lost = true;
  text.fill('?');
  return static_cast<std::size_t>(units);
}

}  // namespace

}  // namespace codepage
