#include "shape/sketch.h"

#include <cstdio>

#include "base/gwgdi.h"
#include "shape/picture.h"
#include "shape/primitives.h"

namespace tavd {
namespace {

constexpr int kGap = 9;       // between object and extension line
constexpr int kOverrun = 10;  // of extension lines behind the dimension line

void draw_stroke(const ShapeCanvas& canvas, const Figure& figure) {
  pic_moveto(canvas, figure.points[0].x, figure.points[0].y);
  for (int i = 1; i < figure.count; ++i) pic_lineto(canvas, figure.points[i].x, figure.points[i].y);
}

void draw_figure(const ShapeCanvas& canvas, const Figure& figure) {
  const Point* const p = figure.points;
  switch (figure.kind) {
    case Figure::Kind::kStroke:
      draw_stroke(canvas, figure);
      break;
    case Figure::Kind::kCircle:
      pic_circle(canvas, p[0].x, p[0].y, figure.radius);
      break;
    case Figure::Kind::kArc:
      pic_arc(canvas, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
      break;
    case Figure::Kind::kRectangle:
      pic_rect(canvas, p[0].x, p[0].y, p[1].x, p[1].y);
      break;
  }
}

void draw_figures(const ShapeCanvas& canvas, std::span<const Figure> figures) {
  for (const Figure& figure : figures) draw_figure(canvas, figure);
}

// From a point of the object to behind a dimension line, along one axis; nothing if the line is no farther
// away than the gap.
bool extension(int object, int line, int* start, int* end) {
  const int direction = line < object ? -1 : 1;
  *start = object + direction * kGap;
  *end = line + direction * kOverrun;
  return (line - object) * direction > kGap;
}

void draw_extensions(const ShapeCanvas& canvas, const Dimension& dimension) {
  for (const Point& point : {dimension.from, dimension.to}) {
    int start = 0;
    int end = 0;
    if (dimension.is_across && extension(point.y, dimension.at, &start, &end)) {
      pic_line(canvas, point.x, start, point.x, end);
    } else if (!dimension.is_across && extension(point.x, dimension.at, &start, &end)) {
      pic_line(canvas, start, point.y, end, point.y);
    }
  }
}

// Values that the product does not have are 0.
int number_of(const ShapeState& picture, const Measure& measure) {
  const int first = picture.values[measure.i];
  const int second = picture.values[measure.j];
  switch (measure.kind) {
    case Measure::Kind::kTotal:
    case Measure::Kind::kSum:
      return first + second;
    case Measure::Kind::kDifference:
      return first - second;
    case Measure::Kind::kHalf:
      return first / 2;
    default:
      return first;
  }
}

bool is_connection(const Measure& measure) {
  return measure.kind == Measure::Kind::kDiameter || measure.kind == Measure::Kind::kWidthByHeight;
}

void draw_dimension(const ShapeCanvas& canvas, const Dimension& d) {
  const Measure& measure = d.measure;
  const int x1 = d.is_across ? d.from.x : d.at;
  const int y1 = d.is_across ? d.at : d.from.y;
  const int x2 = d.is_across ? d.to.x : d.at;
  const int y2 = d.is_across ? d.at : d.to.y;
  const bool is_value = measure.kind == Measure::Kind::kValue ||
                        (measure.kind == Measure::Kind::kTotal && canvas.state.nvalues < measure.threshold);
  if (is_connection(measure)) {
    DimensionText sz;
    if (measure.kind == Measure::Kind::kDiameter) {
      std::snprintf(sz, sizeof sz, "%d", canvas.state.header.b);
    } else {
      std::snprintf(sz, sizeof sz, "%dx%d", canvas.state.header.b, canvas.state.header.h);
    }
    pic_dim(canvas, x1, y1, x2, y2, sz);
  } else if (is_value) {
    pic_dim_value(canvas, x1, y1, x2, y2, measure.i);
  } else {
    pic_dim_number(canvas, x1, y1, x2, y2, number_of(canvas.state, measure));
  }
}

// The sizes of the connection, or all but those.
template <typename Draw>
void each_dimension(std::span<const Sketch* const> parts, bool connections, Draw draw) {
  for (const Sketch* part : parts) {
    for (const Dimension& dimension : part->dimensions) {
      if (is_connection(dimension.measure) == connections) draw(dimension);
    }
  }
}

void draw_dimensions(const ShapeCanvas& canvas, std::span<const Sketch* const> parts, bool connections) {
  each_dimension(parts, connections, [&canvas](const Dimension& d) { draw_extensions(canvas, d); });
  each_dimension(parts, connections, [&canvas](const Dimension& d) { draw_dimension(canvas, d); });
}

void draw_texts(const ShapeCanvas& canvas, std::span<const FreeText> texts) {
  for (const FreeText& text : texts) {
    DimensionText sz;
    pic_value_text(canvas.state, sz, text.i);
    gwtextalign(canvas.hdc, kAlignLeftBottom);
    pic_text(canvas, text.at.x, text.at.y, sz);
  }
}

bool has_hidden_edges(std::span<const Sketch* const> parts) {
  for (const Sketch* part : parts) {
    if (!part->hidden.empty()) return true;
  }
  return false;
}

}  // namespace

void draw_sketch(const ShapeCanvas& canvas, const Sketch& sketch) {
  draw_sketches(canvas, {&sketch});
}

void draw_sketches(const ShapeCanvas& canvas, std::initializer_list<const Sketch*> parts) {
  draw_sketches(canvas, std::span(parts.begin(), parts.size()));
}

void draw_sketches(const ShapeCanvas& canvas, std::span<const Sketch* const> parts) {
  gwselect(canvas.hdc, canvas.state.pen_thick);
  for (const Sketch* part : parts) {
    draw_figures(canvas, part->outline);
    if (canvas.state.nvalues >= part->added_from) draw_figures(canvas, part->added);
  }
  if (has_hidden_edges(parts)) {
    gwselect(canvas.hdc, canvas.state.pen_dot);
    for (const Sketch* part : parts) draw_figures(canvas, part->hidden);
  }
  gwselect(canvas.hdc, canvas.state.pen_thin);
  for (const Sketch* part : parts) draw_figures(canvas, part->fine);
  draw_dimensions(canvas, parts, false);
  if (canvas.state.nheader != 0) draw_dimensions(canvas, parts, true);
  for (const Sketch* part : parts) draw_texts(canvas, part->texts);
  for (const Sketch* part : parts) {
    for (const Point& centre : part->centres) pic_centre(canvas, centre.x, centre.y);
  }
}

}  // namespace tavd
