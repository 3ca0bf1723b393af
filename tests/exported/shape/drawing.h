// A recorded shape picture taken apart: strokes by pen, figures, dimensions with what they say, free texts.
#pragma once

#include <string>
#include <vector>

namespace tavdtest {

struct Position {
  int x, y;
  bool operator==(const Position&) const = default;
};

enum class Pen { kOther, kThick, kDot, kThin };

struct Stroke {
  Pen pen;
  std::vector<Position> points;
};

struct Figure {
  Pen pen;
  int left, top, right, bottom;
  Position from, to;  // of an arc: points on the rays, counter-clockwise
};

struct Label {
  std::string text;
  Position at;        // the reference point
  std::string align;  // "center+bottom"
};

struct DimensionLine {
  Position from, to;
  Label label;
};

struct Drawing {
  Label title;
  std::vector<Pen> pens;        // as selected below the title, without repetitions
  std::vector<Stroke> strokes;  // all but those of arrows, dimension lines and centre marks
  std::vector<Stroke> arrows;
  std::vector<Figure> circles;  // all but those of centre marks
  std::vector<Figure> arcs;
  std::vector<Position> centres;
  std::vector<DimensionLine> dimensions;
  std::vector<Label> texts;  // without a dimension line

  // Closed strokes of four sides along the axes.
  int rectangles() const;
  // What the dimension lines say, in order; and the free texts.
  std::vector<std::string> said() const;
  std::vector<std::string> written() const;
};

// Takes the recording of tavdshapepic_draw apart. The first text is the title.
Drawing read_drawing(const std::vector<std::string>& lines);

}  // namespace tavdtest
