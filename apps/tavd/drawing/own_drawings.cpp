#include "drawing/own_drawings.h"

#include <cstdint>
#include <new>
#include <stdexcept>

#include "base/text.h"
#include "codepage/codepage.h"
#include "drawing/drawings.h"
#include "drawing/units.h"
#include "product/operating_point.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"

namespace tavdhost {
namespace {

constexpr std::size_t kTitleRoom = TAVDG_TITLE_CHARS;  // characters with the terminator

TitleForm title_form_of(const Database& database) {
  std::int16_t count = 0;
  std::int16_t texts = TAVD_TEXTS_DEFAULT;
  tavbfindatt(database.handle(), TAVD_FILEHEADER_CLASS, TAVD_FILEHEADER_ID, TAVD_ATT_USES_UTF8, &count,
              &texts, sizeof texts);
  if (texts == TAVD_TEXTS_UTF8) return TitleForm::kWide;
  return texts == TAVD_TEXTS_DEFAULT || texts == TAVD_TEXTS_DEFAULT_2 ? TitleForm::kNarrow : TitleForm::kNone;
}

DrawnTitle read_title(const Database& database, const Record& record) {
  char narrow[kTitleRoom] = {};
  tavd_wchar wide[kTitleRoom] = {};
  tavdf_copyproductcode(database.handle(), record.get(), narrow, kTitleRoom);
  tavdf_copyproductcodew(database.handle(), record.get(), wide, kTitleRoom);
  return {title_of(database, record), narrow, wide};
}

// The title as it would be read of a record that has it as its code.
DrawnTitle made_title(const std::string& text) {
  const std::string code = printable(text);
  tavd_wchar wide[kTitleRoom] = {};
  char narrow[kTitleRoom] = {};
  const std::size_t units = codepage::widen(codepage::kUtf8, code.data(), code.size(), wide, kTitleRoom - 1);
  codepage::narrow(codepage::kDefault, wide, units, narrow, kTitleRoom - 1);
  return {text, narrow, wide};
}

Prepared prepared(const FlowData& flow) {
  tavdn_product* product = nullptr;
  if (tavdn_prepare(&flow, nullptr, &product) != TAVDN_OK) throw std::bad_alloc();
  return Prepared(product);
}

// The diagram has the end reflection taken off the sound table.
Prepared prepared_for_flow(FlowData flow) {
  tavca_check_end_reflection(&flow);
  return prepared(flow);
}

Prepared prepared_for_throw(FlowData flow, const std::string& value) {
  if (!value.empty()) tavca_param_setvalue(&flow, kThrowParameter, value.c_str());
  return prepared(flow);
}

}  // namespace

DrawingSource::DrawingSource(const Database& database, const Record& record, const FlowData& loaded)
    : title(read_title(database, record)),
      title_form(title_form_of(database)),
      flow(loaded),
      has_shape(tavdhost::has_shape(database, record)) {
  tavdn_read_shape(database.handle(), record.get(), &shape);
}

OwnDrawing::OwnDrawing(const hosts::LibraryDrawing& form, const DrawnTitle& title)
    : drawing_(form), title_(title) {
  drawing_.window_class = nullptr;
  drawing_.window_procedure = nullptr;
  drawing_.create_tools = [] {};
  drawing_.draw = [this](tavd_hdc surface) { draw_on(surface); };
  drawing_.destroy_tools = [] {};
}

bool OwnDrawing::is_drawable() const {
  return draw(nullptr) == TAVDN_OK;
}

// What cannot be drawn is not drawn: is_drawable() tells that.
void OwnDrawing::draw_on(tavd_hdc surface) const {
  if (draw(surface) == TAVDN_NO_MEMORY) throw std::bad_alloc();
}

void OwnDrawing::paint(Picture& picture, const Area& room) {
  FittedTitle fitted(title_.text);
  // A title that is empty is what the record has.
  fitted.fit(drawing_, picture.placed(room), [this](const std::string& text) {
    if (!text.empty()) title_ = made_title(text);
  });
  picture.paint(drawing_, room);
}

OwnFlowDiagram::OwnFlowDiagram(const DrawingSource& source)
    : OwnDrawing(hosts::kFlowDrawing, source.title),
      title_form_(source.title_form),
      product_(prepared_for_flow(source.flow)) {}

int OwnFlowDiagram::draw(tavd_hdc surface) const {
  tavdn_flow_options options{};
  options.size = sizeof options;
  if (title_form_ == TitleForm::kNarrow) options.title = title().narrow.c_str();
  if (title_form_ == TitleForm::kWide) options.titlew = title().wide.c_str();
  options.lpmin = levels_.lowest;
  options.lpstep = levels_.step;
  options.roomdamp = kRoomDamping;
  options.LpA_label = kLevelLabel;
  options.damperpos_label = kPositionLabel;
  const int room = room_at_right(flow(), {});
  if (room != 0) options.rectangle = {0, 0, hosts::kDiagramPlane - room, hosts::kDiagramPlane};
  return tavdn_draw_flow(product_.get(), &options, surface);
}

OwnThrowDiagram::OwnThrowDiagram(const DrawingSource& source)
    : OwnDrawing(hosts::kThrowDrawing, source.title),
      value_(first_throw_value(source.flow)),
      product_(prepared_for_throw(source.flow, value_)) {}

int OwnThrowDiagram::draw(tavd_hdc surface) const {
  tavdn_throw_options options{};
  options.size = sizeof options;
  options.title = title().narrow.c_str();
  options.value = value_.c_str();
  options.xunit = throw_flow_unit_number("l/s");
  return tavdn_draw_throw(product_.get(), &options, surface);
}

OwnShapePicture::OwnShapePicture(const DrawingSource& source)
    : OwnDrawing(hosts::kShapeDrawing, source.title), shape_(source.shape) {}

int OwnShapePicture::draw(tavd_hdc surface) const {
  tavdn_shape_options options{};
  options.size = sizeof options;
  options.title = title().narrow.c_str();
  return tavdn_draw_shape(&shape_, &options, surface);
}

}  // namespace tavdhost
