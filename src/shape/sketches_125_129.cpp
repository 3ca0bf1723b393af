// More low-velocity diffusers, drawn as those of sketches_120_124.cpp are.
#include <array>

#include "shape/catalogue.h"
#include "shape/figures.h"

namespace tavd {
namespace {

// A column with rounded ends that stands free in the room, with a rectangular duct on top. 1 width, 2 depth,
// 3 height, 4 width and 5 depth of the duct; 6 is written at the face; 7 height of the plinth.
namespace s125 {
constexpr Figure outline[] = {
    box({110, 55}, {370, 365}),
    stroke({{190, 55}, {190, 18}, {290, 18}, {290, 55}}),
    line({170, 500}, {310, 500}),
    line({170, 620}, {310, 620}),
    arc({110, 500}, {230, 620}, {170, 500}, {170, 620}),
    arc({250, 500}, {370, 620}, {310, 620}, {310, 500}),
    box({190, 530}, {290, 590}),
};
constexpr Figure added[] = {line({110, 330}, {370, 330})};
constexpr auto hidden =
    joined(std::array{line({240, 8}, {240, 375}), line({240, 490}, {240, 630}), line({103, 560}, {380, 560}),
                      line({170, 514}, {310, 514}), line({170, 606}, {310, 606}), bend({170, 560}, 46, 6, 18),
                      bend({310, 560}, 46, -6, 6)},
           repeated<19>(line({114, 84}, {368, 84}), 0, 12));
constexpr auto fine =
    joined(std::array{line({190, 28}, {290, 28}), line({110, 70}, {370, 70}), line({110, 315}, {370, 315}),
                      line({115, 70}, {115, 315}), line({128, 70}, {128, 315}), line({147, 70}, {147, 315}),
                      line({170, 70}, {170, 315}), line({310, 70}, {310, 315}), line({333, 70}, {333, 315}),
                      line({352, 70}, {352, 315}), line({365, 70}, {365, 315}), line({190, 530}, {290, 590}),
                      line({290, 530}, {190, 590}), stroke({{138, 190}, {95, 150}, {8, 150}})});
constexpr Dimension dimensions[] = {
    across(1, {110, 560}, {370, 560}, 700),
    down(2, {310, 500}, {310, 620}, 411),
    down(total(8, 3, 7), {370, 55}, {370, 365}, 411),
    across(4, {190, 530}, {290, 530}, 440),
    down(5, {190, 530}, {190, 590}, 10),
};
constexpr FreeText texts[] = {{6, {10, 148}}};
constexpr Point centres[] = {{240, 210}, {240, 560}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 8,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s125

// A flat unit with the duct through the wall behind it; from the side and from the front. 1 width, 2 depth,
// 3 diameter of the duct, 4 height, 5 axis of the duct below the top, 6 length of its collar; 7 is written at
// the face; 10 height of the plinth.
namespace s126 {
constexpr Figure outline[] = {
    box({200, 30}, {300, 300}),
    stroke({{200, 65}, {110, 65}, {110, 155}, {200, 155}}),
    box({130, 430}, {370, 700}),
};
constexpr Figure added[] = {line({200, 265}, {300, 265}), line({130, 665}, {370, 665})};
constexpr auto hidden =
    joined(std::array{line({103, 110}, {310, 110}), line({250, 20}, {250, 310}), line({250, 420}, {250, 710}),
                      line({120, 510}, {380, 510}), line({282, 40}, {282, 250}), circle({250, 510}, 45)},
           repeated<8>(line({152, 460}, {196, 460}), 0, 12), repeated<8>(line({304, 460}, {348, 460}), 0, 12),
           repeated<7>(line({152, 556}, {348, 556}), 0, 12));
constexpr auto fine =
    joined(std::array{line({292, 44}, {292, 250}), line({292, 44}, {300, 44}), line({292, 250}, {300, 250}),
                      line({120, 65}, {120, 155}), box({144, 446}, {356, 648}), line({194, 14}, {194, 56}),
                      line({194, 164}, {194, 312}), stroke({{345, 610}, {388, 640}, {478, 640}})},
           repeated<3>(line({194, 18}, {182, 28}), 0, 17), repeated<9>(line({194, 168}, {182, 178}), 0, 17));
constexpr Dimension dimensions[] = {
    across(1, {130, 700}, {370, 700}, 760), across(2, {200, 300}, {300, 300}, 365),
    down(3, {110, 65}, {110, 155}, 10),     down(total(11, 4, 10), {300, 30}, {300, 300}, 400),
    down(5, {370, 430}, {295, 510}, 411),   across(6, {110, 155}, {200, 300}, 365),
};
constexpr FreeText texts[] = {{7, {391, 638}}};
constexpr Point centres[] = {{250, 185}, {250, 510}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 11,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s126

// A unit around the outer corner of a wall, three quarters of a circle. 1 diameter, 2 height; 3 is written at
// the duct, 4 at the face; 5 height of the plinth.
namespace s127 {
constexpr Figure outline[] = {
    box({110, 55}, {350, 365}),
    stroke({{234, 55}, {234, 18}, {306, 18}, {306, 55}}),
    stroke({{110, 590}, {230, 590}, {230, 470}}),
    arc({110, 470}, {350, 710}, {110, 590}, {230, 470}),
    circle({270, 630}, 36),
};
constexpr Figure added[] = {line({110, 330}, {350, 330})};
constexpr auto hidden = joined(
    std::array{line({230, 45}, {230, 375}), line({270, 8}, {270, 66}), line({230, 600}, {230, 720}),
               line({240, 590}, {360, 590}), line({270, 582}, {270, 676}), line({222, 630}, {318, 630}),
               bend({230, 590}, 106, -6, 3), bend({230, 590}, 106, 3, 12)},
    repeated<19>(line({114, 84}, {348, 84}), 0, 12));
constexpr auto fine = joined(
    std::array{line({234, 28}, {306, 28}), line({110, 70}, {350, 70}), line({110, 315}, {350, 315}),
               stroke({{80, 584}, {224, 584}, {224, 440}}), stroke({{295, 604}, {388, 470}, {478, 470}}),
               stroke({{138, 190}, {95, 150}, {8, 150}})},
    round_joints({230, 70}, 120, 315), repeated<8>(line({84, 584}, {94, 572}), 17, 0),
    repeated<7>(line({224, 446}, {212, 456}), 0, 17));
constexpr Dimension dimensions[] = {
    across(1, {110, 590}, {350, 590}, 765),
    down(total(6, 2, 5), {350, 55}, {350, 365}, 411),
};
constexpr FreeText texts[] = {{3, {391, 468}}, {4, {10, 148}}};
constexpr Point centres[] = {{230, 210}, {270, 630}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 6,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s127

// A long, low unit with slats and a sloping top, for windows and steps, with a rectangular duct behind; from
// the side and from the front. 1 length, 2 depth, 3 height, 4 width and 5 height of the duct; 6 is written at
// the face; 9 height of the plinth.
namespace s128 {
constexpr Figure outline[] = {
    stroke({{195, 90}, {270, 90}, {310, 130}, {310, 270}, {195, 270}, {195, 90}}),
    stroke({{195, 136}, {140, 136}, {140, 216}, {195, 216}}),
    box({50, 470}, {450, 650}),
    line({50, 510}, {450, 510}),
};
constexpr Figure added[] = {line({195, 238}, {310, 238}), line({50, 618}, {450, 618})};
constexpr auto hidden = std::array{
    line({118, 176}, {320, 176}),
    line({250, 80}, {250, 280}),
    line({250, 460}, {250, 660}),
    box({200, 516}, {300, 596}),
};
constexpr auto fine =
    joined(std::array{line({150, 136}, {150, 216}), box({70, 522}, {430, 606}), line({160, 522}, {160, 606}),
                      line({340, 522}, {340, 606}), stroke({{395, 490}, {408, 425}, {494, 425}})},
           repeated<6>(line({292, 150}, {309, 142}), 0, 14), repeated<5>(line({70, 536}, {430, 536}), 0, 14));
constexpr Dimension dimensions[] = {
    across(1, {50, 650}, {450, 650}, 715),
    across(2, {195, 270}, {310, 270}, 330),
    down(total(10, 3, 9), {270, 90}, {310, 270}, 400),
    across(4, {200, 516}, {300, 516}, 430),
    down(5, {140, 136}, {140, 216}, 20),
};
constexpr FreeText texts[] = {{6, {409, 423}}};
constexpr Point centres[] = {{250, 176}, {250, 556}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 10,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s128

// A unit in front of a wall with a bowed face of upright slots. 1 width, 2 height, 4 diameter of the duct; 5
// is written at the face and 6, the height of the plinth, at that.
namespace s129 {
constexpr Figure outline[] = {
    box({90, 50}, {350, 365}),
    stroke({{175, 50}, {175, 15}, {265, 15}, {265, 50}}),
    stroke({{90, 559}, {90, 480}, {350, 480}, {350, 559}}),
    arc({51, 282}, {389, 620}, {90, 559}, {350, 559}),
    circle({220, 540}, 45),
};
constexpr Figure added[] = {line({90, 330}, {350, 330})};
constexpr Figure hidden[] = {
    line({220, 5}, {220, 375}),
    line({220, 460}, {220, 632}),
    line({80, 540}, {362, 540}),
    arc({63, 294}, {377, 608}, {100, 552}, {340, 552}),
};
constexpr auto fine = joined(
    std::array{line({175, 25}, {265, 25}), line({90, 65}, {350, 65}), line({90, 315}, {350, 315}),
               line({60, 474}, {380, 474}), stroke({{132, 180}, {88, 150}, {1, 150}}),
               stroke({{104, 348}, {88, 395}, {1, 395}})},
    repeated<12>(line({109, 80}, {109, 182}), 20, 0), repeated<12>(line({109, 196}, {109, 300}), 20, 0),
    repeated<12>(line({113, 80}, {113, 182}), 20, 0), repeated<12>(line({113, 196}, {113, 300}), 20, 0),
    repeated<18>(line({64, 474}, {74, 462}), 18, 0));
constexpr Dimension dimensions[] = {
    across(1, {90, 559}, {350, 559}, 690),
    down(total(7, 2, 6), {350, 50}, {350, 365}, 411),
    across(4, {175, 540}, {265, 540}, 425),
};
constexpr FreeText texts[] = {{5, {3, 148}}, {6, {3, 393}}};
constexpr Point centres[] = {{220, 540}};
constexpr Sketch sketch = {.outline = outline,
                           .added = added,
                           .added_from = 7,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s129

constexpr NumberedSketch kSketches125To129[] = {
    {125, &s125::sketch}, {126, &s126::sketch}, {127, &s127::sketch},
    {128, &s128::sketch}, {129, &s129::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_125_129() {
  return kSketches125To129;
}

}  // namespace tavd
