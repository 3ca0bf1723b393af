// Printing a page.
#pragma once

#include <windows.h>

#include "drawing/page.h"

namespace viewer {

// Asks for a printer and prints. False if the user changed his mind. Throws UserError.
bool print_page(HWND owner, const PageContents& contents);

}  // namespace viewer
