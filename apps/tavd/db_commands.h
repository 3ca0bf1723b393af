// `tavd db build` and `tavd db dump`.
#pragma once

#include <CLI/App.hpp>

namespace tavdhost {

void add_db_commands(CLI::App& app);

}  // namespace tavdhost
