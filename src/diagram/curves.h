// The curves of the flow diagram, by data kind. Each draws on the chart with the diagram's tools; a table
// with an unusable number ends the curve silently.
#pragma once

#include "tavd/types.h"

namespace tavd {

void draw_ref_curve(tavd_hdc hdc);     // square law through the reference point
void draw_damper_lines(tavd_hdc hdc);  // one square law per damper setting, labelled

}  // namespace tavd
