#include "sheet/sketch.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "drawing/picture.h"
#include "drawing/portable/placed.h"
#include "tavd/tavdshapepic.h"

namespace tavdhost {
namespace {

// Large enough that whole device units of the place are far below what shows.
constexpr int kProbe = 10;

}  // namespace

bool draw_sketch(const PageSurface& page, const Box& box, const DrawingSource& source) {
  DrawingSource untitled = source;
  untitled.title = {};
  const OwnShapePicture sketch(untitled);
  const Area probe = {0, 0, TAVDSHAPEPIC_WIDTH * kProbe, TAVDSHAPEPIC_HEIGHT * kProbe};
  const std::optional<Covered> drawn = covered(sketch.drawing(), probe);
  if (!drawn || !(drawn->all.width() > 0) || !(drawn->all.height() > 0)) return false;
  const Extent& all = drawn->all;
  const double left = page.device_x(box.left);
  const double top = page.device_y(box.top);
  const double width = page.device_x(box.right()) - left;
  const double height = page.device_y(box.bottom()) - top;
  const double scale = std::min(width / all.width(), height / all.height());
  const double x = left + (width - all.width() * scale) / 2 - all.left * scale;
  const double y = top + (height - all.height() * scale) / 2 - all.top * scale;
  const auto whole = [](double units) { return static_cast<std::int32_t>(std::lround(units)); };
  const Area place = {whole(x), whole(y), whole(x + probe.width() * scale), whole(y + probe.height() * scale)};
  draw_placed(sketch.drawing(), page.surface(), place);
  return true;
}

}  // namespace tavdhost
