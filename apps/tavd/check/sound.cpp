// Whether sound tables are what the calculations rely on: enough rows of enough curves, in order, and
// measured on the product's own curve.
#include <algorithm>
#include <cmath>
#include <vector>

#include "base/text.h"
#include "check/rows.h"
#include "product/product.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr double kSameResistance = 0.1;  // part of a curve's resistance by which its rows may differ
constexpr float kSameFlow = 0.1F;        // l/s by which the rows of one flow may differ
constexpr std::size_t kMostCurves = 20;

// How far a row may lie off the product's own curve: what rounding to whole Pa and reading off a chart make.
constexpr double kOffPart = 0.15;     // of the pressure of the product's own curve
constexpr double kOffPressure = 1;    // Pa besides
constexpr double kOffSettings = 0.3;  // part of the resistance of a damper's first and last setting

std::string and_more(std::size_t rows) {
  if (rows == 0) return "";
  return ", and " + std::to_string(rows) + (rows == 1 ? " more row off it" : " more rows off it");
}

class SoundCheck : RowFindings {
 public:
  SoundCheck(const FlowData& flow, Findings& findings) : RowFindings(findings), flow_(flow) {}

  void table();

 private:
  void along_flow(const std::vector<LwPoint>& rows);
  void curves(const std::vector<LwPoint>& rows);
  void flows(const std::vector<LwPoint>& rows);
  void grouped(const std::vector<LwPoint>& rows, const std::vector<std::size_t>& group, std::size_t groups,
               const char* what);
  void on_own_curve(const std::vector<LwPoint>& rows);
  void within_settings(const std::vector<LwPoint>& rows);
  float own_pressure(float qv) const;

  const FlowData& flow_;
};

void SoundCheck::table() {
  const std::vector<LwPoint> rows = rows_of(flow_.lwpoints, flow_.nlw);
  if (rows.empty()) return;
  if (rows.size() < 2) add(TAVD_ATT_LW_POINTS, 0, "at least 2 rows", "1");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const bool good = positive(TAVD_ATT_LW_POINTS, i + 1, "a flow", rows[i].qv);
    if (!positive(TAVD_ATT_LW_POINTS, i + 1, "a pressure", rows[i].dp) || !good) return;
  }
  switch (flow_.kind) {
    case TAVD_KIND_RESISTANCE:
    case TAVD_KIND_RESISTANCE_VELOCITY:
    case TAVD_KIND_RESISTANCE_POINTS:
      along_flow(rows);
      on_own_curve(rows);
      break;
    case TAVD_KIND_LIMITS:
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      curves(rows);
      within_settings(rows);
      break;
    case TAVD_KIND_RANGE:
    case TAVD_KIND_FAN:
      flows(rows);
      break;
    default:
      break;
  }
}

void SoundCheck::along_flow(const std::vector<LwPoint>& rows) {
  for (std::size_t i = 1; i < rows.size(); ++i)
    rises(TAVD_ATT_LW_POINTS, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
}

// Rows belong together whose resistance is that of the curve's first row within 10 %.
void SoundCheck::curves(const std::vector<LwPoint>& rows) {
  std::vector<double> resistances;
  std::vector<std::size_t> curve_of;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double k = resistance_of(rows[i].qv, rows[i].dp);
    const auto known = std::ranges::find_if(
        resistances, [&](double other) { return std::abs(k - other) < kSameResistance * other; });
    curve_of.push_back(static_cast<std::size_t>(known - resistances.begin()));
    if (known != resistances.end()) continue;
    if (!resistances.empty() && k > resistances.back()) {
      add(TAVD_ATT_LW_POINTS, i + 1, "curves from the highest resistance down",
          resistance_text(k) + " after " + resistance_text(resistances.back()) + " Pa/flow2");
    }
    resistances.push_back(k);
  }
  grouped(rows, curve_of, resistances.size(), "curve of one resistance");
}

