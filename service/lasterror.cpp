#include "lasterror.h"

#include <cstdio>

namespace tavdsrv {

namespace {

// Takes the longest path and a sentence; a fixed buffer, so that even running out of memory can be told.
constexpr std::size_t kTextSize = 4096 + 512;
thread_local char text_of_thread[kTextSize];

}  // namespace

void set_last_error(const char* text) noexcept {
  if (*text == '\0') {
    text_of_thread[0] = '\0';
    return;
  }
  std::snprintf(text_of_thread, kTextSize, "%s", text);
}

const char* last_error() noexcept {
  return text_of_thread;
}

}  // namespace tavdsrv
