// The selected size and the combo box of a parameter's values, in a dialog of the host's.
#pragma once

#include "diagram/productdiagram.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavd {

// Builds the diagram of the selected row's member; without one the diagram stays as it was.
void build_selected_size(tavd_hwnd dialog, ProductDiagram* diagram, int (*build)(tavb_rec rec));

// Lists the values of the first parameter that has a name, without quotes. Returns the number of rows.
int fill_parameter_values(tavd_hwnd dialog, int item, const FlowData& fd);

// Chooses the selected value for that parameter.
void choose_parameter_value(tavd_hwnd dialog, int item, FlowData* fd);

}  // namespace tavd
