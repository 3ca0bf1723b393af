// How often anything in this program, its libraries included, has asked the C library for memory.
#pragma once

namespace bench {

long allocations();

}  // namespace bench
