#include <algorithm>

#include "base/gwgdi.h"
#include "base/gwwindow.h"
#include "diagram/flowdiagram.h"
#include "diagram/held.h"
#include "tavd/tavdg.h"

namespace tavd {
namespace {

constexpr char kClassName[] = "TAVDDGR";
constexpr unsigned kClassRecordSize = 0x50;
constexpr int kMostModules = 10;

// Modules for which the window class is registered; outside the state, since a class outlives it.
struct {
  tavd_hmodule modules[kMostModules];
  int count;
} regmodules;

// Draws with the logical plane stretched over the client area, whatever its shape.
void paint(tavd_hwnd hwnd) {
  gwpaint painting(hwnd);
  const tavd_hdc hdc = painting.hdc();
  const gwrect client = gwclientrect(hwnd);
  gwmapmode(hdc, kAnisotropic);
  gwwindoworg(hdc, 0, 0);
  gwwindowext(hdc, kDefaultExtent, kDefaultExtent);
  gwviewportext(hdc, client.right - client.left, client.bottom - client.top);
  gwbkmode(hdc, kTransparent);
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(hdc);
  painting.end();
  tavdg_destroy_drawing_tools();
}

}  // namespace

int dg_register_class(tavd_hmodule module) {
  tavd_hmodule* const end = regmodules.modules + regmodules.count;
  if (std::find(regmodules.modules, end, module) != end) {
    return 0;
  }
  if (regmodules.count < kMostModules) {
    regmodules.modules[regmodules.count++] = module;
  }
  return gwregisterclass(module, kClassName, tavdg_diagram_proc, kClassRecordSize) ? 0 : -1;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdg_create_drawing_tools(void) {
  tavdg_destroy_drawing_tools();
  const int wide = std::max(dg.height / 500, 1);
  const int narrow = wide > 1 ? wide / 2 : wide;
  const int label = std::max(dg.height / 25, 5);
  dg.pen_sound = gwcreatepen(kPenSolid, wide, kRed);
  dg.pen_limit = gwcreatepen(kPenSolid, 2 * wide, kRed);
  dg.pen_curve = gwcreatepen(kPenSolid, narrow, kBlack);
  dg.pen_minor = gwcreatepen(kPenSolid, narrow, kGrey);
  dg.pen_point = gwcreatepen(kPenSolid, narrow, kBlue);
  dg.font_label = gwcreatefont(held<std::int16_t>(std::int64_t{label}), kWeightNormal, 0, 0, kChartFace);
}

void tavdg_destroy_drawing_tools(void) {
  for (gwobject* tool :
       {&dg.pen_sound, &dg.pen_limit, &dg.pen_curve, &dg.pen_minor, &dg.pen_point, &dg.font_label}) {
    gwdelete(*tool);
    *tool = nullptr;
  }
}

intptr_t tavdg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  if (msg != kWmPaint || dg.chart == nullptr || dg.error != 0) {
    return gwdefproc(hwnd, msg, wparam, lparam);
  }
  paint(hwnd);
  return 0;
}
