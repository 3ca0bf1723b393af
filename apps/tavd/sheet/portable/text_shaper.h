// Lines of text, shaped once and kept: the same words stand on page after page.
#pragma once

#include <pango/pangocairo.h>

#include <string>

#include "sheet/painter.h"

namespace tavdhost {

// Faces to look for, the first one preferred.
inline constexpr const char* kPageFaces = "Liberation Sans,Arial,Helvetica,DejaVu Sans,sans-serif";

// Layouts have this many units a millimetre, upright and without hints: they may be drawn under any scale and
// turn.
inline constexpr double kLayoutUnits = 100;

// One line, kept by this thread until the next call.
PangoLayoutLine* shaped_line(const std::string& text, const TextStyle& style, const std::string& language);
TextSize shaped_size(const std::string& text, const TextStyle& style, const std::string& language);

// Whether the text runs from right to left.
bool is_right_to_left(const std::string& text, const TextStyle& style, const std::string& language);

}  // namespace tavdhost
