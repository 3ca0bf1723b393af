#include <plplot/plplot.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "plotters.h"

namespace bench {

namespace {

// The drivers of cairo; for SVG the library's own, which keeps text as text.
const char* device(Format format) {
  return format == Format::kPng ? "pngcairo" : format == Format::kPdf ? "pdfcairo" : "svg";
}

// Colours have places in a table. The first is the background.
class Colours {
 public:
  void select(std::uint32_t colour) {
    const auto [place, isnew] = places_.try_emplace(colour, static_cast<int>(places_.size()) + 1);
    if (isnew) {
      plscol0(place->second, static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
              static_cast<int>(colour >> 16 & 0xFF));
    }
    plcol0(place->second);
  }

 private:
  std::map<std::uint32_t, int> places_;
};

void select_pen(const SketchPen& pen, Colours& colours) {
  constexpr int kMicrometres = 282;  // a pixel at the library's 90 dpi
  colours.select(pen.colour);
  plwidth(pen.width);
  const int mark = (pen.style == TGUI_PEN_DOT ? 2 : 8) * kMicrometres;
  const int space = 4 * kMicrometres;
  plstyl(pen.style == TGUI_PEN_SOLID ? 0 : 1, &mark, &space);
}

void draw_text(const SketchText& text, Colours& colours) {
  constexpr double kMillimetres = 25.4 / 90;
  colours.select(text.colour);
  plschr(text.size * 0.7 * kMillimetres, 1);  // it means the height of a capital
  const double angle = text.angle * std::numbers::pi / 180;
  // The point is in the middle of the line's height there.
  const double rise = (text.above == 0 ? 0.35 : 0.5 * text.above) * text.size;
  plptex(text.x - std::sin(angle) * rise, text.y - std::cos(angle) * rise, std::cos(angle), -std::sin(angle),
         (text.align + 1) / 2.0, text.text.c_str());
}

}  // namespace

void draw_with_plplot(const Sketch& sketch, Format format, const std::string& path) {
  plsdev(device(format));
  plsfnam(path.c_str());
  plspage(0, 0, kPictureSide, kPictureSide, 0, 0);
  plscolbg(255, 255, 255);
  plinit();
  pladv(0);
  plvpor(0, 1, 0, 1);
  plwind(0, kPictureSide, kPictureSide, 0);
  Colours colours;
  for (const SketchLine& line : sketch.lines) {
    select_pen(line.pen, colours);
    plline(static_cast<PLINT>(line.x.size()), line.x.data(), line.y.data());
  }
  for (const SketchEllipse& e : sketch.ellipses) {
    colours.select(e.fill);
    plarc(e.x, e.y, e.rx, e.ry, 0, 360, 0, 1);
    select_pen(e.pen, colours);
    plarc(e.x, e.y, e.rx, e.ry, 0, 360, 0, 0);
  }
  for (const SketchText& text : sketch.texts) draw_text(text, colours);
  plend1();
}

}  // namespace bench
