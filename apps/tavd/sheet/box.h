// Places on a page: millimetres from its upper left corner, y downward.
#pragma once

namespace tavdhost {

struct PagePoint {
  double x, y;
};

struct Box {
  double left, top, width, height;

  double right() const { return left + width; }
  double bottom() const { return top + height; }
  bool operator==(const Box&) const = default;
};

}  // namespace tavdhost
