// What went wrong in this thread's last call, and the guard that keeps every exception inside the library.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tavdsrv {

// A failure that a host should hear of, in one line of UTF-8 that names the file.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

void set_last_error(const char* text) noexcept;
const char* last_error() noexcept;

// What is uncertain about a call that did what was asked.
void set_last_warning(const char* text) noexcept;
const char* last_warning() noexcept;

// Runs the inside of one exported function: forgets the former error and warning, and returns `failed` where
// there is an exception.
template <typename Result, typename Inside>
Result guarded(Result failed, Inside&& inside) noexcept {
  set_last_error("");
  set_last_warning("");
  try {
    return std::forward<Inside>(inside)();
  } catch (const std::exception& problem) {
    set_last_error(problem.what());
  } catch (...) {
    set_last_error("unknown failure");
  }
  return failed;
}

template <typename Inside>
void guarded(Inside&& inside) noexcept {
  guarded(0, [&inside] {
    inside();
    return 0;
  });
}

}  // namespace tavdsrv
