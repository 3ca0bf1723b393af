// Low-velocity diffusers: units on the floor that let air out gently through a large perforated or slotted
// face. From a certain number of values up they stand on a plinth, which the dimension of their height then
// covers too.
//
// What they have in common: the view from the front above, the plan below; walls in fine lines with hatching;
// the perforation of a face as rows of dots; in the plan, the inner plate that spreads the air dotted.
#include <array>
#include <cstddef>

#include "shape/catalogue.h"

namespace tavd {
namespace {

constexpr Point moved(Point point, int dx, int dy) {
  return {static_cast<std::int16_t>(point.x + dx), static_cast<std::int16_t>(point.y + dy)};
}

// A figure N times, each further on than the one before.
template <std::size_t N>
constexpr std::array<Figure, N> repeated(const Figure& first, int dx, int dy) {
  std::array<Figure, N> all{};
  for (std::size_t n = 0; n < N; ++n) {
    all[n] = first;
    for (int i = 0; i < first.count; ++i) {
      all[n].points[i] = moved(first.points[i], dx * static_cast<int>(n), dy * static_cast<int>(n));
    }
  }
  return all;
}

// Joints between the sheets of a round face, seen from the front: those of a face of sixteen sides.
constexpr std::array<Figure, 6> round_joints(Point top_middle, int radius, std::int16_t bottom) {
  constexpr double kAcross[] = {-0.924, -0.707, -0.383, 0.383, 0.707, 0.924};
  std::array<Figure, 6> all{};
  for (std::size_t n = 0; n < all.size(); ++n) {
    const Point top = moved(top_middle, static_cast<int>(kAcross[n] * radius), 0);
    all[n] = line(top, {top.x, bottom});
  }
  return all;
}

// Part of a circle as a stroke, for plates that are bent. In steps of 15 degrees, clockwise from the right.
constexpr Figure bend(Point centre, int radius, int from, int to) {
  constexpr double kSine[] = {0, 0.2588, 0.5, 0.7071, 0.8660, 0.9659, 1};
  const auto sine = [&](int step) {
    const int n = ((step % 24) + 24) % 24;
    const int half = n % 12;
    const double value = kSine[half <= 6 ? half : 12 - half];
    return n < 12 ? value : -value;
  };
  Figure figure = stroke({});
  for (int step = from; step <= to; ++step) {
    figure.points[figure.count++] =
        moved(centre, static_cast<int>(sine(step + 6) * radius), static_cast<int>(sine(step) * radius));
  }
  return figure;
}

template <std::size_t... N>
constexpr auto joined(const std::array<Figure, N>&... parts) {
  std::array<Figure, (N + ...)> all{};
  std::size_t n = 0;
  const auto append = [&](const auto& part) {
    for (const Figure& figure : part) {
      all[n++] = figure;
    }
  };
  (append(parts), ...);
  return all;
}

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

// A round column that stands free in the room. 1 diameter, 2 diameter of the duct, 3 height; 4 height of the
// plinth.
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

constexpr NumberedSketch kSketches[] = {
    {120, &s120::sketch}, {121, &s121::sketch}, {122, &s122::sketch}, {123, &s123::sketch},
    {124, &s124::sketch}, {125, &s125::sketch}, {126, &s126::sketch}, {127, &s127::sketch},
    {128, &s128::sketch}, {129, &s129::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_120_129() {
  return kSketches;
}

}  // namespace tavd
