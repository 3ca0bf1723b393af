// The picture's window class, its painting, and the tools of one paint.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>

#include "base/gwgdi.h"
#include "base/gwwindow.h"
#include "base/held.h"
#include "base/selected.h"
#include "shape/picture.h"
#include "tavd/tavdshapepic.h"

namespace tavd {
namespace {

constexpr unsigned kClassRecordSize = 0x48;  // as hosts know it; the flow diagram's is 0x50
constexpr char kFace[] = "Arial";

// Parts of the picture.
constexpr int kThickPenPart = 150;  // of the width
constexpr int kTextFontPart = 28;   // of the height
constexpr int kTitleFontPart = 21;  // of the height
constexpr int kTitleGapPart = 20;   // of the title band

// Outside the state, since the class outlives it.
bool shapeclass_registered;

std::int64_t width() {
  return std::int64_t{shp.pic_right} - shp.pic_left;
}

std::int64_t height() {
  return std::int64_t{shp.pic_bottom} - shp.pic_top;
}

// Puts the default rectangle into the middle of the client area, as high as that and as wide as its own
// proportions ask for.
void set_mapping(tavd_hdc hdc, const gwrect& client) {
  constexpr double kWidthOfHeight = 0.5952380952380952;  // 500 / 840
  const int client_height = client.bottom - client.top;
  const int viewport_width = held<int>(std::floor(client_height * kWidthOfHeight + 0.5));
  gwwindoworg(hdc, 0, 0);
  gwwindowext(hdc, TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT);
  gwviewportorg(hdc, (client.left + client.right) / 2 - viewport_width / 2, 0);
  gwviewportext(hdc, viewport_width, client_height);
}

void paint(tavd_hwnd hwnd) {
  gwpaint painting(hwnd);
  const tavd_hdc hdc = painting.hdc();
  const int saved = gwsavedc(hdc);
  const gwrect client = gwclientrect(hwnd);
  gwmapmode(hdc, kAnisotropic);
  set_mapping(hdc, client);
  gwbkmode(hdc, kTransparent);
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(hdc);
  gwrestoredc(hdc, saved);
  painting.end();
  tavdshapepic_destroy_drawing_tools();
}

void draw_title(tavd_hdc hdc) {
  gwtextalign(hdc, kAlignCenterTop);
  const std::int64_t middle = (std::int64_t{shp.pic_left} + shp.pic_right) / 2;
  const std::int64_t band = std::int64_t{shp.pic_origin_y} - shp.pic_top;
  gwtextoutn(hdc, held<int>(middle), held<int>(shp.pic_top + band / kTitleGapPart), shp.title,
             static_cast<int>(std::strlen(shp.title)));
}

}  // namespace

void register_shape_class(tavd_hmodule module) {
  if (!shapeclass_registered) {
    shapeclass_registered = true;
    gwregisterclass(module, TAVDSHAPEPIC_WINDOW_CLASS, tavdshapepic_picproc, kClassRecordSize);
  }
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdshapepic_create_drawing_tools(void) {
  tavdshapepic_destroy_drawing_tools();
  shp.pen_thick = gwcreatepen(kPenSolid, held<int>(width() / kThickPenPart), kBlack);
  shp.pen_dot = gwcreatepen(kPenDot, 1, kBlack);
  shp.pen_dashdot = gwcreatepen(kPenDashDot, 1, kBlack);
  shp.pen_thin = gwcreatepen(kPenSolid, 1, kBlack);
  shp.font_text = gwcreatefont(held<std::int16_t>(height() / kTextFontPart), kWeightNormal, 0, 0, kFace);
  shp.font_title = gwcreatefont(held<std::int16_t>(height() / kTitleFontPart), kWeightBold, 0, 0, kFace);
}

void tavdshapepic_destroy_drawing_tools(void) {
  gwdiscard({&shp.pen_thick, &shp.pen_dot, &shp.pen_dashdot, &shp.pen_thin, &shp.font_text, &shp.font_title});
}

void tavdshapepic_draw(tavd_hdc hdc) {
  Selected pen(hdc, nullptr);  // first, so that the former font is selected back before the former pen
  Selected font(hdc, shp.font_title);
  draw_title(hdc);
  font.change(shp.font_text);
  pen.change(shp.pen_thin);
  draw_shape(hdc);
}

intptr_t tavdshapepic_picproc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  if (msg != kWmPaint) return gwdefproc(hwnd, msg, wparam, lparam);
  paint(hwnd);
  return 0;
}
