// The product that a command is about, as its arguments and options name it.
#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

#include "product/database.h"
#include "product/product.h"

namespace tavdhost {

// Adds --market and --language, which fill `texts`.
void add_text_options(CLI::App& command, TextChoice& texts);

// The product that a command calculates, as its arguments name it.
struct ProductChoice {
  std::string path, class_id, object_id;
  std::vector<std::string> parameters;  // NAME=VALUE
  bool end_reflection = false;          // is taken off the sound table
  TextChoice texts;
};

// Adds DB, CLASS and ID; and --param, --end-reflection and the options of texts.
void add_product_arguments(CLI::App& command, ProductChoice& choice);
void add_product_options(CLI::App& command, ProductChoice& choice);

// The product with its chosen parameters. Throws UserError if there is none of that name, if it has no flow
// data, or if a parameter is not known.
Product chosen_product(const ProductChoice& choice);

}  // namespace tavdhost
