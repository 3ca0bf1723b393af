// Whether header and tables are what the calculations rely on: they look for neighbours row by row and do not
// check the order themselves. The pressures are total pressures, as the calculations read them.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "check/check.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr double kSameResistance = 0.1;  // part of a curve's resistance by which its rows may differ
constexpr float kSameFlow = 0.1F;        // l/s by which the rows of one flow may differ
constexpr std::size_t kMostCurves = 20;

// The attribute that a kind takes its curve from; 0 for kinds that need none.
struct CurveOfKind {
  int kind;
  std::int16_t attribute;
  const char* what;
};

constexpr CurveOfKind kCurves[] = {
    {TAVD_KIND_RESISTANCE, TAVD_ATT_QVDP_REF, "a reference point"},
    {TAVD_KIND_RESISTANCE_VELOCITY, TAVD_ATT_QVDP_REF, "a reference point"},
    {TAVD_KIND_RESISTANCE_POINTS, TAVD_ATT_QVDP_POINTS, "a pressure curve"},
    {TAVD_KIND_LIMITS, 0, ""},
    {TAVD_KIND_DAMPER, TAVD_ATT_DAMPER_POINTS, "damper settings"},
    {TAVD_KIND_DAMPER_VELOCITY, TAVD_ATT_DAMPER_POINTS, "damper settings"},
    {TAVD_KIND_RANGE, 0, ""},
    {TAVD_KIND_FAN, TAVD_ATT_FAN_CURVE, "a fan curve"},
};

template <typename Row, std::size_t N>
std::vector<Row> rows_of(const Row (&table)[N], int count) {
  const auto most = static_cast<std::size_t>(std::clamp<int>(count, 0, N));
  std::vector<Row> rows(most);
  if (most > 0) std::memcpy(rows.data(), table, most * sizeof(Row));
  return rows;
}

class TableCheck {
 public:
  TableCheck(const Entry& entry, const FlowData& flow, Findings& findings)
      : entry_(entry), flow_(flow), findings_(findings) {}

  void header();
  void curve();
  void sound();
  void attenuation();
  void throws();
  void parameters();

 private:
  void limits(std::int16_t attribute, bool from_zero);
  void reference();
  void damper();
  void pressure_curve();
  void fan();
  void sound_along_flow(const std::vector<LwPoint>& rows);
  void sound_curves(const std::vector<LwPoint>& rows);
  void sound_flows(const std::vector<LwPoint>& rows);
  void sound_groups(const std::vector<LwPoint>& rows, const std::vector<std::size_t>& group,
                    std::size_t groups, const char* what);
  void parameter(std::int16_t attribute, const ParTable& table);

  void add(std::int16_t attribute, std::size_t row, const std::string& expected, const std::string& found) {
    findings_.add(attribute, row, expected, found);
  }
  // Each value above the one before it.
  void rises(std::int16_t attribute, std::size_t row, const char* what, float before, float value) {
    if (value > before) return;
    add(attribute, row, std::string(what) + " above " + shortest(before) + " of the row before",
        shortest(value));
  }
  bool positive(std::int16_t attribute, std::size_t row, const char* what, float value) {
    if (value > 0) return true;
    add(attribute, row, std::string(what) + " above 0", shortest(value));
    return false;
  }

  const Entry& entry_;
  const FlowData& flow_;
  Findings& findings_;
};

void TableCheck::limits(std::int16_t attribute, bool from_zero) {
  const struct {
    const char* what;
    float low, high;
  } pairs[] = {{"flow", flow_.qvmin, flow_.qvmax}, {"pressure", flow_.dpmin, flow_.dpmax}};
  for (const auto& [what, low, high] : pairs) {
    const bool good_low = from_zero ? low >= 0 : low > 0;
    if (good_low && high > low) continue;
    add(attribute, 0,
        std::string("a lowest ") + what + (from_zero ? " of 0 or more" : " above 0") +
            " and a higher highest",
        shortest(low) + " and " + shortest(high));
  }
}

