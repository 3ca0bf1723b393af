// Where on a page of A4 what stands: boxes in mm from the upper left corner, as data. Languages that run from
// right to left have the same page mirrored.
#pragma once

#include "sheet/box.h"

namespace tavdhost {

inline constexpr double kSheetWidth = 210;  // A4, ISO 216
inline constexpr double kSheetHeight = 297;

enum class SheetPart {
  kTitle,
  kFacts,  // the product, its duty and the answers, below each other
  kSketch,
  kBands,      // chart of octave bands
  kBandTable,  // the same as numbers, and the attenuation
  kFlowChart,
  kThrowChart,
  kNotes,
  kFoot
};

// What a sheet has beside what all have.
struct SheetParts {
  bool sketch;      // the dimensioned sketch
  bool bands;       // chart of the sound power by octave band
  bool band_table;  // the same as numbers, or the attenuation
  bool throw_chart;
};

// The place of a part of a sheet that has these parts; the box of what it does not have is empty.
Box sheet_box(SheetPart part, const SheetParts& parts);

// The same box on a page that is read from the right.
constexpr Box mirrored(const Box& box) {
  return {kSheetWidth - box.left - box.width, box.top, box.width, box.height};
}

// Letters, mm of their em, and the distance of lines as a part of it.
struct SheetLetters {
  double title = 6.0;
  double description = 3.9;
  double heading = 3.3;
  double text = 2.75;
  double small_text = 2.3;
  double line = 1.45;  // of the em
};
inline constexpr SheetLetters kSheetLetters;

}  // namespace tavdhost
