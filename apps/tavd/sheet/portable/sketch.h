// The dimensioned sketch of a product on a page: the drawing that the library makes, operation by operation,
// as large as its box allows and in the middle of it. It is without its title, which the page has already.
#pragma once

#include <string>

#include "drawing/own_drawings.h"
#include "sheet/box.h"

struct _cairo;

namespace tavdhost {

// On a context of Cairo whose units are points.
void draw_sketch(struct _cairo* context, const Box& box, const DrawingSource& source);

// As a whole file of SVG, cut to the drawing; empty for a shape without one.
std::string sketch_svg(const DrawingSource& source);

}  // namespace tavdhost
