#include "commands/usual_options.h"

namespace tavdhost {

CLI::Option* add_flow_option(CLI::App& command, std::string& qv) {
  return command
      .add_option("--qv", qv,
                  "Flow in l/s, air velocity in m/s for products by air velocity; or with its unit: 288m3/h")
      ->type_name("NUMBER");
}

void add_pressure_option(CLI::App& command, std::optional<std::string>& dp) {
  command.add_option("--dp", dp, "Total pressure over the product in Pa, or with its unit: 0.2in.wg")
      ->type_name("NUMBER");
}

void add_parameter_option(CLI::App& command, std::vector<std::string>& parameters, const std::string& more) {
  command.add_option("--param", parameters, "Value of a parameter, once for each parameter" + more)
      ->type_name("NAME=VALUE")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void add_end_reflection_option(CLI::App& command, bool& take_off) {
  command.add_flag("--end-reflection", take_off,
                   "Take the end reflection of the duct off the sound table, as the diagram does");
}

void add_room_damping_option(CLI::App& command, std::string& room_damping) {
  command
      .add_option("--room-damping", room_damping,
                  "Level difference between sound power and level in the room, dB (4)")
      ->type_name("NUMBER");
}

}  // namespace tavdhost
