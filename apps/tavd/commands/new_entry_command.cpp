// tavd db new-entry: a source to begin with.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "base/whole_file.h"
#include "catalogue/kind_words.h"
#include "commands/commands.h"

namespace tavdhost {
namespace {

constexpr const char* kNewEntryHelp =
    "Writes a source with one complete product of a kind, with comments that tell what each member is: to be "
    "filled with other numbers and built with `tavd db build`, which takes it as it is as well.";

struct NewEntryOptions {
  std::string kind;
  std::string target;
};

void run_new_entry(const NewEntryOptions& options) {
  const KindWord& kind = kind_named(options.kind);
  const auto& all = entry_templates();
  const auto found = std::ranges::find(all, std::string_view(kind.word), &EntryTemplate::word);
  if (found == all.end()) throw std::logic_error(std::string("no entry for ") + kind.word);
  if (options.target.empty() || is_standard_output(options.target)) {
    std::cout << found->text;
  } else {
    write_output(options.target, found->text);
  }
}

}  // namespace

void add_new_entry_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("new-entry", kNewEntryHelp);
  const auto options = std::make_shared<NewEntryOptions>();
  command->add_option("--kind", options->kind, kind_help())->required()->type_name("KIND");
  command
      ->add_option("-o,--output", options->target,
                   "The file to make or to replace (standard output if left out, or \"-\")")
      ->type_name("FILE.json");
  command->callback([options] { run_new_entry(*options); });
}

}  // namespace tavdhost
