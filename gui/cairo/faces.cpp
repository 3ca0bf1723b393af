// What is known of faces and of lines of text without a look at a font.
#include <array>
#include <string_view>

#include "gui/cairo/typeface.h"

namespace tavdcairo {

namespace {

// Faces that come with Windows only, and the free face of the same measures. Characters that a face lacks are
// taken from whatever installed font has them.
struct Substitute {
  std::string_view face;
  std::string_view families;
};
constexpr std::string_view kSans = "Liberation Sans,Arial,Helvetica,DejaVu Sans,sans-serif";
constexpr std::array<Substitute, 4> kSubstitutes = {{
    {"Microsoft Sans Serif", kSans},
    {"MS Sans Serif", kSans},
    {"Arial", kSans},
    {"", kSans},
}};

}  // namespace

std::string families(const std::string& face) {
  for (const Substitute& substitute : kSubstitutes) {
    if (face == substitute.face) {
      return std::string(substitute.families);
    }
  }
  return face + "," + std::string(kSans);
}

Point baseline_offset(const LineMetrics& metrics, const TextStyle& style) {
  Point offset = {0, 0};
  switch (style.horizontal) {
    case Horizontal::kLeft:
      break;
    case Horizontal::kCentre:
      offset.x = -metrics.width / 2;
      break;
    case Horizontal::kRight:
      offset.x = -metrics.width;
      break;
  }
  switch (style.vertical) {
    case Vertical::kTop:
      offset.y = metrics.ascent;
      break;
    case Vertical::kBottom:
      offset.y = -metrics.descent;
      break;
    case Vertical::kBaseline:
      break;
  }
  return offset;
}

}  // namespace tavdcairo
