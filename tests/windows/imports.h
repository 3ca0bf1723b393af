// What a module calls of another one, redirected: the entries of its import table.
#pragma once

#include <windows.h>

namespace tavdtest {

// Lets `module` call `replacement` where it imports `function`, whatever DLL that comes from, and answers what
// it called until now. Null if it does not import it. `replacement` null: only answers.
void* redirect_import(HMODULE module, const char* function, void* replacement);

// For the time of a test.
class Redirected {
 public:
  Redirected(HMODULE module, const char* function, void* replacement)
      : module_(module), function_(function), original_(redirect_import(module, function, replacement)) {}
  ~Redirected() {
    if (original_ != nullptr) redirect_import(module_, function_, original_);
  }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;
  void* original() const { return original_; }

 private:
  HMODULE module_;
  const char* function_;
  void* original_;
};

}  // namespace tavdtest
