// The converter outside Windows. The single-byte pages are asked of iconv once per page and kept as tables,
// since a call of iconv per short text costs a hundred times the conversion; UTF-8 is decoded here.
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "codepage/codepage.h"

namespace codepage {

namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr unsigned kFirstBeyondAscii = 0x80;
constexpr unsigned kEndOfControls = 0xA0;  // C1 controls are 0x80 to 0x9F

// One single-byte page: the character of each byte, and the bytes from 0x80 up in the order of their
// characters.
struct SingleBytePage {
  std::array<char16_t, 256> characters{};
  std::array<std::pair<char16_t, unsigned char>, 128> bytes{};
  std::size_t byte_count = 0;
};

const SingleBytePage& single_byte_page(unsigned page);
std::size_t widen_utf8(const unsigned char* text, std::size_t length, tavd_wchar* wide, std::size_t capacity);
std::size_t narrow_utf8(const tavd_wchar* wide, std::size_t length, char* text, std::size_t capacity,
                        bool* lost);
std::size_t narrow_single(const SingleBytePage& page, const tavd_wchar* wide, std::size_t length, char* text,
                          std::size_t capacity, bool* lost);

bool is_high_surrogate(char16_t unit) {
  return (unit & 0xFC00U) == 0xD800U;
}

bool is_low_surrogate(char16_t unit) {
  return (unit & 0xFC00U) == 0xDC00U;
}

// Whether a surrogate pair stands at `index`.
bool pair_at(const tavd_wchar* wide, std::size_t length, std::size_t index) {
  return is_high_surrogate(wide[index]) && index + 1 < length && is_low_surrogate(wide[index + 1]);
}

}  // namespace

std::size_t widen(unsigned page, const char* text, std::size_t length, tavd_wchar* wide,
                  std::size_t capacity) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  if (page == kUtf8) return widen_utf8(bytes, length, wide, capacity);
  const SingleBytePage& table = single_byte_page(page);
  const std::size_t count = std::min(length, capacity);
  for (std::size_t i = 0; i < count; ++i) wide[i] = table.characters[bytes[i]];
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

std::size_t length(const tavd_wchar* wide, std::size_t limit) {
  std::size_t count = 0;
  while (count < limit && wide[count] != 0) ++count;
  return count;
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

// What a lead byte promises: how many bytes follow, and between which bounds the first of them must lie so
// that the character is neither overlong, nor a surrogate, nor beyond U+10FFFF. No following byte: not a lead
// byte.
struct Lead {
  unsigned following = 0;
  unsigned char lowest = 0x80;
  unsigned char highest = 0xBF;
};

Lead lead_of(unsigned char byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {1};
  if (byte == 0xE0) return {2, 0xA0, 0xBF};
  if (byte == 0xED) return {2, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {2};
  if (byte == 0xF0) return {3, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {3};
  if (byte == 0xF4) return {3, 0x80, 0x8F};
  return {};
}

// Takes one character off the text and moves `index` behind it. Of an invalid sequence the longest beginning
// of a valid one is taken together as one replacement character.
char32_t next_character(const unsigned char* text, std::size_t length, std::size_t& index) {
  const unsigned char first = text[index++];
  if (first < kFirstBeyondAscii) return first;
  Lead lead = lead_of(first);
  if (lead.following == 0) return kReplacement;
  char32_t character = first & (0x3FU >> lead.following);
  for (unsigned i = 0; i < lead.following; ++i) {
    if (index == length || text[index] < lead.lowest || text[index] > lead.highest) return kReplacement;
    character = character << 6 | (text[index++] & 0x3FU);
    lead.lowest = 0x80;
    lead.highest = 0xBF;
  }
  return character;
}

std::size_t widen_utf8(const unsigned char* text, std::size_t length, tavd_wchar* wide,
                       std::size_t capacity) {
  std::size_t written = 0;
  for (std::size_t index = 0; index < length;) {
    const char32_t character = next_character(text, length, index);
    if (character < kFirstSupplementary) {
      if (written + 1 > capacity) break;
      wide[written++] = static_cast<tavd_wchar>(character);
    } else {
      if (written + 2 > capacity) break;
      const char32_t offset = character - kFirstSupplementary;
      wide[written++] = static_cast<tavd_wchar>(0xD800U + (offset >> 10));
      wide[written++] = static_cast<tavd_wchar>(0xDC00U + (offset & 0x3FFU));
    }
  }
  return written;
}

// Writes the UTF-8 form, at most 4 bytes, and returns its length.
std::size_t encode_utf8(char32_t character, std::array<char, 4>& out) {
  const auto tail = [character](unsigned shift) {
    return static_cast<char>(0x80U | (character >> shift & 0x3FU));
  };
  if (character < 0x80) {
    out[0] = static_cast<char>(character);
    return 1;
  }
  if (character < 0x800) {
    out = {static_cast<char>(0xC0U | character >> 6), tail(0)};
    return 2;
  }
  if (character < kFirstSupplementary) {
    out = {static_cast<char>(0xE0U | character >> 12), tail(6), tail(0)};
    return 3;
  }
  out = {static_cast<char>(0xF0U | character >> 18), tail(12), tail(6), tail(0)};
  return 4;
}

std::size_t narrow_utf8(const tavd_wchar* wide, std::size_t length, char* text, std::size_t capacity,
                        bool* lost) {
  std::size_t written = 0;
  for (std::size_t i = 0; i < length; ++i) {
    char32_t character = wide[i];
    const bool pair = pair_at(wide, length, i);
    if (pair) {
      character = kFirstSupplementary + ((character & 0x3FFU) << 10) + (wide[i + 1] & 0x3FFU);
    } else if (is_high_surrogate(wide[i]) || is_low_surrogate(wide[i])) {
      character = kReplacement;
      *lost = true;
    }
    std::array<char, 4> encoded{};
    const std::size_t size = encode_utf8(character, encoded);
    if (written + size > capacity) break;
    std::copy_n(encoded.begin(), size, text + written);
    written += size;
    if (pair) ++i;
  }
  return written;
}

}  // namespace

}  // namespace codepage
