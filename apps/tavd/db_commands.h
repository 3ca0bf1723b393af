// `tavd db build`, `tavd db dump`, `tavd db synth` and `tavd db check`.
#pragma once

#include <CLI/App.hpp>

namespace tavdhost {

void add_db_commands(CLI::App& app);

}  // namespace tavdhost
