#include "drawings.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "cut_surface.h"
#include "tavd/L2dg.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"
#include "tavdgui/tavdcairo.h"
#include "text.h"

namespace tavdhost {
namespace {

// Window classes that the library registers.
constexpr const char* kFlowClass = "TAVDDGR";
constexpr const char* kThrowClass = "TAVDDGRL02";
constexpr const char* kShapeClass = "TAVDSHAPE";

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

// A pen of a diagram and what is drawn with it. Pens of one look stand in the order in which they draw.
struct PenName {
  std::uint32_t colour;  // 0x00BBGGRR
  int width;             // in the units of the plane
  const char* name;
};

constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kGrey = 0x808080;
constexpr std::uint32_t kRed = 0x0000FF;
constexpr std::uint32_t kBlue = 0xFF0000;
constexpr int kThin = kPlane / 1000;
constexpr int kWide = kPlane / 500;

constexpr PenName kFlowPens[] = {
    {kBlack, kThin, "Axes"},       {kBlack, kThin, "Curves"},        {kGrey, kThin, "Curves between"},
    {kRed, kWide, "Sound levels"}, {kRed, 2 * kWide, "Flow limits"}, {kBlue, kThin, "Operating point"},
};

constexpr PenName kThrowPens[] = {
    {kBlack, kThin, "Axes"},
    {kRed, kWide, "Throw length"},
    {kBlue, kThin, "Operating point"},
};

template <std::size_t N>
void name_pens(tgui_surface* surface, const PenName (&pens)[N]) {
  for (const auto& [colour, width, name] : pens) tgui_cairo_name_pen(surface, colour, width, name);
}

// Has a window of a class that the library registered paint itself.
void paint_window(const char* window_class, tgui_surface* surface, PictureSize size) {
  tgui_window* window =
      tgui_create_window(window_class, "", 0, 0, 0, size.width, size.height, nullptr, 0, tgui_main_module());
  if (window == nullptr) throw std::runtime_error("no window for the drawing could be made");
  tgui_set_surface(window, surface);
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_destroy_window(window);
}

// A window paints a whole surface: on a part of one the library draws without, and what a diagram puts
// outside of its plane, such as labels of lines that leave it, would stand in another cell.
void draw_cell(tgui_surface* surface, tgui_rect cell, void (*draw)(tavd_hdc)) {
  const int saved = tgui_save(surface);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, kPlane, kPlane);
  tgui_set_viewport_org(surface, cell.left, cell.top);
  tgui_set_viewport_ext(surface, cell.right - cell.left, cell.bottom - cell.top);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
  tgui_surface* const plane = cut_surface(surface, {0, 0, kPlane, kPlane});
  draw(plane);
  tgui_surface_destroy(plane);
  tgui_restore(surface, saved);
}

}  // namespace

FlowDiagram::FlowDiagram(const Database& database, const Record& record, const Product& product,
                         const DiagramSettings& settings, bool static_pressure) {
  tavdg_init_empty(tgui_main_module(), database.handle());
  tavdg_reset_parameters();
  tavdg_set_xunit(settings.xunit);
  tavdg_set_yunit(settings.yunit);
  tavdg_set_dptype(static_pressure ? 1 : 0);
  tavdg_set_damperpos_label(kPositionLabel);
  tavdg_set_LpA_label(kLevelLabel);
  tavdg_set_operation_point(settings.qv, settings.dp);
  tavdg_set_qvlimits(settings.qvlimit1, settings.qvlimit2);
  tavdg_set_lpmin_lpmax_lpstep(settings.lpmin, settings.lpmax, settings.lpstep);
  for (const PositionLabel& label : settings.a_labels) tavdg_set_a_label(label.position, label.text.c_str());
  for (const auto& [name, value] : chosen_parameters(product.flow))
    tavdg_set_parameter(name.c_str(), value.c_str());
  drawable_ = tavdg_initdiagramdata(record.get()) == 0;
  const int room = drawable_ ? room_at_right(product.flow, settings) : 0;
  if (room != 0) tavdg_resize(0, 0, kPlane - room, kPlane);
}

FlowDiagram::~FlowDiagram() {
  tavdg_release();
}

void FlowDiagram::paint(tgui_surface* surface, PictureSize size) const {
  name_pens(surface, kFlowPens);
  paint_window(kFlowClass, surface, size);
}

void FlowDiagram::paint_cell(tgui_surface* surface, tgui_rect cell) const {
  tavdg_create_drawing_tools();
  draw_cell(surface, cell, tavdg_draw_diagram);
  tavdg_destroy_drawing_tools();
}

namespace {

void choose_parameters(const FlowData& flow) {
  for (const auto& [name, value] : chosen_parameters(flow)) L2dg_set_parameter(name.c_str(), value.c_str());
}

// The diagram remembers two parameters. Where the product has two others, the selection of the line takes
// the place of one of them until that is given a second time; the selection itself stays.
void choose_throw_line(const FlowData& flow, const std::string& value) {
  choose_parameters(flow);
  if (value.empty()) return;
  L2dg_set_parameter(kThrowParameter, value.c_str());
  choose_parameters(flow);
}

}  // namespace

ThrowDiagram::ThrowDiagram(const Database& database, const Record& record, const Product& product, float qv,
                           std::int16_t unit, const std::string& value) {
  L2dg_reset_parameters();
  L2dg_init(tgui_main_module(), database.handle(), nullptr, 0, qv, 0, unit);
  choose_throw_line(product.flow, value);
  drawable_ = L2dg_initdiagramdata(record.get()) == 0;
}

ThrowDiagram::~ThrowDiagram() {
  L2dg_release();
}

void ThrowDiagram::paint(tgui_surface* surface, PictureSize size) const {
  name_pens(surface, kThrowPens);
  paint_window(kThrowClass, surface, size);
}

void ThrowDiagram::paint_cell(tgui_surface* surface, tgui_rect cell) const {
  L2dg_create_drawing_tools();
  draw_cell(surface, cell, L2dg_draw_diagram);
  L2dg_destroy_drawing_tools();
}

ShapePicture::ShapePicture(const Database& database, const Record& record) {
  tavdshapepic_init(tgui_main_module(), database.handle(), record.get(), 0);
}

ShapePicture::~ShapePicture() {
  tavdshapepic_release();
}

// Painting needs the shape of the process, which this object keeps.
void ShapePicture::paint(tgui_surface* surface, PictureSize size) const {
  paint_window(kShapeClass, surface, size);
}

bool has_throw_data(const FlowData& flow) {
  return flow.nparL2 != 0 || flow.nqvL2 != 0;
}

std::string first_throw_value(const FlowData& flow) {
  if (flow.nparL2 == 0) return "";
  const char* const text = flow.parL2[0].value;
  return std::string(trim_end({text, strnlen(text, TAVD_PARAMETER_CHARS)}));
}

bool has_shape(const Database& database, const Record& record) {
  std::int16_t shape[TAVDF_SHAPE_MIN_WORDS] = {};
  return tavdf_load_shapedata(database.handle(), record.get(), nullptr, shape, TAVDF_SHAPE_MIN_WORDS) > 0;
}

}  // namespace tavdhost
