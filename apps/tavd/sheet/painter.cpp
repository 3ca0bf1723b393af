#include "sheet/painter.h"

#include <cmath>
#include <numbers>

namespace tavdhost {
namespace {

constexpr double kHalfDigit = 0.36;  // of the em: half the height of a digit, in sans-serif faces

// The place of a point that is given relative to `origin`, turned counter-clockwise.
PagePoint turned(PagePoint origin, PagePoint point, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return {origin.x + point.x * c + point.y * s, origin.y - point.x * s + point.y * c};
}

}  // namespace

void Painter::area(const Box& box, std::uint32_t colour) {
  const std::array<PagePoint, 4> corners = {
      {{box.left, box.top}, {box.right(), box.top}, {box.right(), box.bottom()}, {box.left, box.bottom()}}};
  area(corners, colour);
}

void Painter::text(const std::string& text, const TextStyle& style, const TextPlace& place, const Box& room) {
  if (text.empty()) return;
  const TextSize size = measure(text, style);
  draw_text(text, style, place, size);
  if (!keeps_texts_) return;
  const PagePoint begin = baseline_offset(style, place, size);
  const double right = begin.x + size.width;
  const double top = begin.y - size.ascent;
  const double bottom = begin.y + size.descent;
  const auto corner = [&place](double x, double y) { return turned(place.at, {x, y}, place.angle); };
  texts_.push_back(
      {text,
       {corner(begin.x, top), corner(right, top), corner(right, bottom), corner(begin.x, bottom)},
       room});
}

PagePoint Painter::baseline_offset(const TextStyle& style, const TextPlace& place, const TextSize& size) {
  PagePoint offset = {0, 0};
  if (place.along == Along::kCentre) offset.x = -size.width / 2;
  if (place.along == Along::kRight) offset.x = -size.width;
  if (place.across == Across::kTop) offset.y = size.ascent;
  if (place.across == Across::kMiddle) offset.y = kHalfDigit * style.size;
  if (place.across == Across::kBottom) offset.y = -size.descent;
  return offset;
}

}  // namespace tavdhost
