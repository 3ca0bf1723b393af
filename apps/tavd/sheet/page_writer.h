// Texts and rules on a page, in boxes that they never leave, in the direction in which the language is read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sheet/layout.h"
#include "sheet/page_surface.h"

namespace tavdhost {

enum class Align { kStart, kCentre, kEnd };  // kStart: where a line of the language begins

class PageWriter {
 public:
  PageWriter(PageSurface& surface, bool right_to_left)
      : surface_(surface), right_to_left_(right_to_left) {}

  PageSurface& surface() const { return surface_; }
  bool right_to_left() const { return right_to_left_; }

  // Where a box of the page that is read from the left stands on this one.
  Box placed(const Box& box) const { return right_to_left_ ? mirrored(box) : box; }

  // All boxes below are those of the page that is read from the left.

  // One line from the top of the box: made smaller where it is too wide, and "…" at its end where that is not
  // enough. Numbers with their units run from the left in every language.
  void line(const Box& box, const std::string& text, const TextLook& look, Align align = Align::kStart) const;
  void number(const Box& box, const std::string& text, const TextLook& look, Align align = Align::kEnd) const;
  // Lines from the top of the box, as many as it holds; returns the height that they take.
  double paragraph(const Box& box, const std::string& text, const TextLook& look) const;
  double height_of(const std::string& text, double width, const TextLook& look) const;

  void rule(const Box& box, std::uint32_t colour) const;  // a filled box

 private:
  void draw(const Box& box, const std::string& text, TextLook look, Align align) const;
  std::vector<std::string> wrapped(const std::string& text, double width, const TextLook& look) const;

  PageSurface& surface_;
  bool right_to_left_;
};

}  // namespace tavdhost
