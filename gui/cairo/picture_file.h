// Writing a file whole or not at all.
#pragma once

#include <string>

namespace tavdcairo {

// Writes beside the target first and renames, so that a failure leaves what was there. False and a reason.
bool write_whole_file(const std::string& path, const std::string& bytes, std::string& reason);

}  // namespace tavdcairo
