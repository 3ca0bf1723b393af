// Drawing a flow diagram, and the tools that it needs.
#pragma once

#include "diagram/flowdiagram.h"
#include "tavd/types.h"

namespace tavd {

// Pens and font live for the time of one paint. Those of a former one are deleted first.
void create_tools(FlowDiagram& dg);
void destroy_tools(FlowDiagram& dg);

// Chart, curves and marks; nothing before a build succeeded.
void draw(const FlowDiagram& dg, tavd_hdc hdc);

}  // namespace tavd
