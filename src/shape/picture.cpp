#include "shape/picture.h"

#include <algorithm>
#include <cstring>

#include "base/gwtext.h"
#include "base/held.h"
#include "db/sizelist.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdf.h"
#include "tavd/tavdshapepic.h"

namespace tavd {

ShapeState shp;

namespace {

constexpr int kTitleBandPart = 20;  // of the picture's height
// Drawing units across and down; the latter is not the default picture's 800, and stays as it is, since hosts
// have fitted their windows to it.
constexpr double kPlaneWidth = 500.0;
constexpr double kPlaneHeight = 798.0;

// Copies an attribute into a cleared place of the state and returns how many items it has.
template <typename Place>
std::int16_t read(tavb_rec rec, std::int16_t attribute, Place* place) {
  std::memset(place, 0, sizeof *place);
  std::int16_t items = 0;
  const void* found = rec == nullptr ? nullptr
                                     : tavbcopyatt(shp.db, rec, attribute, &items, place,
                                                   static_cast<std::int16_t>(sizeof *place));
  return found != nullptr ? items : std::int16_t{0};
}

void choose_title(tavb_rec rec) {
  if (shp.usertitle[0] != 0 || rec == nullptr) {
    gwstrcpyfield(shp.title, shp.usertitle, TAVDSHAPEPIC_TITLE_CHARS);
  } else {
    tavdf_copyproductcode(shp.db, rec, shp.title, TAVDSHAPEPIC_TITLE_CHARS);
  }
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdshapepic_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid) {
  // What a former life still holds goes first, since its only address is in the state.
  tavdshapepic_release();
  tavdshapepic_destroy_drawing_tools();
  std::memset(&shp, 0, sizeof shp);
  register_shape_class(hmodule);
  shp.listid = listid;
  shp.rec = rec;
  shp.db = db;
  tavdshapepic_resize_default();
  if (rec != nullptr) tavbgetID(db, rec, shp.classID, nullptr);
  tavfm_init(&shp.familylist);
  if (listid == 0 && rec != nullptr) tavdshapepic_initdata(rec);
}

void tavdshapepic_release(void) {
  tavfm_release(&shp.familylist);
}

void tavdshapepic_set_title(const char* text) {
  gwstrcpyfield(shp.usertitle, text, TAVDSHAPEPIC_TITLE_CHARS);
}

void tavdshapepic_initdata(tavb_rec rec) {
  choose_title(rec);
  shp.nvalues = std::clamp<std::int16_t>(read(rec, TAVD_ATT_SHAPE_DATA, &shp.values), 0, kShapeWords);
  shp.nheader = read(rec, TAVD_ATT_FLOW_HEADER, &shp.header);
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
  shp.pic_left = left;
  shp.pic_top = top;
  shp.pic_right = right;
  shp.pic_bottom = bottom;
  const std::int64_t width = std::int64_t{right} - left;
  const std::int64_t band = (std::int64_t{bottom} - top) / kTitleBandPart;
  shp.pic_origin_y = held<int>(top + band);
  shp.pic_xscale = static_cast<double>(width) / kPlaneWidth;
  shp.pic_yscale = static_cast<double>(std::int64_t{bottom} - shp.pic_origin_y) / kPlaneHeight;
}

void tavdshapepic_resize_default(void) {
  shp.pic_left = 0;
  shp.pic_top = 0;
  shp.pic_right = TAVDSHAPEPIC_WIDTH;
  shp.pic_bottom = TAVDSHAPEPIC_HEIGHT;
  shp.pic_origin_y = TAVDSHAPEPIC_TITLE_BAND;
  shp.pic_xscale = 1.0;
  shp.pic_yscale = 1.0;
}
