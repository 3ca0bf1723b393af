#include "diagram/flowdiagram.h"

#include <cstring>

#include "base/gwlist.h"
#include "base/gwsys.h"
#include "base/gwtext.h"
#include "base/held.h"
#include "db/sizelist.h"
#include "diagram/hostdialog.h"
#include "tavd/tavb.h"
#include "tavd/tavdg.h"

namespace tavd {

DiagramState dg;
SavedParameters dg_savedpar;

namespace {

// Starts a new life of the diagram. What a former one still holds goes first, since its only address is in
// the state.
void start(tavd_hmodule module, std::int16_t db) {
  tavdg_release();
  tavdg_destroy_drawing_tools();
  std::memset(&dg, 0, sizeof dg);
  dg_register_class(module != nullptr ? module : gwmodule());
  set_up(dg, db);
}

void replace_if_positive(float* field, float value) {
  if (value > 0.0F) {
    *field = value;
  }
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
  if (rec == nullptr) {
    return 0;
  }
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
  if (dg.nalabels < kMostALabels) {
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
  dg.resolution = (n / 2) * 2;
}

void tavdg_set_parameter(const char* name, const char* value) {
  dg_savedpar.set(name, value);
}

void tavdg_reset_parameters(void) {
  dg_savedpar.reset();
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
