// What the program asks of its platform, beside pictures (picture.h).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tavd/types.h"

namespace tavdhost {

// Makes the standard streams what every platform has here until the program ends: bytes go out as they were
// written, line ends too, and a terminal shows UTF-8. A file that grows past a limit fails to be written, and
// does not end the program.
void set_up_streams();

// The arguments as UTF-8, with the program's name first; of those that main() got where it gets them whole.
std::vector<std::string> arguments(int argc, char** argv);

enum class Stream { kInput, kOutput, kErrors };

bool is_terminal(Stream stream);
// Whether it is a terminal on which a line can be drawn over and wiped with escape sequences.
bool can_wipe_lines(Stream stream);

// Whether the system names standard output so, beside other files.
bool names_standard_output(const std::string& path);

// Opens a product database as tavdf_open_database does; the path is UTF-8, or bytes where names of files are.
std::int16_t open_database_file(const std::string& path, std::int32_t mode);

// The program itself, which windows and drawings belong to.
tavd_hmodule program_module();

}  // namespace tavdhost
