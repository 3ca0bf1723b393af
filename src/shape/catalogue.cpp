#include "shape/catalogue.h"

#include "shape/picture.h"

namespace tavd {
namespace {

struct NumberedDrawer {
  std::int16_t number;
  void (*draw)(const ShapeCanvas& canvas);
};

constexpr NumberedDrawer kDrawers[] = {
    {101, shape_101}, {107, shape_107}, {111, shape_101}, {160, shape_160},
    {163, shape_163}, {164, shape_164}, {165, shape_165}, {180, shape_180},
    {181, shape_180}, {182, shape_180}, {183, shape_180},
};

const Sketch* find_sketch(int number) {
  for (const std::span<const NumberedSketch> range :
       {sketches_102_106(), sketches_109_114(), sketches_115_119(), sketches_120_124(), sketches_125_129(),
        sketches_130_151(), sketches_170_192()}) {
    for (const NumberedSketch& each : range) {
      if (each.number == number) return each.sketch;
    }
  }
  return nullptr;
}

}  // namespace

void draw_shape(const ShapeCanvas& canvas) {
  const int number = canvas.state.values[0];
  for (const NumberedDrawer& each : kDrawers) {
    if (each.number == number) {
      each.draw(canvas);
      return;
    }
  }
  if (const Sketch* const sketch = find_sketch(number)) draw_sketch(canvas, *sketch);
}

}  // namespace tavd
