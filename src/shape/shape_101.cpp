// The round ceiling diffuser: a drawing of its own, older than the order that the other sketches share.
#include "base/gwgdi.h"
#include "shape/catalogue.h"
#include "shape/picture.h"
#include "shape/primitives.h"

namespace tavd {
namespace {

void draw_front_view(const ShapeCanvas& canvas) {
  gwselect(canvas.hdc, canvas.state.pen_thick);
  pic_circle(canvas, 220, 600, 160);
  gwselect(canvas.hdc, canvas.state.pen_thin);
  pic_circle(canvas, 220, 600, 150);
  pic_circle(canvas, 220, 600, 125);
  gwselect(canvas.hdc, canvas.state.pen_dot);
  pic_circle(canvas, 220, 600, 110);
  gwselect(canvas.hdc, canvas.state.pen_thick);
  pic_circle(canvas, 220, 600, 60);
}

void draw_side_view(const ShapeCanvas& canvas) {
  pic_line(canvas, 110, 300, 330, 300);
  pic_moveto(canvas, 160, 190);
  pic_lineto(canvas, 160, 240);
  pic_lineto(canvas, 95, 290);
  pic_lineto(canvas, 70, 290);
  pic_lineto(canvas, 60, 280);
  pic_moveto(canvas, 280, 190);
  pic_lineto(canvas, 280, 240);
  pic_lineto(canvas, 345, 290);
  pic_lineto(canvas, 370, 290);
  pic_lineto(canvas, 380, 280);
}

void draw_centre_lines(const ShapeCanvas& canvas) {
  gwselect(canvas.hdc, canvas.state.pen_dot);
  pic_line(canvas, 40, 600, 400, 600);
  pic_line(canvas, 220, 420, 220, 780);
  pic_line(canvas, 220, 180, 220, 310);
}

void draw_extension_lines(const ShapeCanvas& canvas) {
  gwselect(canvas.hdc, canvas.state.pen_thin);
  pic_line(canvas, 60, 270, 60, 55);
  pic_line(canvas, 380, 270, 380, 55);
  pic_line(canvas, 160, 180, 160, 130);
  pic_line(canvas, 280, 180, 280, 130);
  pic_line(canvas, 110, 320, 110, 410);
  pic_line(canvas, 330, 320, 330, 410);
  pic_line(canvas, 290, 240, 415, 240);
  pic_line(canvas, 380, 290, 415, 290);
}

void draw_dimensions(const ShapeCanvas& canvas) {
  pic_dim_value(canvas, 60, 65, 380, 65, 2);
  pic_dim_value(canvas, 160, 140, 280, 140, 1);
  pic_dim_value(canvas, 110, 400, 330, 400, 3);
  pic_dim_value(canvas, 415, 240, 415, 290, 4);
}

}  // namespace

void shape_101(const ShapeCanvas& canvas) {
  draw_front_view(canvas);
  draw_side_view(canvas);
  draw_centre_lines(canvas);
  draw_extension_lines(canvas);
  draw_dimensions(canvas);
  pic_centre(canvas, 220, 600);
  pic_centre(canvas, 220, 240);
}

}  // namespace tavd
