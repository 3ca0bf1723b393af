// What a paint comes down to in device units, so that another plotting library can draw the same picture.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "tavdgui/tavdgui.h"

namespace bench {

struct SketchPen {
  double width;          // device units
  std::uint32_t colour;  // 0x00BBGGRR
  int style;             // TGUI_PEN_ values
  auto operator<=>(const SketchPen&) const = default;
};

// A line through two or more points.
struct SketchLine {
  SketchPen pen;
  std::vector<double> x, y;
  auto operator<=>(const SketchLine&) const = default;
};

struct SketchEllipse {
  SketchPen pen;
  double x, y, rx, ry;
  std::uint32_t fill;  // 0x00BBGGRR
};

struct SketchText {
  double x, y, size, angle;  // device units, degrees counter-clockwise
  int align;                 // -1 left, 0 centre, 1 right
  int above;                 // -1 below the point, 0 on it as its baseline, 1 above
  std::uint32_t colour;
  std::string text;
  auto operator<=>(const SketchText&) const = default;
};

struct Sketch {
  std::vector<SketchLine> lines;
  std::vector<SketchEllipse> ellipses;
  std::vector<SketchText> texts;

  // Steps that go on where the last one ended are one line; what is drawn twice stands here once.
  // Arcs are left out.
  static Sketch of(int width, int height, void (*paint)(tgui_surface* surface, void* context), void* context);
};

}  // namespace bench
