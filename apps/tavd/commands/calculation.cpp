#include "commands/calculation.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/errors.h"
#include "base/text.h"
#include "commands/usual_options.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

// Blanks behind an id do not count, and an id may be one with "*" in it.
bool is_pattern(const Database& database, const CalculationOptions& options, const std::string& id) {
  return id.find_first_of("*?") != std::string::npos && !database.find(options.class_id, id);
}

// Records that stand for several products.
constexpr int kModesOfSeveral[] = {TAVD_SIZING_PATTERN, TAVD_SIZING_LIST, TAVD_SIZING_MAIN_LAYER,
                                   TAVD_SIZING_SUB_LAYER};

bool is_one_product(const Database& database, const Record& record) {
  const int mode = hosts::sizing_mode(database.handle(), record);
  return mode >= 0 && std::ranges::find(kModesOfSeveral, mode) == std::end(kModesOfSeveral);
}

std::vector<std::string> ids_like(const Database& database, const CalculationOptions& options,
                                  const std::string& pattern) {
  std::vector<std::string> ids;
  Record record = hosts::first_of_class(database.handle(), options.class_id);
  for (; record; record = database.next(record)) {
    const RecordKey key = database.key(record);
    if (key.class_id != hosts::padded_class(options.class_id)) break;
    if (fits_wildcards(key.object_id, trim_end(pattern)) && is_one_product(database, record)) {
      ids.push_back(key.object_id);
    }
  }
  if (!ids.empty()) return ids;
  const std::vector<std::string> classes = database.classes();
  if (std::ranges::find(classes, hosts::padded_class(options.class_id)) == classes.end()) {
    throw database.unknown_class(options.class_id);
  }
  throw UserError("no product of class " + in_quotes(options.class_id) + " in " + database.path() +
                  " is like " + in_quotes(pattern) + "; tavd list shows what there is");
}

std::vector<std::string> sizes_of(const Database& database, const CalculationOptions& options,
                                  const std::string& id) {
  const RecordKey key = database.key(database.product(options.class_id, id));
  const hosts::FamilyMembers list(database.handle(), key);
  std::vector<std::string> ids;
  for (std::int32_t i = 0; i < list.count(); ++i) {
    const FamilyMemberW member = list.member(i);
    ids.push_back(hosts::trimmed_id({member.objId, sizeof member.objId}));
  }
  if (ids.empty()) {
    throw UserError(printable(options.class_id) + " " + printable(id) + " in " + database.path() +
                    " has no sizes; tavd family tells more");
  }
  return ids;
}

std::vector<std::string> ids_of(const Database& database, const CalculationOptions& options,
                                const std::string& id, bool pattern) {
  if (pattern) return ids_like(database, options, id);
  return options.family ? sizes_of(database, options, id) : std::vector{id};
}

Chosen prepared(ProductChooser& chooser, const CalculationOptions& options, const std::string& id) {
  Chosen chosen = chooser.choose(options.class_id, id);
  try {
    set_parameters(chosen.product.flow, options.parameters);
  } catch (const UserError& error) {
    throw UserError(printable(options.class_id) + " " + printable(id) + ": " + error.what());
  }
  settle_end_reflection(chosen, options.end_reflection);
  return chosen;
}

}  // namespace

void add_calculation_arguments(CLI::App& command, CalculationOptions& options) {
  command.add_option("DB", options.path, "Product database")->required();
  command.add_option("CLASS", options.class_id, "Class of the products, 3 characters")->required();
  command
      .add_option("ID", options.object_ids,
                  "Object id of the product; several ids, or patterns such as 'QZDA-1*', give an answer each")
      ->required();
}

void add_calculation_options(CLI::App& command, CalculationOptions& options) {
  command.add_flag("--family", options.family, "The sizes of a main record in place of it, an answer each");
  add_parameter_option(command, options.parameters);
  add_end_reflection_option(command, options.end_reflection);
  add_room_damping_option(command, options.room_damping);
  command
      .add_option("--units", options.units,
                  "Units of the answers, such as m3/h,Pa: of flow " + unit_names(hosts::Quantity::kFlow) +
                      ", of velocity " + unit_names(hosts::Quantity::kVelocity) + ", of pressure " +
                      unit_names(hosts::Quantity::kPressure))
      ->type_name("UNIT,...");
  add_text_options(command, options.texts);
}

AnswerForm answer_form(const CalculationOptions& options) {
  AnswerForm form{{}, parse_room_damping("--room-damping", options.room_damping)};
  if (!options.units.empty()) form.units = parse_units("--units", options.units);
  return form;
}

Selection chosen_products(const CalculationOptions& options) {
  const Database database(options.path, Database::Open::kExisting, options.texts);
  ProductChooser chooser(database);
  Selection selection{{}, options.family || options.object_ids.size() > 1};
  for (const std::string& id : options.object_ids) {
    const bool pattern = is_pattern(database, options, id);
    selection.several = selection.several || pattern;
    for (const std::string& one : ids_of(database, options, id, pattern)) {
      selection.products.push_back(prepared(chooser, options, one));
      if (one == id) refuse_without_flow_data(selection.products.back(), database);
    }
  }
  return selection;
}

void add_point_options(CLI::App& command, PointOptions& options, const char* csv, const char* json) {
  add_calculation_arguments(command, options);
  add_flow_option(command, options.qv)->required();
  add_pressure_option(command, options.dp);
  CLI::Option* csv_option = command.add_flag("--csv", options.csv, csv);
  command.add_flag("--json", options.json, json)->excludes(csv_option);
  add_calculation_options(command, options);
}

CalculatedProducts calculate(const PointOptions& options, const AnswerForm& form) {
  const Amount qv = parse_flow("--qv", options.qv);
  std::optional<float> dp;
  if (options.dp) dp = parse_pressure("--dp", *options.dp);
  Selection selection = chosen_products(options);
  CalculatedProducts answers{{}, selection.several};
  answers.products.reserve(selection.products.size());
  for (Chosen& chosen : selection.products) {
    answers.products.push_back(calculate(std::move(chosen), qv, dp, form));
  }
  return answers;
}

}  // namespace tavdhost
