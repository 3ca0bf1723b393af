// tavd throw: the throw length diagram of a product as a picture.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/drawing_arguments.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "drawing/marks.h"
#include "drawing/title.h"
#include "drawing/units.h"
#include "product/amount.h"
#include "product/database.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

struct ThrowOptions : DrawingOptions {
  std::string qv;
  std::string value;
  std::string unit = "l/s";
};

// The options as numbers: nothing is opened before all of them are good.
struct ThrowSettings {
  PictureSize size;
  std::int16_t unit;
  Amount qv;
};

ThrowSettings parse_settings(const ThrowOptions& options) {
  check_title(options.title);
  if (options.value.size() > TAVD_PARAMETER_CHARS) {
    throw UserError("--value is " + in_quotes(options.value) + ", expected at most " +
                    std::to_string(TAVD_PARAMETER_CHARS) + " characters");
  }
  return {picture_size(options.size), throw_flow_unit_number(options.unit), parse_flow("--qv", options.qv)};
}

std::string key_of(const Product& product) {
  return printable(product.key.class_id) + " " + printable(product.key.object_id);
}

// The values of the throw table, each run of rows once.
std::string throw_values(const FlowData& flow) {
  std::string all;
  std::string_view former;
  for (int i = 0; i < flow.nparL2; ++i) {
    const char* text = flow.parL2[i].value;
    const auto* end = std::find(text, text + TAVD_PARAMETER_CHARS, '\0');
    const std::string_view value = trim_end({text, static_cast<std::size_t>(end - text)});
    if (i > 0 && same_letters(value, former)) continue;
    all += (i == 0 ? "" : ", ") + printable(value);
    former = value;
  }
  return all;
}

// Throws UserError if the product has no throw line, or none for the value.
void check_throw_data(const Product& product, const std::string& value, float qv) {
  const FlowData& flow = product.flow;
  if (!has_throw_data(flow)) {
    throw flow.nhdd == 0 ? undrawable(product) : UserError(key_of(product) + " has no throw data to draw");
  }
  if (value.empty()) return;
  if (flow.nparL2 == 0) {
    throw UserError("--value is " + in_quotes(value) + ", but " + key_of(product) +
                    " has one throw line for all values");
  }
  if (tavca_L2_isothermal(&flow, qv, value.c_str()) == 0) {
    throw UserError("--value is " + in_quotes(value) + ", but the throw lines of " + key_of(product) +
                    " are for " + throw_values(flow));
  }
}

void run_throw(const ThrowOptions& options) {
  const ThrowSettings settings = parse_settings(options);
  const Database database(options.path, Database::Open::kExisting, options.texts);
  Record record = database.product(options.class_id, options.object_id);
  Product product = load_product(database, record);
  const float qv = flow_of(product, settings.qv);
  check_throw_data(product, options.value, qv);
  set_parameters(product.flow, options.parameters);
  if (!options.value.empty()) tavca_param_setvalue(&product.flow, kThrowParameter, options.value.c_str());
  if (!options.title.empty()) put_title(database, record, options.title);
  ThrowDiagram diagram(database, record, product, qv, settings.unit, options.value);
  if (!diagram.is_drawable()) throw undrawable(product);
  Picture picture(options.output, settings.size, options.format);
  const PointMark mark = point_mark(hosts::kThrowDrawing, {qv, {}});
  report_unmarked(unmarked_throw_text(product, mark));
  picture.describe(throw_diagram_text(product, options.title, options.value, mark));
  diagram.paint(picture);
  picture.finish();
}

}  // namespace

void add_throw_command(CLI::App& app) {
  auto options = std::make_shared<ThrowOptions>();
  CLI::App* command =
      app.add_subcommand("throw", "Draws the throw length diagram of a product into a picture file");
  add_drawing_arguments(*command, *options);
  command->add_option("--qv", options->qv, "Flow to mark, in l/s, or with its unit: 216m3/h")
      ->required()
      ->type_name("NUMBER");
  command
      ->add_option("--value", options->value,
                   "Value that selects the throw line, for products that have one for each value; without it "
                   "the line of the first value, unlabelled")
      ->type_name("VALUE");
  command->add_option("--unit", options->unit, "Flow axis: l/s, l/h, m3/s, m3/h, cfm, m3/h/m or l/s/m")
      ->type_name("UNIT");
  add_drawing_options(*command, *options);
  command->footer(
      "L02 is the throw length to an air velocity of 0.2 m/s.\nExample: tavd throw catalogue.tavdb ASD "
      "QZSA-160 -o throw" +
      std::string(kPictureForms.vector_ending) + " --qv 60 --value 45");
  command->callback([options] { run_throw(*options); });
}

}  // namespace tavdhost
