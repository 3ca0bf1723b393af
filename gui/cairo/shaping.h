// Lines of text shaped by Pango. What a drawing asks for again and again (ten axis labels in one font, the
// same label in the next picture) is kept from one picture to the next, for each thread by itself.
#pragma once

#include <pango/pangocairo.h>

#include <string>

#include "gui/cairo/canvas.h"

namespace tavdcairo {

// One line of text, shaped for `cairo` under its matrix. Good until the next call.
PangoLayoutLine* shape(cairo_t* cairo, const std::string& utf8, const TextStyle& style);

}  // namespace tavdcairo
