// How a command ends when it cannot do what was asked.
#pragma once

#include <stdexcept>

namespace tavdhost {

// What the user asked for cannot be done: a name that does not exist, a number that is none, a file that
// cannot be read or written. The text is one line that says what was wrong, where, and what was expected. The
// program prints "tavd: <text>" on standard error and ends with exit code 2. Any other exception is a failure
// of the program's own, printed the same way, with exit code 1.
struct UserError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The command has done its work and printed all of it, and the program is to end with this exit code.
struct EndWith {
  int exit_code;
};

}  // namespace tavdhost
