// The service that stands behind the spy.
#pragma once

#include <dlfcn.h>

namespace tavdtest {

inline void* next_service(const char* name) {
  return dlsym(RTLD_NEXT, name);
}

}  // namespace tavdtest
