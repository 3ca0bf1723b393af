// Drawing a throw length diagram, and the tools that it needs.
#pragma once

#include "diagram/throwdiagram.h"
#include "tavd/types.h"

namespace tavd {

// Pens and font live for the time of one paint. Those of a former one are deleted first.
void create_tools(ThrowDiagram& dg);
void destroy_tools(ThrowDiagram& dg);

// Chart, throw line and mark; nothing without a chart. Stores the throw length of the operating point.
void draw(ThrowDiagram& dg, const ThrowChoices& choices, tavd_hdc hdc);

}  // namespace tavd
