// Broken lines. GDI breaks only lines that are one of its pixels wide; shades and prints make them wider.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <vector>

namespace tavdhost {

struct DashPoint {
  double x, y;
};

struct Dash {
  DashPoint from, to;
};

// Lengths of dashes and gaps in turn, in widths of the pen; none: the pen draws whole lines.
std::span<const double> dash_pattern(UINT pen_style);

// Cuts lines behind each other into dashes.
class Dashes {
 public:
  // `pen_width` in the units of the points.
  Dashes(std::span<const double> pattern, double pen_width) : pattern_(pattern), pen_width_(pen_width) {}

  // The next line begins with a dash.
  void restart();
  std::vector<Dash> cut(DashPoint from, DashPoint to);

 private:
  std::span<const double> pattern_;
  double pen_width_;
  std::size_t at_ = 0;  // of the pattern
  double used_ = 0;     // of its length there
};

// Points on the ellipse in a rectangle, against the clock from the ray through `start` to that through `end`;
// all around if the two are the same.
std::vector<DashPoint> ellipse_points(const RECTL& box, POINTL start, POINTL end);

}  // namespace tavdhost
