// The exported functions of the flow diagram: a process has one, and these act on it.
#include "tavd/tavdg.h"

#include <algorithm>
#include <cstring>

#include "base/gwlist.h"
#include "base/gwsys.h"
#include "base/gwtext.h"
#include "base/gwwindow.h"
#include "base/held.h"
#include "calc/settings.h"
#include "db/sizelist.h"
#include "diagram/flowdiagram.h"
#include "diagram/flowdiagram_build.h"
#include "diagram/flowdiagram_draw.h"
#include "diagram/hostdialog.h"
#include "diagram/savedparameters.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr unsigned kFlowClassRecordSize = 0x50;
constexpr int kMostModules = 10;

FlowDiagram dg;
SavedParameters choices;  // outlive the diagram: they hold for the next product too

// Modules for which the window class is registered; outside the state, since a class outlives it.
struct {
  tavd_hmodule modules[kMostModules];
  int count;
} regmodules;

// Once for each module; a refusal of the platform is not reported.
void register_flow_class(tavd_hmodule module) {
  tavd_hmodule* const end = regmodules.modules + regmodules.count;
  if (std::find(regmodules.modules, end, module) != end) return;
  if (regmodules.count < kMostModules) regmodules.modules[regmodules.count++] = module;
  gwregisterclass(module, TAVDG_WINDOW_CLASS, tavdg_diagram_proc, kFlowClassRecordSize);
}

// Starts a new life of the diagram. What a former one still holds goes first, since its only address is in
// the state.
void start(tavd_hmodule module, std::int16_t db) {
  release(dg);
  destroy_tools(dg);
  std::memset(&dg, 0, sizeof dg);
  register_flow_class(module != nullptr ? module : gwmodule());
  set_up(dg, db);
}

void replace_if_positive(float* field, float value) {
  if (value > 0.0F) *field = value;
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavdg_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid, float qv, float dp) {
  start(hmodule, db);
  dg.rec = rec;
  dg.listid = held<std::int16_t>(std::int64_t{listid});
  dg.qv = qv;
  dg.dp = dp;
  if (rec == nullptr) return 0;
  tavbgetID(db, rec, dg.classID, nullptr);
  return listid == 0 ? tavdg_initdiagramdata(rec) : 0;
}

int tavdg_init_empty(tavd_hmodule hmodule, int16_t db) {
  start(hmodule, db);
  return 0;
}

void tavdg_release(void) {
  release(dg);
}

void tavdg_set_tavb(int16_t db) {
  dg.db = db;
}

void tavdg_set_xunit(int u) {
  set_xunit(dg, u);
}

void tavdg_set_yunit(int u) {
  set_yunit(dg, u);
}

void tavdg_set_dptype(int t) {
  dg.dptype = t == TAVDG_DP_STATIC ? TAVDG_DP_STATIC : TAVDG_DP_TOTAL;
}

void tavdg_set_title(const char* text) {
  gwstrcpyfield(dg.usertitle, text, sizeof dg.usertitle);
}

void tavdg_set_LpA_label(const char* text) {
  gwstrcpyfield(dg.LpA_label, text, sizeof dg.LpA_label);
}

void tavdg_set_damperpos_label(const char* text) {
  gwstrcpyfield(dg.damperpos_label, text, sizeof dg.damperpos_label);
}

void tavdg_set_a_label(float value, const char* text) {
  if (dg.nalabels < TAVDG_A_LABELS) {
    ALabel& row = dg.alabels[dg.nalabels++];
    row.value = value;
    gwstrcpyfield(row.text, text, sizeof row.text);
  }
}

void tavdg_set_lpmin_lpmax_lpstep(float lpmin, float lpmax, float lpstep) {
  replace_if_positive(&dg.lpmin, lpmin);
  replace_if_positive(&dg.lpmax, lpmax);
  replace_if_positive(&dg.lpstep, lpstep);
}

void tavdg_set_operation_point(float qv, float dp) {
  dg.qv = qv;
  dg.dp = dp;
}

void tavdg_set_qvlimits(float qv1, float qv2) {
  dg.qvlimit1 = qv1;
  dg.qvlimit2 = qv2;
}

void tavdg_setcurveresolution(int n) {
  set_resolution(dg, n);
}

void tavdg_set_parameter(const char* name, const char* value) {
  choices.set(name, value);
}

void tavdg_reset_parameters(void) {
  choices.reset();
}

int tavdg_initdiagramdata(tavb_rec rec) {
  return build(dg, choices, rec) ? 0 : TAVDG_NOT_BUILT;
}

void tavdg_fillsizeLB(tavd_hwnd hdlg) {
  fill_size_list(hdlg, dg.listid, &dg.familylist, dg.db, dg.rec);
}

void tavdg_update_from_list(tavd_hwnd hdlg) {
  build_selected_size(hdlg, &dg, tavdg_initdiagramdata);
}

int tavdg_fill_parameter_combo(tavd_hwnd hdlg, int id) {
  gwcb_clear(hdlg, id);
  tavdg_reset_parameters();
  return fill_parameter_values(hdlg, id, dg.flowdata);
}

void tavdg_update_parameter_combo(tavd_hwnd hdlg, int id) {
  choose_parameter_value(hdlg, id, &dg.flowdata);
}

void tavdg_resize(int left, int top, int right, int bottom) {
  resize(dg, left, top, right, bottom);
}

void tavdg_resize_default(void) {
  resize_default(dg);
}

void tavdg_create_drawing_tools(void) {
  create_tools(dg);
}

void tavdg_destroy_drawing_tools(void) {
  destroy_tools(dg);
}

void tavdg_draw_diagram(tavd_hdc hdc) {
  dg.roomdamp = room_damping();
  dg.warning = tavca_msg;
  draw(dg, hdc);
}

intptr_t tavdg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  static constexpr Painter kPainter{tavdg_create_drawing_tools, tavdg_draw_diagram,
                                    tavdg_destroy_drawing_tools};
  return diagram_proc(dg, kPainter, hwnd, msg, wparam, lparam);
}
