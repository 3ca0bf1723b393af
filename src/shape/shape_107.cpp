// A ceiling unit with a rectangular or round connection at its end or at its side. Products with 7 values or
// more also have frame, hangers and pipes.
//
// 1 the kind of connection; 2 length, 3 height, 4 width of the unit, 5 size of the connection, 6 width of the
// frame (7 where that is another one), 8 axis of the connection above the frame, 9 hangers along, 10 hangers
// across, 11 height with the frame, 12 where the pipes are, 13 length of the frame, then, by the kind of
// connection, 14 its height or 15 or 16 its axis below the top.
#include "shape/catalogue.h"
#include "shape/picture.h"

namespace tavd {
namespace {

constexpr Figure unit_outline[] = {
    box({130, 130}, {370, 230}),
    box({115, 230}, {385, 240}),
    box({150, 470}, {350, 570}),
    box({130, 570}, {370, 580}),
};
constexpr Figure unit_centre_lines[] = {
    line({103, 180}, {395, 180}),
    line({250, 120}, {250, 250}),
    line({140, 520}, {360, 520}),
    line({250, 460}, {250, 590}),
};
constexpr Figure unit_grille[] = {
    line({145, 235}, {355, 235}),
    line({160, 575}, {340, 575}),
};
constexpr Dimension unit_dimensions[] = {
    across(2, {130, 240}, {370, 240}, 290),
    down(3, {370, 130}, {370, 230}, 410),
    across(4, {150, 580}, {350, 580}, 640),
};
constexpr Sketch unit = {
    .outline = unit_outline, .hidden = unit_centre_lines, .fine = unit_grille, .dimensions = unit_dimensions};

constexpr Point centres[] = {{250, 180}, {250, 520}};
constexpr Sketch unit_centres = {.centres = centres};

// The kinds of connection.
constexpr Figure rectangular_outline[] = {
    stroke({{130, 150}, {110, 150}, {110, 210}, {130, 210}}),
    box({190, 490}, {310, 550}),
};
constexpr Dimension rectangular_dimensions[] = {across(5, {190, 490}, {310, 490}, 430)};
constexpr Dimension rectangular_height[] = {down(14, {110, 150}, {110, 210}, 10)};

constexpr Figure round_outline[] = {
    stroke({{130, 137}, {110, 137}, {110, 223}, {130, 223}}),
    circle({250, 520}, 43),
};
constexpr Dimension round_dimensions[] = {across(5, {207, 520}, {293, 520}, 430)};
constexpr Dimension round_axis[] = {down(15, {130, 130}, {110, 180}, 10)};

constexpr Figure side_outline[] = {
    circle({250, 180}, 43),
    stroke({{150, 477}, {128, 477}, {128, 563}, {150, 563}}),
};
constexpr Dimension side_dimensions[] = {across(5, {207, 180}, {293, 180}, 85)};
constexpr Dimension side_axis[] = {down(16, {130, 130}, {130, 180}, 10)};

constexpr Sketch connections[] = {
    {.outline = rectangular_outline, .dimensions = rectangular_dimensions},
    {.outline = round_outline, .dimensions = round_dimensions},
    {.outline = side_outline, .dimensions = side_dimensions},
};
constexpr Sketch connection_places[] = {
    {.dimensions = rectangular_height},
    {.dimensions = round_axis},
    {.dimensions = side_axis},
};
constexpr int kKinds = 3;

// Hangers and pipes.
constexpr Figure hangers[] = {
    stroke({{150, 130}, {150, 118}, {166, 118}, {166, 130}}),
    stroke({{334, 130}, {334, 118}, {350, 118}, {350, 130}}),
    stroke({{167, 470}, {167, 458}, {183, 458}, {183, 470}}),
    stroke({{317, 470}, {317, 458}, {333, 458}, {333, 470}}),
};
constexpr Figure side_pipes_left[] = {stroke({{180, 130}, {180, 114}, {188, 114}, {188, 130}}),
                                      stroke({{196, 130}, {196, 114}, {204, 114}, {204, 130}})};
constexpr Figure side_pipes_right[] = {stroke({{296, 130}, {296, 114}, {304, 114}, {304, 130}}),
                                       stroke({{312, 130}, {312, 114}, {320, 114}, {320, 130}})};
constexpr Figure front_pipes_left[] = {stroke({{192, 470}, {192, 454}, {200, 454}, {200, 470}})};
constexpr Figure front_pipes_right[] = {stroke({{300, 470}, {300, 454}, {308, 454}, {308, 470}})};

constexpr Sketch pipes_left = {.outline = side_pipes_left};
constexpr Sketch pipes_right = {.outline = side_pipes_right};
constexpr Sketch pipes_front_left = {.outline = front_pipes_left};
constexpr Sketch pipes_front_right = {.outline = front_pipes_right};

constexpr Dimension frame_width[] = {across(6, {130, 580}, {370, 580}, 690)};
constexpr Dimension other_frame_width[] = {across(7, {130, 580}, {370, 580}, 690)};
constexpr Sketch frame = {.dimensions = frame_width};
constexpr Sketch other_frame = {.dimensions = other_frame_width};

constexpr Dimension full_dimensions[] = {
    down(8, {350, 520}, {370, 580}, 410),
    across(9, {158, 118}, {342, 118}, 40),
    across(10, {175, 458}, {325, 458}, 385),
    down(11, {150, 470}, {130, 580}, 10),
};
constexpr Sketch full = {.outline = hangers, .dimensions = full_dimensions};

constexpr Dimension frame_length_dimension[] = {across(13, {115, 240}, {385, 240}, 335)};
constexpr Sketch frame_length = {.dimensions = frame_length_dimension};

constexpr int kFullValues = 7;
constexpr int kWithFrameLength = 14;
constexpr int kWithConnectionPlace = 16;

// One of a table by the kind of connection, 1 to 3.
const Sketch* by_kind(const ShapeState& picture, const Sketch (&sketches)[kKinds]) {
  const int kind = picture.values[1];
  return kind >= 1 && kind <= kKinds ? &sketches[kind - 1] : &kNoSketch;
}

void draw_full(const ShapeCanvas& canvas) {
  const int pipes = canvas.state.values[12];  // 1 and 2: as far left and as far right as one view shows them
  draw_sketches(canvas,
                {
                    &unit,
                    by_kind(canvas.state, connections),
                    pipes == 2 ? &pipes_right : &pipes_left,
                    pipes == 1 ? &pipes_front_right : &pipes_front_left,
                    canvas.state.values[7] < 1 ? &frame : &other_frame,
                    &full,
                    canvas.state.nvalues >= kWithFrameLength ? &frame_length : &kNoSketch,
                    canvas.state.nvalues >= kWithConnectionPlace ? by_kind(canvas.state, connection_places)
                                                                 : &kNoSketch,
                    &unit_centres,
                });
}

}  // namespace

void shape_107(const ShapeCanvas& canvas) {
  if (canvas.state.nvalues >= kFullValues) {
    draw_full(canvas);
  } else if (by_kind(canvas.state, connections) != &kNoSketch) {
    draw_sketches(canvas, {&unit, by_kind(canvas.state, connections), &unit_centres});
  }
}

}  // namespace tavd
