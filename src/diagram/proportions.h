// How large the parts of a drawing are: what its width or its height is divided by, in whole units.
#pragma once

namespace tavd {

// ---- Chart ----

inline constexpr int kTitleFontPart = 16;   // of the height
inline constexpr int kAxisFontPart = 20;    // of the height
inline constexpr int kTickFontPart = 25;    // of the height
inline constexpr int kTitleGapPart = 100;   // of the height, above the title
inline constexpr int kXLabelGapPart = 200;  // of the height, between plot and labels
inline constexpr int kYLabelGapPart = 200;  // of the width
inline constexpr int kFramePenPart = 1000;  // of the width

// Tick labels: parts of their font's height.
inline constexpr int kCharacterPart = 2;  // width that a character counts for in the layout
inline constexpr int kDrawnDigitPart =
    6;  // width of a digit, times its number, that x labels stand below the plot
inline constexpr int kXLabelShiftPart = 3;  // to the left of the tick, so that a label reads along it
inline constexpr int kYLabelShiftPart = 2;  // below the tick

// ---- Diagrams in a chart ----

inline constexpr int kWidePenPart = 500;     // of the height
inline constexpr int kLabelFontPart = 25;    // of the height
inline constexpr int kLabelAsidePart = 200;  // of the width, from the end of a line to its text
inline constexpr int kLabelBelowPart = 50;   // of the height, by which a text hangs below the end of its line
inline constexpr int kLabelAbovePart = 500;  // of the height, by which a text stands above the upper edge
inline constexpr int kPointMarkPart = 50;    // of the width: radius of the operating point's mark
inline constexpr int kSoundMarkPart = 100;   // of the width: radius of a dot on a curve

}  // namespace tavd
