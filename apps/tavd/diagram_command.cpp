#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "commands.h"
#include "errors.h"
#include "numbers.h"
#include "picture.h"
#include "product.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"
#include "tavdgui/tavdgui.h"
#include "text.h"
#include "title.h"
#include "units.h"

namespace tavdhost {
namespace {

struct DiagramOptions {
  std::string path, class_id, object_id;
  std::string output;
  std::string qv, dp;
  std::string xunit = "l/s";
  std::string yunit = "Pa";
  std::string size = "1200x900";
  std::string title;
  std::string limits;
  std::vector<std::string> parameters;
  bool static_pressure = false;
  TextChoice texts;
};

// The options as numbers: nothing is opened before all of them are good.
struct DiagramSettings {
  PictureSize size;
  std::int16_t xunit, yunit;
  float qv = 0;                      // 0: no operating point
  float dp = 0;                      // 0: the flow alone is marked
  float qvlimit1 = 0, qvlimit2 = 0;  // 0: no limits
};

constexpr const char* kWindowClass = "TAVDDGR";
constexpr const char* kPositionLabel = "pos";   // in front of the first damper position
constexpr const char* kLevelLabel = "dB(A)";    // behind the first sound level

DiagramSettings parse_settings(const DiagramOptions& options) {
  DiagramSettings settings{};
  settings.size = picture_size(options.size);
  settings.xunit = flow_unit_number(options.xunit);
  settings.yunit = pressure_unit_number(options.yunit);
  if (!options.qv.empty()) settings.qv = positive_number("--qv", options.qv);
  if (!options.dp.empty()) settings.dp = positive_number("--dp", options.dp);
  check_title(options.title);
  if (!options.limits.empty()) {
    const std::size_t comma = options.limits.find(',');
    if (comma == std::string::npos) {
      throw UserError("--limits is " + in_quotes(options.limits) + ", expected two flows such as 20,80");
    }
    settings.qvlimit1 = positive_number("--limits", options.limits.substr(0, comma));
    settings.qvlimit2 = positive_number("--limits", options.limits.substr(comma + 1));
  }
  return settings;
}

// The flow diagram of the process, released at the end.
class Diagram {
 public:
  explicit Diagram(const Database& database) { tavdg_init_empty(tgui_main_module(), database.handle()); }
  ~Diagram() { tavdg_release(); }
  Diagram(const Diagram&) = delete;
  Diagram& operator=(const Diagram&) = delete;

  void set_up(const DiagramSettings& settings, const FlowData& flow, bool static_pressure);
  void build(const Product& product, const Record& record);
  void paint(const Picture& picture);
};

void Diagram::set_up(const DiagramSettings& settings, const FlowData& flow, bool static_pressure) {
  tavdg_set_xunit(settings.xunit);
  tavdg_set_yunit(settings.yunit);
  tavdg_set_dptype(static_pressure ? 1 : 0);
  tavdg_set_damperpos_label(kPositionLabel);
  tavdg_set_LpA_label(kLevelLabel);
  tavdg_set_operation_point(settings.qv, settings.dp);
  tavdg_set_qvlimits(settings.qvlimit1, settings.qvlimit2);
  for (const auto& [name, value] : chosen_parameters(flow)) tavdg_set_parameter(name.c_str(), value.c_str());
}

void Diagram::build(const Product& product, const Record& record) {
  if (tavdg_initdiagramdata(record.get()) == 0) return;
  const FlowData& flow = product.flow;
  const std::string name = printable(product.key.class_id) + " " + printable(product.key.object_id);
  if (flow.nhdd == 0) throw UserError(name + " has no flow data to draw");
  throw UserError(name + " has limits that make no diagram: " + brief(flow.qvmin) + " - " +
                  brief(flow.qvmax) + " " + flow_unit(flow) + ", " + brief(flow.dpmin) + " - " +
                  brief(flow.dpmax) + " Pa; expected rising limits above 0");
}

void Diagram::paint(const Picture& picture) {
  const auto [width, height] = picture.size();
  tgui_window* window =
      tgui_create_window(kWindowClass, "", 0, 0, 0, width, height, nullptr, 0, tgui_main_module());
  if (window == nullptr) throw std::runtime_error("no window for the diagram could be made");
  tgui_set_surface(window, picture.surface());
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_destroy_window(window);
}

void run_diagram(const DiagramOptions& options) {
  const DiagramSettings settings = parse_settings(options);
  const Database database(options.path, Database::Open::kExisting, options.texts);
  Record record = database.product(options.class_id, options.object_id);
  Product product = load_product(database, record);
  set_parameters(product.flow, options.parameters);
  put_title(database, record, options.title);
  Diagram diagram(database);
  diagram.set_up(settings, product.flow, options.static_pressure);
  diagram.build(product, record);
  Picture picture(options.output, settings.size);
  diagram.paint(picture);
  picture.finish();
}

}  // namespace

void add_diagram_command(CLI::App& app) {
  auto options = std::make_shared<DiagramOptions>();
  CLI::App* command =
      app.add_subcommand("diagram", "Draws the flow diagram of a product into a picture file");
  command->add_option("DB", options->path, "Product database")->required();
  command->add_option("CLASS", options->class_id, "Class of the product, 3 characters")->required();
  command->add_option("ID", options->object_id, "Object id of the product")->required();
  command
      ->add_option("-o,--output", options->output,
                   "File to write: .png, .svg, .pdf, or .txt for the list of drawing operations")
      ->required()
      ->type_name("FILE");
  CLI::Option* qv =
      command->add_option("--qv", options->qv, "Flow to mark, in l/s (m/s for products by air velocity)")
          ->type_name("NUMBER");
  command->add_option("--dp", options->dp, "Pressure to mark at that flow, in Pa")
      ->type_name("NUMBER")
      ->needs(qv);
  command
      ->add_option("--xunit", options->xunit,
                   "Flow axis: l/s, l/h, m3/s, m3/h or cfm; always m/s by air velocity")
      ->type_name("UNIT");
  command->add_option("--yunit", options->yunit, "Pressure axis: Pa, kPa, inWC or inwg")->type_name("UNIT");
  command->add_flag("--static", options->static_pressure, "Show static pressure in place of total pressure");
  command->add_option("--limits", options->limits, "Two flows to mark on the lower edge, in l/s")
      ->type_name("QV1,QV2");
  command->add_option("--param", options->parameters, "Value of a parameter, once for each parameter")
      ->type_name("NAME=VALUE")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  command->add_option("--size", options->size, "Size in pixels")
      ->type_name("WIDTHxHEIGHT")
      ->capture_default_str();
  command->add_option("--title", options->title, "Title in place of the product code, up to 79 characters")
      ->type_name("TEXT");
  add_text_options(*command, options->texts);
  command->footer(
      "The end reflection of the duct is taken off the sound levels.\n"
      "Example: tavd diagram catalogue.tavdb DMP QZDA-160 -o damper.svg --qv 50 --dp 60");
  command->callback([options] { run_diagram(*options); });
}

}  // namespace tavdhost
