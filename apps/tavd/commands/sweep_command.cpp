// tavd sweep: calculations of products over a grid of operating points.
#include <algorithm>
#include <cstdint>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "answers/sweep_range.h"
#include "answers/sweep_rows.h"
#include "base/errors.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/text.h"
#include "commands/calculation.h"
#include "commands/commands.h"
#include "product/point_calculator.h"

namespace tavdhost {
namespace {

constexpr std::size_t kBlock = 1 << 16;  // bytes that are written at once
constexpr std::uint64_t kPoints = 1024;  // that are calculated at once

struct SweepOptions {
  CalculationOptions calculation;
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
  Grid grid{SweepRange::flows("--qv", options.qv), std::nullopt};
  if (options.dp) grid.dp = SweepRange::pressures("--dp", *options.dp);
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

// One product after the other; of each all pressures at the first flow, then all at the next. Points are
// taken from the grid block by block: there may be more of them than memory holds.
class Sweep {
 public:
  Sweep(const Grid& grid, const AnswerForm& form, SweepRows& rows, Progress* progress)
      : grid_(grid), form_(form), rows_(rows), progress_(progress) {
    text_.reserve(2 * kBlock);
  }

  void write(const std::vector<Chosen>& products) {
    rows_.begin(text_);
    for (const Chosen& chosen : products) {
      if (!add(chosen)) return;
    }
    rows_.end(text_);
    flush(text_);
  }

 private:
  bool add(const Chosen& chosen);
  void take_points(const Product& product, std::uint64_t first);

  const Grid& grid_;
  const AnswerForm& form_;
  SweepRows& rows_;
  Progress* progress_;
  std::string text_;
  std::vector<float> qv_, dp_;  // of the block; no pressures if the grid has none
};

bool Sweep::add(const Chosen& chosen) {
  const Answers answers = answers_of(chosen.product, grid_.dp.has_value());
  PointCalculator calculator(chosen.product, answers, form_.room_damping);
  for (std::uint64_t first = 0; first < grid_.count(); first += kPoints) {
    take_points(chosen.product, first);
    calculator.calculate(qv_, dp_);
    for (std::size_t i = 0; i < qv_.size(); ++i) {
      rows_.add(text_, chosen, calculator.point(i));
      if (text_.size() >= kBlock && !flush(text_)) return false;
    }
    if (progress_ != nullptr) progress_->step(qv_.size());
  }
  return true;
}

void Sweep::take_points(const Product& product, std::uint64_t first) {
  const std::uint64_t end = std::min(first + kPoints, grid_.count());
  const std::uint64_t pressures = grid_.dp ? grid_.dp->count() : 1;
  qv_.clear();
  dp_.clear();
  for (std::uint64_t point = first; point < end; ++point) {
    const bool next_flow = point == first || point % pressures == 0;
    qv_.push_back(next_flow ? flow_of(product, grid_.qv.flow_at(point / pressures)) : qv_.back());
    if (grid_.dp) dp_.push_back(grid_.dp->pressure_at(point % pressures));
  }
}

// What can be swept; of what cannot, standard error tells.
std::vector<Chosen> with_flow_data(std::vector<Chosen> products) {
  std::erase_if(products, [](const Chosen& chosen) {
    if (chosen.product.flow.nhdd != 0) return false;
    const RecordKey& key = chosen.product.key;
    std::cerr << "tavd: " << printable(key.class_id) << ' ' << printable(key.object_id)
              << " has no flow data to calculate with and is left out\n";
    return true;
  });
  return products;
}

// Rows have the flows in the product's own measure; what they went through standard error tells.
void tell_conversions(const std::vector<Chosen>& products, const Amount& qv) {
  for (const Chosen& chosen : products) {
    const Product& product = chosen.product;
    if (!goes_through_size(product, qv)) continue;
    std::cerr << "tavd: " << printable(product.key.class_id) << ' ' << printable(product.key.object_id)
              << ": " << qv.unit->name << " to " << flow_unit(product.flow) << through_text(product) << '\n';
  }
}

std::unique_ptr<SweepRows> rows_of(const SweepOptions& options, const std::vector<Chosen>& products,
                                   bool several, const AnswerForm& form) {
  if (options.json) return json_rows(several, form);
  std::vector<const Product*> all;
  all.reserve(products.size());
  for (const Chosen& chosen : products) all.push_back(&chosen.product);
  return csv_rows(columns_of(all, options.dp.has_value(), several), form);
}

void run_sweep(const SweepOptions& options) {
  const Grid grid = parse_grid(options);
  const AnswerForm form = answer_form(options.calculation);
  if (!options.csv && !options.json) throw UserError("--csv or --json is required");
  Selection selection = chosen_products(options.calculation);
  const std::vector<Chosen> products = with_flow_data(std::move(selection.products));
  tell_conversions(products, grid.qv.flow_at(0));
  const auto rows = rows_of(options, products, selection.several, form);
  // Rows that run over the terminal are progress enough.
  std::optional<Progress> progress;
  if (!is_terminal(Stream::kOutput)) progress.emplace("Calculating", grid.count() * products.size());
  Sweep(grid, form, *rows, progress ? &*progress : nullptr).write(products);
}

}  // namespace

void add_sweep_command(CLI::App& app) {
  auto options = std::make_shared<SweepOptions>();
  CLI::App* command =
      app.add_subcommand("sweep", "Calculates products at every point of a grid of flows and pressures");
  add_calculation_arguments(*command, options->calculation);
  command
      ->add_option("--qv", options->qv,
                   "Flows in l/s, air velocities in m/s for products by air velocity, both ends included; a "
                   "unit stands behind the last number: 72:720:18m3/h")
      ->required()
      ->type_name("FROM:TO:STEP");
  command
      ->add_option("--dp", options->dp,
                   "Total pressures over the product in Pa, or with their unit, both ends included")
      ->type_name("FROM:TO:STEP");
  CLI::Option* csv =
      command->add_flag("--csv", options->csv, "Comma-separated, the columns named in the first line");
  command->add_flag("--json", options->json, "As a JSON array with an object per point")->excludes(csv);
  add_calculation_options(*command, options->calculation);
  command->footer(
      "One number in place of FROM:TO:STEP is allowed. Writes to standard output.\n"
      "Example: tavd sweep catalogue.tavdb DMP QZDA-160 --qv 20:80:5 --dp 20:100:10 --csv");
  command->callback([options] { run_sweep(*options); });
}

}  // namespace tavdhost
