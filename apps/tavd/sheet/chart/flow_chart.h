// Pressure over flow: curves, sound levels and limits of a product, with its duty.
#pragma once

#include "sheet/chart/chart_curves.h"
#include "sheet/chart/chart_form.h"
#include "sheet/chart/chart_layout.h"
#include "sheet/painter.h"

namespace tavdhost {

// Draws the chart so that all of it stays in the box. A box of 80 by 60 mm and more shows all that there is.
ChartLayout draw_flow_chart(Painter& painter, const Box& box, const FlowCurves& curves, const ChartDuty& duty,
                            const ChartForm& form);

}  // namespace tavdhost
