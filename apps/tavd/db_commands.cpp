#include "db_commands.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "catalogue_database.h"
#include "catalogue_files.h"
#include "db_synth.h"
#include "errors.h"

namespace tavdhost {

namespace {

constexpr const char* kBuildHelp =
    "Compiles a product catalogue, written as text, into a database. Everything is checked first: if "
    "anything "
    "is wrong, all of it is told with file, line and field, and the database stays as it is.";
constexpr const char* kDumpHelp =
    "Writes a database as the text that `tavd db build` makes the same records of again. What has no "
    "readable "
    "form is written in hex.";

struct BuildOptions {
  std::vector<std::string> sources;
  std::string target;
};

struct DumpOptions {
  std::string database;
  std::string target;
};

void run_build(const BuildOptions& options) {
  const std::size_t records = build_database(options.sources, options.target);
  std::cout << options.target << ": " << records << (records == 1 ? " record" : " records") << '\n';
}

void run_dump(const DumpOptions& options) {
  const Database database(options.database);
  if (options.target.empty()) {
    dump_database(database, std::cout);
    return;
  }
  std::error_code problem;
  if (std::filesystem::equivalent(options.database, options.target, problem)) {
    throw UserError(options.target + " is the database itself, expected another name for its text");
  }
  Draft draft(options.target);
  std::ofstream out(draft.path(), std::ios::binary);
  const std::size_t records = dump_database(database, out);
  out.close();
  if (!out) throw UserError(options.target + ": cannot be written");
  draft.finish();
  std::cout << options.target << ": " << records << (records == 1 ? " record" : " records") << '\n';
}

void add_build_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("build", kBuildHelp);
  const auto options = std::make_shared<BuildOptions>();
  command->add_option("SOURCE", options->sources, "Source files, or folders: all *.json in a folder, by name")
      ->required();
  command->add_option("-o,--output", options->target, "The database to make or to replace")
      ->required()
      ->type_name("FILE");
  command->callback([options] { run_build(*options); });
}

void add_dump_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("dump", kDumpHelp);
  const auto options = std::make_shared<DumpOptions>();
  command->add_option("DATABASE", options->database, "The database to read")->required();
  command->add_option("-o,--output", options->target, "The file to write (standard output if left out)")
      ->type_name("FILE.json");
  command->callback([options] { run_dump(*options); });
}

}  // namespace

void add_db_commands(CLI::App& app) {
  CLI::App* db = app.add_subcommand("db", "Makes product databases from text, and text from databases.");
  db->require_subcommand(1);
  add_build_command(*db);
  add_dump_command(*db);
  add_synth_command(*db);
}

}  // namespace tavdhost
