// Fonts: which installed face stands for the one that was asked for, its measures, and shaped lines of text.
// What a drawing asks for again and again (ten axis labels in one font, the same label in the next picture)
// is kept from one picture to the next, for each thread by itself.
#pragma once

#include <pango/pangocairo.h>

#include <string>

#include "gui/cairo/canvas.h"

namespace tavdcairo {

// The families to look for when `face` is asked for, the first one preferred, separated by commas.
std::string families(const std::string& face);

// Measures of a line of text, device units.
struct LineMetrics {
  double ascent;   // from the top of the cell to the baseline
  double descent;  // from the baseline to the bottom of the cell
  double width;    // advance of the text
};

// One line of text, shaped for `cairo` under its matrix. Good until the next call.
PangoLayoutLine* shape(cairo_t* cairo, const std::string& utf8, const TextStyle& style);

// The same whatever the text is drawn on: cairo reports other ascents under the scale of a page.
LineMetrics measure(const std::string& utf8, const TextStyle& style);

// The same without the width, which has to be shaped for: it is 0.
LineMetrics measure_height(const TextStyle& style);

// Height of a character cell (ascent and descent) for an em height of 1.
double cell_height(const std::string& face, int weight, bool italic);

// Where the baseline starts, relative to the reference point, along and across the line (down is positive).
Point baseline_offset(const LineMetrics& metrics, const TextStyle& style);

}  // namespace tavdcairo
