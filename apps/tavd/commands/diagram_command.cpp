// tavd diagram: the flow diagram of a product as a picture.
#include <memory>
#include <optional>

#include "commands/commands.h"
#include "commands/diagram_options.h"
#include "commands/drawing_arguments.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "drawing/marks.h"
#include "drawing/title.h"
#include "product/database.h"

namespace tavdhost {
namespace {

// What the diagram has of the point that is to be marked, if one is. Tells on standard error what it does not
// have.
std::optional<PointMark> report_marks(const Product& product, const DiagramSettings& settings) {
  if (settings.qvlimit1 != 0) {
    report_unmarked(unmarked_limits_text(product, settings.qvlimit1, settings.qvlimit2));
  }
  if (settings.qv == 0) return {};
  AskedPoint point{settings.qv, {}};
  if (settings.dp != 0) point.dp = settings.dp;
  const PointMark mark = point_mark(hosts::kFlowDrawing, point);
  report_unmarked(unmarked_text(product, mark));
  return mark;
}

void run_diagram(const DiagramOptions& options) {
  DiagramSettings settings = diagram_settings(options);
  const Database database(options.path, Database::Open::kExisting, options.texts);
  Record record = database.product(options.class_id, options.object_id);
  Product product = load_product(database, record);
  place_flows(options, product, settings);
  set_parameters(product.flow, settings.parameters);
  put_title(database, record, options.title);
  FlowDiagram diagram(database, record, product, settings, options.static_pressure);
  if (!diagram.is_drawable()) throw undrawable(product);
  Picture picture(options.output, settings.size, options.format);
  picture.describe(flow_diagram_text(product, options.title, report_marks(product, settings)));
  diagram.paint(picture);
  picture.finish();
}

}  // namespace

void add_diagram_command(CLI::App& app) {
  auto options = std::make_shared<DiagramOptions>();
  CLI::App* command =
      app.add_subcommand("diagram", "Draws the flow diagram of a product into a picture file");
  add_drawing_arguments(*command, *options);
  add_diagram_options(*command, *options);
  add_drawing_options(*command, *options);
  command->footer(
      "dpt is total pressure, dpst static pressure, qv flow, v air velocity.\n"
      "The end reflection of the duct is taken off the sound levels.\n"
      "Example: tavd diagram catalogue.tavdb DMP QZDA-160 -o damper" +
      std::string(kPictureForms.vector_ending) + " --qv 50 --dp 60");
  command->callback([options] { run_diagram(*options); });
}

}  // namespace tavdhost
