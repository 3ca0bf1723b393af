// The converter outside Windows. The single-byte pages are asked of iconv once per page and kept as tables,
// since a call of iconv per short text costs a hundred times the conversion.
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "codepage/codepage.h"
#include "codepage/surrogates.h"
#include "codepage/utf8.h"

namespace codepage {

namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr unsigned kFirstBeyondAscii = 0x80;
constexpr unsigned kEndOfControls = 0xA0;  // C1 controls are 0x80 to 0x9F

// One single-byte page: the character of each byte, and the bytes from 0x80 up in the order of
// their characters.
struct SingleBytePage {
  std::array<char16_t, 256> characters{};
  std::array<std::pair<char16_t, unsigned char>, 128> bytes{};
  std::size_t byte_count = 0;
};

const SingleBytePage& single_byte_page(unsigned page);
std::size_t narrow_single(const SingleBytePage& page, const tavd_wchar* wide, std::size_t length, char* text,
                          std::size_t capacity, bool* lost);

}  // namespace

std::size_t widen(unsigned page, const char* text, std::size_t length, tavd_wchar* wide,
                  std::size_t capacity) {
  if (page == kUtf8) return widen_utf8(text, length, wide, capacity);
  const SingleBytePage& table = single_byte_page(page);
  const std::size_t count = std::min(length, capacity);
  for (std::size_t i = 0; i < count; ++i) wide[i] = table.characters[static_cast<unsigned char>(text[i])];
  return count;
}

std::size_t narrow(unsigned page, const tavd_wchar* wide, std::size_t length, char* text,
                   std::size_t capacity, bool* lost) {
  bool ignored = false;
  bool* without_place = lost != nullptr ? lost : &ignored;
  *without_place = false;
  if (page == kUtf8) return narrow_utf8(wide, length, text, capacity, without_place);
  return narrow_single(single_byte_page(page), wide, length, text, capacity, without_place);
}

namespace {

// The character of one byte by iconv, or what an unassigned byte stands for.
char16_t ask_iconv(iconv_t converter, unsigned byte) {
  if (byte < kFirstBeyondAscii) return static_cast<char16_t>(byte);
  char in = static_cast<char>(byte);
  std::array<unsigned char, 4> out{};
  char* from = &in;
  auto* to = reinterpret_cast<char*>(out.data());
  std::size_t from_left = 1;
  std::size_t to_left = out.size();
  if (converter != reinterpret_cast<iconv_t>(-1)) {
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    if (iconv(converter, &from, &from_left, &to, &to_left) == 0 && to_left == out.size() - 2) {
      return static_cast<char16_t>(out[0] | out[1] << 8);
    }
  }
  return byte < kEndOfControls ? static_cast<char16_t>(byte) : kReplacement;
}

SingleBytePage build_page(const char* name) {
  SingleBytePage page;
  iconv_t converter = iconv_open("UTF-16LE", name);
  for (unsigned byte = 0; byte < page.characters.size(); ++byte) {
    const char16_t character = ask_iconv(converter, byte);
    page.characters[byte] = character;
    if (byte >= kFirstBeyondAscii && character != kReplacement) {
      page.bytes[page.byte_count++] = {character, static_cast<unsigned char>(byte)};
    }
  }
  if (converter != reinterpret_cast<iconv_t>(-1)) iconv_close(converter);
  std::sort(page.bytes.begin(), page.bytes.begin() + static_cast<std::ptrdiff_t>(page.byte_count));
  return page;
}

// Unknown page numbers are read as the default page.
const SingleBytePage& single_byte_page(unsigned page) {
  static const SingleBytePage western = build_page("CP1252");
  static const SingleBytePage central = build_page("CP1250");
  static const SingleBytePage cyrillic = build_page("CP1251");
  static const SingleBytePage baltic = build_page("CP1257");
  switch (page) {
    case kWindows1250:
      return central;
    case kWindows1251:
      return cyrillic;
    case kWindows1257:
      return baltic;
    default:
      return western;
  }
}

std::size_t narrow_single(const SingleBytePage& page, const tavd_wchar* wide, std::size_t length, char* text,
                          std::size_t capacity, bool* lost) {
  const auto* first = page.bytes.data();
  const auto* last = first + page.byte_count;
  std::size_t written = 0;
  for (std::size_t i = 0; i < length; ++i) {
    // The two "?" of a surrogate pair are one character: both or none.
    if (written + (pair_at(wide, length, i) ? 2 : 1) > capacity) break;
    if (wide[i] < kFirstBeyondAscii) {
      text[written++] = static_cast<char>(wide[i]);
      continue;
    }
    const auto* found = std::lower_bound(first, last, wide[i],
                                         [](const auto& entry, char16_t unit) { return entry.first < unit; });
    const bool known = found != last && found->first == wide[i];
    text[written++] = known ? static_cast<char>(found->second) : '?';
    if (known) continue;
    *lost = true;
    if (pair_at(wide, length, i)) {
      text[written++] = '?';
      ++i;
    }
  }
  return written;
}

}  // namespace

}  // namespace codepage
