// Two processes that do a half of a job each whenever they are told to. They have nothing in common but the
// machine: what it gives them is all that two threads can have of it.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <functional>

namespace bench {

class TwoProcesses {
 public:
  using Job = std::function<void(std::size_t half)>;

  explicit TwoProcesses(const Job& job);
  ~TwoProcesses();
  TwoProcesses(const TwoProcesses&) = delete;
  TwoProcesses& operator=(const TwoProcesses&) = delete;

  void run();  // both halves at once

 private:
  struct Process {
    pid_t id;
    int socket;
  };
  std::array<Process, 2> processes_;
};

}  // namespace bench
