// A product to be measured with, and the points that it is asked at.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "oracle/reference/records.h"

namespace bench {

struct Scene {
  reference::Product product;
  std::vector<reference::Point> points;
};

// A full record of the kind with both parameters chosen, and points at which it has a sound power level and,
// if it is a damper, a position: failures would be answered at once and make the times look good.
std::shared_ptr<Scene> scene(std::int16_t kind, std::size_t points);

}  // namespace bench
