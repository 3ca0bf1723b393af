// tavd db import: measured tables as a source of the catalogue.
#include <utf8.h>

#include <CLI/CLI.hpp>
#include <deque>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "catalogue/kind_words.h"
#include "commands/commands.h"
#include "import/columns.h"
#include "import/entry.h"
#include "import/table.h"
#include "product/size.h"
#include "shared/records.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

constexpr const char* kImportHelp =
    "Makes a source for `tavd db build` of tables that a spreadsheet has saved as CSV. The first row is the "
    "heading, with the unit where a column needs one: qv [m3/h], dp [kPa], L2 [m]. Cells are parted by "
    "semicolons, tabs or commas; numbers have a decimal point or comma; texts are UTF-8. Several tables, "
    "such "
    "as settings and sound, are taken together. Rows are put in the order that the calculations need. What "
    "is "
    "wrong is told with file, line and column, and nothing is written.";

struct ImportOptions {
  std::vector<std::string> tables;
  std::string kind, class_id, id, description, size, flow_limits, pressure_limits, target;
  bool static_pressures = false;
};

// "20,200".
std::optional<LimitPair> parse_limits(const std::string& option, const std::string& text) {
  if (text.empty()) return std::nullopt;
  const std::size_t comma = text.find(',');
  const std::string low = text.substr(0, comma);
  const std::string high = comma == std::string::npos ? "" : text.substr(comma + 1);
  const LimitPair limits{low == "0" ? 0 : positive_number(option, low), positive_number(option, high)};
  if (limits.high > limits.low) return limits;
  throw UserError(option + " is " + in_quotes(text) + ", expected the lower limit first");
}

void refuse_table_as_target(const ImportOptions& options) {
  for (const std::string& table : options.tables) {
    std::error_code problem;
    if (std::filesystem::equivalent(to_path(table), to_path(options.target), problem)) {
      throw UserError(options.target + " is one of the tables, expected another name for the source");
    }
  }
}

// An option that becomes a text of the source.
std::string utf8_option(const std::string& option, const std::string& text) {
  if (!utf8::is_valid(text)) throw UserError(option + " is no UTF-8");
  return text;
}

std::string class_option(const std::string& text) {
  if (text.size() == hosts::kClassChars) return utf8_option("--class", text);
  throw UserError("--class is " + in_quotes(text) + ", expected exactly 3 characters");
}

std::string imported(const ImportOptions& options, std::size_t& products) {
  const std::int16_t kind = kind_named(options.kind).kind;
  const ImportSettings settings{kind, options.static_pressures, class_option(options.class_id),
                                parse_limits("--flow-limits", options.flow_limits),
                                parse_limits("--pressure-limits", options.pressure_limits)};
  const DuctSize size = options.size.empty() ? DuctSize{} : parse_size("--size", options.size);
  const bool by_velocity = kind == TAVD_KIND_RESISTANCE_VELOCITY || kind == TAVD_KIND_DAMPER_VELOCITY;
  Faults faults;
  TableReader reader(
      by_velocity,
      {utf8_option("--id", options.id), utf8_option("--description", options.description), size, {}}, faults);
  std::deque<Source> sources;  // what points into them stays good
  for (const std::string& table : options.tables) reader.read(sources.emplace_back(Source::read(table)));
  std::string text;
  if (faults.empty()) {
    text = source_text(reader.products(), settings, faults);
    if (reader.products().empty())
      faults.add(sources.front(), {1, 1}, "no rows below the heading, expected some");
  }
  if (!faults.empty()) {
    throw UserError(std::to_string(faults.count()) + (faults.count() == 1 ? " fault" : " faults") +
                    " in the tables, nothing is written\n" + faults.listing());
  }
  products = reader.products().size();
  return text;
}

void run_import(const ImportOptions& options) {
  const bool to_file = !options.target.empty() && !is_standard_output(options.target);
  if (to_file) refuse_table_as_target(options);
  std::size_t products = 0;
  const std::string text = imported(options, products);
  if (!to_file) {
    std::cout << text;
    return;
  }
  write_output(options.target, text);
  std::cout << options.target << ": " << products << (products == 1 ? " product" : " products")
            << "; tavd db build makes a database of it\n";
}

}  // namespace

void add_import_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("import", kImportHelp);
  const auto options = std::make_shared<ImportOptions>();
  command->add_option("TABLE", options->tables, "Tables as CSV. Columns: " + column_names())->required();
  command->add_option("--kind", options->kind, kind_help())->required()->type_name("KIND");
  command->add_option("--class", options->class_id, "Class of the products, 3 characters")
      ->required()
      ->type_name("CLASS");
  command->add_option("--id", options->id, "Id of the product, unless a column tells it")->type_name("ID");
  command
      ->add_option("--size", options->size, "Its connection in mm, 160 or 400x200, unless a column tells it")
      ->type_name("SIZE");
  command->add_option("--description", options->description, "Its description in English")->type_name("TEXT");
  command->add_flag("--static", options->static_pressures,
                    "The pressures are static ones, in place of total pressures");
  command
      ->add_option(
          "--flow-limits", options->flow_limits,
          "Lowest and highest flow, l/s, or m/s by velocity, such as 20,200; unasked those of the tables")
      ->type_name("LOW,HIGH");
  command
      ->add_option("--pressure-limits", options->pressure_limits,
                   "Lowest and highest pressure, Pa, such as 5,300; unasked those of the tables")
      ->type_name("LOW,HIGH");
  command
      ->add_option("-o,--output", options->target,
                   "The source to make or to replace (standard output if left out, or \"-\")")
      ->type_name("FILE.json");
  command->callback([options] { run_import(*options); });
}

}  // namespace tavdhost
