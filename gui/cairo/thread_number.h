// Threads told apart.
#pragma once

namespace tavdcairo {

inline constexpr int kThreadNumbers = 64;

// From 0, the lowest number that no other living thread had when this one asked first. Past kThreadNumbers
// threads at once the last one is shared. A thread that ends leaves its number to the next, so that what is
// kept for each is bounded.
int thread_number();

}  // namespace tavdcairo
