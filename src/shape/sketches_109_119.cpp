// Valves, nozzles and boxes with diffusers.
#include "shape/catalogue.h"

namespace tavd {

std::span<const NumberedSketch> sketches_109_119() {
  return {};
}

}  // namespace tavd
