// Pieces of work on several threads.
#pragma once

#include <cstddef>
#include <functional>

namespace tavdhost {

// How many threads this machine runs at once; at least 1.
unsigned threads_of_machine();

// Calls `work` with each number below `count`, on so many threads, which take the numbers in their order.
// After an exception no further number is taken, and once all threads have ended that of the lowest number is
// thrown: the one that a single thread would have met.
void for_each_number(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work);

}  // namespace tavdhost
