#include "drawing/placement.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "drawing/picture.h"

namespace tavdhost {
namespace {

constexpr double kEdge = 1;             // pixels that stay white along the edges: shades of letters and lines
constexpr int kMarginPart = 100;        // of the smaller side stays white where a drawing has to be moved
constexpr double kSmallestScale = 0.5;  // see the header
constexpr int kMostTries = 20;  // letters do not become narrower with a diagram: each try comes nearer

// A diagram's letters are as high as it is, the room for its numbers as wide: narrower than this, a number of
// four figures stands on the axis title.
constexpr double kNarrowest = 1.2;  // width to height

struct Scale {
  double x, y;
};

Extent inside(const Area& room, double margin) {
  return {room.left + margin, room.top + margin, room.right - margin, room.bottom - margin};
}

bool holds(const Extent& outer, const Extent& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

// A room in the middle of another, its sides shrunk.
Area shrunk(const Area& room, const Scale& scale) {
  const auto width = static_cast<std::int32_t>(room.width() * scale.x);
  const auto height = static_cast<std::int32_t>(room.height() * scale.y);
  const std::int32_t left = room.left + (room.width() - width) / 2;
  const std::int32_t top = room.top + (room.height() - height) / 2;
  return {left, top, left + width, top + height};
}

// A diagram whose letters have room, in the middle of where it would be; sketches have proportions of their
// own.
Area legible_place(const hosts::LibraryDrawing& drawing, const Area& room) {
  Area place = natural_place(drawing, room);
  if (drawing.keeps_proportions || place.width() >= place.height() * kNarrowest) return place;
  const auto height = static_cast<std::int32_t>(place.width() / kNarrowest);
  place.top += (place.height() - height) / 2;
  place.bottom = place.top + height;
  return place;
}

// How far to move what reaches from `low` to `high` so that it lies between the limits; it is not longer.
std::int32_t shift(double low, double high, double lowest, double highest) {
  if (low < lowest) return static_cast<std::int32_t>(std::ceil(lowest - low));
  if (high > highest) return static_cast<std::int32_t>(std::floor(highest - high));
  return 0;
}

Area moved_into(const Area& place, const Extent& drawn, const Extent& room) {
  const std::int32_t dx = shift(drawn.left, drawn.right, room.left, room.right);
  const std::int32_t dy = shift(drawn.top, drawn.bottom, room.top, room.bottom);
  return {place.left + dx, place.top + dy, place.right + dx, place.bottom + dy};
}

}  // namespace

Area natural_place(const hosts::LibraryDrawing& drawing, const Area& room) {
  if (!drawing.keeps_proportions) return room;
  const double proportion = static_cast<double>(drawing.plane_width) / drawing.plane_height;
  const auto width = static_cast<std::int32_t>(std::floor(room.height() * proportion + 0.5));
  const std::int32_t left = room.left + room.width() / 2 - width / 2;
  return {left, room.top, left + width, room.bottom};
}

bool fits(const hosts::LibraryDrawing& drawing, const Area& room) {
  const std::optional<Covered> drawn = covered(drawing, legible_place(drawing, room));
  return !drawn || holds(inside(room, kEdge), drawn->all);
}

Area fitted_place(const hosts::LibraryDrawing& drawing, const Area& room) {
  const Area natural = legible_place(drawing, room);
  if (fits(drawing, room)) return natural;
  // Whole pixels to move by, so that a margin of two always leaves the edge free.
  const double margin = std::max(kEdge + 1, std::min(room.width(), room.height()) / double{kMarginPart});
  const Extent free = inside(room, margin);
  // A sketch is as high as the picture, and may be wider than that.
  const double first = std::min(1.0, static_cast<double>(room.width()) / natural.width());
  Scale scale = {first, first};
  for (int tries = 0; tries < kMostTries && std::min(scale.x, scale.y) >= first * kSmallestScale; ++tries) {
    const Area place = legible_place(drawing, shrunk(room, scale));
    const Extent all = covered(drawing, place)->all;
    // A pixel less, since places are whole pixels.
    Scale excess = {all.width() / (free.width() - 1), all.height() / (free.height() - 1)};
    if (excess.x <= 1 && excess.y <= 1) return moved_into(place, all, free);
    if (drawing.keeps_proportions) excess.x = excess.y = std::max(excess.x, excess.y);
    scale.x /= std::max(excess.x, 1.0);
    scale.y /= std::max(excess.y, 1.0);
  }
  return natural;
}

}  // namespace tavdhost
