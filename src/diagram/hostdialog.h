// The combo box of a parameter's values, in a dialog of the host's.
#pragma once

#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavd {

// Lists the values of the first parameter that has a name, without quotes. Returns the number of rows.
int fill_parameter_values(tavd_hwnd dialog, int item, const FlowData& fd);

// Chooses the selected value for that parameter.
void choose_parameter_value(tavd_hwnd dialog, int item, FlowData* fd);

}  // namespace tavd
