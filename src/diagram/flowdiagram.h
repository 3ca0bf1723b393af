// The state of a flow diagram: flow on x, pressure on y. Each diagram has one of its own; what draws and
// builds takes it as an argument.
#pragma once

#include <cstdint>

#include "base/gwgdi.h"
#include "calc/calculations.h"
#include "diagram/chart.h"
#include "diagram/productdiagram.h"
#include "tavd/tavdg.h"
#include "tavd/types.h"

namespace tavd {

// A text for one damper position.
struct ALabel {
  float value;  // the position
  char text[TAVDG_LABEL_CHARS];
};

struct FlowDiagram : ProductDiagram {
  gwobject pen_sound;  // the drawing tools live for the time of one paint
  gwobject pen_limit;
  gwobject pen_curve;
  gwobject pen_minor;
  gwobject pen_point;
  gwobject font_label;
  float qvlimit1, qvlimit2;  // flow limits to mark, l/s; 0 for none
  bool ready;                // chart and data are complete
  tavd_wchar titlew[kChartTitleSize];
  tavd_wchar usertitlew[kChartTitleSize];   // nothing sets it: a wide chart always shows the product code
  char LpA_label[TAVDG_LABEL_CHARS];        // behind the first sound level mark
  char damperpos_label[TAVDG_LABEL_CHARS];  // before the first damper position
  float dp;                                 // pressure of the operating point, Pa
  int dptype;                               // TAVDG_DP_STATIC or TAVDG_DP_TOTAL: which pressure is shown
  std::int16_t nalabels;                    // rows used of alabels
  ALabel alabels[TAVDG_A_LABELS];
  float lpmin, lpmax, lpstep;  // overrides of the sound level lines, dB(A); 0: not set
  // What the calculations take of whoever draws, as it is at the time of a drawing.
  float roomdamp;   // level difference between sound power and room, dB
  Warning warning;  // whom a bad row in the data is told; null: nobody
};

}  // namespace tavd
