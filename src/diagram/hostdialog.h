// The list box of a product's family and the combo box of a parameter's values, in a dialog of the host's.
#pragma once

#include <cstdint>

#include "tavd/flowdata.h"
#include "tavd/tavfm.h"
#include "tavd/types.h"

namespace tavd {

// Reads the family of `rec` into `list` and lists its members' product codes; the first one is selected.
void fill_size_list(tavd_hwnd dialog, int item, FamilyList* list, std::int16_t db, tavb_rec rec);

// The member of the selected row; false if there is none.
bool selected_member(tavd_hwnd dialog, int item, const FamilyList* list, FamilyMember* member);

// Lists the values of the first parameter that has a name, without quotes. Returns the number of rows.
int fill_parameter_values(tavd_hwnd dialog, int item, const FlowData& fd);

// Chooses the selected value for that parameter.
void choose_parameter_value(tavd_hwnd dialog, int item, FlowData* fd);

}  // namespace tavd
