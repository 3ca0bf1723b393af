#include "answers/calculated_text.h"

#include <utility>

#include "base/numbers.h"
#include "base/sheet.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "product/families.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

constexpr int kLevelDecimals = 1;   // dB
constexpr int kLengthDecimals = 2;  // m
constexpr int kPositionDecimals = 2;

void add_layers(Sheet& sheet, const Origin& origin) {
  for (const AnsweringLayer& layer : origin.layers) {
    if (layer.attributes.empty()) continue;
    std::string names;
    for (const std::int16_t number : layer.attributes) {
      names += (names.empty() ? "" : ", ") + attribute_name(number);
    }
    sheet.text("Data of the " + std::string(layer_text(layer.kind)),
               printable(layer.object_id) + ": " + names);
  }
}

void add_origin(Sheet& sheet, const Origin& origin) {
  if (origin.is_main_record()) {
    sheet.text("Record", sizing_text(origin.mode) + ", " + std::to_string(origin.sizes) +
                             (origin.sizes == 1 ? " size" : " sizes"));
    sheet.text("Data of", origin.data_of.empty() ? "the main record, like those of none of its sizes"
                                                 : printable(origin.data_of));
  } else if (!origin.layers.empty()) {
    sheet.text("Record", origin.mode == 0 ? "variant of a layered product" : sizing_text(origin.mode));
    add_layers(sheet, origin);
  }
}

void print_product(std::ostream& out, const Chosen& chosen, const AnswerForm& form) {
  const Product& product = chosen.product;
  const FlowData& flow = product.flow;
  out << printable(product.key.class_id) << ' ' << printable(product.key.object_id) << '\n';
  Sheet sheet;
  sheet.text("Code", product.code);
  add_origin(sheet, chosen.origin);
  if (!product.description.empty()) sheet.text("Description", product.description);
  if (product.size.b != 0) sheet.text("Size", size_text(product.size) + " mm");
  sheet.text("Kind", kind_text(flow));
  if (flow.nhdd != 0) {
    sheet.text("Flow limits", flow_limits_text(flow, form.units));
    sheet.text("Pressure limits", pressure_limits_text(flow, form.units));
  }
  for (const auto& [name, value] : chosen_parameters(flow))
    sheet.text("Parameter " + printable(name), printable(value));
  sheet.print(out);
}

// A sheet on which pressures stand in the unit of the form.
class PointSheet : public Sheet {
 public:
  explicit PointSheet(const AnswerForm& form) : form_(form) {}
  void pressure(const std::string& name, float value, const std::string& remark = "") {
    number(name, pressure_text(value, form_), form_.units.pressure->name, remark);
  }

 private:
  const AnswerForm& form_;
};

void add_range(PointSheet& sheet, const OperatingPoint& point) {
  if (point.range_code != 0) {
    sheet.number("Pressure range", "-", "", hosts::range_text(point.range_code));
    return;
  }
  sheet.pressure("Lowest pressure", point.dp_min);
  sheet.pressure("Highest pressure", point.dp_max);
}

void add_damper(PointSheet& sheet, const std::string& form, const std::optional<DamperAnswer>& answer) {
  if (!answer) return;
  const bool known = answer->has_position();
  sheet.number("Position, " + form, known ? fixed(answer->position, kPositionDecimals) : "-", "",
               hosts::damper_text(answer->code));
  if (known) sheet.pressure("  Pressure there", answer->dp);
}

void add_fan(PointSheet& sheet, const std::optional<FanAnswer>& fan) {
  if (!fan) return;
  sheet.pressure("Fan, total pressure", fan->total, hosts::fan_text(fan->code));
  sheet.pressure("Fan, static pressure", fan->fan_static);
  sheet.pressure("Fan, dynamic pressure", fan->dynamic);
  if (fan->check_code) sheet.text("Fan, operating point", hosts::fan_check_text(*fan->check_code));
}

void add_levels(PointSheet& sheet, const Calculated& calculated, const AnswerForm& form) {
  const std::optional<SoundAnswer>& sound = calculated.point.sound;
  if (!sound) return;
  if (sound->code != 0) {
    sheet.number("Sound", "-", "", hosts::sound_text(sound->code));
    return;
  }
  const std::string mark =
      calculated.point.reachable.value_or(true) ? "" : "not of this point, which cannot be reached";
  sheet.number("Sound power, A-weighted", level_text(sound->lw_A), "dB(A)", mark);
  sheet.number("Sound level in the room", level_text(sound->room_level), "dB(A)", mark);
  sheet.number("Room damping", level_text(form.room_damping), "dB");
  sheet.text("End reflection", end_reflection_text(calculated.chosen.end_reflection));
}

