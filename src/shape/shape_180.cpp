// Sound attenuators and other casings around a duct: 180 and 181 rectangular, 182 and 183 round, 181 and 183
// with the ends of the duct. 1 length, 2 width or diameter (181, 183: margin around the duct), 3 of 180
// height (181: the other margin). The word behind the sizes is a detail: what is inside.
#include "shape/catalogue.h"
#include "shape/picture.h"

namespace tavd {
namespace {

// Rectangular: the plan view above is not as high as the side view.
constexpr Figure rectangular_casing[] = {rect({50, 90}, {350, 230}), rect({50, 300}, {350, 600})};
constexpr Figure rectangular_axes[] = {line({20, 160}, {380, 160}), line({20, 450}, {380, 450})};
constexpr Figure rectangular_ends_fine[] = {
    line({62, 90}, {62, 230}),
    line({338, 90}, {338, 230}),
    line({62, 300}, {62, 600}),
    line({338, 300}, {338, 600}),
};
constexpr Point rectangular_centres[] = {{50, 160}, {350, 160}, {50, 450}, {350, 450}};
constexpr Sketch rectangular = {
    .outline = rectangular_casing, .hidden = rectangular_axes, .fine = rectangular_ends_fine};
constexpr Sketch rectangular_ends = {.centres = rectangular_centres};

constexpr Figure round_casing[] = {rect({50, 100}, {350, 300}), rect({50, 400}, {350, 600})};
constexpr Figure round_axes[] = {line({20, 200}, {380, 200}), line({20, 500}, {380, 500})};
constexpr Figure round_ends_fine[] = {
    line({62, 100}, {62, 300}),
    line({338, 100}, {338, 300}),
    line({62, 400}, {62, 600}),
    line({338, 400}, {338, 600}),
};
constexpr Point round_centres[] = {{50, 200}, {350, 200}, {50, 500}, {350, 500}};
constexpr Sketch round = {.outline = round_casing, .hidden = round_axes, .fine = round_ends_fine};
constexpr Sketch round_ends = {.centres = round_centres};

// Ends of the duct, left and right of both views, and the duct between them.
constexpr Figure rectangular_stubs_outline[] = {
    stroke({{50, 125}, {25, 125}, {25, 195}, {50, 195}}),
    stroke({{350, 125}, {375, 125}, {375, 195}, {350, 195}}),
    stroke({{50, 390}, {25, 390}, {25, 510}, {50, 510}}),
    stroke({{350, 390}, {375, 390}, {375, 510}, {350, 510}}),
};
constexpr Figure rectangular_duct[] = {
    line({50, 125}, {350, 125}),
    line({50, 195}, {350, 195}),
    line({50, 390}, {350, 390}),
    line({50, 510}, {350, 510}),
};
constexpr Sketch rectangular_stubs = {.outline = rectangular_stubs_outline, .hidden = rectangular_duct};
constexpr Figure round_stubs_outline[] = {
    stroke({{50, 140}, {25, 140}, {25, 260}, {50, 260}}),
    stroke({{350, 140}, {375, 140}, {375, 260}, {350, 260}}),
    stroke({{50, 440}, {25, 440}, {25, 560}, {50, 560}}),
    stroke({{350, 440}, {375, 440}, {375, 560}, {350, 560}}),
};
constexpr Figure round_duct[] = {
    line({50, 140}, {350, 140}),
    line({50, 260}, {350, 260}),
    line({50, 440}, {350, 440}),
    line({50, 560}, {350, 560}),
};
constexpr Sketch round_stubs = {.outline = round_stubs_outline, .hidden = round_duct};

constexpr Dimension length_dimension[] = {across(1, {50, 600}, {350, 600}, 720)};
constexpr Sketch length = {.dimensions = length_dimension};

constexpr Dimension width_dimensions[] = {down(2, {350, 90}, {350, 230}, 411),
                                          down(3, {350, 300}, {350, 600}, 411)};
constexpr Dimension diameter_dimensions[] = {down(2, {350, 100}, {350, 300}, 411),
                                             down(2, {350, 400}, {350, 600}, 411)};
constexpr Dimension rectangular_margin[] = {down(2, {350, 90}, {375, 125}, 411)};
constexpr Dimension round_margin[] = {down(2, {350, 100}, {375, 140}, 411)};
constexpr Sketch sizes_180 = {.dimensions = width_dimensions};
constexpr Sketch sizes_181 = {.dimensions = rectangular_margin};
constexpr Sketch sizes_182 = {.dimensions = diameter_dimensions};
constexpr Sketch sizes_183 = {.dimensions = round_margin};

// What is inside, about (200, 450), and the same 50 lower for round casings.
template <std::int16_t kY>
struct Inside {
  static constexpr std::int16_t up(int by) { return static_cast<std::int16_t>(kY - by); }
  static constexpr std::int16_t kTop = up(kY == 450 ? 150 : 100);
  static constexpr std::int16_t kBottom = 600;

  static constexpr Figure cross[] = {circle({200, kY}, 40), line({175, up(25)}, {225, up(-25)}),
                                     line({175, up(-25)}, {225, up(25)})};
  static constexpr Figure bar[] = {circle({200, kY}, 40), line({172, kY}, {228, kY})};
  static constexpr Figure triangle[] = {circle({200, kY}, 40),
                                        stroke({{175, up(20)}, {225, kY}, {175, up(-20)}, {175, up(20)}})};
  static constexpr Figure slopes[] = {line({80, kBottom}, {140, kTop}), line({140, kBottom}, {200, kTop}),
                                      line({200, kBottom}, {260, kTop}), line({260, kBottom}, {320, kTop})};
  static constexpr Figure arrow[] = {line({200, kBottom}, {200, 665}),
                                     stroke({{188, 645}, {200, 665}, {212, 645}})};
  static constexpr Figure strokes[] = {line({190, up(30)}, {190, up(-30)}),
                                       line({210, up(30)}, {210, up(-30)})};
  static constexpr Sketch details[] = {
      {},
      {.outline = cross},
      {.outline = bar},
      {.outline = triangle},
      {.outline = slopes},
      {.outline = arrow},
      {.outline = strokes},
  };
};

template <std::int16_t kY>
const Sketch* inside(int detail) {
  const std::span<const Sketch> details = Inside<kY>::details;
  const bool known = detail > 0 && static_cast<std::size_t>(detail) < details.size();
  return &details[known ? static_cast<std::size_t>(detail) : 0];
}

}  // namespace

void shape_180(const ShapeCanvas& canvas) {
  const int number = canvas.state.values[0];
  if (number == 180 || number == 181) {
    const bool ends = number == 181;
    draw_sketches(canvas,
                  {&rectangular, ends ? &rectangular_stubs : &kNoSketch, inside<450>(canvas.state.values[4]),
                   &length, ends ? &sizes_181 : &sizes_180, &rectangular_ends});
  } else {
    const bool ends = number == 183;
    draw_sketches(canvas, {&round, ends ? &round_stubs : &kNoSketch, inside<500>(canvas.state.values[3]),
                           &length, ends ? &sizes_183 : &sizes_182, &round_ends});
  }
}

}  // namespace tavd
