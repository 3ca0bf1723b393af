// Numbers and colours of pages as files have them.
#pragma once

#include <cstdint>
#include <string>

namespace tavdhost {

// Millimetres in hundredths, without zeros behind: below what can be seen.
std::string page_number(double mm);

// "#rrggbb" of 0x00BBGGRR.
std::string page_colour(std::uint32_t colour);

}  // namespace tavdhost
