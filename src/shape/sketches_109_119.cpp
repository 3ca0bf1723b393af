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
    stroke({{201, 93}, {208, 91}, {239, 127}, {232, 129}, {201, 93}}),
    stroke({{239, 133}, {232, 131}, {201, 167}, {208, 169}, {239, 133}}),
    stroke({{201, 173}, {208, 171}, {239, 207}, {232, 209}, {201, 173}}),
    stroke({{239, 213}, {232, 211}, {201, 247}, {208, 249}, {239, 213}}),
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
    across(1, {145, 560}, {315, 560}, 755), across(2, {120, 140}, {340, 140}, 40),
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
    down(3, {290, 90}, {246, 254}, 405),
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
    stroke({{202, 90},
            {226, 94},
            {254, 108},
            {284, 124},
            {320, 132},
            {330, 130},
            {330, 210},
            {320, 208},
            {284, 216},
            {254, 232},
            {226, 246},
            {202, 250}}),
    circle({225, 570}, 100),
    circle({225, 570}, 40),
};
constexpr Figure hidden[] = {
    line({112, 170}, {350, 170}),
    // The curve of the inlet.
    stroke({{202, 100}, {230, 106}, {258, 120}, {290, 134}, {330, 136}}),
    stroke({{202, 240}, {230, 234}, {258, 220}, {290, 206}, {330, 204}}),
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
    across(1, {125, 570}, {325, 570}, 735),
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
    line({258, 551}, {240, 644}),
    line({252, 584}, {173, 637}),
    line({224, 603}, {131, 585}),
    line({191, 597}, {138, 518}),
    line({172, 569}, {190, 476}),
    line({178, 536}, {257, 483}),
    line({206, 517}, {299, 535}),
    line({239, 523}, {292, 602}),
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
    across(2, {110, 560}, {320, 560}, 730),
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
    box({180, 80}, {300, 160}),
    circle({240, 120}, 25),
    stroke({{180, 160}, {150, 170}, {134, 243}}),
    stroke({{300, 160}, {330, 170}, {346, 243}}),
    box({190, 178}, {290, 206}),
    stroke({{172, 243}, {120, 243}, {120, 255}, {360, 255}, {360, 243}, {308, 243}}),
    stroke({{190, 206}, {172, 243}, {308, 243}, {290, 206}}),
    // From the side.
    box({140, 450}, {340, 530}),
    stroke({{140, 465}, {112, 465}, {112, 515}, {140, 515}}),
    stroke({{140, 530}, {120, 540}, {120, 613}, {360, 613}, {360, 540}, {340, 530}}),
    box({106, 613}, {374, 625}),
    stroke({{360, 552}, {388, 552}, {388, 560}, {360, 560}}),
    stroke({{360, 576}, {388, 576}, {388, 584}, {360, 584}}),
};
constexpr Figure hidden[] = {
    line({240, 70}, {240, 265}),  line({205, 120}, {275, 120}), line({100, 490}, {175, 490}),
    line({240, 440}, {240, 635}), line({128, 548}, {352, 548}), line({128, 588}, {352, 588}),
};
constexpr Figure fine[] = {
    // Fins, nozzles and the slots at the sides.
    line({200, 178}, {200, 206}), line({210, 178}, {210, 206}), line({220, 178}, {220, 206}),
    line({230, 178}, {230, 206}), line({250, 178}, {250, 206}), line({260, 178}, {260, 206}),
    line({270, 178}, {270, 206}), line({280, 178}, {280, 206}), line({184, 160}, {176, 172}),
    line({296, 160}, {304, 172}), line({172, 243}, {160, 255}), line({308, 243}, {320, 255}),
    line({134, 243}, {144, 255}), line({346, 243}, {336, 255}), line({160, 530}, {160, 540}),
    line({180, 530}, {180, 540}), line({200, 530}, {200, 540}), line({220, 530}, {220, 540}),
    line({260, 530}, {260, 540}), line({280, 530}, {280, 540}), line({300, 530}, {300, 540}),
    line({320, 530}, {320, 540}),
};
constexpr Dimension dimensions[] = {
    across(1, {106, 625}, {374, 625}, 690), across(2, {120, 255}, {360, 255}, 315),
    down(3, {300, 80}, {360, 255}, 405),    across(4, {180, 80}, {300, 80}, 46),
    down(5, {180, 80}, {180, 120}, 60),     down(6, {180, 160}, {120, 255}, 15),
    across(7, {140, 450}, {340, 450}, 415), down(kDiameter, {112, 465}, {112, 515}, 12),
};
constexpr Point centres[] = {{240, 120}, {240, 490}};
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
    stroke({{225, 232}, {225, 258}, {198, 268}, {198, 276}, {382, 276}, {382, 268}, {355, 258}, {355, 232}}),
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
    line({290, 104}, {290, 286}), line({148, 555}, {402, 555}), line({290, 445}, {290, 665}),
};
constexpr Figure fine[] = {
    line({225, 258}, {355, 258}), line({238, 268}, {246, 276}), line({256, 268}, {264, 276}),
    line({274, 268}, {282, 276}), line({306, 268}, {298, 276}), line({324, 268}, {316, 276}),
    line({342, 268}, {334, 276}), line({198, 268}, {382, 268}),
};
constexpr Dimension dimensions[] = {
    across(1, {225, 276}, {355, 276}, 330), across(2, {190, 112}, {390, 112}, 46),
    across(3, {190, 112}, {290, 112}, 91),  down(4, {390, 455}, {390, 655}, 411),
    down(5, {390, 112}, {390, 232}, 411),   across(6, {198, 276}, {382, 276}, 375),
    down(7, {390, 232}, {382, 276}, 411),   down(kDiameter, {160, 132}, {160, 212}, 60),
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
constexpr int kRows = 9;
constexpr int kColumns = 12;

// A staggered pattern of short strokes, in the middle of the face.
constexpr std::array<Figure, std::size_t{kRows} * kColumns> perforation() {
  constexpr Point kFirst = {95, 477};
  constexpr int kAcross = 20;
  constexpr int kDown = 17;
  constexpr int kLength = 5;
  std::array<Figure, std::size_t{kRows} * kColumns> all{};
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      const int x = kFirst.x + column * kAcross + row % 2 * kAcross / 2;
      const auto y = static_cast<std::int16_t>(kFirst.y + row * kDown);
      all[static_cast<std::size_t>(row * kColumns + column)] = line(
          {static_cast<std::int16_t>(x - kLength / 2), y}, {static_cast<std::int16_t>(x + kLength / 2), y});
    }
  }
  return all;
}

