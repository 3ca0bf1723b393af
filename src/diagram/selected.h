// Moved to base, where shape pictures use it too.
#pragma once

#include "base/selected.h"  // IWYU pragma: export
