// A flow controller, and what stands on a roof.
#include "shape/catalogue.h"

namespace tavd {
namespace {

// A volume flow controller: a damper in a round inlet before a lined box with a rectangular outlet; side view
// and view onto the inlet. 1 length of the box, 2 length, 3 height, 4 width, 5 width with the drive, 6 axis
// of the inlet below the top.
namespace s170 {
constexpr Figure outline[] = {
    // Side view: inlet, box, outlet.
    stroke({{170, 105}, {103, 105}, {103, 195}, {170, 195}}),
    box({170, 80}, {340, 220}),
    stroke({{340, 95}, {357, 95}, {357, 205}, {340, 205}}),
    // View onto the inlet, with the drive at the right.
    box({155, 460}, {355, 600}),
    circle({255, 530}, 45),
    box({355, 495}, {393, 565}),
    stroke({{165, 460}, {165, 448}, {185, 448}, {185, 460}}),
    stroke({{325, 460}, {325, 448}, {345, 448}, {345, 460}}),
};
constexpr Figure hidden[] = {
    line({90, 150}, {370, 150}),  line({127, 192}, {157, 108}),  // the leaf
    line({180, 92}, {340, 92}),                                  // the lining
    line({180, 208}, {340, 208}), line({180, 92}, {180, 208}),
    line({255, 445}, {255, 612}), line({145, 530}, {372, 530}),
};
constexpr Figure fine[] = {
    line({111, 105}, {111, 195}),
    line({118, 105}, {118, 195}),
    // The drive, with its scale.
    box({188, 118}, {236, 182}),
    box({196, 126}, {228, 140}),
    line({212, 140}, {204, 156}),
    box({363, 505}, {385, 555}),
    // The measuring cross in the inlet.
    line({226, 496}, {289, 559}),
    line({221, 501}, {284, 564}),
    line({284, 496}, {221, 559}),
    line({289, 501}, {226, 564}),
};
constexpr Dimension dimensions[] = {
    across(1, {170, 220}, {340, 220}, 280),      across(2, {103, 195}, {357, 205}, 330),
    down(3, {340, 80}, {340, 220}, 411),         across(4, {155, 600}, {355, 600}, 665),
    across(5, {155, 600}, {393, 565}, 710),      down(6, {155, 460}, {155, 530}, 40),
    down(kDiameter, {103, 105}, {103, 195}, 10),
};
constexpr Point centres[] = {{255, 150}, {255, 530}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s170

// A gooseneck on a roof: side view and plan. 1 diameter, 2 height above the roof; 3 is written beside it.
namespace s191 {
constexpr Figure outline[] = {
    // Side view: half a turn about (220, 200), roof plate, end of the duct, mouth.
    arc({90, 70}, {350, 330}, {350, 200}, {90, 200}),
    arc({190, 170}, {250, 230}, {250, 200}, {190, 200}),
    line({90, 200}, {90, 290}),
    line({190, 200}, {190, 290}),
    box({50, 290}, {230, 300}),
    stroke({{90, 300}, {90, 330}, {190, 330}, {190, 300}}),
    stroke({{250, 200}, {250, 240}, {350, 240}, {350, 200}}),
    // Plan.
    arc({90, 510}, {190, 610}, {140, 510}, {140, 610}),
    arc({250, 510}, {350, 610}, {300, 610}, {300, 510}),
    line({140, 510}, {300, 510}),
    line({140, 610}, {300, 610}),
    stroke({{230, 510}, {230, 470}, {50, 470}, {50, 650}, {230, 650}, {230, 610}}),
};
constexpr Figure hidden[] = {
    line({140, 190}, {140, 345}), line({300, 190}, {300, 255}), line({230, 510}, {230, 610}),
    line({40, 560}, {365, 560}),  line({140, 460}, {140, 660}), line({300, 500}, {300, 620}),
};
constexpr Figure fine[] = {
    // Seams.
    line({90, 200}, {190, 200}),
    line({199, 179}, {128, 108}),
    line({220, 170}, {220, 70}),
    line({241, 179}, {312, 108}),
    line({250, 200}, {350, 200}),
    line({220, 510}, {220, 610}),
    // Screen in the mouth.
    line({250, 230}, {350, 230}),
    stroke({{250, 240},
            {260, 230},
            {270, 240},
            {280, 230},
            {290, 240},
            {300, 230},
            {310, 240},
            {320, 230},
            {330, 240},
            {340, 230},
            {350, 240}}),
    // Screws in the roof plate.
    line({58, 478}, {70, 490}),
    line({70, 478}, {58, 490}),
    line({210, 478}, {222, 490}),
    line({222, 478}, {210, 490}),
    line({58, 630}, {70, 642}),
    line({70, 630}, {58, 642}),
    line({210, 630}, {222, 642}),
    line({222, 630}, {210, 642}),
};
constexpr Dimension dimensions[] = {
    across(1, {90, 330}, {190, 330}, 395),
    down(2, {220, 70}, {230, 290}, 405),
};
constexpr FreeText texts[] = {{3, {385, 578}}};
constexpr Point centres[] = {{140, 560}};
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

constexpr NumberedSketch kSketches170To192[] = {
    {170, &s170::sketch},
    {191, &s191::sketch},
    {192, &s192::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_170_192() {
  return kSketches170To192;
}

}  // namespace tavd
