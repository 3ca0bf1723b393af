// Titles of pictures in place of the product code.
#pragma once

#include <string>

#include "product/database.h"

namespace tavdhost {

// Throws UserError if a title is too long to be drawn, 79 UTF-16 units.
void check_title(const std::string& title);

// Puts a title into the code's place in a record at hand, which is never saved. Charts in the wide form show
// the product code whatever title was set, and narrow texts are in the default code page: so every picture
// gets its title through the record. An empty title leaves the code.
void put_title(const Database& database, Record& record, const std::string& title);

}  // namespace tavdhost
