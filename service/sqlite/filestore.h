// The store of a product database in a file of SQLite.
#pragma once

#include <filesystem>
#include <memory>

#include "service/store.h"

namespace tavdsrv {

// Throws Failure; see open_product_database.
std::unique_ptr<Store> open_file_store(const std::filesystem::path& path, bool create);

}  // namespace tavdsrv
