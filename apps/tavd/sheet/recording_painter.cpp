#include "sheet/recording_painter.h"

#include <algorithm>

#include "sheet/page_numbers.h"

namespace tavdhost {
namespace {

// What stands for a font, parts of the em.
constexpr double kWidth = 0.56;  // of each character: that of most digits and letters
constexpr double kAscent = 0.91;
constexpr double kDescent = 0.21;

std::string described(PagePoint point) {
  return " " + page_number(point.x) + " " + page_number(point.y);
}

std::string described(const LineStyle& style) {
  std::string text = " width=" + page_number(style.width) + " colour=" + page_colour(style.colour);
  for (std::size_t i = 0; i < style.dashes.size(); ++i) {
    text += (i == 0 ? " dashes=" : ",") + page_number(style.dashes[i]);
  }
  return text;
}

std::string described(std::span<const PagePoint> points) {
  std::string text;
  for (const PagePoint point : points) text += described(point);
  return text;
}

const char* word(Along along) {
  return along == Along::kLeft ? "left" : along == Along::kCentre ? "centre" : "right";
}

const char* word(Across across) {
  switch (across) {
    case Across::kTop:
      return "top";
    case Across::kMiddle:
      return "middle";
    case Across::kBaseline:
      return "baseline";
    default:
      return "bottom";
  }
}

}  // namespace

void RecordingPainter::line(std::span<const PagePoint> points, const LineStyle& style) {
  recording_ += "line" + described(style) + described(points) + "\n";
}

void RecordingPainter::area(std::span<const PagePoint> corners, std::uint32_t colour) {
  recording_ += "area colour=" + page_colour(colour) + described(corners) + "\n";
}

void RecordingPainter::circle(PagePoint centre, double radius, const LineStyle& style) {
  recording_ += "circle" + described(style) + described(centre) + " " + page_number(radius) + "\n";
}

void RecordingPainter::disc(PagePoint centre, double radius, std::uint32_t colour) {
  recording_ += "disc colour=" + page_colour(colour) + described(centre) + " " + page_number(radius) + "\n";
}

TextSize RecordingPainter::measure(const std::string& text, const TextStyle& style) {
  const auto characters = std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
  return {kWidth * style.size * static_cast<double>(characters), kAscent * style.size, kDescent * style.size};
}

void RecordingPainter::draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                                 const TextSize& /*size*/) {
  recording_ += "text size=" + page_number(style.size) + (style.bold ? " bold" : "") +
                " colour=" + page_colour(style.colour) + " " + word(place.along) + "+" + word(place.across) +
                (place.angle == 0 ? "" : " angle=" + page_number(place.angle)) + described(place.at) + " \"" +
                text + "\"\n";
}

void RecordingPainter::begin_group(const std::string& name) {
  recording_ += "group \"" + name + "\"\n";
}

void RecordingPainter::end_group() {
  recording_ += "end\n";
}

}  // namespace tavdhost
