// Drawing a picture, and the tools of one paint.
#include <cstdint>
#include <cstring>

#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "shape/picture.h"

namespace tavd {
namespace {

constexpr char kFace[] = "Arial";

// Parts of the picture.
constexpr int kThickPenPart = 150;  // of the width
constexpr int kTextFontPart = 28;   // of the height
constexpr int kTitleFontPart = 21;  // of the height
constexpr int kTitleGapPart = 20;   // of the title band

void draw_title(const ShapeState& picture, tavd_hdc hdc) {
  gwtextalign(hdc, kAlignCenterTop);
  const std::int64_t middle = (std::int64_t{picture.pic_left} + picture.pic_right) / 2;
  const std::int64_t band = std::int64_t{picture.pic_origin_y} - picture.pic_top;
  gwtextoutn(hdc, held<int>(middle), held<int>(picture.pic_top + band / kTitleGapPart), picture.title,
             static_cast<int>(std::strlen(picture.title)));
}

}  // namespace

void create_tools(ShapeState& picture) {
  destroy_tools(picture);
  const std::int64_t width = std::int64_t{picture.pic_right} - picture.pic_left;
  const std::int64_t height = std::int64_t{picture.pic_bottom} - picture.pic_top;
  picture.pen_thick = gwcreatepen(kPenSolid, held<int>(width / kThickPenPart), kBlack);
  picture.pen_dot = gwcreatepen(kPenDot, 1, kBlack);
  picture.pen_dashdot = gwcreatepen(kPenDashDot, 1, kBlack);
  picture.pen_thin = gwcreatepen(kPenSolid, 1, kBlack);
  picture.font_text = gwcreatefont(held<std::int16_t>(height / kTextFontPart), kWeightNormal, 0, 0, kFace);
  picture.font_title = gwcreatefont(held<std::int16_t>(height / kTitleFontPart), kWeightBold, 0, 0, kFace);
}

void destroy_tools(ShapeState& picture) {
  gwdiscard({&picture.pen_thick, &picture.pen_dot, &picture.pen_dashdot, &picture.pen_thin,
             &picture.font_text, &picture.font_title});
}

void draw(const ShapeState& picture, tavd_hdc hdc) {
  Selected pen(hdc, nullptr);  // first, so that the former font is selected back before the former pen
  Selected font(hdc, picture.font_title);
  draw_title(picture, hdc);
  font.change(picture.font_text);
  pen.change(picture.pen_thin);
  draw_shape({picture, hdc});
}

}  // namespace tavd
