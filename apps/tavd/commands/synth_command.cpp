// tavd db synth: a database of made-up products, of any size.
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

#include "base/numbers.h"
#include "base/progress.h"
#include "catalogue/database.h"
#include "product/text_codec.h"
#include "synth/groups.h"

namespace tavdhost {
namespace {

constexpr const char* kHelp =
    "Makes a database of made-up products: families, product sets, single products and models, with texts in "
    "several charsets. The same number of records and seed give the same file, byte for byte.";
constexpr int kMostRecords = 10'000'000;  // the serial numbers of the groups have 7 digits

struct Options {
  std::string target;
  std::string records;
  std::string seed = "1";
};

void store_synthetic(const Database& database, std::size_t records, std::uint64_t seed) {
  Progress progress("Making records", records);
  synthesize(TextCodec(database.handle()), records, seed, [&](const Entry& entry) {
    store(database, entry);
    progress.step();
  });
}

void run(const Options& options) {
  const int records = whole_number("--records", options.records, 1, kMostRecords);
  const int seed = whole_number("--seed", options.seed, 0, INT32_MAX);
  make_database(options.target, [&](const Database& database) {
    Transaction transaction(database);
    store_synthetic(database, static_cast<std::size_t>(records), static_cast<std::uint64_t>(seed));
    transaction.commit();
  });
  std::cout << shown_name(options.target) << ": " << records << (records == 1 ? " record" : " records")
            << '\n';
}

}  // namespace

void add_synth_command(CLI::App& db) {
  CLI::App* command = db.add_subcommand("synth", kHelp);
  const auto options = std::make_shared<Options>();
  command->add_option("FILE", options->target, "The database to make or to replace")->required();
  command->add_option("--records", options->records, "How many records, the file header and models included")
      ->required()
      ->type_name("N");
  command->add_option("--seed", options->seed, "Another seed makes other products (1 if left out)")
      ->type_name("S");
  command->callback([options] { run(*options); });
}

}  // namespace tavdhost
