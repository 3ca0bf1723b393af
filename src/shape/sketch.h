// A sketch as data: what a drawing of the shape catalogue shows, in tables that one function draws in the
// order that all drawings share.
//
// The plane is 500 wide and 800 high, y downward; the title stands above it. A sketch is a pictogram: usually
// a side view in the upper half and a front or plan view below it, on a shared centre line. It does not
// change with the product; what changes is the numbers on its dimension lines. How to write one:
//
//   namespace s199 {
//   constexpr Figure outline[] = {stroke({{90, 60}, {90, 240}, {330, 240}}), circle({210, 560}, 120)};
//   constexpr Figure hidden[] = {stroke({{210, 400}, {210, 720}})};
//   constexpr Dimension dimensions[] = {
//       across(1, {90, 240}, {330, 240}, 300),  // value 1, below the view, line at y = 300
//       down(2, {330, 60}, {330, 240}, 380),    // value 2, right of the view, line at x = 380
//       across(kDiameter, {150, 560}, {270, 560}, 730)};
//   constexpr Point centres[] = {{210, 150}, {210, 560}};
//   }
//   constexpr Sketch kSketch199 = {.outline = s199::outline, .hidden = s199::hidden, ...};
//
// and an entry {199, &kSketch199} in the table at the end of the file.
//
// Drawn in this order: outline (thick pen), added outline, hidden edges and centre lines (dotted pen), fine
// detail and extension lines (thin pen), dimensions in the order of their table, sizes of the connection with
// their extension lines, free texts, centre marks.
//
// What to mind
// - A circle hides what was drawn under it: draw the outer one first, and lines inside it later.
// - A dimension names two points of the object, the left or upper one first, and where its line runs; the two
//   extension lines follow from that. They start 9 units off the point and end 10 behind the line; a point on
//   the line has none.
// - A text of five digits is 84 units wide and stands 34 high: on a line across in its middle, so that
// the line
//   should be 90 long; 5 units to the right of a line down, so that 90 units to the right of it should be
//   free.
// - rect() is for the shapes that are counted with rectangles; the outlines of others are box() and stroke().
// - Tests: exported/shape/catalogue_test.cpp has the values and counts that each sketch must have, and
//   legibility_test.cpp checks that texts and dimension lines are clear of everything:
//   test_shape --gtest_filter="*/118*". Look at it too: tavd gallery --shapes -o DIR.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>

#include "shape/picture.h"

namespace tavd {

struct Point {
  std::int16_t x, y;
  bool operator==(const Point&) const = default;
};

// ---- What is drawn ----

inline constexpr int kMostPoints = 16;  // of a stroke

struct Figure {
  enum class Kind : std::int8_t { kStroke, kCircle, kArc, kRectangle };
  Kind kind{};
  std::int8_t count = 0;  // points used
  std::int16_t radius = 0;
  Point points[kMostPoints] = {};
};

// A line through the points, open unless the last is the first.
constexpr Figure stroke(std::initializer_list<Point> points) {
  Figure figure{.kind = Figure::Kind::kStroke};
  for (const Point& point : points) figure.points[figure.count++] = point;
  return figure;
}

// A closed outline that is part of a larger one; it starts in the middle of the upper edge.
constexpr Figure box(Point corner, Point opposite) {
  const Point start = {static_cast<std::int16_t>((corner.x + opposite.x) / 2), corner.y};
  return stroke({start, {opposite.x, corner.y}, opposite, {corner.x, opposite.y}, corner, start});
}

constexpr Figure line(Point from, Point to) {
  return stroke({from, to});
}

constexpr Figure circle(Point centre, std::int16_t radius) {
  return {.kind = Figure::Kind::kCircle, .count = 1, .radius = radius, .points = {centre}};
}

// Counter-clockwise from the ray through `from` to the ray through `to`, on the ellipse in the rectangle.
constexpr Figure arc(Point corner, Point opposite, Point from, Point to) {
  return {.kind = Figure::Kind::kArc, .count = 4, .points = {corner, opposite, from, to}};
}

constexpr Figure rect(Point corner, Point opposite) {
  return {.kind = Figure::Kind::kRectangle, .count = 2, .points = {corner, opposite}};
}

// ---- What is written ----

// What a dimension line says: numbers of the product's values, or the size of its connection.
struct Measure {
  enum class Kind : std::int8_t { kValue, kTotal, kSum, kDifference, kHalf, kDiameter, kWidthByHeight };
  consteval Measure(int value) : i(static_cast<std::int8_t>(value)) {}  // NOLINT: reads as a number
  consteval Measure(Kind what, int first, int second, int from)
      : kind(what),
        i(static_cast<std::int8_t>(first)),
        j(static_cast<std::int8_t>(second)),
        threshold(static_cast<std::int8_t>(from)) {}
  Kind kind = Kind::kValue;
  std::int8_t i = 0, j = 0;
  std::int8_t threshold = 0;  // number of values
};

// Value i, and from `threshold` values up the sum of the values i and j: the product then has one part more.
consteval Measure total(int threshold, int i, int j) {
  return {Measure::Kind::kTotal, i, j, threshold};
}
consteval Measure sum(int i, int j) {
  return {Measure::Kind::kSum, i, j, 0};
}
consteval Measure difference(int i, int j) {
  return {Measure::Kind::kDifference, i, j, 0};
}
consteval Measure half(int i) {
  return {Measure::Kind::kHalf, i, 0, 0};
}
// "125" and "400x200"; left out for products without a flow data header.
inline constexpr Measure kDiameter{Measure::Kind::kDiameter, 0, 0, 0};
inline constexpr Measure kWidthByHeight{Measure::Kind::kWidthByHeight, 0, 0, 0};

struct Dimension {
  Measure measure;
  bool is_across;
  Point from, to;   // of the object: the left or upper one first
  std::int16_t at;  // y of a line across, x of a line down
};

constexpr Dimension across(Measure measure, Point from, Point to, std::int16_t y) {
  return {measure, true, from, to, y};
}
constexpr Dimension down(Measure measure, Point from, Point to, std::int16_t x) {
  return {measure, false, from, to, x};
}

// Value `i` as it stands, without a line; `at` is the lower left corner of the text.
struct FreeText {
  int i;
  Point at;
};

// ---- The whole ----

struct Sketch {
  std::span<const Figure> outline = {};
  std::span<const Figure> added = {};  // more outline from `added_from` values up
  int added_from = 0;
  std::span<const Figure> hidden = {};
  std::span<const Figure> fine = {};
  std::span<const Dimension> dimensions = {};
  std::span<const FreeText> texts = {};
  std::span<const Point> centres = {};
};
inline constexpr Sketch kNoSketch = {};

void draw_sketch(const ShapeCanvas& canvas, const Sketch& sketch);
// Several as one: the outlines of all, then the hidden edges of all, and so on.
void draw_sketches(const ShapeCanvas& canvas, std::initializer_list<const Sketch*> parts);
void draw_sketches(const ShapeCanvas& canvas, std::span<const Sketch* const> parts);

struct NumberedSketch {
  std::int16_t number;
  const Sketch* sketch;
};

}  // namespace tavd
