// Files of the catalogue's commands: the sources that were named, and what a database can be made of.
#pragma once

#include <string>
#include <vector>

namespace tavdhost {

// The files that the user named; a folder stands for all *.json in it, by name. Throws UserError for a name
// that is neither, and for a folder without any.
std::vector<std::string> source_files(const std::vector<std::string>& names);

// Throws UserError if there can be no database of that name: where something else than a file stands, or no
// folder to make one in.
void refuse_what_cannot_be_a_database(const std::string& target);

}  // namespace tavdhost
