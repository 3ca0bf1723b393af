// What makes a file a product database, and how one is opened and made.
#pragma once

#include <filesystem>

#include "service/sqlite/connection.h"

namespace tavdsrv {

// Opens the product database at `path`, for reading alone where the file cannot be written. With `create` a
// missing one is made first. Throws Failure if the file is missing or is no product database that this
// service reads; the file has then not been touched.
Connection open_product_database(const std::filesystem::path& path, bool create);

}  // namespace tavdsrv
