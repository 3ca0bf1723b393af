// tavd sweep: calculations of a product over a grid of operating points.
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "base/errors.h"
#include "base/platform.h"
#include "base/progress.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "commands/sweep_range.h"
#include "commands/sweep_rows.h"
#include "product/operating_point.h"

namespace tavdhost {
namespace {

constexpr std::size_t kBlock = 1 << 16;  // bytes that are written at once

struct SweepOptions {
  ProductChoice product;
  std::string qv;
  std::optional<std::string> dp;
  bool csv = false;
  bool json = false;
};

struct Grid {
  SweepRange qv;
  std::optional<SweepRange> dp;
  std::uint64_t count() const { return qv.count() * (dp ? dp->count() : 1); }
};

Grid parse_grid(const SweepOptions& options) {
  Grid grid{SweepRange::parse("--qv", options.qv), std::nullopt};
  if (options.dp) grid.dp = SweepRange::parse("--dp", *options.dp);
  if (grid.count() > SweepRange::kMostPoints) {
    throw UserError("--qv and --dp make " + std::to_string(grid.count()) + " points, expected at most " +
                    std::to_string(SweepRange::kMostPoints));
  }
  return grid;
}

// Passes the text on and empties it. False if it cannot be written: then the rest is not worth calculating,
// and the program reports it at its end.
bool flush(std::string& text) {
  std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
  text.clear();
  return std::cout.good();
}

// All pressures at the first flow, then all at the next.
void write_points(const Product& product, const Answers& answers, const Grid& grid, SweepRows& rows) {
  // Rows that run over the terminal are progress enough.
  std::optional<Progress> progress;
  if (!is_terminal(Stream::kOutput)) progress.emplace("Calculating", grid.count());
  const std::uint64_t pressures = grid.dp ? grid.dp->count() : 1;
  std::string text;
  text.reserve(2 * kBlock);
  rows.begin(text);
  for (std::uint64_t i = 0; i < grid.qv.count(); ++i) {
    const float qv = grid.qv.at(i);
    for (std::uint64_t j = 0; j < pressures; ++j) {
      const std::optional<float> dp = grid.dp ? std::optional(grid.dp->at(j)) : std::nullopt;
      rows.add(text, calculate(product, answers, qv, dp));
      if (text.size() >= kBlock && !flush(text)) return;
      if (progress) progress->step();
    }
  }
  rows.end(text);
  flush(text);
}

void run_sweep(const SweepOptions& options) {
  const Grid grid = parse_grid(options);
  if (!options.csv && !options.json) throw UserError("--csv or --json is required");
  const Product product = chosen_product(options.product);
  const bool with_dp = grid.dp.has_value();
  const Answers answers = answers_of(product, with_dp);
  write_points(product, answers, grid,
               *(options.json ? json_rows(product) : csv_rows(product, answers, with_dp)));
}

}  // namespace

void add_sweep_command(CLI::App& app) {
  auto options = std::make_shared<SweepOptions>();
  CLI::App* command =
      app.add_subcommand("sweep", "Calculates a product at every point of a grid of flows and pressures");
  add_product_arguments(*command, options->product);
  command
      ->add_option("--qv", options->qv,
                   "Flows in l/s, both ends included; air velocities in m/s for products by air velocity")
      ->required()
      ->type_name("FROM:TO:STEP");
  command->add_option("--dp", options->dp, "Total pressures over the product in Pa, both ends included")
      ->type_name("FROM:TO:STEP");
  CLI::Option* csv =
      command->add_flag("--csv", options->csv, "Comma-separated, the columns named in the first line");
  command->add_flag("--json", options->json, "As a JSON array with an object per point")->excludes(csv);
  add_product_options(*command, options->product);
  command->footer(
      "One number in place of FROM:TO:STEP is allowed. Writes to standard output.\n"
      "Example: tavd sweep catalogue.tavdb DMP QZDA-160 --qv 20:80:5 --dp 20:100:10 --csv");
  command->callback([options] { run_sweep(*options); });
}

}  // namespace tavdhost
