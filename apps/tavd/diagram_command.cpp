#include <memory>
#include <string>

#include "commands.h"
#include "drawing.h"
#include "errors.h"
#include "numbers.h"
#include "tavd/tavdg.h"
#include "tavdgui/tavdgui.h"
#include "text.h"
#include "title.h"
#include "units.h"

namespace tavdhost {
namespace {

struct DiagramOptions : DrawingOptions {
  std::string qv, dp;
  std::string xunit = "l/s";
  std::string yunit = "Pa";
  std::string limits;
  bool static_pressure = false;
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
constexpr const char* kPositionLabel = "pos";  // in front of the first damper position
constexpr const char* kLevelLabel = "dB(A)";   // behind the first sound level

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

void run_diagram(const DiagramOptions& options) {
  const DiagramSettings settings = parse_settings(options);
  const Database database(options.path, Database::Open::kExisting, options.texts);
  Record record = database.product(options.class_id, options.object_id);
  Product product = load_product(database, record);
  set_parameters(product.flow, options.parameters);
  put_title(database, record, options.title);
  Diagram diagram(database);
  diagram.set_up(settings, product.flow, options.static_pressure);
  if (tavdg_initdiagramdata(record.get()) != 0) throw undrawable(product);
  Picture picture(options.output, settings.size);
  paint_window(kWindowClass, picture);
  picture.finish();
}

}  // namespace

void add_diagram_command(CLI::App& app) {
  auto options = std::make_shared<DiagramOptions>();
  CLI::App* command =
      app.add_subcommand("diagram", "Draws the flow diagram of a product into a picture file");
  add_drawing_arguments(*command, *options);
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
  add_drawing_options(*command, *options);
  command->footer(
      "The end reflection of the duct is taken off the sound levels.\n"
      "Example: tavd diagram catalogue.tavdb DMP QZDA-160 -o damper.svg --qv 50 --dp 60");
  command->callback([options] { run_diagram(*options); });
}

}  // namespace tavdhost
