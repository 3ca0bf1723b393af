// Dampers, valves, a nozzle and a fan for ducts.
#include "shape/catalogue.h"

namespace tavd {
namespace {

// A damper of opposed blades for a rectangular duct, with its drive at the side. 1 length, 2 width with
// the drive.
namespace s109 {
constexpr Figure outline[] = {
    // Section along the duct.
    stroke({{150, 72}, {150, 268}, {160, 268}, {160, 72}, {150, 72}}),
    stroke({{280, 72}, {280, 268}, {290, 268}, {290, 72}, {280, 72}}),
    line({160, 90}, {280, 90}),
    line({160, 250}, {280, 250}),
    stroke({{202, 99}, {208, 95}, {238, 121}, {232, 125}, {202, 99}}),
    stroke({{238, 139}, {232, 135}, {202, 161}, {208, 165}, {238, 139}}),
    stroke({{202, 179}, {208, 175}, {238, 201}, {232, 205}, {202, 179}}),
    stroke({{238, 219}, {232, 215}, {202, 241}, {208, 245}, {238, 219}}),
    // Front view.
    box({100, 440}, {340, 680}),
    box({118, 458}, {322, 662}),
    line({118, 509}, {322, 509}),
    line({118, 560}, {322, 560}),
    line({118, 611}, {322, 611}),
    box({358, 512}, {396, 592}),
    line({340, 529}, {358, 529}),
    line({340, 541}, {358, 541}),
};
constexpr Figure hidden[] = {
    line({130, 170}, {310, 170}), line({220, 430}, {220, 690}), line({90, 483}, {350, 483}),
    line({90, 535}, {386, 535}),  line({90, 586}, {350, 586}),  line({90, 637}, {350, 637}),
};
constexpr Figure fine[] = {
    line({150, 90}, {160, 90}),   line({150, 250}, {160, 250}), line({280, 90}, {290, 90}),
    line({280, 250}, {290, 250}), line({118, 503}, {322, 503}), line({118, 566}, {322, 566}),
    line({118, 605}, {322, 605}), line({364, 570}, {390, 570}), line({364, 580}, {390, 580}),
    line({104, 449}, {114, 449}), line({109, 444}, {109, 454}), line({326, 449}, {336, 449}),
    line({331, 444}, {331, 454}), line({104, 671}, {114, 671}), line({109, 666}, {109, 676}),
    line({326, 671}, {336, 671}), line({331, 666}, {331, 676}),
};
constexpr Dimension dimensions[] = {
    across(1, {150, 72}, {290, 72}, 40),
    across(2, {100, 440}, {396, 512}, 400),
    across(kWidthByHeight, {118, 680}, {322, 680}, 735),
};
constexpr Point centres[] = {{220, 170}, {220, 560}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s109

// A fan between round ducts, on a foot. 1 casing, 2 length, 3 length without the spigots, 4 terminal box
// above the axis, 5 foot below it, 6 width of the foot, 7 its length.
namespace s110 {
constexpr Figure outline[] = {
    stroke({{160, 140}, {120, 140}, {120, 220}, {160, 220}}),
    stroke({{300, 140}, {340, 140}, {340, 220}, {300, 220}}),
    stroke({{160, 140},
            {190, 95},
            {270, 95},
            {300, 140},
            {300, 220},
            {270, 265},
            {190, 265},
            {160, 220},
            {160, 140}}),
    stroke({{205, 95}, {205, 72}, {255, 72}, {255, 95}}),
    stroke({{195, 265}, {195, 282}, {180, 282}, {180, 290}, {280, 290}, {280, 282}, {265, 282}, {265, 265}}),
    line({195, 282}, {265, 282}),
    // From the inlet.
    circle({230, 560}, 85),
    circle({230, 560}, 40),
    stroke({{200, 480}, {200, 452}, {260, 452}, {260, 480}}),
    stroke({{175, 625}, {175, 662}, {150, 662}, {150, 670}, {310, 670}, {310, 662}, {285, 662}, {285, 625}}),
    line({175, 662}, {285, 662}),
};
constexpr Figure hidden[] = {
    line({108, 180}, {350, 180}),
    // The wheel and its motor.
    stroke({{178, 145}, {196, 118}, {222, 118}, {222, 242}, {196, 242}, {178, 215}}),
    stroke({{222, 155}, {262, 155}, {262, 205}, {222, 205}}),
    line({230, 465}, {230, 680}),
    line({135, 560}, {325, 560}),
};
constexpr Figure fine[] = {
    line({190, 95}, {190, 265}),
    line({270, 95}, {270, 265}),
    line({128, 140}, {128, 220}),
    line({332, 140}, {332, 220}),
    line({205, 79}, {255, 79}),
    line({200, 459}, {260, 459}),
    // Blades.
    stroke({{244, 560}, {255, 556}, {259, 539}}),
    stroke({{240, 570}, {250, 574}, {265, 566}}),
    stroke({{230, 574}, {234, 585}, {251, 589}}),
    stroke({{220, 570}, {216, 580}, {224, 595}}),
    stroke({{216, 560}, {205, 564}, {201, 581}}),
    stroke({{220, 550}, {210, 546}, {195, 554}}),
    stroke({{230, 546}, {226, 535}, {209, 531}}),
    stroke({{240, 550}, {244, 540}, {236, 525}}),
};
constexpr Dimension dimensions[] = {
    across(1, {145, 625}, {315, 625}, 755), across(2, {120, 140}, {340, 140}, 40),
    across(3, {160, 220}, {300, 220}, 380), down(4, {255, 72}, {340, 180}, 400),
    down(5, {340, 180}, {280, 290}, 400),   across(6, {150, 670}, {310, 670}, 710),
    across(7, {180, 290}, {280, 290}, 335), down(kDiameter, {120, 140}, {120, 220}, 25),
};
constexpr Point centres[] = {{230, 180}, {230, 560}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s110

// A disc valve for exhaust air. 1 neck, 2 face, 3 height.
namespace s112 {
constexpr Figure outline[] = {
    stroke({{150, 190}, {150, 90}, {290, 90}, {290, 190}}),
    stroke({{150, 190}, {108, 194}, {80, 208}, {80, 218}, {360, 218}, {360, 208}, {332, 194}, {290, 190}}),
    stroke({{140, 232}, {300, 232}, {290, 244}, {246, 254}, {194, 254}, {150, 244}, {140, 232}}),
    circle({220, 590}, 140),
    circle({220, 590}, 80),
};
constexpr Figure hidden[] = {
    // The spindle in its bridge, and the trumpet of the ring.
    line({150, 128}, {290, 128}), line({150, 138}, {290, 138}), line({214, 108}, {214, 232}),
    line({226, 108}, {226, 232}), line({150, 178}, {122, 218}), line({290, 178}, {318, 218}),
    line({220, 78}, {220, 264}),  line({70, 590}, {370, 590}),  line({220, 440}, {220, 740}),
};
constexpr Figure fine[] = {
    line({150, 190}, {290, 190}),
    stroke({{150, 160}, {142, 164}, {142, 172}, {150, 176}}),
    stroke({{290, 160}, {298, 164}, {298, 172}, {290, 176}}),
    line({150, 98}, {290, 98}),
    // Holds for the fingers.
    stroke({{166, 560}, {158, 580}, {158, 600}, {166, 620}}),
    stroke({{274, 560}, {282, 580}, {282, 600}, {274, 620}}),
};
constexpr Dimension dimensions[] = {
    across(1, {150, 90}, {290, 90}, 46),
    across(2, {80, 218}, {360, 218}, 320),
    down(3, {290, 90}, {300, 254}, 405),
};
constexpr Point centres[] = {{220, 158}, {220, 590}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s112

// A jet nozzle for a wall. 1 flange, 2 outlet, 3 length, 4 collar.
namespace s113 {
constexpr Figure outline[] = {
    stroke({{190, 110}, {120, 110}, {120, 230}, {190, 230}}),
    box({190, 70}, {202, 270}),
    stroke({{202, 88},
            {222, 91},
            {241, 99},
            {261, 110},
            {281, 121},
            {300, 129},
            {320, 132},
            {330, 130},
            {330, 210},
            {320, 208},
            {300, 211},
            {281, 219},
            {261, 230},
            {241, 241},
            {222, 249},
            {202, 252}}),
    circle({225, 570}, 100),
    circle({225, 570}, 40),
};
constexpr Figure hidden[] = {
    line({112, 170}, {350, 170}),
    // The curve of the inlet.
    stroke({{202, 97}, {222, 100}, {241, 108}, {261, 119}, {281, 130}, {300, 138}, {330, 139}}),
    stroke({{202, 243}, {222, 240}, {241, 232}, {261, 221}, {281, 210}, {300, 202}, {330, 201}}),
    line({115, 570}, {335, 570}),
    line({225, 460}, {225, 680}),
};
constexpr Figure fine[] = {
    line({132, 110}, {132, 230}),
    line({320, 132}, {320, 208}),
    // Screws.
    line({184, 82}, {208, 82}),
    line({184, 258}, {208, 258}),
    line({282, 631}, {290, 631}),
    line({286, 627}, {286, 635}),
    line({160, 631}, {168, 631}),
    line({164, 627}, {164, 635}),
    line({160, 509}, {168, 509}),
    line({164, 505}, {164, 513}),
    line({282, 509}, {290, 509}),
    line({286, 505}, {286, 513}),
};
constexpr Dimension dimensions[] = {
    across(1, {125, 640}, {325, 640}, 735),
    down(2, {330, 130}, {330, 210}, 380),
    across(3, {120, 230}, {330, 210}, 330),
    down(4, {120, 110}, {120, 230}, 20),
};
constexpr Point centres[] = {{225, 170}, {225, 570}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s113

// An iris damper between round ducts. 1 duct, 2 casing, 3 length; 4 is written beside its lever.
namespace s114 {
constexpr Figure outline[] = {
    stroke({{190, 105}, {140, 105}, {140, 235}, {190, 235}}),
    stroke({{240, 105}, {290, 105}, {290, 235}, {240, 235}}),
    box({190, 65}, {240, 275}),
    // Nipples for the measuring hoses.
    stroke({{196, 65}, {196, 46}, {206, 46}, {206, 65}}),
    stroke({{224, 65}, {224, 46}, {234, 46}, {234, 65}}),
    circle({215, 560}, 105),
    stroke({{210, 455}, {210, 436}, {220, 436}, {220, 455}}),
    stroke({{299, 497}, {328, 477}, {332, 483}, {303, 503}}),
    // Leaves.
    line({258, 551}, {237, 661}),
    line({252, 584}, {159, 647}),
    line({224, 603}, {114, 582}),
    line({191, 597}, {128, 504}),
    line({172, 569}, {193, 459}),
    line({178, 536}, {271, 473}),
    line({206, 517}, {316, 538}),
    line({239, 523}, {302, 616}),
};
constexpr Figure hidden[] = {
    line({132, 170}, {300, 170}), line({215, 75}, {215, 105}),  line({215, 105}, {208, 150}),
    line({215, 265}, {215, 235}), line({215, 235}, {208, 190}), line({100, 560}, {330, 560}),
    line({215, 430}, {215, 675}),
};
constexpr Figure fine[] = {
    // Seals.
    line({148, 105}, {148, 235}), line({156, 105}, {156, 235}), line({274, 105}, {274, 235}),
    line({282, 105}, {282, 235}), line({199, 65}, {199, 275}),  line({231, 65}, {231, 275}),
};
constexpr Dimension dimensions[] = {
    down(1, {140, 105}, {140, 235}, 20),
    across(2, {110, 635}, {320, 635}, 730),
    across(3, {140, 235}, {290, 235}, 335),
};
constexpr FreeText texts[] = {{4, {345, 490}}};
constexpr Point centres[] = {{215, 170}, {215, 560}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s114

constexpr NumberedSketch kSketches109To114[] = {
    {109, &s109::sketch}, {110, &s110::sketch}, {112, &s112::sketch},
    {113, &s113::sketch}, {114, &s114::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_109_114() {
  return kSketches109To114;
}

}  // namespace tavd
