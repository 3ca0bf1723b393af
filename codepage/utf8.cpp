#include "codepage/utf8.h"

#include <algorithm>
#include <array>

#include "codepage/surrogates.h"

namespace codepage {

namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr unsigned kFirstBeyondAscii = 0x80;

char32_t next_character(const unsigned char* text, std::size_t length, std::size_t& index);
std::size_t encode_utf8(char32_t character, std::array<char, 4>& out);

}  // namespace

std::size_t widen_utf8(const char* text, std::size_t length, tavd_wchar* wide, std::size_t capacity) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  std::size_t written = 0;
  for (std::size_t index = 0; index < length;) {
    const char32_t character = next_character(bytes, length, index);
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

namespace {

// What a lead byte promises: how many bytes follow, and between which bounds the first of them must lie so
// that the character is neither overlong, nor a surrogate, nor beyond U+10FFFF. No following byte: not a
// lead byte.
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

}  // namespace

}  // namespace codepage
