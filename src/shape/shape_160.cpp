// A square box on a plate. 1 length of the plate, 2 side of the box, 3 height, 4 where the duct comes in:
// behind (1), on top in the middle (2) or on top beside it (3), 5 width of the plate, 6 height of the box.
#include "shape/catalogue.h"
#include "shape/picture.h"

namespace tavd {
namespace {

constexpr Figure box_outline[] = {
    box({130, 110}, {330, 230}),
    box({100, 230}, {360, 242}),
    box({100, 430}, {360, 690}),
    box({130, 460}, {330, 660}),
};
constexpr Figure box_centre_lines[] = {
    line({230, 100}, {230, 252}),
    line({120, 170}, {340, 170}),
    line({90, 560}, {370, 560}),
    line({230, 420}, {230, 700}),
};
constexpr Dimension box_dimensions[] = {
    across(1, {100, 242}, {360, 242}, 345),    across(2, {130, 242}, {330, 242}, 298),
    down(3, {330, 110}, {360, 242}, 410),      down(2, {330, 460}, {330, 660}, 410),
    across(5, {100, 690}, {360, 690}, 750),    down(6, {130, 110}, {130, 230}, 10),
    down(half(2), {130, 460}, {130, 560}, 10),
};
constexpr Point box_centres[] = {{230, 170}, {230, 560}};
constexpr Sketch box_on_plate = {
    .outline = box_outline, .hidden = box_centre_lines, .dimensions = box_dimensions, .centres = box_centres};

constexpr Figure behind_outline[] = {stroke({{190, 430}, {190, 408}, {270, 408}, {270, 430}})};
constexpr Dimension behind_size[] = {across(kDiameter, {190, 408}, {270, 408}, 392)};

constexpr Figure middle_outline[] = {
    stroke({{190, 110}, {190, 85}, {270, 85}, {270, 110}}),
    circle({230, 560}, 40),
};
constexpr Dimension middle_size[] = {across(kDiameter, {190, 85}, {270, 85}, 50)};

constexpr Figure beside_outline[] = {
    stroke({{245, 110}, {245, 85}, {325, 85}, {325, 110}}),
    circle({285, 560}, 40),
};
constexpr Dimension beside_size[] = {across(kDiameter, {245, 85}, {325, 85}, 50)};

constexpr Sketch duct_behind = {.outline = behind_outline, .dimensions = behind_size};
constexpr Sketch duct_in_the_middle = {.outline = middle_outline, .dimensions = middle_size};
constexpr Sketch duct_beside = {.outline = beside_outline, .dimensions = beside_size};

const Sketch* duct() {
  switch (shp.values[4]) {  // 0 where the product has fewer values
    case 2:
      return &duct_in_the_middle;
    case 3:
      return &duct_beside;
    default:
      return &duct_behind;
  }
}

}  // namespace

void shape_160(tavd_hdc hdc) {
  draw_sketches(hdc, {&box_on_plate, duct()});
}

}  // namespace tavd