void TableCheck::header() {
  const std::int16_t attribute =
      entry_.attributes.contains(TAVD_ATT_FLOW_HEADER) ? TAVD_ATT_FLOW_HEADER : TAVD_ATT_OLD_HEADER;
  const int kind = flow_.kind;
  const bool known =
      std::ranges::any_of(kCurves, [&](const CurveOfKind& curve) { return curve.kind == kind; });
  if (!known) {
    add(attribute, 0, "kind 10, 11, 12, 13, 20, 22, 30 or 40, with 100 added for total pressures",
        std::to_string(kind));
  }
  if (flow_.b <= 0) add(attribute, 0, "a width or diameter above 0 mm", std::to_string(flow_.b));
  if (flow_.h < 0) add(attribute, 0, "a height above 0 mm, or 0 for a round duct", std::to_string(flow_.h));
  const bool is_fan = kind == TAVD_KIND_FAN;
  limits(is_fan && entry_.attributes.contains(TAVD_ATT_QVDP_LIMITS) ? std::int16_t{TAVD_ATT_QVDP_LIMITS}
                                                                    : attribute,
         is_fan);
}

void TableCheck::curve() {
  const int kind = flow_.kind;
  for (const CurveOfKind& curve : kCurves) {
    if (is_layer(entry_)) break;
    if (curve.kind != kind || curve.attribute == 0 || entry_.attributes.contains(curve.attribute)) continue;
    add(curve.attribute, 0, std::string(curve.what) + ", as the kind is " + std::to_string(kind), "none");
  }
  reference();
  damper();
  pressure_curve();
  fan();
}

void TableCheck::reference() {
  if (flow_.nref == 0) return;
  positive(TAVD_ATT_QVDP_REF, 0, "a flow", flow_.qvref);
  positive(TAVD_ATT_QVDP_REF, 0, "a pressure", flow_.dpref);
}

void TableCheck::damper() {
  const auto rows = rows_of(flow_.damper, flow_.ndamper);
  double before = HUGE_VAL;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const DamperPoint& row = rows[i];
    const bool good = positive(TAVD_ATT_DAMPER_POINTS, i + 1, "a flow", row.qv);
    if (!positive(TAVD_ATT_DAMPER_POINTS, i + 1, "a pressure", row.dp) || !good) continue;
    const double resistance = double{row.dp} / (double{row.qv} * double{row.qv});
    if (resistance >= before) {
      add(TAVD_ATT_DAMPER_POINTS, i + 1, "less resistance than the row before, most throttled first",
          brief(static_cast<float>(resistance)) + " after " + brief(static_cast<float>(before)) +
              " Pa/flow2");
    }
    before = resistance;
    if (i == 0) continue;
    const bool table_rises = rows.back().pos > rows.front().pos;
    if (table_rises ? !(row.pos > rows[i - 1].pos) : !(row.pos < rows[i - 1].pos)) {
      add(TAVD_ATT_DAMPER_POINTS, i + 1, "settings that rise, or that fall, from row to row",
          shortest(row.pos) + " after " + shortest(rows[i - 1].pos));
    }
  }
}

void TableCheck::pressure_curve() {
  const auto rows = rows_of(flow_.qvdppoints, flow_.nqvdp);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    positive(TAVD_ATT_QVDP_POINTS, i + 1, "a flow", rows[i].qv);
    positive(TAVD_ATT_QVDP_POINTS, i + 1, "a pressure", rows[i].dp);
    if (i == 0) continue;
    rises(TAVD_ATT_QVDP_POINTS, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
    rises(TAVD_ATT_QVDP_POINTS, i + 1, "a pressure", rows[i - 1].dp, rows[i].dp);
  }
}

void TableCheck::fan() {
  const auto rows = rows_of(flow_.fancurve, flow_.nfan);
  for (std::size_t i = 1; i < rows.size(); ++i)
    rises(TAVD_ATT_FAN_CURVE, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
}

void TableCheck::sound() {
  const auto rows = rows_of(flow_.lwpoints, flow_.nlw);
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
      sound_along_flow(rows);
      break;
    case TAVD_KIND_LIMITS:
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      sound_curves(rows);
      break;
    case TAVD_KIND_RANGE:
    case TAVD_KIND_FAN:
      sound_flows(rows);
      break;
    default:
      break;
  }
}