constexpr Figure outline[] = {
    box({80, 110}, {340, 225}),
    stroke({{163, 110}, {163, 82}, {257, 82}, {257, 110}}),
    stroke({{120, 225}, {120, 248}, {65, 248}, {65, 260}, {355, 260}, {355, 248}, {300, 248}, {300, 225}}),
    line({120, 248}, {300, 248}),
    box({65, 440}, {355, 650}),
    box({83, 458}, {337, 632}),
};
constexpr Figure hidden[] = {
    line({90, 150}, {330, 150}),  // spreads the air
    line({178, 103}, {242, 89}),  // damper
    line({210, 72}, {210, 270}), circle({210, 545}, 47),       box({74, 449}, {346, 641}),
    line({55, 545}, {365, 545}), line({210, 430}, {210, 660}),
};
constexpr auto fine = perforation();
constexpr Dimension dimensions[] = {
    across(1, {120, 260}, {300, 260}, 315), across(2, {74, 641}, {346, 641}, 755),
    across(3, {74, 641}, {210, 641}, 710),  down(4, {346, 449}, {346, 641}, 405),
    down(5, {340, 110}, {340, 225}, 405),   across(6, {65, 260}, {355, 260}, 360),
    down(7, {340, 225}, {355, 260}, 405),   across(kDiameter, {163, 82}, {257, 82}, 46),
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
    stroke({{190, 134}, {190, 112}, {390, 112}, {390, 236}, {190, 236}, {190, 214}}),
    stroke({{190, 134}, {160, 134}, {160, 214}, {190, 214}}),
    line({190, 134}, {190, 214}),
    stroke({{210, 236}, {210, 262}, {180, 262}, {180, 274}, {400, 274}, {400, 262}, {370, 262}, {370, 236}}),
    line({210, 262}, {370, 262}),
    box({180, 440}, {400, 660}),
    box({210, 470}, {370, 630}),
    stroke({{180, 510}, {160, 510}, {160, 590}, {180, 590}}),
};
constexpr Figure hidden[] = {
    line({150, 174}, {230, 174}), line({290, 104}, {290, 284}), box({190, 450}, {390, 650}),
    line({148, 550}, {402, 550}), line({290, 430}, {290, 670}),
};
constexpr Figure fine[] = {
    line({222, 262}, {216, 274}), line({242, 262}, {236, 274}), line({262, 262}, {256, 274}),
    line({282, 262}, {276, 274}), line({302, 262}, {296, 274}), line({322, 262}, {316, 274}),
    line({342, 262}, {336, 274}), line({362, 262}, {356, 274}), line({210, 490}, {370, 490}),
    line({210, 510}, {370, 510}), line({210, 530}, {370, 530}), line({210, 570}, {370, 570}),
    line({210, 590}, {370, 590}), line({210, 610}, {370, 610}),
};
constexpr Dimension dimensions[] = {
    across(1, {210, 274}, {370, 274}, 330), across(2, {190, 112}, {390, 112}, 46),
    across(3, {190, 112}, {290, 112}, 91),  down(4, {390, 450}, {390, 650}, 411),
    down(5, {390, 112}, {390, 236}, 411),   across(6, {180, 274}, {400, 274}, 375),
    down(7, {390, 236}, {400, 274}, 411),   down(kDiameter, {160, 134}, {160, 214}, 60),
};
constexpr FreeText texts[] = {{8, {248, 720}}};
constexpr Point centres[] = {{290, 174}, {290, 550}};
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
    stroke({{195, 205}, {195, 235}, {165, 235}, {165, 249}, {315, 249}, {315, 235}, {285, 235}, {285, 205}}),
    line({195, 235}, {285, 235}),
    // From the side of the duct.
    box({60, 500}, {420, 620}),
    circle({180, 550}, 30),
    stroke({{75, 620}, {75, 646}, {405, 646}, {405, 620}}),
    box({40, 646}, {440, 660}),
};
constexpr Figure hidden[] = {
    line({140, 135}, {210, 135}), line({240, 70}, {240, 259}),  line({186, 195}, {225, 90}),
    line({140, 550}, {220, 550}), line({180, 510}, {180, 590}),
};
constexpr Figure fine[] = {
    line({210, 235}, {210, 249}),
    line({228, 235}, {228, 249}),
    line({252, 235}, {252, 249}),
    line({270, 235}, {270, 249}),
    stroke({{210, 235}, {216, 239}, {218, 249}}),
    stroke({{270, 235}, {264, 239}, {262, 249}}),
    line({48, 653}, {432, 653}),
    stroke({{60, 512}, {48, 512}, {48, 528}, {60, 528}}),
    stroke({{420, 512}, {432, 512}, {432, 528}, {420, 528}}),
};
constexpr Dimension dimensions[] = {
    across(1, {195, 249}, {285, 249}, 305),      across(2, {60, 500}, {420, 500}, 427),
    across(3, {60, 500}, {180, 500}, 472),       across(4, {180, 80}, {300, 80}, 46),
    down(5, {300, 80}, {300, 205}, 375),         across(6, {165, 249}, {315, 249}, 350),
    down(7, {300, 205}, {315, 249}, 375),        across(8, {40, 660}, {440, 660}, 725),
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
