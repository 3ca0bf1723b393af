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
constexpr Figure box_fine[] = {
    // Vanes below the plate.
    line({145, 242}, {137, 250}),
    line({165, 242}, {157, 250}),
    line({185, 242}, {177, 250}),
    line({205, 242}, {197, 250}),
    line({255, 242}, {263, 250}),
    line({275, 242}, {283, 250}),
    line({295, 242}, {303, 250}),
    line({315, 242}, {323, 250}),
    // Screws in its corners.
    line({110, 440}, {120, 450}),
    line({120, 440}, {110, 450}),
    line({340, 440}, {350, 450}),
    line({350, 440}, {340, 450}),
    line({110, 670}, {120, 680}),
    line({120, 670}, {110, 680}),
    line({340, 670}, {350, 680}),
    line({350, 670}, {340, 680}),
    // Lugs to hang the box up.
    box({122, 110}, {130, 118}),
    box({330, 110}, {338, 118}),
};
constexpr Dimension box_dimensions[] = {
    across(1, {100, 242}, {360, 242}, 345),    across(2, {130, 242}, {330, 242}, 298),
    down(3, {330, 110}, {360, 242}, 410),      down(2, {330, 460}, {330, 660}, 410),
    across(5, {100, 690}, {360, 690}, 750),    down(6, {130, 110}, {130, 230}, 10),
    down(half(2), {130, 460}, {130, 560}, 10),
};
constexpr Point box_centres[] = {{230, 170}, {230, 560}};
constexpr Sketch box_on_plate = {.outline = box_outline,
                                 .hidden = box_centre_lines,
                                 .fine = box_fine,
                                 .dimensions = box_dimensions,
                                 .centres = box_centres};

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

constexpr int kWithDuctPlace = 5;  // values; of a product with fewer the fourth is no whole one

const Sketch* duct(const ShapeState& picture) {
  switch (picture.nvalues >= kWithDuctPlace ? picture.values[4] : 0) {
    case 2:
      return &duct_in_the_middle;
    case 3:
      return &duct_beside;
    default:
      return &duct_behind;
  }
}

}  // namespace

void shape_160(const ShapeCanvas& canvas) {
  draw_sketches(canvas, {&box_on_plate, duct(canvas.state)});
}

}  // namespace tavd
