// tavd report: data sheets and schedules as documents.
#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "answers/calculated_json.h"
#include "base/errors.h"
#include "base/json_text.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "commands/usual_options.h"
#include "product/languages.h"
#include "select/request.h"
#include "sheet/report.h"

namespace tavdhost {
namespace {

constexpr const char* kReportHelp =
    "Makes a data sheet of a product at a duty, or a schedule with the sheets of its products, as a document";

struct ReportCommand {
  ProductChoice choice;
  std::string qv, room_damping, units;
  std::optional<std::string> dp;
  std::vector<std::string> parameters;
  bool without_end_reflection = false;
  std::string schedule;
  bool skip_bad = false;
  std::string data;
  ReportTarget target;
};

// Languages without a table of their own have the sheet's words in English, beside the product's own texts.
const SheetTexts& texts_of_choice(const TextChoice& texts) {
  const std::int16_t language =
      texts.language.empty() ? language_of_market(texts.market) : language_number(texts.language);
  const SheetTexts* const found = sheet_texts_of(language);
  if (found != nullptr) return *found;
  std::cerr << "tavd: the words of a sheet are not there in this language, they are in English; there are";
  for (const SheetTexts* one : all_sheet_texts()) std::cerr << ' ' << one->language;
  std::cerr << '\n';
  return kEnglishSheet;
}

SheetForm sheet_form(const ReportCommand& command) {
  SheetForm form;
  form.texts = &texts_of_choice(command.choice.texts);
  form.units = command.units.empty() ? units_of_market(command.choice.texts.market)
                                     : parse_units("--units", command.units);
  form.room_damping = parse_room_damping("--room-damping", command.room_damping);
  form.without_end_reflection = command.without_end_reflection;
  name_database(command.choice.path, form);
  return form;
}

void write_data(const SheetSubject& subject, const SheetForm& form, const std::string& path) {
  Json::Value json = calculated_json({subject.chosen, subject.point, {}}, {form.units, form.room_damping});
  json["database"]["name"] = form.database;
  json["database"]["time"] = form.database_time;
  json["curves"] = sheet_curves(subject, form);
  std::ostringstream text;
  write_json(text, json);
  write_output(path, text.str());
}

void report_product(const ReportCommand& command) {
  const ProductChoice& choice = command.choice;
  if (choice.class_id.empty() || choice.object_id.empty()) {
    throw UserError("a class and an id are required, or --duties with a schedule");
  }
  if (command.qv.empty()) throw UserError("--qv is required");
  if (command.skip_bad) throw UserError("--skip-bad is for --duties");
  check_report(command.target, false);
  SheetDuty duty{parse_flow("--qv", command.qv), {}};
  if (command.dp) duty.dp = parse_pressure("--dp", *command.dp);
  const SheetForm form = sheet_form(command);
  const Database database(choice.path, Database::Open::kExisting, choice.texts);
  ProductChooser chooser(database);
  const SheetSubject subject =
      sheet_subject(database, chooser, {choice.class_id, choice.object_id}, command.parameters, duty, form);
  write_sheet(subject, form, command.target);
  if (!command.data.empty()) write_data(subject, form, command.data);
}

void report_schedule(const ReportCommand& command) {
  const ProductChoice& choice = command.choice;
  if (!choice.class_id.empty() || !choice.object_id.empty() || !command.qv.empty() || command.dp) {
    throw UserError("CLASS, ID, --qv and --dp are for one product; a schedule has them in its lines");
  }
  if (!command.data.empty()) throw UserError("--data is for one product, not for --duties");
  check_report(command.target, true);
  Request usual;
  for (const std::string& text : command.parameters) take_parameter("--param", text, usual);
  const SheetForm form = sheet_form(command);
  usual.duty.roomdamp = form.room_damping;
  SelectCatalogue catalogue(choice.path, {choice.texts, command.without_end_reflection}, {});
  write_schedule(catalogue, usual, {command.schedule, command.skip_bad, false, 0, command.target.path}, form,
                 command.target);
}

void run_report(const ReportCommand& command) {
  if (command.schedule.empty()) {
    report_product(command);
  } else {
    report_schedule(command);
  }
}

void add_report_duty(CLI::App& command, ReportCommand& options) {
  add_flow_option(command, options.qv);
  add_pressure_option(command, options.dp);
  add_parameter_option(command, options.parameters);
  command
      .add_option(
          "--duties", options.schedule,
          "A schedule as CSV, as for tavd select: a page or more with all duties, and a sheet for each "
          "product that is chosen")
      ->type_name("FILE.csv");
  command.add_flag("--skip-bad", options.skip_bad,
                   "Leave lines of a schedule out that are not as expected, in place of writing nothing");
  add_end_reflection_option(command, options.without_end_reflection);
  add_room_damping_option(command, options.room_damping);
}

}  // namespace

void add_report_command(CLI::App& app) {
  auto options = std::make_shared<ReportCommand>();
  CLI::App* command = app.add_subcommand("report", kReportHelp);
  command->add_option("DB", options->choice.path, "Product database")->required();
  command->add_option("CLASS", options->choice.class_id, "Class of the product, 3 characters");
  command->add_option("ID", options->choice.object_id, "Object id of the product");
  command
      ->add_option("-o,--output", options->target.path,
                   "The document: .pdf, or for one sheet also .svg or .png; standard output for \"-\"")
      ->required()
      ->type_name("FILE");
  command
      ->add_option("--format", options->target.format,
                   "The form, in place of the ending of FILE: pdf, svg or png")
      ->type_name("ENDING");
  add_report_duty(*command, *options);
  command->add_option("--data", options->data, "All answers and curves of the sheet as numbers, beside it")
      ->type_name("FILE.json");
  command
      ->add_option("--units", options->units,
                   "Units of the sheet, such as m3/h,Pa (those of the market, or l/s, m/s and Pa)")
      ->type_name("UNIT,...");
  add_text_options(*command, options->choice.texts);
  command->footer(
      "Example: tavd report catalogue.tavdb DMP QZDA-160 --qv 50 --dp 60 --language de -o sheet.pdf\n"
      "A schedule: tavd report catalogue.tavdb --duties rooms.csv -o schedule.pdf");
  command->callback([options] { run_report(*options); });
}

}  // namespace tavdhost
