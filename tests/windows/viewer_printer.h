// A printer for tests: PostScript into a file, through Wine's own driver. It is there as long as this object.
#pragma once

#include <string>

namespace drive {

class TestPrinter {
 public:
  // Pages go to the file `port`.
  explicit TestPrinter(const std::wstring& port);
  ~TestPrinter();
  TestPrinter(const TestPrinter&) = delete;
  TestPrinter& operator=(const TestPrinter&) = delete;

  // Whether the platform took it and makes a context for it.
  bool works() const { return works_; }

 private:
  std::wstring former_default_;
  bool works_ = false;
};

// Whether there is any printer at all.
bool has_printer();

}  // namespace drive
