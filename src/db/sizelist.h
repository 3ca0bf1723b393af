// The list box of a product's family, in a dialog of the host's.
#pragma once

#include <cstdint>

#include "tavd/tavfm.h"
#include "tavd/types.h"

namespace tavd {

// Reads the family of `rec` into `list` and lists its members' product codes; the first one is selected.
void fill_size_list(tavd_hwnd dialog, int item, FamilyList* list, std::int16_t db, tavb_rec rec);

// The record of the selected row's member, which the caller releases; its product code goes to `title`, a
// field of `title_size`. Null if no row is selected, with `title` as it was, or if the member can't be found.
tavb_rec selected_record(tavd_hwnd dialog, int item, const FamilyList* list, std::int16_t db,
                         const char* class_id, char* title, int title_size);

}  // namespace tavd
