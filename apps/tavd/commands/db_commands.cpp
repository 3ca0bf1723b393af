// tavd db: dump and check, and the others beside them.
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/paths.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "catalogue/attributes.h"
#include "catalogue/database.h"
#include "check/check.h"

namespace tavdhost {
namespace {

constexpr const char* kDumpHelp =
    "Writes a database as the text that `tavd db build` makes the same records of again. What has no "
    "readable "
    "form is written in hex.";

constexpr const char* kCheckHelp =
    "Looks for what nothing refuses but what spoils answers: values of the wrong layout, tables out of order "
    "or in another unit than the limits, texts that do not fit, records that name others that are not there. "
    "Ends with exit code 3 if it finds anything.";

constexpr int kFoundSomething = 3;  // exit code

struct CheckOptions {
  std::string database;
  bool json = false;
};

struct DumpOptions {
  std::string database;
  std::string target;
};

void run_dump(const DumpOptions& options) {
  const Database database(options.database);
  if (options.target.empty() || is_standard_output(options.target)) {
    dump_database(database, std::cout);
    return;
  }
  std::error_code problem;
  if (std::filesystem::equivalent(to_path(options.database), to_path(options.target), problem)) {
    throw UserError(options.target + " is the database itself, expected another name for its text");
  }
  OutputFile file(options.target);
  const std::size_t records = dump_database(database, file.stream());
  file.finish();
  std::cout << options.target << ": " << records << (records == 1 ? " record" : " records") << '\n';
}

Json::Value finding_json(const Finding& finding) {
  Json::Value json;
  json["class"] = printable(finding.record.class_id);
  json["id"] = printable(finding.record.object_id);
  if (finding.attribute) {
    json["attribute"] = int{*finding.attribute};
    json["name"] = attribute_name(*finding.attribute);
  }
  if (finding.row != 0) json["row"] = Json::UInt64{finding.row};
  json["expected"] = finding.expected;
  json["found"] = finding.found;
  return json;
}

void run_check(const CheckOptions& options) {
  const Database database(options.database);
  std::size_t records = 0;
  const std::vector<Finding> findings = check_database(database, records);
  if (options.json) {
    Json::Value json;
    json["records"] = Json::UInt64{records};
    json["findings"] = Json::Value(Json::arrayValue);
    for (const Finding& finding : findings) json["findings"].append(finding_json(finding));
    write_json(std::cout, json);
  } else {
    for (const Finding& finding : findings) std::cout << text_of(finding) << '\n';
    std::cout << (findings.empty() ? "no" : std::to_string(findings.size()))
              << (findings.size() == 1 ? " finding in " : " findings in ") << records
              << (records == 1 ? " record" : " records") << '\n';
  }
  if (!findings.empty()) throw EndWith{kFoundSomething};
}

void add_check_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("check", kCheckHelp);
  const auto options = std::make_shared<CheckOptions>();
  command->add_option("DATABASE", options->database, "The database to check")->required();
  command->add_flag("--json", options->json, "As JSON");
  command->callback([options] { run_check(*options); });
}

void add_dump_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("dump", kDumpHelp);
  const auto options = std::make_shared<DumpOptions>();
  command->add_option("DATABASE", options->database, "The database to read")->required();
  command
      ->add_option("-o,--output", options->target,
                   "The file to write (standard output if left out, or \"-\")")
      ->type_name("FILE.json");
  command->callback([options] { run_dump(*options); });
}

}  // namespace

void add_db_commands(CLI::App& app) {
  CLI::App* db = app.add_subcommand(
      "db", "Makes product databases from text, and text from databases and tables, and checks them.");
  db->require_subcommand(1);
  add_build_command(*db);
  add_new_entry_command(*db);
  add_import_command(*db);
  add_dump_command(*db);
  add_synth_command(*db);
  add_check_command(*db);
}

}  // namespace tavdhost
