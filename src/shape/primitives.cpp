#include "shape/primitives.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/gwgdi.h"
#include "base/held.h"
#include "shape/picture.h"

namespace tavd {
namespace {

int device(int origin, double scale, int coordinate) {
  constexpr double kNudge = 0.1;  // device units
  return moved(origin, held<int>(std::floor(scale * coordinate + kNudge)));
}

// Between two device coordinates.
int distance(int from, int to) {
  return held<int>(std::int64_t{to} - from);
}

}  // namespace

int pic_x(int x) {
  return device(shp.pic_left, shp.pic_xscale, x);
}

int pic_y(int y) {
  return device(shp.pic_origin_y, shp.pic_yscale, y);
}

void pic_moveto(tavd_hdc hdc, int x, int y) {
  gwmoveto(hdc, pic_x(x), pic_y(y));
}

void pic_lineto(tavd_hdc hdc, int x, int y) {
  gwlineto(hdc, pic_x(x), pic_y(y));
}

void pic_line(tavd_hdc hdc, int x1, int y1, int x2, int y2) {
  pic_moveto(hdc, x1, y1);
  pic_lineto(hdc, x2, y2);
}

void pic_rect(tavd_hdc hdc, int x1, int y1, int x2, int y2) {
  pic_moveto(hdc, x1, y1);
  pic_lineto(hdc, x2, y1);
  pic_lineto(hdc, x2, y2);
  pic_lineto(hdc, x1, y2);
  pic_lineto(hdc, x1, y1);
}

void pic_circle(tavd_hdc hdc, int x, int y, int r) {
  const int rx = distance(pic_x(0), pic_x(r));
  const int ry = distance(pic_y(0), pic_y(r));
  const int cx = pic_x(x);
  const int cy = pic_y(y);
  gwellipse(hdc, distance(rx, cx), distance(ry, cy), moved(cx, rx), moved(cy, ry));
}

void pic_arc(tavd_hdc hdc, int x1, int y1, int x2, int y2, int xs, int ys, int xe, int ye) {
  gwarc(hdc, pic_x(x1), pic_y(y1), pic_x(x2), pic_y(y2), pic_x(xs), pic_y(ys), pic_x(xe), pic_y(ye));
}

void pic_text(tavd_hdc hdc, int x, int y, const char* text) {
  gwtextoutn(hdc, pic_x(x), pic_y(y), text, static_cast<int>(std::strlen(text)));
}

void pic_arrow(tavd_hdc hdc, int x, int y, int clock) {
  constexpr int kLength = 12;
  constexpr int kHalfWidth = 6;
  struct Barbs {
    int clock, x1, y1, x2, y2;  // from the tip
  };
  static constexpr Barbs kHeads[] = {
      {3, -kLength, kHalfWidth, -kLength, -kHalfWidth},
      {6, -kHalfWidth, -kLength, kHalfWidth, -kLength},
      {9, kLength, kHalfWidth, kLength, -kHalfWidth},
      {12, -kHalfWidth, kLength, kHalfWidth, kLength},
  };
  for (const Barbs& head : kHeads) {
    if (head.clock == clock) {
      pic_moveto(hdc, moved(x, head.x1), moved(y, head.y1));
      pic_lineto(hdc, x, y);
      pic_lineto(hdc, moved(x, head.x2), moved(y, head.y2));
    }
  }
}

void pic_dim(tavd_hdc hdc, int x1, int y1, int x2, int y2, const char* text) {
  constexpr int kTextRightOfLine = 5;
  constexpr int kTextBelowMiddle = 18;  // where the bottom of a text of the default height belongs
  const std::int64_t across = std::int64_t{x1} - x2;
  const std::int64_t down = std::int64_t{y1} - y2;
  gwselect(hdc, shp.pen_thin);
  pic_line(hdc, x1, y1, x2, y2);
  if (std::abs(across) > std::abs(down)) {
    pic_arrow(hdc, x1, y1, 9);
    pic_arrow(hdc, x2, y2, 3);
    gwtextalign(hdc, kAlignCenterBottom);
    pic_text(hdc, held<int>((std::int64_t{x1} + x2) / 2), y1, text);
  } else {
    pic_arrow(hdc, x1, y1, 12);
    pic_arrow(hdc, x2, y2, 6);
    gwtextalign(hdc, kAlignLeftBottom);
    pic_text(hdc, moved(x1, kTextRightOfLine), held<int>((std::int64_t{y1} + y2) / 2 + kTextBelowMiddle),
             text);
  }
}

void pic_dim_value(tavd_hdc hdc, int x1, int y1, int x2, int y2, int i) {
  DimensionText sz;
  pic_value_text(sz, i);
  pic_dim(hdc, x1, y1, x2, y2, sz);
}

void pic_dim_number(tavd_hdc hdc, int x1, int y1, int x2, int y2, int n) {
  DimensionText sz;
  std::snprintf(sz, sizeof sz, "%d", n);
  pic_dim(hdc, x1, y1, x2, y2, sz);
}

void pic_value_text(DimensionText& text, int i) {
  if (i >= 0 && i < shp.nvalues && i < kShapeWords) {
    std::snprintf(text, sizeof text, "%hd", shp.values[i]);
  } else {
    std::strcpy(text, "##");
  }
}

void pic_centre(tavd_hdc hdc, int x, int y) {
  gwselect(hdc, shp.pen_thin);
  // Parts of the rectangle's width in device units, used as drawing units: 10 and 6 by default.
  const std::int64_t w = std::int64_t{shp.pic_right} - shp.pic_left;
  const int radius = held<int>(w / 50);
  const int c = held<int>(w / 80);
  pic_circle(hdc, x, y, radius);
  pic_line(hdc, moved(x, -c), moved(y, -c), moved(x, c), moved(y, c));
  pic_line(hdc, moved(x, -c), moved(y, c), moved(x, c), moved(y, -c));
}

}  // namespace tavd
