// List boxes and combo boxes of a dialog, by control id.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

void gwlb_add(tavd_hwnd dialog, int item, const char* text);
void gwlb_addw(tavd_hwnd dialog, int item, const tavd_wchar* text);
void gwlb_clear(tavd_hwnd dialog, int item);
void gwlb_select(tavd_hwnd dialog, int item, int row);
void gwcb_add(tavd_hwnd dialog, int item, const char* text);
void gwcb_addw(tavd_hwnd dialog, int item, const tavd_wchar* text);
void gwcb_clear(tavd_hwnd dialog, int item);

// The text of row `index`, or of the selected row if `index` is negative, into `buffer` of `size` characters
// (may be null). Returns the row, or -1 if nothing is selected; `buffer` is then empty. A text longer than
// the buffer is cut.
int gwlb_gettext(tavd_hwnd dialog, int item, int index, char* buffer, int size);
int gwlb_gettextw(tavd_hwnd dialog, int item, int index, tavd_wchar* buffer, int size);
int gwcb_gettext(tavd_hwnd dialog, int item, int index, char* buffer, int size);
int gwcb_gettextw(tavd_hwnd dialog, int item, int index, tavd_wchar* buffer, int size);

}  // namespace tavd
