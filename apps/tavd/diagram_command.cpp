#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>

#include "commands.h"
#include "diagram_options.h"
#include "drawing.h"
#include "tavd/tavdg.h"
#include "tavdgui/tavdgui.h"
#include "title.h"

namespace tavdhost {
namespace {

constexpr const char* kWindowClass = "TAVDDGR";
constexpr const char* kPositionLabel = "pos";  // in front of the first damper position
constexpr const char* kLevelLabel = "dB(A)";   // behind the first sound level

// Sizes in the 10000 by 10000 units of the plane that a window stretches over the picture.
constexpr int kPlane = 10000;
constexpr int kCharacter = 190;    // width of one at the right of the plot
constexpr int kRightMargin = 600;  // that the chart leaves there
constexpr int kMostRoom = 4000;
constexpr std::int16_t kRangeKind = 30;

// What more is needed to the right of the plot for the texts that stand there: the levels of a device for a
// pressure range, the first of them with its label, or the host's own texts at the lines of a damper.
int room_at_right(const FlowData& flow, const DiagramSettings& settings) {
  std::size_t characters = 0;
  if (flow.kind == kRangeKind && flow.nlw != 0)
    characters = std::string_view("40 ").size() + std::string_view(kLevelLabel).size();
  if (is_damper(flow)) {
    for (const PositionLabel& label : settings.a_labels) characters = std::max(characters, label.text.size());
  }
  return std::clamp(static_cast<int>(characters) * kCharacter - kRightMargin, 0, kMostRoom);
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
  put_title(database, record, options.title);
  Diagram diagram(database);
  diagram.set_up(settings, product.flow, options.static_pressure);
  if (tavdg_initdiagramdata(record.get()) != 0) throw undrawable(product);
  const int room = room_at_right(product.flow, settings);
  if (room != 0) tavdg_resize(0, 0, kPlane - room, kPlane);
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
