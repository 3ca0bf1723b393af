// A process of its own that does a job whenever it is told to. Two of them have nothing in common but the
// machine: what it gives them is all that two threads can have.
#pragma once

#include <sys/types.h>

#include <functional>

namespace bench {

class Worker {
 public:
  explicit Worker(const std::function<void()>& job);
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  void begin();   // the job, once
  void finish();  // waits for its end

 private:
  pid_t child_ = -1;
  int socket_ = -1;
};

}  // namespace bench
