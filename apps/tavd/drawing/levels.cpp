#include "drawing/levels.h"

#include <cstddef>
#include <optional>

#include "drawing/own_drawings.h"
#include "drawing/placement.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

// dB(A), those preferred first.
constexpr float kLowest[] = {0, 25, 30, 35, 40, 45, 50};
constexpr float kSteps[] = {0, 15, 20};

bool overlap(const Extent& a, const Extent& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// A text that is drawn twice in one place shows as one.
bool is_same(const Extent& a, const Extent& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// How many cells of texts stand on others in the diagram as it is now; one more if not all lies in the room.
// Cells are higher than letters: numbers of an axis that come close count in any case, whatever the levels
// are.
std::size_t faults(const hosts::LibraryDrawing& drawing, const Area& room) {
  const std::optional<Covered> drawn = covered(drawing, room);
  if (!drawn) return 0;
  std::size_t count = fits(drawing, room) ? 0 : 1;
  for (std::size_t i = 0; i < drawn->texts.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const Extent& a = drawn->texts[i];
      const Extent& b = drawn->texts[j];
      if (overlap(a, b) && !is_same(a, b)) ++count;
    }
  }
  return count;
}

}  // namespace

Levels legible_levels(OwnFlowDiagram& diagram, PictureSize size) {
  Levels best = {0, 0};
  if (!hosts::is_damper(diagram.flow()) || !diagram.is_drawable()) return best;
  std::optional<std::size_t> fewest;
  for (const float step : kSteps) {
    for (const float lowest : kLowest) {
      diagram.set_levels({lowest, step});
      const std::size_t count = faults(diagram.drawing(), {0, 0, size.width, size.height});
      if (fewest && count >= *fewest) continue;
      fewest = count;
      best = {lowest, step};
    }
  }
  return best;
}

}  // namespace tavdhost
