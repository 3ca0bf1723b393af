// Widths of class and object ids.
#pragma once

#include <cstddef>

namespace tavd {

inline constexpr std::size_t kClassChars = 3;
inline constexpr std::size_t kIdChars = 30;
// Room that the service wants for the ids it writes.
inline constexpr std::size_t kClassRoom = 8;
inline constexpr std::size_t kIdRoom = 32;

}  // namespace tavd
