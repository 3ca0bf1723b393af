// Stores on servers, whose part of the service is loaded when the first one is opened.
#pragma once

#include <memory>
#include <string>

#include "service/store.h"

namespace tavdsrv {

// Opens the product database of a server's name; with `create` its tables are made where there are none.
// Throws Failure.
std::unique_ptr<Store> open_server_store(const std::string& name, bool create);

}  // namespace tavdsrv
