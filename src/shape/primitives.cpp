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

int pic_x(const ShapeCanvas& canvas, int x) {
  return device(canvas.state.pic_left, canvas.state.pic_xscale, x);
}

int pic_y(const ShapeCanvas& canvas, int y) {
  return device(canvas.state.pic_origin_y, canvas.state.pic_yscale, y);
}

void pic_moveto(const ShapeCanvas& canvas, int x, int y) {
  gwmoveto(canvas.hdc, pic_x(canvas, x), pic_y(canvas, y));
}

void pic_lineto(const ShapeCanvas& canvas, int x, int y) {
  gwlineto(canvas.hdc, pic_x(canvas, x), pic_y(canvas, y));
}

void pic_line(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2) {
  pic_moveto(canvas, x1, y1);
  pic_lineto(canvas, x2, y2);
}

void pic_rect(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2) {
  pic_moveto(canvas, x1, y1);
  pic_lineto(canvas, x2, y1);
  pic_lineto(canvas, x2, y2);
  pic_lineto(canvas, x1, y2);
  pic_lineto(canvas, x1, y1);
}

void pic_circle(const ShapeCanvas& canvas, int x, int y, int r) {
  const int rx = distance(pic_x(canvas, 0), pic_x(canvas, r));
  const int ry = distance(pic_y(canvas, 0), pic_y(canvas, r));
  const int cx = pic_x(canvas, x);
  const int cy = pic_y(canvas, y);
  gwellipse(canvas.hdc, distance(rx, cx), distance(ry, cy), moved(cx, rx), moved(cy, ry));
}

void pic_arc(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, int xs, int ys, int xe, int ye) {
  gwarc(canvas.hdc, pic_x(canvas, x1), pic_y(canvas, y1), pic_x(canvas, x2), pic_y(canvas, y2),
        pic_x(canvas, xs), pic_y(canvas, ys), pic_x(canvas, xe), pic_y(canvas, ye));
}

void pic_text(const ShapeCanvas& canvas, int x, int y, const char* text) {
  gwtextoutn(canvas.hdc, pic_x(canvas, x), pic_y(canvas, y), text, static_cast<int>(std::strlen(text)));
}

void pic_arrow(const ShapeCanvas& canvas, int x, int y, int clock) {
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
      pic_moveto(canvas, moved(x, head.x1), moved(y, head.y1));
      pic_lineto(canvas, x, y);
      pic_lineto(canvas, moved(x, head.x2), moved(y, head.y2));
    }
  }
}

void pic_dim(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, const char* text) {
  constexpr int kTextRightOfLine = 5;
  constexpr int kTextBelowMiddle = 18;  // where the bottom of a text of the default height belongs
  const std::int64_t across = std::int64_t{x1} - x2;
  const std::int64_t down = std::int64_t{y1} - y2;
  gwselect(canvas.hdc, canvas.state.pen_thin);
  pic_line(canvas, x1, y1, x2, y2);
  if (std::abs(across) > std::abs(down)) {
    pic_arrow(canvas, x1, y1, 9);
    pic_arrow(canvas, x2, y2, 3);
    gwtextalign(canvas.hdc, kAlignCenterBottom);
    pic_text(canvas, held<int>((std::int64_t{x1} + x2) / 2), y1, text);
  } else {
    pic_arrow(canvas, x1, y1, 12);
    pic_arrow(canvas, x2, y2, 6);
    gwtextalign(canvas.hdc, kAlignLeftBottom);
    pic_text(canvas, moved(x1, kTextRightOfLine), held<int>((std::int64_t{y1} + y2) / 2 + kTextBelowMiddle),
             text);
  }
}

void pic_dim_value(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, int i) {
  DimensionText sz;
  pic_value_text(canvas.state, sz, i);
  pic_dim(canvas, x1, y1, x2, y2, sz);
}

void pic_dim_number(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, int n) {
  DimensionText sz;
  std::snprintf(sz, sizeof sz, "%d", n);
  pic_dim(canvas, x1, y1, x2, y2, sz);
}

void pic_value_text(const ShapeState& picture, DimensionText& text, int i) {
  if (i >= 0 && i < picture.nvalues && i < kShapeWords) {
    std::snprintf(text, sizeof text, "%hd", picture.values[i]);
  } else {
    std::snprintf(text, sizeof text, "##");
  }
}

void pic_centre(const ShapeCanvas& canvas, int x, int y) {
  gwselect(canvas.hdc, canvas.state.pen_thin);
  // Parts of the rectangle's width in device units, used as drawing units: 10 and 6 by default.
  const std::int64_t w = std::int64_t{canvas.state.pic_right} - canvas.state.pic_left;
  const int radius = held<int>(w / 50);
  const int c = held<int>(w / 80);
  pic_circle(canvas, x, y, radius);
  pic_line(canvas, moved(x, -c), moved(y, -c), moved(x, c), moved(y, c));
  pic_line(canvas, moved(x, -c), moved(y, c), moved(x, c), moved(y, -c));
}

}  // namespace tavd
