// Other terminals.
#include "shape/catalogue.h"

namespace tavd {

std::span<const NumberedSketch> sketches_170_192() {
  return {};
}

}  // namespace tavd
