// Low-velocity diffusers: units on the floor that let air out gently through a large perforated or slotted
// face. From a certain number of values up they stand on a plinth, which the dimension of their height then
// covers too.
//
// What they have in common: the view from the front above, the plan below; walls in fine lines with hatching;
// the perforation of a face as rows of dots; in the plan, the inner plate that spreads the air dotted.
#include <array>

#include "shape/catalogue.h"
#include "shape/figures.h"

namespace tavd {
namespace {

// A flat unit in front of a wall, with the duct on top. 1 width, 2 height, 3 depth, 4 diameter of the duct;
// 5 height of the plinth.
namespace s120 {
constexpr Figure outline[] = {
    box({70, 40}, {350, 370}),
    stroke({{165, 40}, {165, 14}, {255, 14}, {255, 40}}),
    box({70, 500}, {350, 650}),
    circle({210, 572}, 45),
};
constexpr Figure added[] = {line({70, 329}, {350, 329})};
constexpr auto hidden = joined(std::array{line({210, 4}, {210, 380}), line({210, 490}, {210, 660}),
                                          line({60, 572}, {360, 572}), line({74, 632}, {346, 632})},
                               repeated<20>(line({92, 68}, {328, 68}), 0, 12));
constexpr auto fine = joined(std::array{line({165, 22}, {255, 22}), box({84, 56}, {336, 310}),
                                        line({70, 642}, {350, 642}), line({56, 494}, {364, 494})},
                             repeated<17>(line({60, 494}, {70, 482}), 18, 0));
constexpr Dimension dimensions[] = {
    across(1, {70, 650}, {350, 650}, 715),
    down(total(6, 2, 5), {350, 40}, {350, 370}, 410),
    down(3, {350, 500}, {350, 650}, 410),
    across(4, {165, 572}, {255, 572}, 440),
};
constexpr Point centres[] = {{210, 190}, {210, 572}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 6,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .centres = centres};
}  // namespace s120

// A unit for the corner of a room, its face across the corner. 1 length along a wall, 2 height, 3 depth of
// the side, 4 diameter of the duct, 5 height of its collar; 6 height of the plinth.
namespace s121 {
constexpr Figure outline[] = {
    box({110, 62}, {310, 370}),
    line({170, 62}, {170, 370}),
    stroke({{145, 62}, {145, 10}, {235, 10}, {235, 62}}),
    stroke({{110, 470}, {310, 470}, {310, 530}, {170, 670}, {110, 670}, {110, 470}}),
    circle({190, 550}, 45),
};
constexpr Figure added[] = {line({110, 335}, {310, 335})};
constexpr auto hidden = joined(std::array{line({190, 2}, {190, 380}), line({190, 448}, {190, 662}),
                                          line({88, 550}, {312, 550}), line({300, 522}, {162, 660})},
                               repeated<19>(line({186, 90}, {294, 90}), 0, 12));
constexpr auto fine = joined(std::array{line({145, 20}, {235, 20}), box({178, 77}, {302, 321}),
                                        stroke({{104, 690}, {104, 464}, {330, 464}})},
                             repeated<12>(line({122, 464}, {132, 452}), 17, 0),
                             repeated<12>(line({104, 482}, {92, 492}), 0, 17));
constexpr Dimension dimensions[] = {
    across(1, {110, 670}, {310, 530}, 735), down(total(7, 2, 6), {310, 62}, {310, 370}, 411),
    down(3, {310, 470}, {310, 530}, 411),   across(4, {145, 550}, {235, 550}, 430),
    down(5, {235, 10}, {310, 62}, 411),
};
constexpr Point centres[] = {{190, 216}, {190, 550}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 7,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .centres = centres};
}  // namespace s121

// A half-round unit in front of a wall. 1 width, 2 height, 3 depth, 4 diameter of the duct, 5 height of its
// collar; 6 height of the plinth.
namespace s122 {
constexpr Figure outline[] = {
    box({80, 62}, {340, 370}),   stroke({{168, 62}, {168, 10}, {252, 10}, {252, 62}}),
    line({80, 500}, {340, 500}), arc({80, 370}, {340, 630}, {80, 500}, {340, 500}),
    circle({210, 552}, 42),
};
constexpr Figure added[] = {line({80, 335}, {340, 335})};
constexpr auto hidden = joined(std::array{line({210, 2}, {210, 380}), line({210, 478}, {210, 640}),
                                          line({70, 552}, {350, 552}), bend({210, 500}, 114, 0, 12)},
                               repeated<19>(line({84, 90}, {338, 90}), 0, 12));
constexpr auto fine =
    joined(std::array{line({168, 20}, {252, 20}), line({80, 77}, {340, 77}), line({80, 321}, {340, 321}),
                      line({50, 494}, {370, 494})},
           round_joints({210, 77}, 130, 321), repeated<18>(line({54, 494}, {64, 482}), 18, 0));
constexpr Dimension dimensions[] = {
    across(1, {80, 500}, {340, 500}, 700), down(total(7, 2, 6), {340, 62}, {340, 370}, 411),
    down(3, {340, 500}, {210, 630}, 411),  across(4, {168, 552}, {252, 552}, 430),
    down(5, {252, 10}, {340, 62}, 411),
};
constexpr Point centres[] = {{210, 216}, {210, 552}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 7,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .centres = centres};
}  // namespace s122

// A round column that stands free in the room. 1 diameter, 2 diameter of the duct, 3 height; 4 height of
// the plinth.
namespace s123 {
constexpr Figure outline[] = {
    box({95, 45}, {325, 365}),
    stroke({{160, 45}, {160, 14}, {260, 14}, {260, 45}}),
    circle({210, 595}, 115),
    circle({210, 595}, 50),
};
constexpr Figure added[] = {line({95, 330}, {325, 330})};
constexpr auto hidden =
    joined(std::array{line({210, 4}, {210, 375}), line({210, 465}, {210, 725}), line({80, 595}, {340, 595}),
                      bend({210, 595}, 100, 0, 12), bend({210, 595}, 100, 12, 24)},
           repeated<20>(line({99, 74}, {323, 74}), 0, 12));
constexpr auto fine =
    joined(std::array{line({160, 24}, {260, 24}), line({95, 60}, {325, 60}), line({95, 315}, {325, 315})},
           round_joints({210, 60}, 115, 315));
constexpr Dimension dimensions[] = {
    across(1, {95, 595}, {325, 595}, 765),
    across(2, {160, 595}, {260, 595}, 430),
    down(total(5, 3, 4), {325, 45}, {325, 365}, 400),
};
constexpr Point centres[] = {{210, 200}, {210, 595}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 5,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .centres = centres};
}  // namespace s123

// A quarter-round unit for the corner of a room. 1 length along a wall, 2 height; 3 is written at the duct, 4
// at the face; 6 height of the plinth.
namespace s124 {
constexpr Figure outline[] = {
    box({110, 60}, {310, 365}),
    stroke({{135, 60}, {135, 20}, {225, 20}, {225, 60}}),
    stroke({{110, 670}, {110, 470}, {310, 470}}),
    arc({-90, 270}, {310, 670}, {110, 670}, {310, 470}),
    circle({180, 540}, 45),
};
constexpr Figure added[] = {line({110, 330}, {310, 330})};
constexpr auto hidden = joined(std::array{line({180, 10}, {180, 375}), line({180, 448}, {180, 670}),
                                          line({90, 540}, {320, 540}), bend({110, 470}, 184, 0, 6)},
                               repeated<19>(line({114, 88}, {308, 88}), 0, 12));
constexpr auto fine = joined(
    std::array{line({135, 30}, {225, 30}), line({110, 75}, {310, 75}), line({110, 315}, {310, 315}),
               line({210, 75}, {210, 315}), line({283, 75}, {283, 315}),
               stroke({{104, 690}, {104, 464}, {330, 464}}), stroke({{212, 508}, {335, 430}, {425, 430}}),
               stroke({{252, 612}, {278, 642}, {366, 642}})},
    repeated<12>(line({122, 464}, {132, 452}), 17, 0), repeated<12>(line({104, 482}, {92, 492}), 0, 17));
constexpr Dimension dimensions[] = {
    down(1, {310, 470}, {110, 670}, 411),
    down(total(7, 2, 6), {310, 60}, {310, 365}, 411),
};
constexpr FreeText texts[] = {{3, {338, 428}}, {4, {281, 640}}};
constexpr Point centres[] = {{180, 210}, {180, 540}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 7,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s124

constexpr NumberedSketch kSketches120To124[] = {
    {120, &s120::sketch}, {121, &s121::sketch}, {122, &s122::sketch},
    {123, &s123::sketch}, {124, &s124::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_120_124() {
  return kSketches120To124;
}

}  // namespace tavd
