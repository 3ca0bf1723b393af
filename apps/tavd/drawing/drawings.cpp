#include "drawing/drawings.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "base/platform.h"
#include "base/text.h"
#include "shared/kinds.h"
#include "tavd/L2dg.h"
#include "tavd/attributes.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"

namespace tavdhost {
namespace {

// Sizes in the 10000 by 10000 units of the plane that a window stretches over the picture.
constexpr int kCharacter = 190;    // width of one at the right of the plot
constexpr int kRightMargin = 600;  // that the chart leaves there
constexpr int kMostRoom = 4000;
constexpr std::int16_t TAVD_KIND_RANGE = 30;

void paint_fitted(RecordTitle& title, const hosts::LibraryDrawing& drawing, Picture& picture,
                  const Area& room, const RecordTitle::Read& read) {
  if (!picture.is_recording()) title.fit(drawing, picture.placed(room), read);
  picture.paint(drawing, room);
}

}  // namespace

int room_at_right(const FlowData& flow, const DiagramSettings& settings) {
  std::size_t characters = 0;
  if (flow.kind == TAVD_KIND_RANGE && flow.nlw != 0)
    characters = std::string_view("40 ").size() + std::string_view(kLevelLabel).size();
  if (hosts::is_damper(flow)) {
    for (const PositionLabel& label : settings.a_labels) characters = std::max(characters, label.text.size());
  }
  return std::clamp(static_cast<int>(characters) * kCharacter - kRightMargin, 0, kMostRoom);
}

FlowDiagram::FlowDiagram(const Database& database, const Record& record, const Product& product,
                         const DiagramSettings& settings, bool static_pressure)
    : title_(database, record), room_at_right_(room_at_right(product.flow, settings)) {
  tavdg_init_empty(program_module(), database.handle());
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
  build(record);
}

void FlowDiagram::build(const Record& record) {
  drawable_ = tavdg_initdiagramdata(record.get()) == 0;
  if (drawable_ && room_at_right_ != 0) {
    tavdg_resize(0, 0, hosts::kDiagramPlane - room_at_right_, hosts::kDiagramPlane);
  }
}

FlowDiagram::~FlowDiagram() {
  tavdg_release();
}

void FlowDiagram::paint(Picture& picture, const Area& room) {
  paint_fitted(title_, hosts::kFlowDrawing, picture, room, [this](const Record& record) { build(record); });
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
                           std::int16_t unit, const std::string& value)
    : title_(database, record) {
  L2dg_reset_parameters();
  // A platform that refuses the window class spoils the first init, and drawing needs no window.
  L2dg_init_empty(program_module(), database.handle());
  L2dg_init(program_module(), database.handle(), nullptr, 0, qv, 0, unit);
  choose_throw_line(product.flow, value);
  build(record);
}

void ThrowDiagram::build(const Record& record) {
  drawable_ = L2dg_initdiagramdata(record.get()) == 0;
}

ThrowDiagram::~ThrowDiagram() {
  L2dg_release();
}

void ThrowDiagram::paint(Picture& picture, const Area& room) {
  paint_fitted(title_, hosts::kThrowDrawing, picture, room, [this](const Record& record) { build(record); });
}

ShapePicture::ShapePicture(const Database& database, const Record& record) : title_(database, record) {
  tavdshapepic_init(program_module(), database.handle(), record.get(), 0);
}

ShapePicture::~ShapePicture() {
  tavdshapepic_release();
}

void ShapePicture::paint(Picture& picture) {
  paint_fitted(title_, hosts::kShapeDrawing, picture, picture.whole(),
               [](const Record& record) { tavdshapepic_initdata(record.get()); });
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
