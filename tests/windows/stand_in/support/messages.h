// Collects the messages that the library shows while it lives, with warnings as told. They come to
// MessageBoxA, which is redirected here, so that none waits for a click.
#pragma once

#include <string>
#include <vector>

#include "tavd/tavca.h"

namespace tavdtest {

class Messages {
 public:
  explicit Messages(std::int16_t warningmode, tavd_hwnd owner = nullptr);
  ~Messages();
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  std::vector<std::string> texts;
  std::vector<tavd_hwnd> owners;
};

}  // namespace tavdtest
