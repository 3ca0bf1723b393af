// The catalogue as a whole: its sources compiled into a database, and a database written as text.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "database.h"

namespace tavdhost {

// Compiles the sources into a database at `target`, which is replaced as a whole, or left as it is: then
// UserError tells file, line and reason of everything that is wrong. Returns the number of records.
std::size_t build_database(const std::vector<std::string>& sources, const std::string& target);

// Writes all records of the database as the text that builds the same records again. Returns their number.
std::size_t dump_database(const Database& database, std::ostream& out);

}  // namespace tavdhost
