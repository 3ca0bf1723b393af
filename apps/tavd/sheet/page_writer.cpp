#include "sheet/page_writer.h"

#include <algorithm>
#include <cmath>

namespace tavdhost {
namespace {

constexpr double kSmallest = 0.8;  // of the size that was wanted, for a text that is too wide
// Of a line below the top of its box, a part of the em: what the highest letters of any script take, so that
// fonts of different height stand on one line.
constexpr double kBaseline = 1.07;
constexpr double kRounding = 0.995;  // what a smaller text is narrower than it has to be
constexpr const char* kMore = "…";

// Bytes of the letter that begins here.
std::size_t letter_bytes(const std::string& utf8, std::size_t at) {
  std::size_t end = at + 1;
  while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) ++end;
  return end - at;
}

// Letters that a line may end behind without a blank: those of Chinese.
bool breaks_anywhere(const std::string& utf8, std::size_t at) {
  return static_cast<unsigned char>(utf8[at]) >= 0xE3;
}

// Pieces of which a line is made: words with the blank behind them, or single letters.
std::vector<std::string> pieces_of(const std::string& text) {
  std::vector<std::string> pieces(1);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t bytes = letter_bytes(text, at);
    pieces.back() += text.substr(at, bytes);
    const bool ends =
        text[at] == ' ' ||
        (breaks_anywhere(text, at) && at + bytes < text.size() && breaks_anywhere(text, at + bytes) &&
         text.compare(at + bytes, 3, "。") != 0 && text.compare(at + bytes, 3, "，") != 0);
    if (ends) pieces.emplace_back();
    at += bytes;
  }
  return pieces;
}

std::string without_blank(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace

TextStyle PageWriter::style_of(const TextLook& look) const {
  return {look.size, look.bold, look.colour,
          right_to_left_ ? TextDirection::kRightToLeft : TextDirection::kLeftToRight};
}

double PageWriter::width_of(const std::string& text, const TextStyle& style) const {
  return painter_.measure(text, style).width;
}

// The longest beginning that is no wider with "…" behind it.
std::string PageWriter::shortened_to(const std::string& text, double width, const TextStyle& style) const {
  std::string kept;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t bytes = letter_bytes(text, at);
    const std::string longer = kept + text.substr(at, bytes);
    if (width_of(longer + kMore, style) > width) break;
    kept = longer;
    at += bytes;
  }
  return without_blank(kept) + kMore;
}

void PageWriter::draw(const Box& box, const std::string& text, TextStyle style, Align align) const {
  if (text.empty()) return;
  const double style_size = style.size;  // a smaller text stands on the same line
  std::string shown_text = text;
  const double width = width_of(text, style);
  if (width > box.width) {
    style.size *= std::max(kSmallest, box.width / width * kRounding);
    if (width_of(text, style) > box.width) shown_text = shortened_to(text, box.width, style);
  }
  const Box room = placed(box);
  const bool is_right = (align == Align::kEnd) != right_to_left_;
  TextPlace place;
  place.at = {is_right ? room.right() : room.left, room.top + kBaseline * style_size};
  place.along = is_right ? Along::kRight : Along::kLeft;
  if (align == Align::kCentre) {
    place.at.x = room.left + room.width / 2;
    place.along = Along::kCentre;
  }
  place.across = Across::kBaseline;
  painter_.text(shown_text, style, place, room);
}

void PageWriter::line(const Box& box, const std::string& text, const TextLook& look, Align align) const {
  draw(box, text, style_of(look), align);
}

void PageWriter::number(const Box& box, const std::string& text, const TextLook& look, Align align) const {
  TextStyle style = style_of(look);
  style.direction = TextDirection::kLeftToRight;
  draw(box, text, style, align);
}

std::vector<std::string> PageWriter::wrapped(const std::string& text, double width,
                                             const TextLook& look) const {
  const TextStyle style = style_of(look);
  std::vector<std::string> lines(1);
  for (const std::string& piece : pieces_of(text)) {
    const std::string longer = lines.back() + piece;
    if (!lines.back().empty() && width_of(without_blank(longer), style) > width) {
      lines.push_back(piece);
    } else {
      lines.back() = longer;
    }
  }
  for (std::string& line : lines) line = without_blank(line);
  return lines;
}

double PageWriter::height_of(const std::string& text, double width, const TextLook& look) const {
  return static_cast<double>(wrapped(text, width, look).size()) * look.size * kSheetLetters.line;
}

double PageWriter::paragraph(const Box& box, const std::string& text, const TextLook& look,
                             Align align) const {
  const double line_height = look.size * kSheetLetters.line;
  double used = 0;
  for (const std::string& one : wrapped(text, box.width, look)) {
    line({box.left, box.top + used, box.width, line_height}, one, look, align);
    used += line_height;
  }
  return used;
}

void PageWriter::rule(const Box& box, std::uint32_t colour) const {
  painter_.area(placed(box), colour);
}

}  // namespace tavdhost
