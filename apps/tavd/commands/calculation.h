// What the commands that calculate have in common: which products, and how they are calculated and shown.
#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <vector>

#include "answers/calculated.h"
#include "commands/product_choice.h"

namespace tavdhost {

struct CalculationOptions {
  std::string path, class_id;
  std::vector<std::string> object_ids;  // or patterns
  bool family = false;                  // the sizes in place of their main record
  std::vector<std::string> parameters;  // NAME=VALUE
  bool end_reflection = false;          // is taken off the sound table
  std::string room_damping;             // dB; empty: the usual one
  std::string units;                    // empty: base units
  TextChoice texts;
};

// Adds DB, CLASS and ID, of which there may be several; and --family, --param, --end-reflection,
// --room-damping, --units and the options of texts.
void add_calculation_arguments(CLI::App& command, CalculationOptions& options);
void add_calculation_options(CLI::App& command, CalculationOptions& options);

// Throws UserError for an option that is not as it should be.
AnswerForm answer_form(const CalculationOptions& options);

struct Selection {
  std::vector<Chosen> products;
  bool several = false;  // asked for: by several ids, a pattern or --family, however many there are
};

// The products with their chosen parameters. Throws UserError if there is none of a name or pattern, if a
// product that was named has no flow data, or if a parameter is not known.
Selection chosen_products(const CalculationOptions& options);

// The options of commands that calculate at one point.
struct PointOptions : CalculationOptions {
  std::string qv;
  std::optional<std::string> dp;
  bool csv = false;
  bool json = false;
};

// Adds all of them; `csv` and `json` say what the answer is then.
void add_point_options(CLI::App& command, PointOptions& options, const char* csv, const char* json);

struct CalculatedProducts {
  std::vector<Calculated> products;
  bool several;  // as in Selection
};

CalculatedProducts calculate(const PointOptions& options, const AnswerForm& form);

}  // namespace tavdhost
