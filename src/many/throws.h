// Throw lengths at many flows.
#pragma once

#include <cstddef>

#include "calc/calculations.h"

namespace tavd {

// As throw_length flow by flow; returns for how many throw_length itself had to be asked.
std::size_t throw_lengths(const ThrowLine& line, std::size_t n, const float* qv, float* lengths);

// The same by a path of many/paths.h.
std::size_t throw_lengths_by(std::size_t path, const ThrowLine& line, std::size_t n, const float* qv,
                             float* lengths);

}  // namespace tavd
