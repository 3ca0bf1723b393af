// Where in a picture a drawing is placed so that nothing of it is cut: a diagram puts labels of lines and
// numbers of axes wherever its lines and axes end, and they may reach beyond its plane.
#pragma once

#include "drawing/area.h"
#include "shared/drawings.h"

namespace tavdhost {

// As the windows of the library's classes place a drawing: over the whole room, or as high as that in its
// middle.
Area natural_place(const hosts::LibraryDrawing& drawing, const Area& room);

// The same where a diagram is not too narrow for its letters, and all that is drawn lies in the room; else
// moved, and narrower or lower as far as it has to be: a sketch keeps its proportions, a diagram its letters,
// which are as high as it is. A drawing that would shrink by more than half stays in its natural place: there
// is something far outside, such as the label of a line that runs decades off its axis.
Area fitted_place(const hosts::LibraryDrawing& drawing, const Area& room);

// Whether all of it lies in the room without that.
bool fits(const hosts::LibraryDrawing& drawing, const Area& room);

}  // namespace tavdhost
