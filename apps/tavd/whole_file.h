// Files that appear whole or not at all.
#pragma once

#include <string>

#include "errors.h"

namespace tavdhost {

UserError cannot_write(const std::string& path, const std::string& reason);

// Writes beside the target first and renames, so that a failure leaves what was there. Throws UserError with
// the reason if the file cannot be written.
void write_whole_file(const std::string& path, const std::string& bytes);

}  // namespace tavdhost
