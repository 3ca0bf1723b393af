// Faults in what SQLite asks of the system, put in through its own table of system calls.
#pragma once

#include <sqlite3.h>

namespace tavdtest {

// Puts a function in the place of one that SQLite calls, by the name SQLite gives it; gives the former one
// back at the end. What SQLite does not use has no place.
class SystemCall {
 public:
  SystemCall(const char* name, sqlite3_syscall_ptr instead)
      : vfs_(sqlite3_vfs_find(nullptr)), name_(name), former_(vfs_->xGetSystemCall(vfs_, name)) {
    if (former_ != nullptr) vfs_->xSetSystemCall(vfs_, name_, instead);
  }
  ~SystemCall() {
    if (former_ != nullptr) vfs_->xSetSystemCall(vfs_, name_, former_);
  }
  SystemCall(const SystemCall&) = delete;
  SystemCall& operator=(const SystemCall&) = delete;

 private:
  sqlite3_vfs* vfs_;
  const char* name_;
  sqlite3_syscall_ptr former_;
};

}  // namespace tavdtest
