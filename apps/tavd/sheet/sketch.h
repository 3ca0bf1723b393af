// The dimensioned sketch of a product on a page: the drawing that the library makes, operation by operation.
#pragma once

#include "drawing/own_drawings.h"
#include "sheet/page_surface.h"

namespace tavdhost {

// As large as the box allows, in its middle, without the title that the page has already. False if the shape has no
// drawing.
bool draw_sketch(const PageSurface& page, const Box& box, const DrawingSource& source);

}  // namespace tavdhost
