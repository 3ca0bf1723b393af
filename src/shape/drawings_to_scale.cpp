// The two shapes whose outline follows the product: 1 drawing unit for 1.5 mm.
#include <algorithm>

#include "base/held.h"
#include "shape/catalogue.h"
#include "shape/picture.h"

namespace tavd {
namespace {

constexpr double kMmPerUnit = 1.5;
constexpr int kMiddle = 250;      // x of the centre line
constexpr int kViewsApart = 200;  // from the bottom of the first view to the top of the second

int scaled(int mm) {
  return static_cast<int>(mm / kMmPerUnit);
}

Point at(int x, int y) {
  return {held<std::int16_t>(std::int64_t{x}), held<std::int16_t>(std::int64_t{y})};
}

std::int16_t place(int coordinate) {
  return held<std::int16_t>(std::int64_t{coordinate});
}

// The ends of a line across of this width about the centre line.
Point left(int width, int y) {
  return at(kMiddle - width / 2, y);
}
Point right(int width, int y) {
  return at(kMiddle - width / 2 + width, y);
}

}  // namespace

// A slot diffuser below a box, with the duct at the box's end: its end view to scale, and its face, longer
// than the picture, so that it runs off both sides. 1 length, 2 width of the face, 3 width of the box, 4
// width of the slot, 5 height of the box, 6 height of the neck, 7 axis of the duct below the top.
void shape_163(const ShapeCanvas& canvas) {
  constexpr int kTop = 150;
  constexpr int kFaceLength = 800;
  constexpr int kLip = 8;
  const int face = scaled(canvas.state.values[2]);
  const int body = scaled(canvas.state.values[3]);
  const int slot = scaled(canvas.state.values[4]);
  const int bottom = kTop + scaled(canvas.state.values[5]);
  const int face_y = bottom + scaled(canvas.state.values[6]);
  const int duct = scaled(canvas.state.header.b);
  const int axis = kTop + scaled(canvas.state.values[7]);
  const int second = bottom + kViewsApart;
  const int second_middle = second + face / 2;
  const int beside = kMiddle + std::max(face, body) / 2 + 40;

  const Figure outline[] = {
      box(left(body, kTop), right(body, bottom)),
      line(left(slot, bottom), left(slot, face_y)),
      line(right(slot, bottom), right(slot, face_y)),
      line(left(face, face_y), right(face, face_y)),
      box(left(kFaceLength, second), right(kFaceLength, second + face)),
      line(left(kFaceLength, second_middle - slot / 2), right(kFaceLength, second_middle - slot / 2)),
      line(left(kFaceLength, second_middle + slot / 2), right(kFaceLength, second_middle + slot / 2)),
  };
  const Figure duct_end[] = {circle(at(kMiddle, axis), place(duct / 2))};
  const Figure fine[] = {
      // Edges of the face, end view; the two vanes of the slot.
      line(left(face, face_y), left(face, face_y - kLip)),
      line(right(face, face_y), right(face, face_y - kLip)),
      line(left(slot / 3, bottom), left(slot / 3, face_y)),
      line(right(slot / 3, bottom), right(slot / 3, face_y)),
      line(left(kFaceLength, second_middle - slot / 6), right(kFaceLength, second_middle - slot / 6)),
      line(left(kFaceLength, second_middle + slot / 6), right(kFaceLength, second_middle + slot / 6)),
  };
  const Figure hidden[] = {
      line(at(kMiddle, kTop - 10), at(kMiddle, face_y + 10)),
      line(at(kMiddle, second - 10), at(kMiddle, second + face + 10)),
  };
  const Dimension dimensions[] = {
      across(1, left(kFaceLength, second + face), right(kFaceLength, second + face),
             place(second + face + 60)),
      across(2, left(face, face_y), right(face, face_y), place(face_y + 60)),
      across(3, left(body, kTop), right(body, kTop), kTop - 40),
      down(5, right(body, kTop), right(body, bottom), place(beside)),
      across(kDiameter, left(duct, axis), right(duct, axis), kTop - 90),
  };
  const Sketch diffuser = {.outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions};
  const Sketch end = {.outline = duct_end};
  const Sketch nothing = {};
  draw_sketches(canvas, {&diffuser, canvas.state.values[7] > 0 ? &end : &nothing});
}

// A half-round diffuser on a wall, with the duct behind: its front view to scale and its plan. 1 depth, 2
// width, 3 height, 5 axis of the duct below the top.
void shape_165(const ShapeCanvas& canvas) {
  constexpr int kTop = 200;
  constexpr int kUsualAxis = 60;  // mm below the top
  constexpr int kWall = 12;       // between the outer and the inner shell
  constexpr int kProfile = 24;
  constexpr int kPlinth = 30;
  const int width = scaled(canvas.state.values[2]);
  const int bottom = kTop + scaled(canvas.state.values[3]);
  const int axis = kTop + scaled(canvas.state.values[5] != 0 ? canvas.state.values[5] : kUsualAxis);
  const int radius = canvas.state.header.b / 2 / 2;
  const int back = bottom + kViewsApart;
  const int inner = std::max(width - 2 * kWall, 0);

  const Figure outline[] = {
      box(left(width, kTop), right(width, bottom)),
      line(left(width, back), right(width, back)),
      arc(left(width, back - width / 2), right(width, back + width / 2), left(width, back),
          right(width, back)),
      arc(left(inner, back - inner / 2), right(inner, back + inner / 2), left(inner, back),
          right(inner, back)),
  };
  const Figure duct_end[] = {circle(at(kMiddle, axis), place(radius))};
  // Profiles at the sides and the plinth of the front view.
  const int front = std::max(width - 2 * kProfile, 0);
  const int plinth = std::max(bottom - kPlinth, kTop);
  const Figure fine[] = {
      line(left(front, kTop), left(front, plinth)),
      line(right(front, kTop), right(front, plinth)),
      line(left(width, plinth), right(width, plinth)),
  };
  const Figure hidden[] = {
      line(at(kMiddle, kTop - 10), at(kMiddle, bottom + 10)),
      line(at(kMiddle, back - 10), at(kMiddle, back + width / 2 + 10)),
  };
  const std::int16_t beside = place(kMiddle + width / 2 + 50);
  const Dimension dimensions[] = {
      down(1, right(width, back), at(kMiddle, back + width / 2), beside),
      across(2, left(width, back), right(width, back), place(back - 50)),
      down(3, right(width, kTop), right(width, bottom), beside),
      across(kDiameter, at(kMiddle - radius, axis), at(kMiddle + radius, axis), kTop - 50),
  };
  const Sketch diffuser = {.outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions};
  const Sketch end = {.outline = duct_end};
  const Sketch nothing = {};
  draw_sketches(canvas, {&diffuser, canvas.state.header.b > 0 ? &end : &nothing});
}

}  // namespace tavd
