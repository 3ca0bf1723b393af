// How many GDI objects and windows this process holds. GetGuiResources is not used: Wine answers 0.
#pragma once

namespace tavdtest {

// Pens, brushes, fonts, device contexts, regions, bitmaps: what the process's table of handles has.
int live_gdi_objects();

// Windows of this thread, children included.
int live_windows();

}  // namespace tavdtest
