// Duct fittings and what is built into ducts.
#include "shape/catalogue.h"

namespace tavd {
namespace {

// A butterfly damper in a round duct: side view, with the end of the spindle, and plan, with the actuator.
// 2 diameter; 3 is written beside it.
namespace s130 {
constexpr Figure outline[] = {
    box({100, 100}, {340, 240}),
    box({100, 480}, {340, 620}),
    // The actuator on the spindle.
    stroke({{210, 480}, {210, 464}, {230, 464}, {230, 480}}),
    box({175, 424}, {265, 464}),
};
constexpr Figure hidden[] = {
    line({85, 170}, {355, 170}),
    line({187, 232}, {253, 108}),  // the leaf
    line({85, 550}, {355, 550}),
    line({220, 470}, {220, 630}),
    stroke({{187, 550},
            {191, 515},
            {204, 492},
            {220, 484},
            {236, 492},
            {249, 515},
            {253, 550},
            {249, 585},
            {236, 608},
            {220, 616},
            {204, 608},
            {191, 585},
            {187, 550}}),
};
constexpr Figure fine[] = {
    // Sealing rings.
    line({112, 100}, {112, 240}),
    line({122, 100}, {122, 240}),
    line({318, 100}, {318, 240}),
    line({328, 100}, {328, 240}),
    line({112, 480}, {112, 620}),
    line({122, 480}, {122, 620}),
    line({318, 480}, {318, 620}),
    line({328, 480}, {328, 620}),
    // Plate of the actuator, which points along the leaf.
    box({200, 160}, {240, 180}),
    line({185, 436}, {255, 436}),
};
constexpr Dimension dimensions[] = {down(2, {340, 100}, {340, 240}, 405)};
constexpr FreeText texts[] = {{3, {385, 568}}};
constexpr Point centres[] = {{220, 170}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s130

// A sound attenuator with splitters in a rectangular duct: side view and plan in section. 1 length, 2 height,
// 3 width.
namespace s131 {
constexpr Figure outline[] = {
    rect({90, 90}, {350, 240}),
    rect({90, 440}, {350, 680}),
    // Flanges.
    stroke({{90, 90}, {90, 78}, {100, 78}, {100, 90}}),
    stroke({{340, 90}, {340, 78}, {350, 78}, {350, 90}}),
    stroke({{90, 240}, {90, 252}, {100, 252}, {100, 240}}),
    stroke({{340, 240}, {340, 252}, {350, 252}, {350, 240}}),
    stroke({{90, 440}, {90, 428}, {100, 428}, {100, 440}}),
    stroke({{340, 440}, {340, 428}, {350, 428}, {350, 440}}),
    stroke({{90, 680}, {90, 692}, {100, 692}, {100, 680}}),
    stroke({{340, 680}, {340, 692}, {350, 692}, {350, 680}}),
};
constexpr Figure hidden[] = {
    line({60, 165}, {380, 165}),
    line({125, 96}, {125, 234}),
    line({315, 96}, {315, 234}),
    line({60, 560}, {380, 560}),
};
// A splitter about y, hatched as its filling is.
constexpr Figure splitter(std::int16_t y) {
  const auto up = [y](int by) { return static_cast<std::int16_t>(y - by); };
  return stroke({{113, y}, {125, up(20)}, {315, up(20)}, {327, y}, {315, up(-20)}, {125, up(-20)}, {113, y}});
}
constexpr Figure filling(std::int16_t y) {
  const auto up = [y](int by) { return static_cast<std::int16_t>(y - by); };
  return stroke({{125, up(20)},
                 {139, up(-20)},
                 {152, up(20)},
                 {166, up(-20)},
                 {179, up(20)},
                 {193, up(-20)},
                 {206, up(20)},
                 {220, up(-20)},
                 {234, up(20)},
                 {247, up(-20)},
                 {261, up(20)},
                 {274, up(-20)},
                 {288, up(20)},
                 {301, up(-20)},
                 {315, up(20)}});
}
constexpr Figure fine[] = {
    line({100, 90}, {100, 240}),
    line({340, 90}, {340, 240}),
    line({100, 440}, {100, 680}),
    line({340, 440}, {340, 680}),
    splitter(480),
    filling(480),
    splitter(560),
    filling(560),
    splitter(640),
    filling(640),
};
constexpr Dimension dimensions[] = {
    across(1, {90, 252}, {350, 252}, 320),
    down(2, {350, 90}, {350, 240}, 411),
    down(3, {350, 440}, {350, 680}, 411),
};
constexpr Point centres[] = {{90, 165}, {350, 165}, {90, 560}, {350, 560}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s131

// A bend of a round duct: side view and plan. 2 diameter; 3, the angle, is written beside it.
namespace s132 {
constexpr Figure outline[] = {
    // Side view: about (190, 300), with a spigot at either end.
    arc({25, 135}, {355, 465}, {355, 300}, {190, 135}),
    arc({135, 245}, {245, 355}, {245, 300}, {190, 245}),
    stroke({{190, 135}, {150, 135}, {150, 245}, {190, 245}}),
    stroke({{245, 300}, {245, 335}, {355, 335}, {355, 300}}),
    // Plan: what is below is the outlet.
    arc({245, 505}, {355, 615}, {300, 615}, {300, 505}),
    stroke({{300, 505}, {150, 505}, {150, 615}, {300, 615}}),
};
constexpr Figure hidden[] = {
    line({135, 190}, {205, 190}),
    line({300, 285}, {300, 350}),
    arc({245, 505}, {355, 615}, {300, 505}, {300, 615}),
    line({135, 560}, {370, 560}),
    line({300, 490}, {300, 630}),
};
constexpr Figure fine[] = {
    // Seams, and the beads of the spigots.
    line({190, 135}, {190, 245}), line({245, 300}, {355, 300}), line({211, 249}, {253, 148}),
    line({229, 261}, {307, 183}), line({241, 279}, {342, 237}), line({160, 135}, {160, 245}),
    line({168, 135}, {168, 245}), line({245, 317}, {355, 317}), line({245, 325}, {355, 325}),
    line({190, 505}, {190, 615}), line({160, 505}, {160, 615}), line({168, 505}, {168, 615}),
};
constexpr Dimension dimensions[] = {across(2, {245, 335}, {355, 335}, 400)};
constexpr FreeText texts[] = {{3, {385, 578}}};
constexpr Point centres[] = {{300, 560}};
constexpr Sketch sketch = {.outline = outline,
                           .hidden = hidden,
                           .fine = fine,
                           .dimensions = dimensions,
                           .texts = texts,
                           .centres = centres};
}  // namespace s132

// A reducer between two rectangular ducts: side view and plan. 2 height and 3 width of the larger end, 4
// height and 5 width of the smaller.
namespace s133 {
constexpr Figure outline[] = {
    box({115, 70}, {125, 270}),
    stroke({{125, 80}, {150, 80}, {320, 120}, {345, 120}}),
    stroke({{125, 260}, {150, 260}, {320, 220}, {345, 220}}),
    box({345, 110}, {355, 230}),
    box({115, 440}, {125, 680}),
    stroke({{125, 450}, {150, 450}, {320, 500}, {345, 500}}),
    stroke({{125, 670}, {150, 670}, {320, 620}, {345, 620}}),
    box({345, 490}, {355, 630}),
};
constexpr Figure hidden[] = {line({102, 170}, {368, 170}), line({102, 560}, {368, 560})};
constexpr Figure fine[] = {
    line({150, 80}, {150, 260}),
    line({320, 120}, {320, 220}),
    line({150, 450}, {150, 670}),
    line({320, 500}, {320, 620}),
    // Creases that stiffen the sheets.
    line({150, 80}, {320, 220}),
    line({150, 260}, {320, 120}),
    line({150, 450}, {320, 620}),
    line({150, 670}, {320, 500}),
};
constexpr Dimension dimensions[] = {
    down(2, {115, 80}, {115, 260}, 12),
    down(3, {115, 450}, {115, 670}, 12),
    down(4, {355, 120}, {355, 220}, 411),
    down(5, {355, 500}, {355, 620}, 411),
};
constexpr Sketch sketch = {.outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions};
}  // namespace s133

// An electric heater in a round duct: side view and plan, with the terminal box. 1 diameter.
namespace s140 {
constexpr Figure outline[] = {
    box({100, 130}, {340, 260}),
    box({150, 65}, {290, 130}),
    stroke({{290, 88}, {304, 88}, {304, 104}, {290, 104}}),
    box({100, 485}, {340, 615}),
    box({150, 500}, {290, 600}),
    stroke({{290, 542}, {304, 542}, {304, 558}, {290, 558}}),
};
constexpr Figure hidden[] = {
    line({85, 195}, {355, 195}),
    // Heating rods.
    stroke({{162, 130}, {162, 246}, {176, 246}, {176, 130}}),
    stroke({{188, 130}, {188, 246}, {202, 246}, {202, 130}}),
    stroke({{238, 130}, {238, 246}, {252, 246}, {252, 130}}),
    stroke({{264, 130}, {264, 246}, {278, 246}, {278, 130}}),
    line({85, 550}, {140, 550}),
    line({314, 550}, {355, 550}),
};
constexpr Figure fine[] = {
    line({110, 130}, {110, 260}),
    line({118, 130}, {118, 260}),
    line({322, 130}, {322, 260}),
    line({330, 130}, {330, 260}),
    line({150, 78}, {290, 78}),
    line({110, 485}, {110, 615}),
    line({118, 485}, {118, 615}),
    line({322, 485}, {322, 615}),
    line({330, 485}, {330, 615}),
    // Screws of the lid, and the sign of the voltage under it.
    line({157, 507}, {165, 515}),
    line({165, 507}, {157, 515}),
    line({275, 507}, {283, 515}),
    line({283, 507}, {275, 515}),
    line({157, 585}, {165, 593}),
    line({165, 585}, {157, 593}),
    line({275, 585}, {283, 593}),
    line({283, 585}, {275, 593}),
    stroke({{220, 515}, {190, 585}, {250, 585}, {220, 515}}),
    stroke({{224, 535}, {214, 557}, {226, 555}, {217, 577}}),
};
constexpr Dimension dimensions[] = {down(1, {340, 130}, {340, 260}, 405)};
constexpr Point centres[] = {{220, 195}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s140

// A coil (141) or a filter (151) in a duct: side view and plan. 1 length, 2 height, 3 width.
namespace s141 {
constexpr Figure outline[] = {
    rect({100, 200}, {300, 400}),
    rect({100, 450}, {300, 750}),
    line({120, 730}, {280, 470}),
};
constexpr Figure hidden[] = {line({70, 300}, {330, 300}), line({70, 600}, {330, 600})};
constexpr Figure fine[] = {
    // Frames of the flanges, and the panel to take the inside out.
    line({110, 200}, {110, 400}), line({290, 200}, {290, 400}), box({130, 215}, {270, 385}),
    line({120, 255}, {130, 255}), line({120, 265}, {130, 265}), line({120, 335}, {130, 335}),
    line({120, 345}, {130, 345}), line({270, 255}, {280, 255}), line({270, 265}, {280, 265}),
    line({270, 335}, {280, 335}), line({270, 345}, {280, 345}), line({110, 450}, {110, 750}),
    line({290, 450}, {290, 750}),
};
constexpr Dimension dimensions[] = {
    across(1, {100, 200}, {300, 200}, 140),
    down(2, {300, 200}, {300, 400}, 380),
    down(3, {300, 450}, {300, 750}, 380),
};
constexpr Point centres[] = {{100, 300}, {300, 300}, {100, 600}, {300, 600}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
constexpr Sketch sketch_151 = {.outline = std::span(outline).first(2),
                               .hidden = hidden,
                               .fine = fine,
                               .dimensions = dimensions,
                               .centres = centres};
}  // namespace s141

// A filter in a box between round ducts: side view, with the pleats, and plan, with the cover. 1 diameter.
namespace s150 {
constexpr Figure outline[] = {
    box({135, 85}, {305, 265}),
    box({125, 75}, {315, 85}),
    stroke({{135, 110}, {100, 110}, {100, 240}, {135, 240}}),
    stroke({{305, 110}, {340, 110}, {340, 240}, {305, 240}}),
    box({135, 460}, {305, 640}),
    stroke({{135, 485}, {100, 485}, {100, 615}, {135, 615}}),
    stroke({{305, 485}, {340, 485}, {340, 615}, {305, 615}}),
    stroke({{195, 485}, {195, 473}, {245, 473}, {245, 485}}),  // handle
};
constexpr Figure hidden[] = {
    line({85, 175}, {355, 175}),
    // Frame and pleats.
    box({170, 95}, {270, 255}),
    stroke({{170, 95},
            {270, 111},
            {170, 127},
            {270, 143},
            {170, 159},
            {270, 175},
            {170, 191},
            {270, 207},
            {170, 223},
            {270, 239},
            {170, 255}}),
    line({85, 550}, {355, 550}),
};
constexpr Figure fine[] = {
    line({110, 110}, {110, 240}),
    line({118, 110}, {118, 240}),
    line({322, 110}, {322, 240}),
    line({330, 110}, {330, 240}),
    line({110, 485}, {110, 615}),
    line({118, 485}, {118, 615}),
    line({322, 485}, {322, 615}),
    line({330, 485}, {330, 615}),
    // Clamps of the cover.
    stroke({{150, 75}, {150, 100}, {158, 100}, {158, 75}}),
    stroke({{282, 75}, {282, 100}, {290, 100}, {290, 75}}),
    box({147, 472}, {293, 628}),
};
constexpr Dimension dimensions[] = {down(1, {340, 110}, {340, 240}, 405)};
constexpr Point centres[] = {{220, 550}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .fine = fine, .dimensions = dimensions, .centres = centres};
}  // namespace s150

constexpr NumberedSketch kSketches130To151[] = {
    {130, &s130::sketch}, {131, &s131::sketch}, {132, &s132::sketch},     {133, &s133::sketch},
    {140, &s140::sketch}, {141, &s141::sketch}, {151, &s141::sketch_151}, {150, &s150::sketch},
};

}  // namespace

std::span<const NumberedSketch> sketches_130_151() {
  return kSketches130To151;
}

}  // namespace tavd
