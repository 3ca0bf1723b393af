// Where a database lies on Windows: SQLite takes every path that the system takes.
#include <windows.h>

#include "service/sqlite/files.h"

namespace tavdsrv {

const std::size_t kLongestName = 255;
const std::size_t kLongestPath = MAX_PATH - 1;

Place::Place(const std::filesystem::path& file) : folder_(file.parent_path()), name_(file.filename()) {}

}  // namespace tavdsrv
