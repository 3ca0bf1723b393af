// Memory that ends where a page begins that may be neither read nor written.
#pragma once

#include <cstddef>

namespace tavdtest {

class Pages {
 public:
  explicit Pages(std::size_t bytes);  // at least so many, in whole pages
  ~Pages();
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;

  unsigned char* end() { return end_; }  // the forbidden page

 private:
  std::size_t length_;
  unsigned char* block_;
  unsigned char* end_;
};

}  // namespace tavdtest
