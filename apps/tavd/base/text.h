// Texts on their way to the terminal: UTF-16 to UTF-8, and columns that line up.
#pragma once

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tavd/types.h"

namespace tavdhost {

// Terminated UTF-16, at most `limit` units, as UTF-8 without trailing blanks; U+FFFD for a lone surrogate.
std::string to_utf8(const tavd_wchar* wide, std::size_t limit);

// The text with U+FFFD where it is no UTF-8, and a blank for each control character: safe on a terminal and
// in JSON.
std::string printable(std::string_view text);

// The text printable, and with "..." for what is longer than so many characters: behind it, or in its middle,
// so that the end stays too.
std::string shortened(std::string_view text, std::size_t most);
std::string shortened_inside(std::string_view text, std::size_t most);

// The text between double quotes, as messages name what the user gave: printable, and not longer than it
// takes to know it again.
std::string in_quotes(std::string_view text);
// The same for the name of a file, which is given whole.
std::string path_in_quotes(std::string_view path);

// The text as it stands in HTML and XML, attributes included. They have no place for control characters,
// escaped or not: each becomes a blank.
std::string markup(std::string_view text);

// Units that the text takes as UTF-16.
std::size_t utf16_length(std::string_view text);

// Terminal columns that UTF-8 text takes: 2 for wide East Asian characters, 0 for combining ones.
std::size_t display_width(std::string_view text);

// The text with blanks behind it (before it) until it takes `width` columns.
std::string pad_right(std::string_view text, std::size_t width);
std::string pad_left(std::string_view text, std::size_t width);

// Whether two texts are the same without regard to the case of ASCII letters.
bool same_letters(std::string_view a, std::string_view b);
std::string lower(std::string_view text);

// Whether the text is as the pattern has it, in which "*" stands for any characters and "?" for one byte.
bool fits_wildcards(std::string_view text, std::string_view pattern);

// Letters to change, add or leave out to make one text of the other, without regard to the case of ASCII
// letters.
std::size_t edit_distance(std::string_view a, std::string_view b);

// " (did you mean \"flowheader\"?)" with the name that comes nearest, as far as one is near; otherwise
// nothing.
std::string did_you_mean(std::string_view written, std::span<const std::string_view> names);

// The text without blanks at its end.
std::string_view trim_end(std::string_view text);

// The text with `by` wherever it has `what`, which is not empty.
std::string with_replaced(std::string text, std::string_view what, std::string_view by);

// Rows of texts, printed in columns two blanks apart; no blanks at the ends of lines.
class Columns {
 public:
  void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
  void align_right(std::size_t column) { right_.push_back(column); }
  void print(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> rows_;
  std::vector<std::size_t> right_;
};

}  // namespace tavdhost
