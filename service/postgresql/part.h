// What libtavdsrv asks of its part for PostgreSQL.
#pragma once

#include <string>

#include "service/store.h"

namespace tavdsrv {

// The one function that the shared library exports. The store is the caller's. Throws Failure; messages call
// the database what `shown` is.
using OpenPostgresql = Store*(const std::string& name, const std::string& shown, bool create);
inline constexpr const char* kOpenPostgresql = "tavdsrv_open_postgresql";

}  // namespace tavdsrv
