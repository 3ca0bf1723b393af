// The drawers of all shapes. Most are sketches in tables, by range of their numbers; the others decide by the
// product's values what to draw.
#pragma once

#include <span>

#include "shape/sketch.h"
#include "tavd/types.h"

namespace tavd {

// Sketches that are the same for every product of the shape.
std::span<const NumberedSketch> sketches_102_106();

// Drawers that decide. Each draws in the order that all sketches share.
void shape_101(tavd_hdc hdc);
void shape_107(tavd_hdc hdc);

}  // namespace tavd
