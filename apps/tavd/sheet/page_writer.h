// Texts and rules on a page, in boxes that they never leave, in the direction in which the language is read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sheet/layout.h"
#include "sheet/painter.h"

namespace tavdhost {

enum class Align { kStart, kCentre, kEnd };  // kStart: where a line of the language begins

struct TextLook {
  double size;  // of the em, mm
  bool bold = false;
  std::uint32_t colour = 0x000000;  // 0x00BBGGRR
};

class PageWriter {
 public:
  PageWriter(Painter& painter, bool right_to_left) : painter_(painter), right_to_left_(right_to_left) {}

  Painter& painter() const { return painter_; }
  bool right_to_left() const { return right_to_left_; }

  // Where a box of the page that is read from the left stands on this one.
  Box placed(const Box& box) const { return right_to_left_ ? mirrored(box) : box; }

  // All boxes below are those of the page that is read from the left.

  // One line from the top of the box: made smaller where it is too wide, and "…" at its end where that is not
  // enough. Numbers with their units run from the left in every language.
  void line(const Box& box, const std::string& text, const TextLook& look, Align align = Align::kStart) const;
  void number(const Box& box, const std::string& text, const TextLook& look, Align align = Align::kEnd) const;
  // Lines from the top of the box, as many as it holds; returns the height that they take.
  double paragraph(const Box& box, const std::string& text, const TextLook& look,
                   Align align = Align::kStart) const;
  double width_of(const std::string& text, const TextLook& look) const {
    return width_of(text, style_of(look));
  }
  double height_of(const std::string& text, double width, const TextLook& look) const;

  void rule(const Box& box, std::uint32_t colour) const;  // a filled box

 private:
  void draw(const Box& box, const std::string& text, TextStyle style, Align align) const;
  TextStyle style_of(const TextLook& look) const;
  double width_of(const std::string& text, const TextStyle& style) const;
  std::string shortened_to(const std::string& text, double width, const TextStyle& style) const;
  std::vector<std::string> wrapped(const std::string& text, double width, const TextLook& look) const;

  Painter& painter_;
  bool right_to_left_;
};

}  // namespace tavdhost
