#include "many/paths.h"

#include "gwvectors.h"

namespace tavd {

const std::size_t kMachinePaths = vector_paths();

}  // namespace tavd
