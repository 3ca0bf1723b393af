// Databases made whole, and written as text.
#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

#include "catalogue/entry.h"
#include "product/database.h"

namespace tavdhost {

using Fill = std::function<void(const Database&)>;

// Makes a database with `fill`, which gets it empty, and puts it in the place of `target` as a whole. Where
// anything throws, the target stays as it is and nothing stays beside it. For a target on a server it is made
// in a temporary file first.
void make_database(const std::string& target, const Fill& fill);

// Makes a database in the same way where there is no file; an existing one is not replaced: then false.
bool add_database(const std::string& target, const Fill& fill);

// Stores a record. Throws UserError with the service's words.
void store(const Database& database, const Entry& entry);

// Writes all records of the database as the text that builds the same records again. Returns their number.
// Ends as soon as the stream takes no more.
std::size_t dump_database(const Database& database, std::ostream& out);

}  // namespace tavdhost
