// Ceiling diffusers, grilles and slots, bare and with the box that feeds them.
#include "shape/catalogue.h"

namespace tavd {
namespace {

// A round diffuser below a box, with the duct at the box's side. 1 face, 2 neck, 3 length of the box, 4 its
// height, 5 axis of the duct below the top, 6 height of neck and cone, 7 width of the box.
namespace s102 {
constexpr Figure outline[] = {
    // Side view.
    stroke({{90, 60}, {90, 40}, {330, 40}, {330, 170}, {90, 170}, {90, 140}}),
    stroke({{90, 60}, {70, 60}, {70, 140}, {90, 140}}),
    line({90, 60}, {90, 140}),
    stroke({{140, 170}, {140, 190}, {100, 230}, {320, 230}, {280, 190}, {280, 170}}),
    // Front view, from the side of the duct.
    box({90, 420}, {330, 550}),
    circle({210, 480}, 40),
    stroke({{140, 550}, {140, 570}, {100, 610}, {320, 610}, {280, 570}, {280, 550}}),
};
constexpr Figure hidden[] = {
    line({60, 100}, {120, 100}),
    line({210, 30}, {210, 240}),
    line({210, 410}, {210, 620}),
    line({140, 480}, {280, 480}),
};
constexpr Figure fine[] = {
    line({140, 190}, {280, 190}),
    line({120, 210}, {300, 210}),
    line({140, 570}, {280, 570}),
    line({120, 590}, {300, 590}),
};
constexpr Dimension dimensions[] = {
    across(1, {100, 610}, {320, 610}, 665), across(2, {140, 230}, {280, 230}, 280),
    across(3, {90, 170}, {330, 170}, 325),  down(4, {330, 40}, {330, 170}, 375),
    down(5, {330, 420}, {250, 480}, 375),   down(6, {330, 170}, {320, 230}, 375),
    across(7, {90, 550}, {330, 550}, 710),  across(kDiameter, {170, 480}, {250, 480}, 385),
};
constexpr Point centres[] = {{210, 105}, {210, 480}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s102

// A square diffuser for a ceiling of panels. 1 neck, 2 face, 3 height, 4 height of the neck; 5 is written
// beside it.
namespace s103 {
constexpr Figure outline[] = {
    stroke({{150, 140}, {150, 80}, {270, 80}, {270, 140}}),
    stroke({{150, 140}, {80, 190}, {60, 190}, {60, 204}, {360, 204}, {360, 190}, {340, 190}, {270, 140}}),
    box({60, 430}, {360, 730}),
};
constexpr Figure hidden[] = {
    line({210, 70}, {210, 214}),
    circle({210, 580}, 60),
    line({50, 580}, {370, 580}),
    line({210, 420}, {210, 740}),
};
constexpr Figure fine[] = {
    line({150, 140}, {270, 140}), line({180, 140}, {120, 196}), line({240, 140}, {300, 196}),
    box({90, 460}, {330, 700}),   box({115, 485}, {305, 675}),  box({140, 510}, {280, 650}),
    line({60, 430}, {140, 510}),  line({360, 430}, {280, 510}), line({360, 730}, {280, 650}),
    line({60, 730}, {140, 650}),
};
constexpr Dimension dimensions[] = {
    across(1, {150, 80}, {270, 80}, 50),
    across(2, {60, 204}, {360, 204}, 270),
    down(3, {270, 80}, {360, 204}, 405),
    down(4, {150, 80}, {150, 140}, 40),
};
constexpr FreeText texts[] = {{5, {390, 600}}};
constexpr Point centres[] = {{210, 110}, {210, 580}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s103

// A square box with a grille below and the duct at its side; the older form of 118. 1 side of the box, 2 its
// height, 3 opening, 4 face, 5 height of the collar; 6 is written below.
namespace s104 {
constexpr Figure outline[] = {
    stroke({{190, 110}, {190, 80}, {390, 80}, {390, 220}, {190, 220}, {190, 190}}),
    stroke({{190, 110}, {160, 110}, {160, 190}, {190, 190}}),
    line({190, 110}, {190, 190}),
    stroke({{210, 220}, {210, 250}, {180, 250}, {180, 262}, {400, 262}, {400, 250}, {370, 250}, {370, 220}}),
    line({210, 250}, {370, 250}),
    box({180, 430}, {400, 650}),
    box({210, 460}, {370, 620}),
    stroke({{180, 500}, {160, 500}, {160, 580}, {180, 580}}),
};
constexpr Figure hidden[] = {
    line({152, 150}, {230, 150}),
    line({290, 70}, {290, 272}),
    line({145, 540}, {410, 540}),
    line({290, 420}, {290, 660}),
};
constexpr Figure fine[] = {
    line({210, 480}, {370, 480}), line({210, 500}, {370, 500}), line({210, 520}, {370, 520}),
    line({210, 560}, {370, 560}), line({210, 580}, {370, 580}), line({210, 600}, {370, 600}),
};
constexpr Dimension dimensions[] = {
    across(1, {190, 80}, {390, 80}, 46),    down(2, {390, 80}, {390, 220}, 411),
    across(3, {210, 262}, {370, 262}, 315), across(4, {180, 262}, {400, 262}, 360),
    down(5, {390, 220}, {400, 262}, 411),   down(kDiameter, {160, 110}, {160, 190}, 60),
};
constexpr FreeText texts[] = {{6, {250, 710}}};
constexpr Point centres[] = {{290, 150}, {290, 540}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s104

// A slot diffuser below a box, with the duct on top. 1 length, 2 height of the box, 3 its width, 4 width of
// the face, 5 height.
namespace s105 {
constexpr Figure outline[] = {
    box({180, 100}, {300, 230}),
    stroke({{200, 100}, {200, 75}, {280, 75}, {280, 100}}),
    stroke({{200, 230}, {165, 244}, {315, 244}, {280, 230}}),
    box({50, 465}, {430, 595}),
    stroke({{200, 465}, {200, 440}, {280, 440}, {280, 465}}),
    box({30, 595}, {450, 609}),
};
constexpr Figure hidden[] = {
    line({240, 65}, {240, 254}),
    line({240, 430}, {240, 619}),
};
constexpr Figure fine[] = {
    line({225, 230}, {225, 244}),
    line({255, 230}, {255, 244}),
    line({40, 602}, {440, 602}),
};
constexpr Dimension dimensions[] = {
    across(1, {30, 609}, {450, 609}, 680),  down(2, {300, 100}, {300, 230}, 365),
    across(3, {180, 244}, {300, 244}, 300), across(4, {165, 244}, {315, 244}, 345),
    down(5, {200, 75}, {165, 244}, 60),     across(kDiameter, {200, 75}, {280, 75}, 45),
};
constexpr Point centres[] = {{240, 165}, {240, 530}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s105

// A wall grille in front of a box, with the duct behind. 1 width of the face, 2 its height, 3 width of the
// box, 4 its depth, 5 its height.
namespace s106 {
constexpr Figure outline[] = {
    stroke({{150, 120}, {150, 80}, {300, 80}, {300, 240}, {150, 240}, {150, 200}}),
    stroke({{150, 120}, {120, 120}, {120, 200}, {150, 200}}),
    line({150, 120}, {150, 200}),
    stroke({{300, 80}, {300, 65}, {312, 65}, {312, 255}, {300, 255}, {300, 240}}),
    box({70, 450}, {370, 640}),
    box({100, 480}, {340, 610}),
};
constexpr Figure hidden[] = {
    line({112, 160}, {325, 160}),
    box({85, 465}, {355, 625}),
    line({60, 545}, {380, 545}),
    line({220, 440}, {220, 650}),
};
constexpr Figure fine[] = {
    line({285, 105}, {300, 95}),  line({285, 125}, {300, 115}), line({285, 145}, {300, 135}),
    line({285, 185}, {300, 175}), line({285, 205}, {300, 195}), line({285, 225}, {300, 215}),
    line({100, 500}, {340, 500}), line({100, 520}, {340, 520}), line({100, 570}, {340, 570}),
    line({100, 590}, {340, 590}),
};
constexpr Dimension dimensions[] = {
    across(1, {70, 640}, {370, 640}, 745), down(2, {312, 65}, {312, 255}, 365),
    across(3, {85, 625}, {355, 625}, 700), across(4, {150, 240}, {300, 240}, 310),
    down(5, {355, 465}, {355, 625}, 405),  down(kDiameter, {120, 120}, {120, 200}, 20),
};
constexpr Point centres[] = {{225, 160}, {220, 545}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s106

constexpr NumberedSketch kSketches102To106[] = {
    {102, &s102::sketch}, {103, &s103::sketch}, {104, &s104::sketch},
    {105, &s105::sketch}, {106, &s106::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_102_106() {
  return kSketches102To106;
}

}  // namespace tavd
