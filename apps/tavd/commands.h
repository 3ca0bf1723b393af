// The commands of the program. Each adds itself to the parser, with its options, and runs when it was named.
#pragma once

#include <CLI/App.hpp>

#include "database.h"

namespace tavdhost {

// All commands but those of `tavd db`, and the version.
void add_commands(CLI::App& app);

void add_list_command(CLI::App& app);
void add_calc_command(CLI::App& app);
void add_diagram_command(CLI::App& app);

// Adds --market and --language, which fill `texts`.
void add_text_options(CLI::App& command, TextChoice& texts);

}  // namespace tavdhost
