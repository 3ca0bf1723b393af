// Whether functions for instruction sets with wide vectors can be trusted here.
#pragma once

namespace tavd {

constexpr bool kWideVectors = true;

}  // namespace tavd
