// Other terminals.
#include "shape/catalogue.h"

namespace tavd {
namespace {

// A fan in a round duct: side view and view along the duct. 1 length, 2 length of the casing, 3 its diameter,
// 4 height with terminal box and foot, 5 axis above the foot, 6 width of the foot.
namespace s170 {
constexpr Figure outline[] = {
    // Side view: casing between two spigots, terminal box on top.
    stroke({{103, 120},
            {135, 120},
            {155, 85},
            {285, 85},
            {305, 120},
            {337, 120},
            {337, 220},
            {305, 220},
            {285, 255},
            {155, 255},
            {135, 220},
            {103, 220},
            {103, 120}}),
    box({195, 60}, {245, 85}),
    stroke({{185, 255}, {180, 270}, {260, 270}, {255, 255}}),
    // View along the duct.
    circle({220, 560}, 85),
    box({195, 450}, {245, 475}),
    stroke({{165, 625}, {155, 665}, {130, 665}, {130, 675}, {310, 675}, {310, 665}, {285, 665}, {275, 625}}),
};
constexpr Figure hidden[] = {
    line({90, 170}, {350, 170}),  box({185, 97}, {225, 243}),  // impeller
    box({225, 140}, {262, 200}),                               // motor
    line({128, 560}, {320, 560}), line({220, 440}, {220, 690}),
};
constexpr Figure fine[] = {
    line({135, 120}, {135, 220}),
    line({155, 85}, {155, 255}),
    line({285, 85}, {285, 255}),
    line({305, 120}, {305, 220}),
    line({112, 120}, {112, 220}),
    line({328, 120}, {328, 220}),
    // Blades.
    stroke({{220, 542}, {206, 520}, {208, 490}}),
    stroke({{233, 547}, {238, 522}, {261, 502}}),
    stroke({{238, 560}, {260, 546}, {290, 548}}),
    stroke({{233, 573}, {258, 578}, {278, 601}}),
    stroke({{220, 578}, {234, 600}, {232, 630}}),
    stroke({{207, 573}, {202, 598}, {179, 618}}),
    stroke({{202, 560}, {180, 574}, {150, 572}}),
    stroke({{207, 547}, {182, 542}, {162, 519}}),
};
constexpr Dimension dimensions[] = {
    across(1, {103, 220}, {337, 220}, 365),      across(2, {155, 255}, {285, 255}, 320),
    down(3, {285, 85}, {285, 255}, 411),         down(4, {245, 450}, {310, 675}, 411),
    down(5, {135, 560}, {130, 675}, 10),         across(6, {130, 675}, {310, 675}, 735),
    down(kDiameter, {103, 120}, {103, 220}, 10),
};
constexpr Point centres[] = {{220, 170}, {220, 560}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s170

// A jet nozzle: section along its axis and front view. 1 outlet, 2 flange; 3 is written beside it.
namespace s191 {
constexpr Figure outline[] = {
    // Section: collar, flange, mouth.
    stroke({{140, 110}, {140, 70}, {300, 70}, {300, 110}}),
    box({100, 110}, {340, 120}),
    arc({106, 120}, {174, 360}, {174, 240}, {140, 120}),
    arc({266, 120}, {334, 360}, {300, 120}, {266, 240}),
    stroke({{174, 240}, {174, 262}, {266, 262}, {266, 240}}),
    // Front view: flange and outlet, whole rounds.
    arc({100, 450}, {340, 690}, {340, 570}, {340, 570}),
    arc({174, 524}, {266, 616}, {266, 570}, {266, 570}),
};
constexpr Figure hidden[] = {
    line({220, 58}, {220, 275}),
    line({88, 570}, {352, 570}),
    line({220, 438}, {220, 702}),
};
constexpr Figure fine[] = {
    line({140, 82}, {300, 82}),
    line({174, 250}, {266, 250}),
    // Screws in the flange.
    line({139, 496}, {153, 482}),
    line({139, 482}, {153, 496}),
    line({287, 496}, {301, 482}),
    line({287, 482}, {301, 496}),
    line({139, 658}, {153, 644}),
    line({139, 644}, {153, 658}),
    line({287, 658}, {301, 644}),
    line({287, 644}, {301, 658}),
};
constexpr Dimension dimensions[] = {
    across(1, {174, 262}, {266, 262}, 320),
    across(2, {100, 120}, {340, 120}, 365),
};
constexpr FreeText texts[] = {{3, {390, 588}}};
constexpr Point centres[] = {{220, 570}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s191

// A roof cowl under a domed cap. 1 cap, 2 height (with a base of its own, 7, the whole of both), 3 base
// plate, 4 duct; 5 is written beside it.
namespace s192 {
constexpr Figure outline[] = {
    // Side view: cap, ring of louvres, base, duct.
    arc({110, 60}, {330, 180}, {330, 120}, {110, 120}),
    box({110, 120}, {330, 132}),
    box({150, 132}, {290, 195}),
    stroke({{150, 195}, {125, 215}, {125, 262}}),
    stroke({{290, 195}, {315, 215}, {315, 262}}),
    box({100, 262}, {340, 272}),
    stroke({{170, 272}, {170, 297}, {270, 297}, {270, 272}}),
    // Plan.
    box({100, 455}, {340, 695}),
    circle({220, 575}, 110),
};
constexpr Figure base[] = {line({125, 215}, {315, 215})};
constexpr Figure hidden[] = {
    line({220, 50}, {220, 307}),
    line({88, 575}, {352, 575}),
    line({220, 443}, {220, 707}),
};
constexpr Figure fine[] = {
    line({150, 143}, {290, 143}),
    line({150, 154}, {290, 154}),
    line({150, 176}, {290, 176}),
    line({150, 186}, {290, 186}),
    line({150, 195}, {290, 195}),
    // Seams of the cap, from above, and screws in the base plate.
    line({233, 562}, {298, 497}),
    line({207, 562}, {142, 497}),
    line({233, 588}, {298, 653}),
    line({207, 588}, {142, 653}),
    line({108, 463}, {120, 475}),
    line({120, 463}, {108, 475}),
    line({320, 463}, {332, 475}),
    line({332, 463}, {320, 475}),
    line({108, 675}, {120, 687}),
    line({120, 675}, {108, 687}),
    line({320, 675}, {332, 687}),
    line({332, 675}, {320, 687}),
};
constexpr Dimension dimensions[] = {
    across(1, {110, 120}, {330, 120}, 40),
    down(total(8, 2, 7), {220, 60}, {340, 272}, 411),
    across(3, {100, 272}, {340, 272}, 385),
    across(4, {170, 297}, {270, 297}, 345),
};
constexpr FreeText texts[] = {{5, {390, 593}}};
constexpr Point centres[] = {{220, 165}, {220, 575}};
constexpr Sketch sketch = {.outline = outline,
                           .added = base,
                           .added_from = 8,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s192

constexpr NumberedSketch kSketches[] = {
    {170, &s170::sketch},
    {191, &s191::sketch},
    {192, &s192::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_170_192() {
  return kSketches;
}

}  // namespace tavd
