// Fonts: which face stands for the one that was asked for, and its measures. Who measures differs: Pango by
// the fonts that are installed (typeface.cpp, where lines are shaped too: shaping.h), the page in the browser
// by the measures of one (web/module/typeface.cpp).
#pragma once

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

// Measures of the text, whatever it is drawn on: cairo reports other ascents under the scale of a page.
LineMetrics measure(const std::string& utf8, const TextStyle& style);

// The same without the width, which has to be shaped for: it is 0.
LineMetrics measure_height(const TextStyle& style);

// Height of a character cell (ascent and descent) for an em height of 1.
double cell_height(const std::string& face, int weight, bool italic);

// Where the baseline starts, relative to the reference point, along and across the line (down is positive).
Point baseline_offset(const LineMetrics& metrics, const TextStyle& style);

}  // namespace tavdcairo
