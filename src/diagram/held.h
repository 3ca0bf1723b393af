// Moved to base, where shape pictures use it too.
#pragma once

#include "base/held.h"  // IWYU pragma: export
