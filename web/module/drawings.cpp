// Questions about drawings: as SVG, or as the list of drawing operations.
#include <algorithm>
#include <iostream>
#include <optional>
#include <sstream>

#include "base/errors.h"
#include "base/text.h"
#include "drawing/description.h"
#include "drawing/diagram_settings.h"
#include "drawing/drawings.h"
#include "drawing/marks.h"
#include "drawing/title.h"
#include "drawing/units.h"
#include "product/amount.h"
#include "questions.h"
#include "tavd/tavca.h"

namespace tavdweb {
namespace {

using tavdhost::Picture;
using tavdhost::Product;
using tavdhost::Record;
using tavdhost::UserError;

constexpr const char* kUsualSize = "800x600";

// What goes to standard output while this lives: a picture without a file of its own.
class Captured {
 public:
  Captured() : former_(std::cout.rdbuf(text_.rdbuf())) {}
  ~Captured() { std::cout.rdbuf(former_); }
  Captured(const Captured&) = delete;
  Captured& operator=(const Captured&) = delete;

  std::string text() const { return text_.str(); }

 private:
  std::ostringstream text_;
  std::streambuf* former_;
};

// "size" and "form": "svg", or "txt" for the operations.
template <typename Drawing>
std::string painted(const Json::Value& question, const tavdhost::DrawingText& words, Drawing& drawing) {
  const std::string size = text(question, "size");
  const std::string form = text(question, "form");
  const Captured output;
  Picture picture("-", tavdhost::picture_size(size.empty() ? kUsualSize : size), form.empty() ? "svg" : form);
  picture.describe(words);
  drawing.paint(picture);
  picture.finish();
  return output.text();
}

// "picture", what it shows in words, and what of the question it does not show.
template <typename Drawing>
Json::Value drawn(const Json::Value& question, const tavdhost::DrawingText& words, Drawing& drawing,
                  const std::string& unmarked) {
  Json::Value json;
  json["picture"] = painted(question, words, drawing);
  json["description"] = words.description;
  json["unmarked"] = unmarked;
  return json;
}

// A product with the record that its drawing is made of.
struct Subject {
  Subject(Session& session, const Json::Value& question)
      : database(session.database()),
        record(database.product(text(question, "class"), text(question, "id"))),
        product(tavdhost::load_product(database, record)),
        title(text(question, "title")) {
    tavdhost::set_parameters(product.flow, texts(question, "parameters"));
    tavdhost::check_title(title);
    tavdhost::put_title(database, record, title);
  }

  // In the product's own measure; 0 where none is given.
  float flow(const Json::Value& question) const {
    const std::string given = text(question, "qv");
    return given.empty() ? 0 : tavdhost::flow_of(product, tavdhost::parse_flow("flow", given));
  }

  UserError undrawable() const {
    return UserError(tavdhost::printable(product.key.object_id) + " has no data that make such a diagram");
  }

  const tavdhost::Database& database;
  Record record;
  Product product;
  std::string title;
};

// Units that the axes do not have leave them as they are.
std::int16_t axis_number(const hosts::Unit& unit) {
  const auto known = hosts::axis_units(unit.quantity);
  const auto found =
      std::find_if(known.begin(), known.end(), [&](const hosts::Unit& each) { return &each == &unit; });
  return found == known.end() ? std::int16_t{0} : static_cast<std::int16_t>(found - known.begin());
}

tavdhost::DiagramSettings settings_of(const Subject& subject, const Json::Value& question) {
  tavdhost::DiagramSettings settings{};
  const tavdhost::ShownUnits units = shown_units(question);
  settings.xunit = axis_number(*units.flow);
  settings.yunit = axis_number(*units.pressure);
  settings.qv = subject.flow(question);
  if (const std::string given = text(question, "dp"); !given.empty()) {
    settings.dp = tavdhost::parse_pressure("pressure", given);
  }
  return settings;
}

// What the flow diagram has of the point that is to be marked, if one is.
std::optional<tavdhost::PointMark> mark_of(const tavdhost::DiagramSettings& settings) {
  if (settings.qv == 0) return {};
  tavdhost::AskedPoint point{settings.qv, {}};
  if (settings.dp != 0) point.dp = settings.dp;
  return tavdhost::point_mark(hosts::kFlowDrawing, point);
}

// The line of a throw value is there where it gives a length.
void check_throw_value(const Subject& subject, const std::string& value, float qv) {
  if (value.empty()) return;
  const FlowData& flow = subject.product.flow;
  if (value.size() > TAVD_PARAMETER_CHARS || flow.nparL2 == 0 ||
      tavca_L2_isothermal(&flow, qv, value.c_str()) == 0) {
    throw UserError("there is no throw line for " + tavdhost::in_quotes(value));
  }
}

}  // namespace

Json::Value draw_flow_diagram(Session& session, const Json::Value& question) {
  Subject subject(session, question);
  const tavdhost::DiagramSettings settings = settings_of(subject, question);
  tavdhost::FlowDiagram diagram(subject.database, subject.record, subject.product, settings,
                                flag(question, "static"));
  if (!diagram.is_drawable()) throw subject.undrawable();
  const std::optional<tavdhost::PointMark> mark = mark_of(settings);
  return drawn(question, tavdhost::flow_diagram_text(subject.product, subject.title, mark), diagram,
               mark ? tavdhost::unmarked_text(subject.product, *mark) : "");
}

Json::Value draw_throw_diagram(Session& session, const Json::Value& question) {
  Subject subject(session, question);
  const std::string value = text(question, "value");
  const std::string unit = text(question, "unit");
  const float qv = subject.flow(question);
  if (!tavdhost::has_throw_data(subject.product.flow)) throw subject.undrawable();
  check_throw_value(subject, value, qv);
  if (!value.empty()) {
    tavca_param_setvalue(&subject.product.flow, tavdhost::kThrowParameter, value.c_str());
  }
  tavdhost::ThrowDiagram diagram(subject.database, subject.record, subject.product, qv,
                                 tavdhost::throw_flow_unit_number(unit.empty() ? "l/s" : unit), value);
  if (!diagram.is_drawable()) throw subject.undrawable();
  const tavdhost::PointMark mark = tavdhost::point_mark(hosts::kThrowDrawing, {qv, {}});
  return drawn(question, tavdhost::throw_diagram_text(subject.product, subject.title, value, mark), diagram,
               tavdhost::unmarked_throw_text(subject.product, mark));
}

Json::Value draw_sketch(Session& session, const Json::Value& question) {
  Subject subject(session, question);
  if (!tavdhost::has_shape(subject.database, subject.record)) throw subject.undrawable();
  tavdhost::ShapePicture sketch(subject.database, subject.record);
  return drawn(question, tavdhost::shape_picture_text(subject.product, subject.title), sketch, "");
}

}  // namespace tavdweb
