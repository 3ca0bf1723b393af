// From a product to a throw length diagram that can be drawn.
#pragma once

#include "diagram/axis.h"
#include "diagram/throwdiagram.h"
#include "tavd/types.h"

namespace tavd {

// Loads a product, with the remembered parameter choices, and makes the chart over its flows and a rough
// range of its throws. False if there is no product, no throw data, or limits that can't be drawn.
bool build(ThrowDiagram& dg, const ThrowChoices& choices, tavb_rec rec);

// The last step of that, for a diagram that has its product, its title and its unit: makes the chart. False
// as above.
bool build_chart(ThrowDiagram& dg);

// Display unit of flow by index, L2DG_FLOW_; any other index counts as 0.
const DisplayUnit& throw_flow_unit(int unit);

}  // namespace tavd
