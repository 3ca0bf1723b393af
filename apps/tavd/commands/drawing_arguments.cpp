#include "commands/drawing_arguments.h"

#include <iostream>

#include "base/numbers.h"
#include "base/text.h"
#include "commands/usual_options.h"

namespace tavdhost {

void add_drawing_arguments(CLI::App& command, PictureOptions& options) {
  command.add_option("DB", options.path, "Product database")->required();
  command.add_option("CLASS", options.class_id, "Class of the product, 3 characters")->required();
  command.add_option("ID", options.object_id, "Object id of the product")->required();
  command
      .add_option(
          "-o,--output", options.output,
          "File to write: " + std::string(kPictureForms.output) + "; \"-\" is standard output, with --format")
      ->required()
      ->type_name("FILE");
  command
      .add_option("--format", options.format, "What to write, whatever the file's name ends in: its ending")
      ->type_name("ENDING");
}

void add_drawing_options(CLI::App& command, DrawingOptions& options) {
  add_parameter_option(command, options.parameters);
  add_picture_options(command, options);
}

void add_picture_options(CLI::App& command, PictureOptions& options) {
  command.add_option("--size", options.size, "Size in pixels")
      ->type_name("WIDTHxHEIGHT")
      ->capture_default_str();
  command.add_option("--title", options.title, "Title in place of the product code, up to 79 characters")
      ->type_name("TEXT");
  add_text_options(command, options.texts);
}

UserError undrawable(const Product& product) {
  const FlowData& flow = product.flow;
  const std::string name = printable(product.key.class_id) + " " + printable(product.key.object_id);
  if (flow.nhdd == 0) return UserError(name + " has no flow data to draw");
  return UserError(name + " has limits that make no diagram: " + brief(flow.qvmin) + " - " +
                   brief(flow.qvmax) + " " + flow_unit(flow) + ", " + brief(flow.dpmin) + " - " +
                   brief(flow.dpmax) + " Pa; expected rising limits above 0");
}

void report_unmarked(const std::string& text) {
  if (!text.empty()) std::cerr << "tavd: " << text << '\n';
}

}  // namespace tavdhost
