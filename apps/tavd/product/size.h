// Sizes of connections as users write them.
#pragma once

#include <string>

#include "tavd/types.h"

namespace tavdhost {

// "160" or "400x200", mm. Throws UserError that names the option.
DuctSize parse_size(const std::string& option, const std::string& text);

}  // namespace tavdhost
