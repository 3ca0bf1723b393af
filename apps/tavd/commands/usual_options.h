// Options that several commands have, worded once.
#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <vector>

namespace tavdhost {

// --qv: the flow to calculate at.
CLI::Option* add_flow_option(CLI::App& command, std::string& qv);
// --dp: the total pressure at that flow.
void add_pressure_option(CLI::App& command, std::optional<std::string>& dp);
// --param NAME=VALUE, which may stand several times. `more` is told behind what it is.
void add_parameter_option(CLI::App& command, std::vector<std::string>& parameters,
                          const std::string& more = "");
// --end-reflection: taken off the sound table.
void add_end_reflection_option(CLI::App& command, bool& take_off);
// --room-damping: empty if it is not given.
void add_room_damping_option(CLI::App& command, std::string& room_damping);

}  // namespace tavdhost
