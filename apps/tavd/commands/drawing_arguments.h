// What the commands that draw a product have in common.
#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

#include "base/errors.h"
#include "commands/product_choice.h"
#include "drawing/picture.h"
#include "product/database.h"
#include "product/product.h"

namespace tavdhost {

// What is drawn, and into which file.
struct PictureOptions {
  std::string path, class_id, object_id;
  std::string output;
  std::string format;  // empty: that of the output's ending
  std::string size = "1200x900";
  std::string title;  // empty: the product code
  TextChoice texts;
};

struct DrawingOptions : PictureOptions {
  std::vector<std::string> parameters;  // NAME=VALUE
};

// Adds DB, CLASS, ID, -o and --format; and behind the command's own options --size, --title and those of
// texts, for diagrams with --param before them.
void add_drawing_arguments(CLI::App& command, PictureOptions& options);
void add_picture_options(CLI::App& command, PictureOptions& options);
void add_drawing_options(CLI::App& command, DrawingOptions& options);

// Why a product with the data for a diagram makes none.
UserError undrawable(const Product& product);

// Says on standard error what the drawing does not show though it was asked for; nothing if `text` is empty.
void report_unmarked(const std::string& text);

}  // namespace tavdhost
