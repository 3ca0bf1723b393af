// Levels in the room of many rows of eight bands.
#pragma once

#include <cstddef>

namespace tavd {

// As room_level row by row; returns how many rows room_level itself had to do.
std::size_t room_levels(std::size_t n, const float* lw, float roomdamp, float* lpa);

// The same by a path of many/paths.h.
std::size_t room_levels_by(std::size_t path, std::size_t n, const float* lw, float roomdamp, float* lpa);

}  // namespace tavd
