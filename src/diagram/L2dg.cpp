// The exported functions of the throw length diagram: a process has one, and these act on it.
#include "tavd/L2dg.h"

#include <cstring>

#include "base/gwlist.h"
#include "base/gwsys.h"
#include "base/gwtext.h"
#include "base/gwwindow.h"
#include "base/held.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "db/sizelist.h"
#include "diagram/hostdialog.h"
#include "diagram/processdiagrams.h"
#include "diagram/throwdiagram_build.h"
#include "diagram/throwdiagram_draw.h"
#include "tavd/tavb.h"

namespace tavd {

ThrowDiagram L2dg;
ThrowChoices L2dg_choices;

namespace {

constexpr unsigned kThrowClassRecordSize = 0x48;

bool registered;  // the class was tried; outside the state, since a class outlives it

// Once in the process. False if the platform refuses, which is reported once.
bool register_class(tavd_hmodule module) {
  if (registered) return true;
  registered = true;
  return gwregisterclass(module, L2DG_WINDOW_CLASS, L2dg_diagram_proc, kThrowClassRecordSize);
}

// Ends the former life of the diagram. What it still holds goes first, since its only address is in
// the state.
void clear() {
  release(L2dg);
  destroy_tools(L2dg);
  std::memset(&L2dg, 0, sizeof L2dg);
}

// Lists each value of the throw table once, as its rows follow each other; returns the number of rows added.
int fill_throw_values(tavd_hwnd dialog, int item, const FlowData& fd) {
  const int rows = row_count(fd.nparL2, TAVD_PARL2_ROWS);
  int added = 0;
  char former[TAVD_PARAMETER_CHARS + 1] = "";
  for (int i = 0; i < rows; ++i) {
    char value[TAVD_PARAMETER_CHARS + 1];
    gwstrtrimcpy(value, fd.parL2[i].value, TAVD_PARAMETER_CHARS);
    strip_quotes(value);
    if (gwstricmp(value, former) != 0) {
      gwcb_add(dialog, item, value);
      gwstrcpyfield(former, value, sizeof former);
      ++added;
    }
  }
  return added;
}

void choose_throw_value(tavd_hwnd dialog, int item) {
  char value[sizeof L2dg_choices.parL2value];
  if (gwcb_gettext(dialog, item, -1, value, sizeof value) >= 0) {
    gwstrcpyfield(L2dg_choices.parL2value, value, sizeof L2dg_choices.parL2value);
  }
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int L2dg_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid, float qv, float L2, int16_t xunit) {
  clear();
  if (!register_class(hmodule)) return L2DG_NOT_BUILT;
  set_up(L2dg, db);
  L2dg.rec = rec;
  L2dg.listid = held<std::int16_t>(std::int64_t{listid});
  L2dg.qv = qv;
  L2dg.L2 = L2;
  L2dg.xunit = xunit;
  L2dg.xfactor = throw_flow_unit(xunit).factor;
  tavbgetID(db, rec, L2dg.classID, nullptr);
  return listid == 0 && rec != nullptr ? L2dg_initdiagramdata(rec) : 0;
}

void L2dg_init_empty(tavd_hmodule hmodule, int16_t db) {
  clear();
  register_class(hmodule != nullptr ? hmodule : gwmodule());
  set_up(L2dg, db);
}

void L2dg_release(void) {
  release(L2dg);
}

void L2dg_set_title(const char* text) {
  gwstrcpyfield(L2dg.usertitle, text, sizeof L2dg.usertitle);
}

void L2dg_set_damperpos_label(const char* text) {
  gwstrcpyfield(L2dg.damperpos_label, text, sizeof L2dg.damperpos_label);
}

void L2dg_setcurveresolution(int n) {
  set_resolution(L2dg, n);
}

void L2dg_set_parameter(const char* name, const char* value) {
  const SavedParameter& choice = L2dg_choices.savedpar.set(name, value);
  if (gwstricmp(choice.name, L2DG_THROW_PARAMETER) == 0) {
    gwstrcpyfield(L2dg_choices.parL2value, choice.value, sizeof L2dg_choices.parL2value);
  }
}

void L2dg_reset_parameters(void) {
  L2dg_choices = {};
}

int L2dg_initdiagramdata(tavb_rec rec) {
  return build(L2dg, L2dg_choices, rec) ? 0 : L2DG_NOT_BUILT;
}

void L2dg_fillsizeLB(tavd_hwnd hdlg) {
  fill_size_list(hdlg, L2dg.listid, &L2dg.familylist, L2dg.db, L2dg.rec);
}

void L2dg_update_from_list(tavd_hwnd hdlg) {
  build_selected_size(hdlg, &L2dg, L2dg_initdiagramdata);
}

int L2dg_fill_parameter_combo(tavd_hwnd hdlg, int id, int /*spare*/) {
  gwcb_clear(hdlg, id);
  L2dg_reset_parameters();
  return has_throw_by_value(L2dg.flowdata) ? fill_throw_values(hdlg, id, L2dg.flowdata)
                                           : fill_parameter_values(hdlg, id, L2dg.flowdata);
}

void L2dg_update_parameter_combo(tavd_hwnd hdlg, int id) {
  if (has_throw_by_value(L2dg.flowdata)) {
    choose_throw_value(hdlg, id);
  } else {
    choose_parameter_value(hdlg, id, &L2dg.flowdata);
  }
}

void L2dg_resize(int left, int top, int right, int bottom) {
  resize(L2dg, left, top, right, bottom);
}

void L2dg_resize_default(void) {
  resize_default(L2dg);
}

void L2dg_create_drawing_tools(void) {
  create_tools(L2dg);
}

void L2dg_destroy_drawing_tools(void) {
  destroy_tools(L2dg);
}

void L2dg_draw_diagram(tavd_hdc hdc) {
  draw(L2dg, L2dg_choices, hdc);
}

intptr_t L2dg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  static constexpr Painter kPainter{L2dg_create_drawing_tools, L2dg_draw_diagram, L2dg_destroy_drawing_tools};
  return diagram_proc(L2dg, kPainter, hwnd, msg, wparam, lparam);
}