void add_band_row(Columns& columns, const std::string& name, const Bands& bands) {
  std::vector<std::string> row{"  " + name};
  for (const float level : bands) row.push_back(level_text(level));
  columns.add(std::move(row));
}

void print_bands(std::ostream& out, const OperatingPoint& point) {
  const bool has_levels = point.sound && point.sound->code == 0;
  if (!has_levels && !point.attenuation) return;
  Columns columns;
  std::vector<std::string> heading{"  Octave band, Hz"};
  for (const int hz : kBandHz) heading.push_back(std::to_string(hz));
  columns.add(std::move(heading));
  if (has_levels) add_band_row(columns, "Sound power, dB", point.sound->lw);
  if (point.attenuation) add_band_row(columns, "Attenuation, dB", *point.attenuation);
  for (std::size_t band = 1; band <= TAVD_BANDS; ++band) columns.align_right(band);
  columns.print(out);
}

std::string headline(const Calculated& calculated, const AnswerForm& form) {
  const OperatingPoint& point = calculated.point;
  const hosts::Unit& unit = form.units.flow_of(calculated.chosen.product.flow);
  std::string text = "At " + brief(shown(point.qv, unit)) + " " + unit.name;
  if (!calculated.typed.empty()) text += " (" + calculated.typed + ")";
  if (point.dp)
    text += " and " + brief(shown(*point.dp, *form.units.pressure)) + " " + form.units.pressure->name;
  const bool dp_in_range = point.dp_in_range.value_or(true);
  if (!point.flow_in_range || !dp_in_range) {
    text += std::string(", outside the product's ") + (point.flow_in_range ? "" : "flow") +
            (point.flow_in_range || dp_in_range ? "" : " and ") + (dp_in_range ? "" : "pressure") + " limits";
  }
  if (!point.reachable.value_or(true)) text += ", cannot be reached: " + unreachable_text(calculated, form);
  return text;
}

}  // namespace

std::string level_text(float level) {
  return fixed(level, kLevelDecimals);
}

std::string pressure_text(float pressure, const AnswerForm& form) {
  return fixed(shown(pressure, *form.units.pressure), form.units.pressure->decimals);
}

std::string length_text(float length) {
  return fixed(length, kLengthDecimals);
}

std::string end_reflection_text(EndReflection end_reflection) {
  switch (end_reflection) {
    case EndReflection::kInTable:
      return "of the duct not taken off; --end-reflection takes it off, as the diagram does";
    case EndReflection::kTakenOff:
      return "of the duct taken off, as in the diagram";
    case EndReflection::kNone:
      break;
  }
  return "none to take off";
}

std::string unreachable_text(const Calculated& calculated, const AnswerForm& form) {
  const OperatingPoint& point = calculated.point;
  if (point.fan && point.fan->check_code) return hosts::fan_check_text(*point.fan->check_code);
  const std::string lowest = pressure_text(point.dp_min, form);
  const std::string highest = pressure_text(point.dp_max, form);
  const bool one = hosts::has_fixed_pressure(calculated.chosen.product.flow);
  return "it takes " + lowest + (one ? "" : " - " + highest) + " " + form.units.pressure->name +
         " at this flow";
}

void print_calculated(std::ostream& out, const Calculated& calculated, const AnswerForm& form) {
  print_product(out, calculated.chosen, form);
  if (calculated.chosen.product.flow.nhdd == 0) return;
  const OperatingPoint& point = calculated.point;
  out << '\n' << headline(calculated, form) << '\n';
  PointSheet sheet(form);
  add_range(sheet, point);
  add_damper(sheet, "stepless", point.stepless);
  add_damper(sheet, "stepped", point.stepped);
  add_fan(sheet, point.fan);
  if (point.throw_length) {
    sheet.number("Throw length", length_text(*point.throw_length), "m", "L02, to an air velocity of 0.2 m/s");
  }
  add_levels(sheet, calculated, form);
  sheet.print(out);
  print_bands(out, point);
}

}  // namespace tavdhost
