// Rectangles of a picture, and lines cut to them.
#pragma once

#include <cstdint>
#include <optional>

namespace tavdhost {

struct Area {
  std::int32_t left, top, right, bottom;

  std::int32_t width() const { return right - left; }
  std::int32_t height() const { return bottom - top; }
  bool operator==(const Area&) const = default;
  bool holds(std::int32_t x, std::int32_t y) const {
    return x >= left && x <= right && y >= top && y <= bottom;
  }
};

// How far something reaches, between pixels.
struct Extent {
  double left, top, right, bottom;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
};

struct Line {
  std::int32_t x1, y1, x2, y2;
};

// The part of the line that lies in the window; nothing if none does.
std::optional<Line> cut_line(const Line& line, const Area& window);

}  // namespace tavdhost
