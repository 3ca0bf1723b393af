// Writing a file whole or not at all.
#pragma once

#include <string>

namespace tavdcairo {

// A failure leaves what was there. A pipe or another device is written straight into. False and a reason.
bool write_whole_file(const std::string& path, const std::string& bytes, std::string& reason);

}  // namespace tavdcairo
