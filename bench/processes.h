// Processes that do a part of a job each whenever they are told to. They have nothing in common but the
// machine: what it gives them is all that as many threads can have of it.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace bench {

class Processes {
 public:
  using Job = std::function<void(std::size_t part)>;  // from 0 to count - 1

  Processes(std::size_t count, const Job& job);
  ~Processes();
  Processes(const Processes&) = delete;
  Processes& operator=(const Processes&) = delete;

  void run();  // all parts at once

 private:
  struct Process {
    pid_t id;
    int socket;
  };
  std::vector<Process> processes_;
};

}  // namespace bench
