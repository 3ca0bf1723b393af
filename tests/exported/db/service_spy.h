// Stands between the library and the service: notes the calls and the handles that are out, and passes them
// on.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tavdtest {

// Calls since the last clear_calls, each in one line: "find ASD 0", "next", "release", "id", "att 1650 22",
// "att 1110 100 counted", "att 1604 0 counted block", "findatt 000 FILEHEADER 1049 2", "wsz 9500 78 0"
// (capacity, charset), "insert 1503 5", "save 2" (database), "saveahm 2 7", "delete ASD", "open 1" (mode).
std::vector<std::string>& calls();
void clear_calls();

// The object id that the last find was asked for, as it was handed in: at most 30 characters.
std::string last_key();

// Does something once, at the next call that is noted as `line`, before the service sees it.
void at_call(std::string line, std::function<void()> what);

// Record handles, attribute blocks and ahm blocks that were handed out and not given back, and how many were
// handed out in all.
std::size_t handles_out();
std::size_t handles_taken();

// Gives back the record that was handed out last, if it is still out, and tells whether it was: for the one
// that is lost on purpose.
bool release_last_record();

// Passes if as many handles are out at the end as at the start.
class Balance {
 public:
  Balance();
  ~Balance();
  Balance(const Balance&) = delete;
  Balance& operator=(const Balance&) = delete;

 private:
  std::size_t before_;
};

}  // namespace tavdtest
