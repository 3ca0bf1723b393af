#include "drawing/area.h"

#include <algorithm>
#include <cmath>

namespace tavdhost {
namespace {

// The part of a line that lies in the window, from 0 at its start to 1 at its end.
struct Part {
  double from = 0;
  double to = 1;
  bool is_empty() const { return from > to; }
};

// Keeps what lies between `low` and `high` on one axis of a line from `start`, `delta` long.
void keep(Part& part, double start, double delta, double low, double high) {
  if (delta == 0) {
    if (start < low || start > high) part.to = -1;
    return;
  }
  const double a = (low - start) / delta;
  const double b = (high - start) / delta;
  part.from = std::max(part.from, std::min(a, b));
  part.to = std::min(part.to, std::max(a, b));
}

std::int32_t along(std::int32_t start, std::int32_t delta, double part) {
  return start + static_cast<std::int32_t>(std::lround(delta * part));
}

}  // namespace

std::optional<Line> cut_line(const Line& line, const Area& window) {
  const std::int32_t dx = line.x2 - line.x1;
  const std::int32_t dy = line.y2 - line.y1;
  Part part;
  keep(part, line.x1, dx, window.left, window.right);
  keep(part, line.y1, dy, window.top, window.bottom);
  if (part.is_empty()) return {};
  return Line{along(line.x1, dx, part.from), along(line.y1, dy, part.from), along(line.x1, dx, part.to),
              along(line.y1, dy, part.to)};
}

}  // namespace tavdhost
