#include <algorithm>

#include "base/gwgdi.h"
#include "base/gwwindow.h"
#include "diagram/flowdiagram.h"
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
  const auto [wide, narrow, label] = tool_sizes(dg);
  dg.pen_sound = gwcreatepen(kPenSolid, wide, kRed);
  dg.pen_limit = gwcreatepen(kPenSolid, 2 * wide, kRed);
  dg.pen_curve = gwcreatepen(kPenSolid, narrow, kBlack);
  dg.pen_minor = gwcreatepen(kPenSolid, narrow, kGrey);
  dg.pen_point = gwcreatepen(kPenSolid, narrow, kBlue);
  dg.font_label = gwcreatefont(label, kWeightNormal, 0, 0, kChartFace);
}

void tavdg_destroy_drawing_tools(void) {
  gwdiscard({&dg.pen_sound, &dg.pen_limit, &dg.pen_curve, &dg.pen_minor, &dg.pen_point, &dg.font_label});
}

intptr_t tavdg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  static constexpr Painter kPainter{tavdg_create_drawing_tools, tavdg_draw_diagram,
                                    tavdg_destroy_drawing_tools};
  return diagram_proc(dg, kPainter, hwnd, msg, wparam, lparam);
}
