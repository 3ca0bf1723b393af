// The exported functions of the shape picture, and its window class: a process has one picture, and these act
// on it.
#include "tavd/tavdshapepic.h"

#include <cmath>
#include <cstring>

#include "base/gwgdi.h"
#include "base/gwtext.h"
#include "base/gwwindow.h"
#include "base/held.h"
#include "db/sizelist.h"
#include "shape/processpicture.h"
#include "tavd/tavb.h"

namespace tavd {

ShapeState shp;

namespace {

constexpr unsigned kClassRecordSize = 0x48;  // as hosts know it; the flow diagram's is 0x50

// Outside the state, since the class outlives it.
bool shapeclass_registered;

// Once in a process.
void register_class(tavd_hmodule module) {
  if (!shapeclass_registered) {
    shapeclass_registered = true;
    gwregisterclass(module, TAVDSHAPEPIC_WINDOW_CLASS, tavdshapepic_picproc, kClassRecordSize);
  }
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
  create_tools(shp);
  draw(shp, hdc);
  gwrestoredc(hdc, saved);
  painting.end();
  destroy_tools(shp);
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdshapepic_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid) {
  // What a former life still holds goes first, since its only address is in the state.
  tavdshapepic_release();
  destroy_tools(shp);
  std::memset(&shp, 0, sizeof shp);
  register_class(hmodule);
  set_up(shp, db);
  shp.listid = listid;
  shp.rec = rec;
  if (rec != nullptr) tavbgetID(db, rec, shp.classID, nullptr);
  if (listid == 0 && rec != nullptr) tavdshapepic_initdata(rec);
}

void tavdshapepic_release(void) {
  tavfm_release(&shp.familylist);
}

void tavdshapepic_set_title(const char* text) {
  gwstrcpyfield(shp.usertitle, text, TAVDSHAPEPIC_TITLE_CHARS);
}

void tavdshapepic_initdata(tavb_rec rec) {
  read_product(shp, rec);
}

void tavdshapepic_fillsizeLB(tavd_hwnd hdlg) {
  fill_size_list(hdlg, shp.listid, &shp.familylist, shp.db, shp.rec);
}

void tavdshapepic_update_from_list(tavd_hwnd hdlg) {
  const tavb_rec record = selected_record(hdlg, shp.listid, &shp.familylist, shp.db, shp.classID, shp.title,
                                          TAVDSHAPEPIC_TITLE_CHARS);
  if (record != nullptr) {
    tavdshapepic_initdata(record);
    tavbreleaserec(record);
  }
}

void tavdshapepic_resize(int left, int top, int right, int bottom) {
  resize(shp, left, top, right, bottom);
}

void tavdshapepic_resize_default(void) {
  resize_default(shp);
}

void tavdshapepic_create_drawing_tools(void) {
  create_tools(shp);
}

void tavdshapepic_destroy_drawing_tools(void) {
  destroy_tools(shp);
}

void tavdshapepic_draw(tavd_hdc hdc) {
  draw(shp, hdc);
}

intptr_t tavdshapepic_picproc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  if (msg != kWmPaint) return gwdefproc(hwnd, msg, wparam, lparam);
  paint(hwnd);
  return 0;
}
