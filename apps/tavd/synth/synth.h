// `tavd db synth`: databases of any size, for trying out hosts, for tests and for measuring.
#pragma once

#include <CLI/App.hpp>

namespace tavdhost {

void add_synth_command(CLI::App& db);

}  // namespace tavdhost
