// tavd db build: sources compiled into a database, which is checked before it takes its name.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/build.h"
#include "check/check.h"
#include "commands/commands.h"

namespace tavdhost {
namespace {

constexpr const char* kBuildHelp =
    "Compiles a product catalogue, written as text, into a database. Everything is checked first: if "
    "anything is wrong, all of it is told with file, line and field, and the database stays as it is. Then "
    "the database is looked through as `tavd db check` does it; what is found is told in the same way, as "
    "warnings.";

struct BuildOptions {
  std::vector<std::string> sources;
  std::string target;
  bool strict = false;
};

// What the checks find, at its places in the sources, beside the remarks on these.
Faults warnings_of(const BuiltDatabase& built) {
  Faults warnings = built.remarks;
  std::size_t records = 0;
  for (const Finding& finding : check_database(built.database, records)) {
    const auto at = built.places.find(finding.record, finding.attribute, finding.row);
    if (at) {
      warnings.add(*at->source, at->place, text_of(finding));
    } else {
      warnings.add(text_of(finding));
    }
  }
  return warnings;
}

void run_build(const BuildOptions& options) {
  std::size_t records = 0;
  std::size_t findings = 0;
  std::string listing;
  const std::string shown = shown_name(options.target);
  build_database(options.sources, options.target, [&](const BuiltDatabase& built) {
    const Faults warnings = warnings_of(built);
    if (options.strict && !warnings.empty()) throw refused(warnings, "finding", shown);
    records = built.records;
    findings = warnings.count();
    listing = warnings.listing();
  });
  const std::string found =
      (findings == 0 ? "no" : std::to_string(findings)) + (findings == 1 ? " finding" : " findings");
  if (findings > 0) {
    std::cerr << "tavd: warning: " << found << " in the sources, " << shown << " is made all the same\n"
              << listing << '\n';
  }
  std::cout << shown << ": " << records << (records == 1 ? " record, " : " records, ") << found << '\n';
}

}  // namespace

void add_build_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("build", kBuildHelp);
  const auto options = std::make_shared<BuildOptions>();
  command->add_option("SOURCE", options->sources, "Source files, or folders: all *.json in a folder, by name")
      ->required();
  command->add_option("-o,--output", options->target, "The database to make or to replace")
      ->required()
      ->type_name("FILE");
  command->add_flag("--strict", options->strict,
                    "What the checks find are errors: then the database stays as it is");
  command->callback([options] { run_build(*options); });
}

}  // namespace tavdhost
