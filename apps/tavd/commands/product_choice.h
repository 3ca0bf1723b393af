// The product that a command is about, as its arguments and options name it.
#pragma once

#include <CLI/App.hpp>

#include <string>

#include "product/database.h"

namespace tavdhost {

// Adds --market and --language, which fill `texts`.
void add_text_options(CLI::App& command, TextChoice& texts);

// The product that a command is about.
struct ProductChoice {
  std::string path, class_id, object_id;
  TextChoice texts;
};

// Adds DB, CLASS and ID.
void add_product_arguments(CLI::App& command, ProductChoice& choice);

}  // namespace tavdhost
