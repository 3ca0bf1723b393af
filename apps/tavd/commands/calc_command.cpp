// tavd calc: what products do at an operating point.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "answers/calculated_json.h"
#include "answers/calculated_text.h"
#include "answers/sweep_rows.h"
#include "base/json_text.h"
#include "commands/calculation.h"
#include "commands/commands.h"

namespace tavdhost {
namespace {

void print_text(const CalculatedProducts& answers, const AnswerForm& form) {
  bool first = true;
  for (const Calculated& calculated : answers.products) {
    if (!first) std::cout << '\n';
    first = false;
    print_calculated(std::cout, calculated, form);
  }
}

void print_csv(const CalculatedProducts& answers, const AnswerForm& form, bool with_dp) {
  std::vector<const Product*> products;
  products.reserve(answers.products.size());
  for (const Calculated& calculated : answers.products) products.push_back(&calculated.chosen.product);
  const auto rows = csv_rows(columns_of(products, with_dp, true), form);
  std::string text;
  rows->begin(text);
  for (const Calculated& calculated : answers.products) rows->add(text, calculated.chosen, calculated.point);
  rows->end(text);
  std::cout << text;
}

void print_json(const CalculatedProducts& answers, const AnswerForm& form) {
  if (!answers.several) {
    write_json(std::cout, calculated_json(answers.products.front(), form));
    return;
  }
  Json::Value list(Json::arrayValue);
  for (const Calculated& calculated : answers.products) list.append(calculated_json(calculated, form));
  write_json(std::cout, list);
}

void run_calc(const PointOptions& options) {
  const AnswerForm form = answer_form(options);
  const CalculatedProducts answers = calculate(options, form);
  if (options.json) {
    print_json(answers, form);
  } else if (options.csv) {
    print_csv(answers, form, options.dp.has_value());
  } else {
    print_text(answers, form);
  }
}

}  // namespace

void add_calc_command(CLI::App& app) {
  auto options = std::make_shared<PointOptions>();
  CLI::App* command = app.add_subcommand("calc", "Calculates products at an operating point");
  add_point_options(*command, *options, "Comma-separated, a line per product", "As JSON, numbers in full");
  command->footer(
      "Example: tavd calc catalogue.tavdb DMP QZDA-160 --qv 50 --dp 60\n"
      "Every size: tavd calc catalogue.tavdb DMP 'QZDA-*' --family --qv 180m3/h --dp 60 --csv");
  command->callback([options] { run_calc(*options); });
}

}  // namespace tavdhost
