// A progress bar on the terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace tavdhost {

// Shows on standard error how far a piece of work is, if that is a terminal and the work takes its time;
// draws nothing otherwise. The line is wiped at the end.
class Progress {
 public:
  // `total` steps; 0 if their number is not known beforehand: then the steps are counted.
  Progress(std::string what, std::size_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void step(std::size_t steps = 1);

 private:
  using Clock = std::chrono::steady_clock;

  void draw();

  std::string what_;
  std::size_t total_;
  std::size_t done_ = 0;
  bool on_terminal_;
  bool drawn_ = false;
  Clock::time_point next_;
};

}  // namespace tavdhost
