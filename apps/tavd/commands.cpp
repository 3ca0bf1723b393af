#include "commands.h"

namespace tavdhost {
namespace {

constexpr const char* kVersion = "tavd 1.90.0";

}  // namespace

void add_commands(CLI::App& app) {
  app.require_subcommand(1);
  app.set_version_flag("--version", kVersion);
  add_list_command(app);
  add_calc_command(app);
  add_diagram_command(app);
}

void add_text_options(CLI::App& command, TextChoice& texts) {
  command
      .add_option("--market", texts.market, "Market area whose product codes are shown, such as FIN or SWE")
      ->type_name("CODE");
  command
      .add_option(
          "--language", texts.language,
          "Language of the descriptions: en, GBR, English or 1512 (the market's own language, or English)")
      ->type_name("LANGUAGE");
}

}  // namespace tavdhost
