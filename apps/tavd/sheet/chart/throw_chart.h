// Throw length over flow: the line of a product, and those of its other parameter values, with its duty.
#pragma once

#include "sheet/chart/chart_curves.h"
#include "sheet/chart/chart_form.h"
#include "sheet/chart/chart_layout.h"
#include "sheet/painter.h"

namespace tavdhost {

// `duty_length` is the throw length at the duty's flow, m; 0 for none.
ChartLayout draw_throw_chart(Painter& painter, const Box& box, const ThrowCurves& curves,
                             const ChartDuty& duty, double duty_length, const ChartForm& form);

}  // namespace tavdhost
