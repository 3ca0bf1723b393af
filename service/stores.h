// Which store a database's name stands for.
#pragma once

#include <filesystem>
#include <memory>

#include "service/store.h"

namespace tavdsrv {

// Opens the product database of this name: on a server, or in a file. With `create` a missing one is made
// first. Throws Failure.
std::unique_ptr<Store> open_store(const std::filesystem::path& name, bool create);

}  // namespace tavdsrv
