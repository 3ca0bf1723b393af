// A valve in a wall, with a body narrower or wider than its face. 1 height of the face, 2 its width, 3 width
// of the body, 6 depth of the body, 7 by how much that can be less, 8 what the duct's end adds to it.
#include "shape/catalogue.h"
#include "shape/picture.h"

namespace tavd {
namespace {

constexpr Figure face_outline[] = {
    box({100, 60}, {112, 260}),
    stroke({{300, 120}, {385, 120}, {385, 200}, {300, 200}}),
    box({110, 500}, {310, 700}),
    circle({210, 600}, 40),
};
constexpr Figure face_centre_lines[] = {
    line({102, 160}, {398, 160}),
    line({100, 600}, {320, 600}),
    line({210, 490}, {210, 710}),
};
constexpr Figure face_fine[] = {
    // Beads of the duct's end.
    line({367, 120}, {367, 200}),
    line({375, 120}, {375, 200}),
    // Screws of the face, and the struts that hold the valve.
    line({117, 507}, {127, 517}),
    line({127, 507}, {117, 517}),
    line({293, 507}, {303, 517}),
    line({303, 507}, {293, 517}),
    line({117, 683}, {127, 693}),
    line({127, 683}, {117, 693}),
    line({293, 683}, {303, 693}),
    line({303, 683}, {293, 693}),
    line({182, 572}, {238, 628}),
    line({182, 628}, {238, 572}),
    box({196, 586}, {224, 614}),
};
constexpr Dimension face_dimensions[] = {
    across(1, {110, 700}, {310, 700}, 760),
    down(2, {100, 60}, {100, 260}, 10),
};
constexpr Sketch face = {
    .outline = face_outline, .hidden = face_centre_lines, .fine = face_fine, .dimensions = face_dimensions};

constexpr Figure narrow_outline[] = {box({112, 75}, {300, 245})};
constexpr Figure narrow_hidden[] = {box({125, 515}, {295, 685})};
constexpr Dimension narrow_dimensions[] = {down(3, {300, 75}, {300, 245}, 410)};
constexpr Sketch narrow_body = {
    .outline = narrow_outline, .hidden = narrow_hidden, .dimensions = narrow_dimensions};

constexpr Figure wide_outline[] = {box({112, 45}, {300, 275})};
constexpr Figure wide_hidden[] = {box({95, 485}, {325, 715})};
constexpr Dimension wide_dimensions[] = {down(3, {300, 45}, {300, 275}, 410)};
constexpr Sketch wide_body = {.outline = wide_outline, .hidden = wide_hidden, .dimensions = wide_dimensions};

constexpr Dimension depth_dimension[] = {across(6, {100, 275}, {300, 275}, 375)};
constexpr Sketch depth = {.dimensions = depth_dimension};

constexpr Figure least_depth_hidden[] = {line({265, 85}, {265, 235})};
constexpr Dimension least_depth_dimension[] = {across(difference(6, 7), {100, 275}, {265, 275}, 330)};
constexpr Sketch least_depth = {.hidden = least_depth_hidden, .dimensions = least_depth_dimension};

constexpr Dimension whole_dimensions[] = {
    across(sum(6, 8), {100, 275}, {385, 200}, 420),
    across(kDiameter, {170, 600}, {250, 600}, 466),
};
constexpr Sketch whole_depth = {.dimensions = whole_dimensions};

}  // namespace

void shape_164(const ShapeCanvas& canvas) {
  draw_sketches(canvas, {&face, canvas.state.values[3] < canvas.state.values[2] ? &narrow_body : &wide_body,
                         &depth, canvas.state.values[7] > 0 ? &least_depth : &kNoSketch, &whole_depth});
}

}  // namespace tavd
