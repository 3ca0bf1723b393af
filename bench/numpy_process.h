// numpy beside the library: a running Python that does tasks of bench/numpy_yardstick.py when it is told to.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>

namespace bench {

class NumpyProcess {
 public:
  explicit NumpyProcess(const std::string& script);
  ~NumpyProcess();
  NumpyProcess(const NumpyProcess&) = delete;
  NumpyProcess& operator=(const NumpyProcess&) = delete;

  // Does the task; ends the program if Python can't.
  void run(const char* task);

 private:
  pid_t child_ = -1;
  std::FILE* tasks_ = nullptr;
  std::FILE* answers_ = nullptr;
};

}  // namespace bench
