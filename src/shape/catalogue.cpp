#include "shape/catalogue.h"

#include "shape/picture.h"

namespace tavd {
namespace {

const Sketch* find_sketch(int number) {
  for (const std::span<const NumberedSketch> range : {sketches_102_106()}) {
    for (const NumberedSketch& each : range) {
      if (each.number == number) {
        return each.sketch;
      }
    }
  }
  return nullptr;
}

}  // namespace

void draw_shape(tavd_hdc hdc) {
  const int number = shp.values[0];
  switch (number) {
    case 101:
    case 111:
      shape_101(hdc);
      break;
    case 107:
      shape_107(hdc);
      break;
    default:
      if (const Sketch* const sketch = find_sketch(number)) {
        draw_sketch(hdc, *sketch);
      }
  }
}

}  // namespace tavd
