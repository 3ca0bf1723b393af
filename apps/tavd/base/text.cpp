#include "base/text.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace tavdhost {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kMostBytes = 4;           // of one character
constexpr std::size_t kQuotedCharacters = 100;  // more than any id, number or title may have
constexpr std::size_t kLongestName = 16;        // of those that are likely to be meant
constexpr std::size_t kPathCharacters = 4096;   // the longest path of any platform here

struct Range {
  char32_t first, last;
};

// Unicode 15, East_Asian_Width W and F.
constexpr Range kWide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x2E80, 0x303E},   {0x3041, 0x33FF},
    {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},   {0xA960, 0xA97C},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x16FE0, 0x18CFF}, {0x1AFF0, 0x1B2FF}, {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
    {0x20000, 0x3FFFD},
};

// Combining marks, zero-width characters and conjoining vowels.
constexpr Range kNoWidth[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x0670, 0x0670}, {0x06D6, 0x06DC}, {0x06DF, 0x06E4}, {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},
    {0x0E47, 0x0E4E}, {0x1160, 0x11FF}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F},
    {0x202A, 0x202E}, {0x2060, 0x2064}, {0x20D0, 0x20FF}, {0x3099, 0x309A}, {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
};

template <std::size_t N>
bool lies_in(const Range (&ranges)[N], char32_t character) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [&](const Range& range) { return character >= range.first && character <= range.last; });
}

bool is_control(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
         character == 0x2029;
}

// Bytes that the first characters of valid UTF-8 take.
std::size_t bytes_of(std::string_view valid, std::size_t characters) {
  auto at = valid.begin();
  for (std::size_t i = 0; i < characters && at != valid.end(); ++i) utf8::next(at, valid.end());
  return static_cast<std::size_t>(at - valid.begin());
}

char ascii_lower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

std::string to_utf8(const tavd_wchar* wide, std::size_t limit) {
  std::string text;
  for (std::size_t i = 0; i < limit && wide[i] != 0; ++i) {
    char32_t character = wide[i];
    const bool leads = character >= 0xD800 && character < 0xDC00;
    if (leads && i + 1 < limit && wide[i + 1] >= 0xDC00 && wide[i + 1] < 0xE000) {
      ++i;
      character = 0x10000 + ((character - 0xD800) << 10) + (char32_t{wide[i]} - 0xDC00);
    } else if (character >= 0xD800 && character < 0xE000) {
      character = kReplacement;
    }
    utf8::append(character, std::back_inserter(text));
  }
  return std::string(trim_end(text));
}

std::string printable(std::string_view text) {
  std::string valid;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), kReplacement);
  std::string result;
  for (auto at = valid.begin(); at != valid.end();) {
    const char32_t character = utf8::next(at, valid.end());
    utf8::append(is_control(character) ? U' ' : character, std::back_inserter(result));
  }
  return result;
}

std::string shortened(std::string_view text, std::size_t most) {
  std::string whole = printable(text.substr(0, (most + 1) * kMostBytes));
  const std::size_t end = bytes_of(whole, most);
  return end == whole.size() && text.size() <= (most + 1) * kMostBytes ? whole : whole.substr(0, end) + "...";
}

std::string shortened_inside(std::string_view text, std::size_t most) {
  std::string whole = printable(text);
  if (bytes_of(whole, most) == whole.size()) return whole;
  std::size_t tail = whole.size() - most / 2;  // bytes: at most so many characters
  while (tail < whole.size() && (static_cast<unsigned char>(whole[tail]) & 0xC0) == 0x80) ++tail;
  return whole.substr(0, bytes_of(whole, most / 2)) + "..." + whole.substr(tail);
}

std::string in_quotes(std::string_view text) {
  return "\"" + shortened(text, kQuotedCharacters) + "\"";
}

std::string path_in_quotes(std::string_view path) {
  return "\"" + shortened(path, kPathCharacters) + "\"";
}

std::size_t utf16_length(std::string_view text) {
  const std::string valid = printable(text);
  std::size_t units = 0;
  for (auto at = valid.begin(); at != valid.end();) units += utf8::next(at, valid.end()) > 0xFFFF ? 2 : 1;
  return units;
}

std::size_t display_width(std::string_view text) {
  const std::string valid = printable(text);
  std::size_t width = 0;
  for (auto at = valid.begin(); at != valid.end();) {
    const char32_t character = utf8::next(at, valid.end());
    if (!lies_in(kNoWidth, character)) width += lies_in(kWide, character) ? 2 : 1;
  }
  return width;
}

std::string pad_right(std::string_view text, std::size_t width) {
  const std::size_t taken = display_width(text);
  return std::string(text) + std::string(taken < width ? width - taken : 0, ' ');
}

std::string pad_left(std::string_view text, std::size_t width) {
  const std::size_t taken = display_width(text);
  return std::string(taken < width ? width - taken : 0, ' ') + std::string(text);
}

bool same_letters(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ascii_lower(x) == ascii_lower(y); });
}

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), ascii_lower);
  return result;
}

bool fits_wildcards(std::string_view text, std::string_view pattern) {
  // Where the last star stands in the pattern, and where what it does not take begins in the text.
  std::size_t star = std::string_view::npos;
  std::size_t behind = 0;
  std::size_t at = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (at < pattern.size() && pattern[at] == '*') {
      star = at++;
      behind = i;
    } else if (at < pattern.size() && (pattern[at] == '?' || pattern[at] == text[i])) {
      ++at;
      ++i;
    } else if (star != std::string_view::npos) {
      at = star + 1;
      i = ++behind;
    } else {
      return false;
    }
  }
  return pattern.substr(at).find_first_not_of('*') == std::string_view::npos;
}

std::size_t edit_distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      const std::size_t change = ascii_lower(a[i - 1]) == ascii_lower(b[j - 1]) ? 0 : 1;
      row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + change});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::string did_you_mean(std::string_view written, std::span<const std::string_view> names) {
  // A wrong letter in three, two in four to seven, and so on: short names are near to everything else.
  const std::size_t farthest = 1 + std::min<std::size_t>(written.size(), kLongestName) / 4;
  std::size_t nearest = farthest + 1;
  std::string_view found;
  for (const std::string_view name : names) {
    if (written.size() > name.size() + farthest) continue;
    const std::size_t away = edit_distance(written, name);
    if (away >= nearest) continue;
    nearest = away;
    found = name;
  }
  return found.empty() ? "" : " (did you mean " + in_quotes(found) + "?)";
}

std::string with_replaced(std::string text, std::string_view what, std::string_view by) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
  return text;
}

std::string markup(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return result;
}

std::string_view trim_end(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

void Columns::print(std::ostream& out) const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows_) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], display_width(row[i]));
  }
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const bool right = std::find(right_.begin(), right_.end(), i) != right_.end();
      line += (i == 0 ? "" : "  ") + (right ? pad_left(row[i], widths[i]) : pad_right(row[i], widths[i]));
    }
    out << trim_end(line) << '\n';
  }
}

}  // namespace tavdhost
