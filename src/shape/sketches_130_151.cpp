// Duct fittings and what is built into ducts.
#include "shape/catalogue.h"

namespace tavd {
namespace {

// A coil (141) or a filter (151) in a duct: side view and plan. 1 length, 2 height, 3 width.
namespace s141 {
constexpr Figure outline[] = {
    rect({100, 200}, {300, 400}),
    rect({100, 450}, {300, 750}),
    line({120, 730}, {280, 470}),
};
constexpr Figure hidden[] = {line({70, 300}, {330, 300}), line({70, 600}, {330, 600})};
constexpr Dimension dimensions[] = {
    across(1, {100, 200}, {300, 200}, 140),
    down(2, {300, 200}, {300, 400}, 380),
    down(3, {300, 450}, {300, 750}, 380),
};
constexpr Point centres[] = {{100, 300}, {300, 300}, {100, 600}, {300, 600}};
constexpr Sketch sketch = {
    .outline = outline, .hidden = hidden, .dimensions = dimensions, .centres = centres};
constexpr Sketch sketch_151 = {
    .outline = std::span(outline).first(2), .hidden = hidden, .dimensions = dimensions, .centres = centres};
}  // namespace s141

constexpr NumberedSketch kSketches[] = {
    {141, &s141::sketch},
    {151, &s141::sketch_151},
};

}  // namespace

std::span<const NumberedSketch> sketches_130_151() {
  return kSketches;
}

}  // namespace tavd
