// The curves of the flow diagram, by data kind. Each draws on the chart with the diagram's tools; a table
// with an unusable number ends the curve silently, and what was drawn stays.
#pragma once

#include "diagram/smooth.h"
#include "tavd/types.h"

namespace tavd {

// The product itself.
void draw_ref_curve(tavd_hdc hdc);     // square law through the reference point
void draw_qvdp_curve(tavd_hdc hdc);    // measured points, with square laws on both sides
void draw_damper_lines(tavd_hdc hdc);  // one square law per damper setting, labelled
void draw_fan_curve(tavd_hdc hdc);     // what the fan delivers
void draw_fan_limits(tavd_hdc hdc);    // the square laws through its first and its last point

// Its sound levels in the room.
void draw_lp_marks_ref(tavd_hdc hdc);     // dots on the curve of a fixed resistance
void draw_lp_marks_qvdp(tavd_hdc hdc);    // the same on one that was measured at several flows
void draw_lp_lines_damper(tavd_hdc hdc);  // lines of equal level from damper setting to damper setting
void draw_lp_lines_range(tavd_hdc hdc);   // the same from flow to flow

// What the host marks.
void draw_operating_point(tavd_hdc hdc);
void draw_flow_limits(tavd_hdc hdc);

// A smooth curve through points in base units, with the selected pen; false if there is none to draw. `log`:
// smooth on logarithmic axes.
bool draw_smoothed(tavd_hdc hdc, int n, const CurvePoint* points, bool log);

}  // namespace tavd
