// From a product to a flow diagram that can be drawn.
#pragma once

#include "diagram/flowdiagram.h"
#include "diagram/savedparameters.h"
#include "tavd/types.h"

namespace tavd {

// Loads a product, with the remembered parameter choices, and makes the chart over its own limits. False if
// there is no product or its limits can't be drawn; the diagram is then left without a chart.
bool build(FlowDiagram& dg, const SavedParameters& choices, tavb_rec rec);

// The last step of that, for a diagram that has its product, its title and its units: makes the chart, in
// wide text or narrow. False as above.
bool build_chart(FlowDiagram& dg, bool wide);

// Display units by index, TAVDG_FLOW_ and TAVDG_PRESSURE_; any other index is ignored. The axes follow at the
// next build.
void set_xunit(FlowDiagram& dg, int unit);
void set_yunit(FlowDiagram& dg, int unit);

}  // namespace tavd
