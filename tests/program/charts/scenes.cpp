#include "program/charts/scenes.h"

#include <cmath>

#include "product/database.h"
#include "shared/kinds.h"
#include "sheet/chart/look.h"

namespace charts {

using tavdhost::Box;
using tavdhost::ChartDuty;
using tavdhost::ChartForm;
using tavdhost::ChartLayout;
using tavdhost::PlacedText;
using tavdhost::Product;
using tavdhost::Quad;

ChartForm english() {
  ChartForm form;
  form.texts = {.flow = "Flow",
                .velocity = "Air velocity",
                .pressure = "Total pressure",
                .throw_length = "Throw length",
                .octave_band = "Octave band",
                .sound_power = "Sound power",
                .curve = "pressure drop",
                .fan_curve = "fan curve",
                .fan_limits = "limits of the fan",
                .position = "position",
                .level = "room level",
                .throw_line = "throw length",
                .limits = "limits",
                .point = "duty",
                .total_A = "A",
                .any_pressure = "any pressure within the limits",
                .no_data = "no data"};
  form.flow = {{hosts::find_unit("l/s"), "l/s"}, {hosts::find_unit("m3/h"), "m³/h"}};
  form.velocity = {{hosts::find_unit("m/s"), "m/s"}};
  form.pressure = {{hosts::find_unit("Pa"), "Pa"}};
  form.decibel = "dB";
  form.decibel_A = "dB(A)";
  form.hertz = "Hz";
  form.metre = "m";
  return form;
}

std::vector<ChartDuty> duties(const FlowData& flow) {
  ChartDuty middle;
  middle.qv = 0.45F * flow.qvmax + 0.55F * flow.qvmin;
  middle.dp = 0.3F * flow.dpmax + 0.7F * flow.dpmin;
  middle.level = 34.5F;
  middle.position = 5.5F;
  ChartDuty edge = middle;
  edge.qv = flow.qvmax;
  edge.dp = flow.dpmin > 0 ? flow.dpmin : 0.05F * flow.dpmax;
  ChartDuty outside = middle;
  outside.qv = 1.5F * flow.qvmax;
  outside.dp = 1.5F * flow.dpmax;
  ChartDuty flow_alone;
  flow_alone.qv = middle.qv;
  return {middle, edge, outside, flow_alone, {}};
}

std::vector<Box> rooms() {
  return {{122, 160, 73, 78}, {15, 166, 104, 78}, {15, 166, 180, 78}};
}

namespace {

std::string in_words(const char* what, const std::string& a, const std::string& b) {
  return std::string(what) + ": \"" + a + "\" and \"" + b + "\"";
}

}  // namespace

std::vector<std::string> faults(const std::vector<PlacedText>& texts, const ChartLayout& layout) {
  constexpr double kRounding = 0.001;  // mm
  std::vector<std::string> found;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const Box& room = texts[i].room;
    const Box about = {room.left - kRounding, room.top - kRounding, room.width + 2 * kRounding,
                       room.height + 2 * kRounding};
    if (!holds(about, texts[i].corners)) found.push_back(in_words("outside", texts[i].text, "its room"));
    for (std::size_t j = 0; j < i; ++j) {
      if (overlap(texts[i].corners, texts[j].corners)) {
        found.push_back(in_words("overlap", texts[i].text, texts[j].text));
      }
    }
  }
  for (const tavdhost::LabelLayout& label : layout.labels) {
    if (!holds(layout.limits, label.cell)) found.push_back(in_words("beyond", label.text, "the limits"));
    if (layout.flag && overlap(label.cell, quad_of(*layout.flag))) {
      found.push_back(in_words("overlap", label.text, "the values of the duty"));
    }
    if (!layout.duty) continue;
    const double r = tavdhost::kDutyRadius;
    const Quad mark = tavdhost::quad_of({layout.duty->x - r, layout.duty->y - r, 2 * r, 2 * r});
    if (overlap(label.cell, mark)) found.push_back(in_words("overlap", label.text, "the duty"));
  }
  return found;
}

std::vector<Product> products_of(const std::string& path) {
  const tavdhost::Database database(path);
  std::vector<Product> products;
  for (tavdhost::Record record = database.first(); record; record = database.next(record)) {
    if (!hosts::is_product_class(database.key(record).class_id)) continue;
    Product product = tavdhost::load_product(database, record);
    if (product.flow.nhdd > 0) products.push_back(std::move(product));
  }
  return products;
}

}  // namespace charts
