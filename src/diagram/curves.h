// The curves of the flow diagram, by data kind. Each draws on the chart with the diagram's tools; a table
// with an unusable number ends the curve silently, and what was drawn stays.
#pragma once

#include "diagram/flowdiagram.h"
#include "diagram/smooth.h"
#include "tavd/types.h"

namespace tavd {

// ---- The product itself ----

// The square law through the reference point.
void draw_ref_curve(const FlowDiagram& dg, tavd_hdc hdc);
// Measured points, with square laws on both sides.
void draw_qvdp_curve(const FlowDiagram& dg, tavd_hdc hdc);
// One square law per damper setting, labelled.
void draw_damper_lines(const FlowDiagram& dg, tavd_hdc hdc);
// What a fan delivers, and the square laws through its first and its last point.
void draw_fan_curve(const FlowDiagram& dg, tavd_hdc hdc);
void draw_fan_limits(const FlowDiagram& dg, tavd_hdc hdc);

// ---- Its sound levels in the room ----

// Dots on the curve of a fixed resistance, and on one that was measured at several flows.
void draw_lp_marks_ref(const FlowDiagram& dg, tavd_hdc hdc);
void draw_lp_marks_qvdp(const FlowDiagram& dg, tavd_hdc hdc);
// Lines of equal level from damper setting to damper setting, and from flow to flow.
void draw_lp_lines_damper(const FlowDiagram& dg, tavd_hdc hdc);
void draw_lp_lines_range(const FlowDiagram& dg, tavd_hdc hdc);

// ---- What the host marks ----

void draw_operating_point(const FlowDiagram& dg, tavd_hdc hdc);
void draw_flow_limits(const FlowDiagram& dg, tavd_hdc hdc);

// ---- What curves share ----

// A smooth curve through points in base units, with the selected pen; false if there is none to draw. `log`:
// smooth on logarithmic axes.
bool draw_smoothed(const FlowDiagram& dg, tavd_hdc hdc, int n, const CurvePoint* points, bool log);

// Turns a total pressure at flow `qv` into a static one, where that is what the diagram shows.
void show_static(const FlowDiagram& dg, float qv, float* dp);

}  // namespace tavd
