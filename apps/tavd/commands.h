// The commands of the program. Each adds itself to the parser, with its options, and runs when it was named.
#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

#include "database.h"
#include "product.h"

namespace tavdhost {

// All commands but those of `tavd db`, and the version.
void add_commands(CLI::App& app);

void add_list_command(CLI::App& app);
void add_calc_command(CLI::App& app);
void add_sweep_command(CLI::App& app);
void add_diagram_command(CLI::App& app);
void add_picture_command(CLI::App& app);
void add_gallery_command(CLI::App& app);
void add_throw_command(CLI::App& app);
void add_show_command(CLI::App& app);
void add_family_command(CLI::App& app);
void add_code_command(CLI::App& app);
void add_find_attribute_command(CLI::App& app);
void add_copy_command(CLI::App& app);
void add_delete_command(CLI::App& app);

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
