#include "shape/picture.h"

#include <algorithm>
#include <cstring>

#include "base/gwtext.h"
#include "base/held.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdf.h"

namespace tavd {
namespace {

constexpr int kTitleBandPart = 20;  // of the picture's height
// Drawing units across and down; the latter is not the default picture's 800, and stays as it is, since hosts
// have fitted their windows to it.
constexpr double kPlaneWidth = 500.0;
constexpr double kPlaneHeight = 798.0;

// Copies an attribute into a cleared place of the state and returns how many items it has.
template <typename Place>
std::int16_t read(std::int16_t db, tavb_rec rec, std::int16_t attribute, Place* place) {
  std::memset(place, 0, sizeof *place);
  std::int16_t items = 0;
  const void* found = rec == nullptr ? nullptr
                                     : tavbcopyatt(db, rec, attribute, &items, place,
                                                   static_cast<std::int16_t>(sizeof *place));
  return found != nullptr ? items : std::int16_t{0};
}

void choose_title(ShapeState& picture, tavb_rec rec) {
  if (picture.usertitle[0] != 0 || rec == nullptr) {
    gwstrcpyfield(picture.title, picture.usertitle, TAVDSHAPEPIC_TITLE_CHARS);
  } else {
    tavdf_copyproductcode(picture.db, rec, picture.title, TAVDSHAPEPIC_TITLE_CHARS);
  }
}

}  // namespace

void set_up(ShapeState& picture, std::int16_t db) {
  picture.db = db;
  resize_default(picture);
  tavfm_init(&picture.familylist);
}

void read_product(ShapeState& picture, tavb_rec rec) {
  choose_title(picture, rec);
  read_measures(picture, rec);
}

void read_measures(ShapeState& picture, tavb_rec rec) {
  picture.nvalues =
      std::clamp<std::int16_t>(read(picture.db, rec, TAVD_ATT_SHAPE_DATA, &picture.values), 0, kShapeWords);
  picture.nheader = read(picture.db, rec, TAVD_ATT_FLOW_HEADER, &picture.header);
}

void resize(ShapeState& picture, int left, int top, int right, int bottom) {
  picture.pic_left = left;
  picture.pic_top = top;
  picture.pic_right = right;
  picture.pic_bottom = bottom;
  const std::int64_t width = std::int64_t{right} - left;
  const std::int64_t band = (std::int64_t{bottom} - top) / kTitleBandPart;
  picture.pic_origin_y = held<int>(top + band);
  picture.pic_xscale = static_cast<double>(width) / kPlaneWidth;
  picture.pic_yscale = static_cast<double>(std::int64_t{bottom} - picture.pic_origin_y) / kPlaneHeight;
}

void resize_default(ShapeState& picture) {
  picture.pic_left = 0;
  picture.pic_top = 0;
  picture.pic_right = TAVDSHAPEPIC_WIDTH;
  picture.pic_bottom = TAVDSHAPEPIC_HEIGHT;
  picture.pic_origin_y = TAVDSHAPEPIC_TITLE_BAND;
  picture.pic_xscale = 1.0;
  picture.pic_yscale = 1.0;
}

}  // namespace tavd
