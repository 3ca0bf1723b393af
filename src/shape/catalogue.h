// The drawers of all shapes. Most are sketches in tables, by range of their numbers; the others decide by the
// product's values what to draw.
#pragma once

#include <span>

#include "shape/sketch.h"
#include "tavd/types.h"

namespace tavd {

// Sketches that are the same for every product of the shape.
std::span<const NumberedSketch> sketches_102_106();
std::span<const NumberedSketch> sketches_109_114();
std::span<const NumberedSketch> sketches_115_119();
std::span<const NumberedSketch> sketches_120_124();
std::span<const NumberedSketch> sketches_125_129();
std::span<const NumberedSketch> sketches_130_151();
std::span<const NumberedSketch> sketches_170_192();

// Drawers that decide. Each draws in the order that all sketches share.
void shape_101(const ShapeCanvas& canvas);
void shape_107(const ShapeCanvas& canvas);
void shape_160(const ShapeCanvas& canvas);
void shape_163(const ShapeCanvas& canvas);
void shape_164(const ShapeCanvas& canvas);
void shape_165(const ShapeCanvas& canvas);
void shape_180(const ShapeCanvas& canvas);  // 180 to 183

}  // namespace tavd
