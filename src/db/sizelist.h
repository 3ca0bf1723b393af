// The list box of a product's family, in a dialog of the host's.
#pragma once

#include <cstdint>

#include "tavd/tavfm.h"
#include "tavd/types.h"

namespace tavd {

// Reads the family of `rec` into `list` and lists its members' product codes; the first one is selected.
void fill_size_list(tavd_hwnd dialog, int item, FamilyList* list, std::int16_t db, tavb_rec rec);

// The member of the selected row; false if there is none.
bool selected_member(tavd_hwnd dialog, int item, const FamilyList* list, FamilyMember* member);

}  // namespace tavd
