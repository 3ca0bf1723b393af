// Dampers, valves, nozzles and a fan for ducts; boxes with diffusers.
#include <array>
#include <cstddef>

#include "shape/catalogue.h"

namespace tavd {
namespace {

// A damper of opposed blades for a rectangular duct, with its drive at the side. 1 length, 2 width with the
// drive.
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

// A chilled beam for a ceiling. 1 length, 2 width, 3 height, 4 width of the air chamber, 5 axis of the duct
// below its top, 6 height below it, 7 length of the chamber.
namespace s115 {
constexpr Figure outline[] = {
    // From the end.
    box({208, 80}, {328, 168}),
    circle({268, 128}, 26),
    stroke({{208, 168}, {178, 178}, {162, 251}}),
    stroke({{328, 168}, {358, 178}, {374, 251}}),
    box({218, 186}, {318, 214}),
    stroke({{200, 251}, {148, 251}, {148, 263}, {388, 263}, {388, 251}, {336, 251}}),
    stroke({{218, 214}, {200, 251}, {336, 251}, {318, 214}}),
    // From the side.
    box({140, 450}, {396, 538}),
    stroke({{140, 472}, {112, 472}, {112, 524}, {140, 524}}),
    stroke({{140, 538}, {120, 548}, {120, 621}, {416, 621}, {416, 548}, {396, 538}}),
    box({106, 621}, {430, 633}),
    stroke({{416, 560}, {444, 560}, {444, 568}, {416, 568}}),
    stroke({{416, 584}, {444, 584}, {444, 592}, {416, 592}}),
};
constexpr Figure hidden[] = {
    line({268, 70}, {268, 273}),  line({232, 128}, {304, 128}), line({104, 498}, {180, 498}),
    line({268, 440}, {268, 643}), line({128, 556}, {408, 556}), line({128, 596}, {408, 596}),
};
constexpr Figure fine[] = {
    // Fins, nozzles and the slots at the sides.
    line({228, 186}, {228, 214}), line({238, 186}, {238, 214}), line({248, 186}, {248, 214}),
    line({258, 186}, {258, 214}), line({278, 186}, {278, 214}), line({288, 186}, {288, 214}),
    line({298, 186}, {298, 214}), line({308, 186}, {308, 214}), line({212, 168}, {204, 180}),
    line({324, 168}, {332, 180}), line({200, 251}, {188, 263}), line({336, 251}, {348, 263}),
    line({162, 251}, {172, 263}), line({374, 251}, {364, 263}), line({188, 538}, {188, 548}),
    line({208, 538}, {208, 548}), line({228, 538}, {228, 548}), line({248, 538}, {248, 548}),
    line({288, 538}, {288, 548}), line({308, 538}, {308, 548}), line({328, 538}, {328, 548}),
    line({348, 538}, {348, 548}), line({168, 538}, {168, 548}), line({368, 538}, {368, 548}),
};
constexpr Dimension dimensions[] = {
    across(1, {106, 633}, {430, 633}, 700), across(2, {148, 263}, {388, 263}, 320),
    down(3, {328, 80}, {388, 263}, 411),    across(4, {208, 80}, {328, 80}, 46),
    down(5, {208, 80}, {208, 128}, 88),     down(6, {208, 168}, {148, 263}, 25),
    across(7, {140, 450}, {396, 450}, 415), down(kDiameter, {112, 472}, {112, 524}, 12),
};
constexpr Point centres[] = {{268, 128}, {268, 498}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s115

// A swirl diffuser below a square box, with the duct at its side. 1 opening, 2 side of the box, 3 axis from
// its end, 4 its other side, 5 its height, 6 face, 7 height of the collar; 8 is written below.
namespace s116 {
constexpr Figure outline[] = {
    stroke({{190, 132}, {190, 112}, {390, 112}, {390, 232}, {190, 232}, {190, 212}}),
    stroke({{190, 132}, {160, 132}, {160, 212}, {190, 212}}),
    line({190, 132}, {190, 212}),
    stroke({{225, 232}, {225, 266}, {198, 276}, {198, 284}, {382, 284}, {382, 276}, {355, 266}, {355, 232}}),
    box({190, 455}, {390, 655}),
    stroke({{190, 515}, {160, 515}, {160, 595}, {190, 595}}),
    circle({290, 555}, 92),
    circle({290, 555}, 70),
    // Vanes.
    line({310, 555}, {350, 583}),
    line({307, 565}, {328, 609}),
    line({300, 572}, {296, 621}),
    line({290, 575}, {262, 615}),
    line({280, 572}, {236, 593}),
    line({273, 565}, {224, 561}),
    line({270, 555}, {230, 527}),
    line({273, 545}, {252, 501}),
    line({280, 538}, {284, 489}),
    line({290, 535}, {318, 495}),
    line({300, 538}, {344, 517}),
    line({307, 545}, {356, 549}),
};
constexpr Figure hidden[] = {
    line({150, 172}, {230, 172}), line({172, 204}, {178, 140}),  // damper
    line({290, 104}, {290, 294}), line({148, 555}, {402, 555}), line({290, 445}, {290, 665}),
};
constexpr Figure fine[] = {
    line({225, 266}, {355, 266}), line({238, 276}, {246, 284}), line({256, 276}, {264, 284}),
    line({274, 276}, {282, 284}), line({306, 276}, {298, 284}), line({324, 276}, {316, 284}),
    line({342, 276}, {334, 284}), line({198, 276}, {382, 276}),
};
constexpr Dimension dimensions[] = {
    across(1, {225, 284}, {355, 284}, 338), across(2, {190, 112}, {390, 112}, 46),
    across(3, {190, 112}, {290, 112}, 91),  down(4, {390, 455}, {390, 655}, 411),
    down(5, {390, 112}, {390, 232}, 411),   across(6, {198, 284}, {382, 284}, 383),
    down(7, {390, 232}, {382, 284}, 411),   down(kDiameter, {160, 132}, {160, 212}, 60),
};
constexpr FreeText texts[] = {{8, {248, 720}}};
constexpr Point centres[] = {{290, 172}, {290, 555}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s116

// A perforated face below a box, with the duct on top. The values of 116.
namespace s117 {
constexpr int kRows = 8;
constexpr int kColumns = 12;

// Holes in staggered rows that leave the axes free.
constexpr std::array<Figure, std::size_t{kRows} * kColumns> perforation() {
  constexpr Point kFirst = {105, 480};
  constexpr int kPitch = 18;
  constexpr int kSide = 4;  // they are drawn square
  std::array<Figure, std::size_t{kRows} * kColumns> all{};
  for (int i = 0; i < kRows * kColumns; ++i) {
    const int row = i / kColumns;
    const int x = kFirst.x + i % kColumns * kPitch + row % 2 * kPitch / 2;
    const int y = kFirst.y + row * kPitch;
    all[static_cast<std::size_t>(i)] =
        box({static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)},
            {static_cast<std::int16_t>(x + kSide), static_cast<std::int16_t>(y + kSide)});
  }
  return all;
}

constexpr Figure outline[] = {
    box({80, 110}, {340, 225}),
    stroke({{163, 110}, {163, 82}, {257, 82}, {257, 110}}),
    stroke({{100, 225}, {100, 261}, {65, 261}, {65, 275}, {355, 275}, {355, 261}, {320, 261}, {320, 225}}),
    line({100, 261}, {320, 261}),
    box({65, 440}, {355, 650}),
    box({100, 472}, {320, 618}),
};
constexpr Figure hidden[] = {
    line({90, 150}, {330, 150}),  // spreads the air
    line({178, 103}, {242, 89}),  // damper
    line({108, 268}, {312, 268}), line({210, 72}, {210, 285}), circle({210, 545}, 47),
    box({80, 455}, {340, 635}),   line({55, 545}, {365, 545}), line({210, 430}, {210, 660}),
};
constexpr auto fine = perforation();
constexpr Dimension dimensions[] = {
    across(1, {100, 275}, {320, 275}, 330), across(2, {80, 635}, {340, 635}, 755),
    across(3, {80, 635}, {210, 635}, 710),  down(4, {340, 455}, {340, 635}, 405),
    down(5, {340, 110}, {340, 225}, 405),   across(6, {65, 275}, {355, 275}, 375),
    down(7, {340, 225}, {355, 275}, 405),   across(kDiameter, {163, 82}, {257, 82}, 46),
};
constexpr FreeText texts[] = {{8, {390, 720}}};
constexpr Point centres[] = {{210, 185}, {210, 545}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s117

// A box with a grille below and the duct at its side; 104 becomes this one. The values of 116.
namespace s118 {
constexpr Figure outline[] = {
    stroke({{176, 134}, {176, 112}, {376, 112}, {376, 236}, {176, 236}, {176, 214}}),
    stroke({{176, 134}, {146, 134}, {146, 214}, {176, 214}}),
    line({176, 134}, {176, 214}),
    stroke({{196, 236}, {196, 274}, {166, 274}, {166, 286}, {386, 286}, {386, 274}, {356, 274}, {356, 236}}),
    line({196, 274}, {356, 274}),
    box({166, 440}, {386, 660}),
    box({196, 470}, {356, 630}),
    stroke({{166, 510}, {146, 510}, {146, 590}, {166, 590}}),
};
constexpr Figure hidden[] = {
    line({136, 174}, {216, 174}), line({276, 104}, {276, 296}), box({176, 450}, {376, 650}),
    line({134, 550}, {388, 550}), line({276, 430}, {276, 670}),
};
constexpr Figure fine[] = {
    line({208, 274}, {202, 286}), line({228, 274}, {222, 286}), line({248, 274}, {242, 286}),
    line({268, 274}, {262, 286}), line({288, 274}, {282, 286}), line({308, 274}, {302, 286}),
    line({328, 274}, {322, 286}), line({348, 274}, {342, 286}), line({196, 490}, {356, 490}),
    line({196, 510}, {356, 510}), line({196, 530}, {356, 530}), line({196, 570}, {356, 570}),
    line({196, 590}, {356, 590}), line({196, 610}, {356, 610}),
};
constexpr Dimension dimensions[] = {
    across(1, {196, 286}, {356, 286}, 338), across(2, {176, 112}, {376, 112}, 46),
    across(3, {176, 112}, {276, 112}, 91),  down(4, {376, 450}, {376, 650}, 411),
    down(5, {376, 112}, {376, 236}, 411),   across(6, {166, 286}, {386, 286}, 383),
    down(7, {376, 236}, {386, 286}, 411),   down(kDiameter, {146, 134}, {146, 214}, 46),
};
constexpr FreeText texts[] = {{8, {234, 720}}};
constexpr Point centres[] = {{276, 174}, {276, 550}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s118

// A slot diffuser below a box, with the duct at its side. 1 opening, 2 length of the box, 3 axis of the duct
// from its end, 4 its width, 5 its height, 6 width of the face, 7 height of the collar, 8 length of the face;
// 9 is written below.
namespace s119 {
constexpr Figure outline[] = {
    // From the end.
    box({180, 80}, {300, 205}),
    stroke({{180, 105}, {150, 105}, {150, 165}, {180, 165}}),
    stroke({{195, 205}, {195, 243}, {165, 243}, {165, 257}, {315, 257}, {315, 243}, {285, 243}, {285, 205}}),
    line({195, 243}, {285, 243}),
    // From the side of the duct.
    box({60, 500}, {420, 620}),
    circle({180, 550}, 30),
    stroke({{75, 620}, {75, 646}, {405, 646}, {405, 620}}),
    box({40, 646}, {440, 660}),
};
constexpr Figure hidden[] = {
    line({140, 135}, {210, 135}), line({240, 70}, {240, 267}),  line({186, 195}, {225, 90}),
    line({140, 550}, {220, 550}), line({180, 510}, {180, 590}),
};
constexpr Figure fine[] = {
    line({210, 243}, {210, 257}),
    line({228, 243}, {228, 257}),
    line({252, 243}, {252, 257}),
    line({270, 243}, {270, 257}),
    stroke({{210, 243}, {216, 247}, {218, 257}}),
    stroke({{270, 243}, {264, 247}, {262, 257}}),
    line({48, 653}, {432, 653}),
    stroke({{60, 512}, {48, 512}, {48, 528}, {60, 528}}),
    stroke({{420, 512}, {432, 512}, {432, 528}, {420, 528}}),
};
constexpr Dimension dimensions[] = {
    across(1, {195, 257}, {285, 257}, 310),      across(2, {60, 500}, {420, 500}, 427),
    across(3, {60, 500}, {180, 500}, 472),       across(4, {180, 80}, {300, 80}, 46),
    down(5, {300, 80}, {300, 205}, 375),         across(6, {165, 257}, {315, 257}, 355),
    down(7, {300, 205}, {315, 257}, 375),        across(8, {40, 660}, {440, 660}, 725),
    down(kDiameter, {150, 105}, {150, 165}, 40),
};
constexpr FreeText texts[] = {{9, {198, 785}}};
constexpr Point centres[] = {{240, 135}, {180, 550}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s119

constexpr NumberedSketch kSketches[] = {
    {109, &s109::sketch}, {110, &s110::sketch}, {112, &s112::sketch}, {113, &s113::sketch},
    {114, &s114::sketch}, {115, &s115::sketch}, {116, &s116::sketch}, {117, &s117::sketch},
    {118, &s118::sketch}, {119, &s119::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_109_119() {
  return kSketches;
}

}  // namespace tavd
