#include "commands/commands.h"

#include "version.h"

namespace tavdhost {
namespace {

constexpr const char* kVersion = "tavd " TAVD_VERSION_TEXT;

}  // namespace

void add_commands(CLI::App& app) {
  app.require_subcommand(1);
  app.set_version_flag("--version", kVersion);
  add_list_command(app);
  add_calc_command(app);
  add_sweep_command(app);
  add_compare_command(app);
  add_select_command(app);
  add_diagram_command(app);
  add_picture_command(app);
  add_gallery_command(app);
  add_report_command(app);
  add_throw_command(app);
  add_show_command(app);
  add_family_command(app);
  add_code_command(app);
  add_find_attribute_command(app);
  add_copy_command(app);
  add_delete_command(app);
  add_db_commands(app);
  add_completion_command(app);
}

}  // namespace tavdhost
