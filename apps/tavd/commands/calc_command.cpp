// tavd calc: what a product does at an operating point.
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "base/json_text.h"
#include "base/numbers.h"
#include "base/sheet.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/operating_point.h"
#include "product/product.h"

namespace tavdhost {
namespace {

struct CalcOptions {
  ProductChoice product;
  std::string qv;
  std::optional<std::string> dp;
  bool json = false;
};

constexpr const char* kBandNames[TAVD_BANDS] = {"63", "125", "250", "500", "1000", "2000", "4000", "8000"};
constexpr int kBandHz[TAVD_BANDS] = {63, 125, 250, 500, 1000, 2000, 4000, 8000};
constexpr int kLevelDecimals = 1;     // dB
constexpr int kPressureDecimals = 1;  // Pa
constexpr int kLengthDecimals = 2;    // m

// ---- As text ---------------------------------------------------------------

void print_product(const Product& product) {
  const FlowData& flow = product.flow;
  std::cout << printable(product.key.class_id) << ' ' << printable(product.key.object_id) << '\n';
  Sheet sheet;
  sheet.text("Code", product.code);
  if (!product.description.empty()) sheet.text("Description", product.description);
  if (product.size.b != 0) sheet.text("Size", size_text(product.size) + " mm");
  sheet.text("Kind", kind_text(flow));
  if (flow.nhdd != 0) {
    sheet.text("Flow limits", flow_limits_text(flow));
    sheet.text("Pressure limits", pressure_limits_text(flow));
  }
  for (const auto& [name, value] : chosen_parameters(flow))
    sheet.text("Parameter " + printable(name), printable(value));
  sheet.print(std::cout);
}

void add_range(Sheet& sheet, const OperatingPoint& point) {
  if (point.range_code != 0) {
    sheet.number("Pressure range", "-", "", hosts::range_text(point.range_code));
    return;
  }
  sheet.number("Lowest pressure", fixed(point.dp_min, kPressureDecimals), "Pa");
  sheet.number("Highest pressure", fixed(point.dp_max, kPressureDecimals), "Pa");
}

void add_damper(Sheet& sheet, const std::string& form, const std::optional<DamperAnswer>& answer) {
  if (!answer) return;
  const bool known = answer->has_position();
  sheet.number("Position, " + form, known ? fixed(answer->position, 2) : "-", "",
               hosts::damper_text(answer->code));
  if (known) sheet.number("  Pressure there", fixed(answer->dp, kPressureDecimals), "Pa");
}

void add_fan(Sheet& sheet, const std::optional<FanAnswer>& fan) {
  if (!fan) return;
  sheet.number("Fan, total pressure", fixed(fan->total, kPressureDecimals), "Pa", hosts::fan_text(fan->code));
  sheet.number("Fan, static pressure", fixed(fan->fan_static, kPressureDecimals), "Pa");
  sheet.number("Fan, dynamic pressure", fixed(fan->dynamic, kPressureDecimals), "Pa");
  if (fan->check_code) sheet.text("Fan, operating point", hosts::fan_check_text(*fan->check_code));
}

void add_band_row(Columns& columns, const std::string& name, const Bands& bands) {
  std::vector<std::string> row{"  " + name};
  for (const float level : bands) row.push_back(fixed(level, kLevelDecimals));
  columns.add(std::move(row));
}

void print_bands(const OperatingPoint& point) {
  const bool has_levels = point.sound && point.sound->code == 0;
  if (!has_levels && !point.attenuation) return;
  Columns columns;
  std::vector<std::string> heading{"  Octave band, Hz"};
  heading.insert(heading.end(), std::begin(kBandNames), std::end(kBandNames));
  columns.add(std::move(heading));
  if (has_levels) add_band_row(columns, "Sound power, dB", point.sound->lw);
  if (point.attenuation) add_band_row(columns, "Attenuation, dB", *point.attenuation);
  for (std::size_t band = 1; band <= TAVD_BANDS; ++band) columns.align_right(band);
  columns.print(std::cout);
}

const char* outside_text(const OperatingPoint& point) {
  const bool dp_in_range = point.dp_in_range.value_or(true);
  if (point.flow_in_range) return dp_in_range ? "" : ", outside the product's pressure limits";
  return dp_in_range ? ", outside the product's flow limits"
                     : ", outside the product's flow and pressure limits";
}

void print_point(const Product& product, const OperatingPoint& point) {
  const char* unit = flow_unit(product.flow);
  std::cout << "\nAt " << brief(point.qv) << ' ' << unit;
  if (point.dp) std::cout << " and " << brief(*point.dp) << " Pa";
  std::cout << outside_text(point) << '\n';
  Sheet sheet;
  add_range(sheet, point);
  add_damper(sheet, "stepless", point.stepless);
  add_damper(sheet, "stepped", point.stepped);
  add_fan(sheet, point.fan);
  if (point.throw_length) sheet.number("Throw length", fixed(*point.throw_length, kLengthDecimals), "m");
  if (point.sound && point.sound->code == 0) {
    sheet.number("Sound level in the room", fixed(point.sound->room_level, kLevelDecimals), "dB(A)");
  } else if (point.sound) {
    sheet.number("Sound", "-", "", hosts::sound_text(point.sound->code));
  }
  sheet.print(std::cout);
  print_bands(point);
}

// ---- As JSON ---------------------------------------------------------------

Json::Value code_json(int code, const char* text) {
  Json::Value json;
  json["code"] = code;
  json["text"] = text;
  return json;
}

Json::Value bands_json(const Bands& bands) {
  Json::Value json(Json::arrayValue);
  for (const float level : bands) json.append(json_number(level));
  return json;
}

Json::Value damper_json(const DamperAnswer& answer) {
  Json::Value json = code_json(answer.code, hosts::damper_text(answer.code));
  if (answer.has_position()) {
    json["position"] = json_number(answer.position);
    json["dp_Pa"] = json_number(answer.dp);
  }
  return json;
}

Json::Value fan_json(const FanAnswer& fan) {
  Json::Value json = code_json(fan.code, hosts::fan_text(fan.code));
  json["dp_total_Pa"] = json_number(fan.total);
  json["dp_static_Pa"] = json_number(fan.fan_static);
  json["dp_dynamic_Pa"] = json_number(fan.dynamic);
  if (fan.check_code) json["check"] = code_json(*fan.check_code, hosts::fan_check_text(*fan.check_code));
  return json;
}

Json::Value sound_json(const SoundAnswer& sound) {
  Json::Value json = code_json(sound.code, hosts::sound_text(sound.code));
  if (sound.code == 0) {
    for (const int hz : kBandHz) json["bands_Hz"].append(hz);
    json["lw_dB"] = bands_json(sound.lw);
    json["room_level_dBA"] = json_number(sound.room_level);
  }
  return json;
}

Json::Value point_json(const Product& product, const OperatingPoint& point) {
  Json::Value json;
  json["operating_point"][flow_key(product.flow)] = json_number(point.qv);
  if (point.dp) json["operating_point"]["dp_Pa"] = json_number(*point.dp);
  json["operating_point"]["flow_in_range"] = point.flow_in_range;
  if (point.dp_in_range) json["operating_point"]["dp_in_range"] = *point.dp_in_range;
  json["pressure_range"] = code_json(point.range_code, hosts::range_text(point.range_code));
  if (point.range_code == 0) {
    json["pressure_range"]["dp_min_Pa"] = json_number(point.dp_min);
    json["pressure_range"]["dp_max_Pa"] = json_number(point.dp_max);
  }
  if (point.stepless) json["position_stepless"] = damper_json(*point.stepless);
  if (point.stepped) json["position_stepped"] = damper_json(*point.stepped);
  if (point.fan) json["fan"] = fan_json(*point.fan);
  if (point.sound) json["sound"] = sound_json(*point.sound);
  if (point.attenuation) json["attenuation_dB"] = bands_json(*point.attenuation);
  if (point.throw_length) json["throw_length_m"] = json_number(*point.throw_length);
  return json;
}

void print_json(const Product& product, const OperatingPoint& point) {
  Json::Value json = point_json(product, point);
  json["product"] = product_json(product);
  for (const auto& [name, value] : chosen_parameters(product.flow)) {
    json["product"]["parameters"][printable(name)] = printable(value);
  }
  write_json(std::cout, json);
}

// ---- The command -----------------------------------------------------------

void run_calc(const CalcOptions& options) {
  const float qv = positive_number("--qv", options.qv);
  std::optional<float> dp;
  if (options.dp) dp = positive_number("--dp", *options.dp);
  const Product product = chosen_product(options.product);
  const OperatingPoint point = calculate(product, answers_of(product, dp.has_value()), qv, dp);
  if (options.json) {
    print_json(product, point);
  } else {
    print_product(product);
    print_point(product, point);
  }
}

}  // namespace

void add_calc_command(CLI::App& app) {
  auto options = std::make_shared<CalcOptions>();
  CLI::App* command = app.add_subcommand("calc", "Calculates a product at an operating point");
  add_product_arguments(*command, options->product);
  command->add_option("--qv", options->qv, "Flow in l/s; air velocity in m/s for products by air velocity")
      ->required()
      ->type_name("NUMBER");
  command->add_option("--dp", options->dp, "Total pressure over the product in Pa")->type_name("NUMBER");
  command->add_flag("--json", options->json, "As JSON, numbers in full");
  add_product_options(*command, options->product);
  command->footer("Example: tavd calc catalogue.tavdb DMP QZDA-160 --qv 50 --dp 60");
  command->callback([options] { run_calc(*options); });
}

}  // namespace tavdhost
