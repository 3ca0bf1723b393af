// Low-velocity diffusers on the floor and on walls; some stand on a part that the dimension of their height
// covers too.
#include "shape/catalogue.h"

namespace tavd {

std::span<const NumberedSketch> sketches_120_129() {
  return {};
}

}  // namespace tavd
