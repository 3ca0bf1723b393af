// tavd select: which products fit what is needed.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/numbers.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "commands/usual_options.h"
#include "select/batch.h"
#include "select/catalogue.h"
#include "select/hits.h"
#include "select/request.h"
#include "select/schedule.h"

namespace tavdhost {
namespace {

constexpr int kMostSelectThreads = 256;
constexpr const char* kSelectHelp = "Finds the products that fit what is needed, the best first";

// An option that a request is made of.
struct SelectOption {
  const char* name;
  Take take;
  const char* type;
  std::string help;
};

std::vector<SelectOption> select_options() {
  return {
      {"--qv", take_flow, "NUMBER", "Flow in l/s, or with its unit: 288m3/h"},
      {"--dp", take_pressure, "[LOW:]NUMBER",
       "Total pressure that is available in Pa, or with its unit. In front of it, the least that products "
       "without a setting must take: 40:70"},
      {"--max-lp", take_level, "NUMBER", "Highest level in the room, dB(A)"},
      {"--max-lw", take_bands, "L,L,L,L,L,L,L,L",
       "Highest sound power level of each octave band from 63 Hz, dB, \"-\" for any"},
      {"--throw", take_throw, "FROM:TO", "Throw length, m: 2:4, 2: or :4"},
      {"--size", take_size, "SIZE[:SIZE]", "Duct size in mm: 160, 125:200, 400x200, 300x100:500x300"},
      {"--allow-unknown", take_unknown, "ANSWER,...",
       "Answers that a product may have no data for: " + answer_names()},
      {"--room-damping", take_damping, "NUMBER",
       "Level difference between sound power and level in the room, dB (4)"},
      {"--rank", take_rank, "RANKING", "What the best is: " + rank_names() + " (sound)"},
      {"--top", take_hits, "N", "How many products (" + std::to_string(kUsualHits) + ")"},
  };
}

struct SelectCommand {
  std::string path;
  std::vector<std::string> texts;  // of the options, in their order; empty: not given
  std::vector<std::string> classes, parameters;
  CatalogueChoice catalogue;
  std::string units;
  std::string schedule, target, threads;
  bool skip_bad = false;
  bool explain = false;
  bool csv = false;
  bool json = false;
};

Request request_of(const SelectCommand& command) {
  Request request;
  const std::vector<SelectOption> options = select_options();
  for (std::size_t i = 0; i < options.size(); ++i) {
    if (!command.texts[i].empty()) options[i].take(options[i].name, command.texts[i], request);
  }
  for (const std::string& text : command.classes) take_classes("--class", text, request);
  for (const std::string& text : command.parameters) take_parameter("--param", text, request);
  return request;
}

void select_for_one(const SelectCommand& command, const ShownUnits& units) {
  std::vector<Request> requests = {request_of(command)};
  const Request& request = requests.front();
  if (!request.has_flow) throw UserError("--qv is required");
  if (!request.has_pressure) throw UserError("--dp is required");
  SelectCatalogue catalogue(command.path, command.catalogue, request.classes);
  catalogue.complete(requests);
  catalogue.check_classes(request);
  const Selected selected = select_one(catalogue.get(), request.duty, true);
  if (command.json) {
    write_json(std::cout, hits_json(catalogue, request, selected, command.explain, units));
  } else if (command.csv) {
    const HitLines lines(units);
    std::string text;
    lines.heading({}, text);
    const std::string why_not = selected.hits.empty() ? nearest_reason(selected.reasons) : "";
    lines.add({}, catalogue.get(), request.duty, selected, why_not, text);
    std::cout << text;
  } else {
    print_hits(std::cout, catalogue, request, selected, command.explain, units);
  }
}

void select_for_many(const SelectCommand& command, const ShownUnits& units) {
  if (command.json) throw UserError("--json is for one duty; with --duties the answer is comma-separated");
  const int threads =
      command.threads.empty() ? 0 : whole_number("--threads", command.threads, 1, kMostSelectThreads);
  SelectCatalogue catalogue(command.path, command.catalogue, {});
  const std::string target = command.target.empty() ? "-" : command.target;
  select_for_schedule(catalogue, request_of(command),
                      {command.schedule, target, units, command.skip_bad, command.explain, threads});
}

void run_select(const SelectCommand& command) {
  ShownUnits units;
  if (!command.units.empty()) units = parse_units("--units", command.units);
  if (!command.schedule.empty()) {
    select_for_many(command, units);
  } else if (!command.target.empty() || command.skip_bad || !command.threads.empty()) {
    throw UserError("-o, --skip-bad and --threads are for --duties");
  } else {
    select_for_one(command, units);
  }
}

}  // namespace

void add_select_command(CLI::App& app) {
  auto options = std::make_shared<SelectCommand>();
  CLI::App* command = app.add_subcommand("select", kSelectHelp);
  command->add_option("DB", options->path, "Product database")->required();
  const std::vector<SelectOption> all = select_options();
  options->texts.resize(all.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    command->add_option(all[i].name, options->texts[i], all[i].help)->type_name(all[i].type);
  }
  command->add_option("--class", options->classes, "Only this class, 3 characters; once for each class")
      ->type_name("CLASS")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  add_parameter_option(*command, options->parameters, "; \"*\" tries every value of its table");
  command->add_flag("--end-reflection", options->catalogue.without_end_reflection,
                    "Take the end reflection of the duct off the sound tables, as the diagram does");
  command->add_flag("--explain", options->explain, "Tell why each of the other products does not fit");
  CLI::Option* csv = command->add_flag("--csv", options->csv, "Comma-separated, numbers in full");
  command->add_flag("--json", options->json, "As JSON, numbers in full")->excludes(csv);
  command
      ->add_option(
          "--duties", options->schedule,
          "A schedule as CSV, a line for each duty, in place of one duty; the options are what a line "
          "asks for that does not say otherwise. Columns: " +
              schedule_columns())
      ->type_name("FILE.csv");
  command
      ->add_option("-o,--output", options->target,
                   "Where a selection by --duties is written (standard output if left out, or \"-\")")
      ->type_name("FILE.csv");
  command->add_flag("--skip-bad", options->skip_bad,
                    "Leave lines of a schedule out that are not as expected, in place of writing nothing");
  command
      ->add_option("--threads", options->threads, "How many threads select (as many as there are processors)")
      ->type_name("N");
  command
      ->add_option("--units", options->units,
                   "Units of the answers, such as m3/h,Pa: of flow " + unit_names(hosts::Quantity::kFlow) +
                       ", of velocity " + unit_names(hosts::Quantity::kVelocity) + ", of pressure " +
                       unit_names(hosts::Quantity::kPressure))
      ->type_name("UNIT,...");
  add_text_options(*command, options->catalogue.texts);
  command->footer(
      "A product fits whose flow limits have the flow, that takes the available pressure, is quiet enough "
      "and\n"
      "throws as far as wanted; docs/selection.md tells each condition.\n"
      "Example: tavd select catalogue.tavdb --qv 80 --dp 70 --max-lp 30\n"
      "A schedule: tavd select catalogue.tavdb --duties rooms.csv -o selection.csv");
  command->callback([options] { run_select(*options); });
}

}  // namespace tavdhost
