#include "commands/diagram_options.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drawing/title.h"
#include "drawing/units.h"
#include "product/amount.h"
#include "tavd/tavdg.h"

namespace tavdhost {
namespace {

constexpr std::size_t kMostALabels = TAVDG_A_LABELS;         // further ones would be dropped
constexpr std::size_t kALabelBytes = TAVDG_LABEL_CHARS - 1;  // longer ones would be cut

std::vector<std::string> parts_of(const std::string& list) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (std::size_t comma = list.find(','); comma != std::string::npos; comma = list.find(',', from)) {
    parts.push_back(list.substr(from, comma - from));
    from = comma + 1;
  }
  parts.push_back(list.substr(from));
  return parts;
}

// The parts of a list that must have so many.
std::vector<std::string> parts_of(const char* option, const std::string& list, std::size_t count,
                                  const char* expected) {
  std::vector<std::string> parts = parts_of(list);
  if (parts.size() != count) {
    throw UserError(std::string(option) + " is " + in_quotes(list) + ", expected " + expected);
  }
  return parts;
}

// A text as the chart's narrow texts have it. The windows-1252 characters beyond Latin-1 are not offered:
// they differ from code page to code page.
std::string narrow_label(const std::string& choice, const std::string& utf8) {
  std::string narrow;
  const std::string text = printable(utf8);
  for (auto at = text.begin(); at != text.end();) {
    const std::uint32_t character = utf8::next(at, text.end());
    if (character > 0xFF || (character >= 0x80 && character < 0xA0)) {
      throw UserError("--a-label is " + in_quotes(choice) + ", expected characters of Latin-1");
    }
    narrow += static_cast<char>(character);
    // The diagram reads its labels as formats.
    if (character == '%') narrow += '%';
  }
  return narrow;
}

PositionLabel position_label(const std::string& choice) {
  const std::size_t equals = choice.find('=');
  PositionLabel label{};
  const char* const end = choice.data() + std::min(equals, choice.size());
  const auto [read, error] = std::from_chars(choice.data(), end, label.position);
  if (equals == std::string::npos || error != std::errc() || read != end || !std::isfinite(label.position)) {
    throw UserError("--a-label is " + in_quotes(choice) +
                    ", expected a position and a text such as 2=half open");
  }
  label.text = narrow_label(choice, choice.substr(equals + 1));
  if (label.text.size() > kALabelBytes) {
    throw UserError("--a-label is " + std::to_string(label.text.size()) +
                    " characters long (a percent sign counts twice), expected at most " +
                    std::to_string(kALabelBytes));
  }
  return label;
}

void read_units(const DiagramOptions& options, DiagramSettings& settings) {
  if (options.units.empty()) {
    settings.xunit = flow_unit_number(options.xunit);
    settings.yunit = pressure_unit_number(options.yunit);
    return;
  }
  const auto units = parts_of("--units", options.units, 2, "a flow and a pressure unit such as m3/h,Pa");
  settings.xunit = flow_unit_number(units[0], "--units");
  settings.yunit = pressure_unit_number(units[1], "--units");
}

// The two flows of --limits.
std::vector<std::string> limits_of(const DiagramOptions& options) {
  return parts_of("--limits", options.limits, 2, "two flows such as 20,80");
}

void read_levels(const std::string& lp, DiagramSettings& settings) {
  if (lp.empty()) return;
  const auto levels = parts_of("--lp", lp, 3, "lowest and highest level and their step such as 25,60,5");
  settings.lpmin = positive_number("--lp", levels[0]);
  settings.lpmax = positive_number("--lp", levels[1]);
  settings.lpstep = positive_number("--lp", levels[2]);
  if (settings.lpmax < settings.lpmin) {
    throw UserError("--lp is " + in_quotes(lp) + ", expected a highest level not below the lowest");
  }
}

}  // namespace

void add_diagram_options(CLI::App& command, DiagramOptions& options) {
  CLI::Option* qv =
      command
          .add_option("--qv", options.qv,
                      "Flow to mark, in l/s (m/s for products by air velocity), or with its unit: 288m3/h")
          ->type_name("NUMBER");
  command.add_option("--dp", options.dp, "Pressure to mark at that flow, in Pa, or with its unit: 0.2in.wg")
      ->type_name("NUMBER")
      ->needs(qv);
  CLI::Option* xunit = command
                           .add_option("--xunit", options.xunit,
                                       "Flow axis: l/s, l/h, m3/s, m3/h or cfm; always m/s by air velocity")
                           ->type_name("UNIT");
  CLI::Option* yunit =
      command.add_option("--yunit", options.yunit, "Pressure axis: Pa, kPa, inWC or inwg")->type_name("UNIT");
  command.add_option("--units", options.units, "Both axes at once, such as m3/h,Pa")
      ->type_name("FLOW,PRESSURE")
      ->excludes(xunit)
      ->excludes(yunit);
  command.add_flag("--static", options.static_pressure, "Show static pressure in place of total pressure");
  command.add_option("--limits", options.limits, "Two flows to mark on the lower edge, as --qv")
      ->type_name("QV1,QV2");
  command
      .add_option("--lp", options.lp,
                  "Lines of equal sound level from MIN to MAX dB(A), STEP apart, at most ten")
      ->type_name("MIN,MAX,STEP");
  command
      .add_option("--a-label", options.a_labels,
                  "Text at the line of a damper position in place of its number, once for each position")
      ->type_name("POSITION=TEXT")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  command.add_option("--params", options.parameter_list, "Values of several parameters at once")
      ->type_name("NAME=VALUE,...");
}

DiagramSettings diagram_settings(const DiagramOptions& options) {
  DiagramSettings settings{};
  settings.size = picture_size(options.size);
  read_units(options, settings);
  if (!options.qv.empty()) parse_flow("--qv", options.qv);
  if (!options.dp.empty()) settings.dp = parse_pressure("--dp", options.dp);
  check_title(options.title);
  if (!options.limits.empty()) {
    for (const std::string& limit : limits_of(options)) parse_flow("--limits", limit);
  }
  read_levels(options.lp, settings);
  if (options.a_labels.size() > kMostALabels) {
    throw UserError("--a-label is given " + std::to_string(options.a_labels.size()) +
                    " times, expected at most " + std::to_string(kMostALabels));
  }
  for (const std::string& choice : options.a_labels) settings.a_labels.push_back(position_label(choice));
  settings.parameters = options.parameters;
  if (!options.parameter_list.empty()) {
    const auto choices = parts_of(options.parameter_list);
    settings.parameters.insert(settings.parameters.end(), choices.begin(), choices.end());
  }
  return settings;
}

void place_flows(const DiagramOptions& options, const Product& product, DiagramSettings& settings) {
  if (!options.qv.empty()) settings.qv = flow_of(product, parse_flow("--qv", options.qv));
  if (options.limits.empty()) return;
  const auto limits = limits_of(options);
  settings.qvlimit1 = flow_of(product, parse_flow("--limits", limits[0]));
  settings.qvlimit2 = flow_of(product, parse_flow("--limits", limits[1]));
}

}  // namespace tavdhost
