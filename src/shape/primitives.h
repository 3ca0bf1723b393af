// What sketches are drawn with. Coordinates are drawing units: x from 0 to 500, y from 0 to 800 below the
// title, y downward; a product's values are mm and are only written, except where a drawing is to scale.
#pragma once

#include <cstddef>

#include "shape/picture.h"

namespace tavd {

inline constexpr std::size_t kDimensionTextSize = 32;
using DimensionText = char[kDimensionTextSize];

// Device units of a drawing unit. The 0.1 keeps points of scales such as 1/3 from falling one unit short.
int pic_x(const ShapeCanvas& canvas, int x);
int pic_y(const ShapeCanvas& canvas, int y);

void pic_moveto(const ShapeCanvas& canvas, int x, int y);
void pic_lineto(const ShapeCanvas& canvas, int x, int y);
void pic_line(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2);
void pic_rect(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2);
// Filled with the selected brush, so that it hides what was drawn under it. An ellipse where the picture's
// two scales differ.
void pic_circle(const ShapeCanvas& canvas, int x, int y, int r);
// Counter-clockwise part of the ellipse in the rectangle of the first two points, from the ray from its
// centre to the third to the ray to the fourth. Not filled.
void pic_arc(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, int xs, int ys, int xe, int ye);
// With the alignment that is set.
void pic_text(const ShapeCanvas& canvas, int x, int y, const char* text);

// The head of an arrow whose tip is at x, y and points to 3, 6, 9 or 12 on a clock.
void pic_arrow(const ShapeCanvas& canvas, int x, int y, int clock);

// A dimension line with arrows outward and a text: on the line if that is longer across than down, right of
// it otherwise. The left or upper end comes first. pen_thin and the text's alignment stay selected.
void pic_dim(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, const char* text);
void pic_dim_value(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, int i);
void pic_dim_number(const ShapeCanvas& canvas, int x1, int y1, int x2, int y2, int n);

// The text of value `i` of the product: "##" if it does not have that many.
void pic_value_text(const ShapeState& picture, DimensionText& text, int i);

// The mark of a centre: a circle with two diagonals. pen_thin stays selected.
void pic_centre(const ShapeCanvas& canvas, int x, int y);

}  // namespace tavd
