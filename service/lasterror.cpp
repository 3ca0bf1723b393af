#include "service/lasterror.h"

#include <cstdio>

namespace tavdsrv {

namespace {

// Takes the longest path and a sentence; a fixed buffer, so that even running out of memory can be reported.
constexpr std::size_t kTextSize = 4096 + 512;
thread_local char error_of_thread[kTextSize];
thread_local char warning_of_thread[kTextSize];

void set(char* text_of_thread, const char* text) {
  if (*text == '\0') {
    *text_of_thread = '\0';
    return;
  }
  std::snprintf(text_of_thread, kTextSize, "%s", text);
}

}  // namespace

void set_last_error(const char* text) noexcept {
  set(error_of_thread, text);
}

const char* last_error() noexcept {
  return error_of_thread;
}

void set_last_warning(const char* text) noexcept {
  set(warning_of_thread, text);
}

const char* last_warning() noexcept {
  return warning_of_thread;
}

}  // namespace tavdsrv