void SoundCheck::flows(const std::vector<LwPoint>& rows) {
  std::vector<float> flows;
  std::vector<std::size_t> flow_of;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const float qv = rows[i].qv;
    const auto known =
        std::ranges::find_if(flows, [&](float other) { return std::abs(qv - other) < kSameFlow; });
    flow_of.push_back(static_cast<std::size_t>(known - flows.begin()));
    if (known != flows.end()) continue;
    if (!flows.empty()) rises(TAVD_ATT_LW_POINTS, i + 1, "a flow", flows.back(), qv);
    flows.push_back(qv);
  }
  grouped(rows, flow_of, flows.size(), "flow");
}

// At least two groups of at least two rows, whose pressures rise.
void SoundCheck::grouped(const std::vector<LwPoint>& rows, const std::vector<std::size_t>& group,
                         std::size_t groups, const char* what) {
  if (groups < 2) add(TAVD_ATT_LW_POINTS, 0, std::string("rows of more than one ") + what, "one");
  if (groups > kMostCurves) {
    add(TAVD_ATT_LW_POINTS, 0, "rows of at most " + std::to_string(kMostCurves) + " of " + what,
        std::to_string(groups));
  }
  std::vector<std::size_t> counts(groups);
  std::vector<float> before(groups);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t g = group[i];
    if (counts[g]++ > 0 && !(rows[i].dp > before[g])) {
      add(TAVD_ATT_LW_POINTS, i + 1, std::string("pressures that rise within each ") + what,
          shortest(rows[i].dp) + " after " + shortest(before[g]));
    }
    before[g] = rows[i].dp;
  }
  for (std::size_t g = 0; g < groups; ++g) {
    const auto first = static_cast<std::size_t>(std::ranges::find(group, g) - group.begin());
    if (counts[g] < 2)
      add(TAVD_ATT_LW_POINTS, first + 1, std::string("at least 2 rows for each ") + what, "1");
  }
}

// The pressure of a fixed resistance at this flow; 0 where it has none.
float SoundCheck::own_pressure(float qv) const {
  if (flow_.kind == TAVD_KIND_RESISTANCE_POINTS) return tavca_floating_dp(&flow_, qv);
  if (flow_.nref == 0 || !(flow_.qvref > 0)) return 0;
  return static_cast<float>(resistance_of(flow_.qvref, flow_.dpref) * double{qv} * double{qv});
}

// The levels of a fixed resistance are looked up by its own pressure.
void SoundCheck::on_own_curve(const std::vector<LwPoint>& rows) {
  std::vector<std::size_t> off;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double own = own_pressure(rows[i].qv);
    if (own > 0 && std::abs(double{rows[i].dp} - own) > kOffPart * own + kOffPressure) off.push_back(i);
  }
  if (off.empty()) return;
  const LwPoint& row = rows[off[0]];
  add(TAVD_ATT_LW_POINTS, off[0] + 1,
      "the product's own pressure, " + brief(own_pressure(row.qv)) + " Pa at " + shortest(row.qv) + ' ' +
          flow_unit(flow_),
      shortest(row.dp) + and_more(off.size() - 1));
}

// The levels of a damper are looked up by the resistance of its settings.
void SoundCheck::within_settings(const std::vector<LwPoint>& rows) {
  const auto settings = rows_of(flow_.damper, flow_.ndamper);
  if (settings.empty() || !(settings.front().qv > 0) || !(settings.back().qv > 0)) return;
  const double highest = resistance_of(settings.front().qv, settings.front().dp);
  const double lowest = resistance_of(settings.back().qv, settings.back().dp);
  std::vector<std::size_t> off;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double k = resistance_of(rows[i].qv, rows[i].dp);
    if (k > highest * (1 + kOffSettings) || k < lowest / (1 + kOffSettings)) off.push_back(i);
  }
  if (off.empty()) return;
  const LwPoint& row = rows[off[0]];
  add(TAVD_ATT_LW_POINTS, off[0] + 1,
      "a resistance of the settings, " + resistance_text(lowest) + " to " + resistance_text(highest) +
          " Pa/flow2",
      resistance_text(resistance_of(row.qv, row.dp)) + and_more(off.size() - 1));
}

}  // namespace

void check_sound(const FlowData& flow, Findings& findings) {
  if (flow.nhdd != 0) SoundCheck(flow, findings).table();
}

}  // namespace tavdhost
