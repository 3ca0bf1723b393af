// The throw length diagram: flow on x, throw length on y, one line. One per process; its state is one static
// record, apart from that of the flow diagram.
#pragma once

#include <cmath>

#include "base/gwgdi.h"
#include "calc/numeric.h"
#include "diagram/axis.h"
#include "diagram/productdiagram.h"
#include "diagram/savedparameters.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavd {

inline constexpr int kPositionLabelSize = 50;  // characters, terminator included

struct L2dgState : ProductDiagram {
  gwobject pen_line;  // the drawing tools live for the time of one paint
  gwobject pen_black;
  gwobject pen_point;
  gwobject font_label;
  char damperpos_label[kPositionLabelSize];  // kept for the host, never drawn
  float L2;  // throw length of the operating point, m: the host's until a line is drawn
};

// The choices hold for the next product too, so they outlive the state.
struct L2dgChoices {
  SavedParameters savedpar;
  char parL2value[10];  // selects the throw line where the product has one for each parameter value
};

extern L2dgState L2dg;
extern L2dgChoices L2dg_choices;

// A throw line in this diagram's precision: the power is rounded before the product is formed, which
// tavca_L2_isothermal rounds only once. The two may differ in the last digit.
struct ThrowLine {
  float nL2, kL2;
  float at(float qv) const { return kL2 * narrow(std::pow(wide(qv), wide(nL2))); }
};

// Whether the product has a throw line for each value of a parameter, rather than one for all.
inline bool has_throw_by_value(const FlowData& fd) {
  return row_count(fd.nparL2, TAVD_PARL2_ROWS) > 0;
}

// Display unit of flow of an index; any index that has none counts as 0.
const DisplayUnit& throw_flow_unit(int unit);

// Registers the window class, once in the process: 0, or -1 if the platform refuses. A refusal is told once.
int L2dg_register_class(tavd_hmodule module);

}  // namespace tavd
