// The round ceiling diffuser: a drawing of its own, older than the order that the other sketches share.
#include "base/gwgdi.h"
#include "shape/catalogue.h"
#include "shape/picture.h"
#include "shape/primitives.h"

namespace tavd {
namespace {

void draw_front_view(tavd_hdc hdc) {
  gwselect(hdc, shp.pen_thick);
  pic_circle(hdc, 220, 600, 160);
  gwselect(hdc, shp.pen_thin);
  pic_circle(hdc, 220, 600, 150);
  pic_circle(hdc, 220, 600, 125);
  gwselect(hdc, shp.pen_dot);
  pic_circle(hdc, 220, 600, 110);
  gwselect(hdc, shp.pen_thick);
  pic_circle(hdc, 220, 600, 60);
}

void draw_side_view(tavd_hdc hdc) {
  pic_line(hdc, 110, 300, 330, 300);
  pic_moveto(hdc, 160, 190);
  pic_lineto(hdc, 160, 240);
  pic_lineto(hdc, 95, 290);
  pic_lineto(hdc, 70, 290);
  pic_lineto(hdc, 60, 280);
  pic_moveto(hdc, 280, 190);
  pic_lineto(hdc, 280, 240);
  pic_lineto(hdc, 345, 290);
  pic_lineto(hdc, 370, 290);
  pic_lineto(hdc, 380, 280);
}

void draw_centre_lines(tavd_hdc hdc) {
  gwselect(hdc, shp.pen_dot);
  pic_line(hdc, 40, 600, 400, 600);
  pic_line(hdc, 220, 420, 220, 780);
  pic_line(hdc, 220, 180, 220, 310);
}

void draw_extension_lines(tavd_hdc hdc) {
  gwselect(hdc, shp.pen_thin);
  pic_line(hdc, 60, 270, 60, 55);
  pic_line(hdc, 380, 270, 380, 55);
  pic_line(hdc, 160, 180, 160, 130);
  pic_line(hdc, 280, 180, 280, 130);
  pic_line(hdc, 110, 320, 110, 410);
  pic_line(hdc, 330, 320, 330, 410);
  pic_line(hdc, 290, 240, 415, 240);
  pic_line(hdc, 380, 290, 415, 290);
}

void draw_dimensions(tavd_hdc hdc) {
  pic_dim_value(hdc, 60, 65, 380, 65, 2);
  pic_dim_value(hdc, 160, 140, 280, 140, 1);
  pic_dim_value(hdc, 110, 400, 330, 400, 3);
  pic_dim_value(hdc, 415, 240, 415, 290, 4);
}

}  // namespace

void shape_101(tavd_hdc hdc) {
  draw_front_view(hdc);
  draw_side_view(hdc);
  draw_centre_lines(hdc);
  draw_extension_lines(hdc);
  draw_dimensions(hdc);
  pic_centre(hdc, 220, 600);
  pic_centre(hdc, 220, 240);
}

}  // namespace tavd