void TableCheck::sound_along_flow(const std::vector<LwPoint>& rows) {
  for (std::size_t i = 1; i < rows.size(); ++i)
    rises(TAVD_ATT_LW_POINTS, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
}

// Rows belong together whose resistance is that of the curve's first row within 10 %.
void TableCheck::sound_curves(const std::vector<LwPoint>& rows) {
  std::vector<double> resistances;
  std::vector<std::size_t> curve_of;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double k = double{rows[i].dp} / (double{rows[i].qv} * double{rows[i].qv});
    const auto known = std::ranges::find_if(
        resistances, [&](double other) { return std::abs(k - other) < kSameResistance * other; });
    curve_of.push_back(static_cast<std::size_t>(known - resistances.begin()));
    if (known != resistances.end()) continue;
    if (!resistances.empty() && k > resistances.back()) {
      add(TAVD_ATT_LW_POINTS, i + 1, "curves from the highest resistance down",
          brief(static_cast<float>(k)) + " after " + brief(static_cast<float>(resistances.back())) +
              " Pa/flow2");
    }
    resistances.push_back(k);
  }
  sound_groups(rows, curve_of, resistances.size(), "curve of one resistance");
}

void TableCheck::sound_flows(const std::vector<LwPoint>& rows) {
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
  sound_groups(rows, flow_of, flows.size(), "flow");
}

// At least two groups of at least two rows, whose pressures rise.
void TableCheck::sound_groups(const std::vector<LwPoint>& rows, const std::vector<std::size_t>& group,
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

void TableCheck::attenuation() {
  const auto rows = rows_of(flow_.dlwpoints, flow_.ndlwpoints);
  if (rows.size() > 1 && flow_.kind < TAVD_KIND_DAMPER) {
    add(TAVD_ATT_DLW_POINTS, 0, "one row, as the attenuation of this kind follows nothing",
        std::to_string(rows.size()));
  }
  const char* what = flow_.kind == TAVD_KIND_RANGE || flow_.kind == TAVD_KIND_FAN ? "a flow" : "a setting";
  for (std::size_t i = 1; i < rows.size(); ++i) {
    rises(TAVD_ATT_DLW_POINTS, i + 1, what, rows[i - 1].pos, rows[i].pos);
  }
}

void TableCheck::throws() {
  const auto rows = rows_of(flow_.qvL2, flow_.nqvL2);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    positive(TAVD_ATT_QV_L2, i + 1, "a flow", rows[i].qv);
    positive(TAVD_ATT_QV_L2, i + 1, "a throw", rows[i].L2);
    if (i > 0) rises(TAVD_ATT_QV_L2, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
  }
  const auto by_value = rows_of(flow_.parL2, flow_.nparL2);
  for (std::size_t i = 0; i < by_value.size(); ++i) {
    positive(TAVD_ATT_PAR_L2, i + 1, "a flow", by_value[i].qv);
    positive(TAVD_ATT_PAR_L2, i + 1, "a throw", by_value[i].L2);
    const bool same =
        i > 0 && std::memcmp(by_value[i].value, by_value[i - 1].value, TAVD_PARAMETER_CHARS) == 0;
    if (same) rises(TAVD_ATT_PAR_L2, i + 1, "a flow", by_value[i - 1].qv, by_value[i].qv);
  }
}

// A value as a terminated text.
std::string value_of(const ParEntry& row) {
  return std::string(trim_end({row.value, strnlen(row.value, sizeof row.value)}));
}

void TableCheck::parameter(std::int16_t attribute, const ParTable& table) {
  const auto rows = rows_of(table.table, table.count);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const std::string value = value_of(rows[i]);
    const std::string before = value_of(rows[i - 1]);
    float number = 0;
    float number_before = 0;
    if (tavca_param_valuecmp(before.c_str(), value.c_str()) == 0) {
      add(attribute, i + 1, "each value once", in_quotes(value) + " twice");
    } else if (tavca_param_valuetoreal(value.c_str(), &number) == 0 &&
               tavca_param_valuetoreal(before.c_str(), &number_before) == 0) {
      rises(attribute, i + 1, "a value", number_before, number);
    }
  }
}

void TableCheck::parameters() {
  for (std::size_t i = 0; i < TAVD_PARAMETERS; ++i) {
    ParTable table;
    std::memcpy(&table, &flow_.par[i], sizeof table);
    parameter(kParameterTables[i], table);
  }
}

}  // namespace

void check_tables(const Entry& entry, const FlowData& flow, Findings& findings) {
  if (flow.nhdd == 0) return;
  TableCheck check(entry, flow, findings);
  check.header();
  check.curve();
  check.sound();
  check.attenuation();
  check.throws();
  check.parameters();
}

}  // namespace tavdhost
