// Whether functions for instruction sets with wide vectors can be trusted here.
#pragma once

namespace tavd {

// The compiler lays vectors of 32 bytes onto the stack and reads them as aligned, while Windows's calling
// convention aligns the stack to 16.
constexpr bool kWideVectors = false;

}  // namespace tavd
