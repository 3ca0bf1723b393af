// A chilled beam, and boxes with diffusers.
#include <array>
#include <cstddef>

#include "shape/catalogue.h"

namespace tavd {
namespace {

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

constexpr NumberedSketch kSketches115To119[] = {
    {115, &s115::sketch}, {116, &s116::sketch}, {117, &s117::sketch},
    {118, &s118::sketch}, {119, &s119::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_115_119() {
  return kSketches115To119;
}

}  // namespace tavd
