// The service that stands behind the spy.
#pragma once

namespace tavdtest {

void* next_service(const char* name);

}  // namespace tavdtest
