// The commands of the program. Each adds itself to the parser, with its options, and runs when it was named.
#pragma once

#include <CLI/App.hpp>

namespace tavdhost {

// All of them, and the version.
void add_commands(CLI::App& app);

void add_list_command(CLI::App& app);
void add_calc_command(CLI::App& app);
void add_sweep_command(CLI::App& app);
void add_compare_command(CLI::App& app);
void add_select_command(CLI::App& app);
void add_diagram_command(CLI::App& app);
void add_picture_command(CLI::App& app);
void add_gallery_command(CLI::App& app);
void add_report_command(CLI::App& app);
void add_throw_command(CLI::App& app);
void add_show_command(CLI::App& app);
void add_family_command(CLI::App& app);
void add_code_command(CLI::App& app);
void add_find_attribute_command(CLI::App& app);
void add_copy_command(CLI::App& app);
void add_delete_command(CLI::App& app);
void add_completion_command(CLI::App& app);
void add_db_commands(CLI::App& app);  // tavd db, with dump, check and the next ones
void add_build_command(CLI::App& db);
void add_new_entry_command(CLI::App& db);
void add_import_command(CLI::App& db);
void add_synth_command(CLI::App& db);

}  // namespace tavdhost
