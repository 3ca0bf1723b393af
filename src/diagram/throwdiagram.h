// The state of a throw length diagram: flow on x, throw length on y, one line. Each diagram has one of its
// own; what draws and builds takes it as an argument.
#pragma once

#include <cmath>

#include "base/gwgdi.h"
#include "calc/numeric.h"
#include "diagram/productdiagram.h"
#include "diagram/savedparameters.h"
#include "tavd/L2dg.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavd {

struct ThrowDiagram : ProductDiagram {
  gwobject pen_line;  // the drawing tools live for the time of one paint
  gwobject pen_black;
  gwobject pen_point;
  gwobject font_label;
  char damperpos_label[L2DG_LABEL_CHARS];  // kept for the host, never drawn
  float L2;  // throw length of the operating point, m: the host's until a line is drawn
};

// The choices hold for the next product too, so they outlive the state.
struct ThrowChoices {
  SavedParameters savedpar;
  char parL2value[10];  // selects the throw line where the product has one for each parameter value
};

// A throw line in this diagram's precision: the power is rounded before the product is formed, which
// tavca_L2_isothermal rounds only once. The two may differ in the last digit.
struct ChartThrowLine {
  float nL2, kL2;
  float at(float qv) const { return kL2 * narrow(std::pow(wide(qv), wide(nL2))); }
};

// Whether the product has a throw line for each value of a parameter, rather than one for all.
inline bool has_throw_by_value(const FlowData& fd) {
  return row_count(fd.nparL2, TAVD_PARL2_ROWS) > 0;
}

}  // namespace tavd
