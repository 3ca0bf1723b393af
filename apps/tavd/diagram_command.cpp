#include <memory>

#include "commands.h"
#include "diagram_options.h"
#include "drawing.h"
#include "tavd/tavdg.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {
namespace {

constexpr const char* kWindowClass = "TAVDDGR";
constexpr const char* kPositionLabel = "pos";  // in front of the first damper position
constexpr const char* kLevelLabel = "dB(A)";   // behind the first sound level

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
  tavdg_set_lpmin_lpmax_lpstep(settings.lpmin, settings.lpmax, settings.lpstep);
  for (const PositionLabel& label : settings.a_labels) tavdg_set_a_label(label.position, label.text.c_str());
  for (const auto& [name, value] : chosen_parameters(flow)) tavdg_set_parameter(name.c_str(), value.c_str());
}

void run_diagram(const DiagramOptions& options) {
  const DiagramSettings settings = diagram_settings(options);
  const Database database(options.path, Database::Open::kExisting, options.texts);
  Record record = database.product(options.class_id, options.object_id);
  Product product = load_product(database, record);
  set_parameters(product.flow, settings.parameters);
  if (!options.title.empty()) put_title(database, record, options.title);
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
  add_diagram_options(*command, *options);
  add_drawing_options(*command, *options);
  command->footer(
      "The end reflection of the duct is taken off the sound levels.\n"
      "Example: tavd diagram catalogue.tavdb DMP QZDA-160 -o damper.svg --qv 50 --dp 60");
  command->callback([options] { run_diagram(*options); });
}

}  // namespace tavdhost
