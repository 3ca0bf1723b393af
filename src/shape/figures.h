// Figures that are worked out: repeated, bent, joined to one table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "shape/sketch.h"

namespace tavd {

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

// Several tables as one, in their order.
template <std::size_t... N>
constexpr auto joined(const std::array<Figure, N>&... parts) {
  std::array<Figure, (N + ...)> all{};
  std::size_t n = 0;
  const auto append = [&](const auto& part) {
    for (const Figure& figure : part) all[n++] = figure;
  };
  (append(parts), ...);
  return all;
}

}  // namespace tavd
