// Whether header and tables are what the calculations rely on: they look for neighbours row by row and do not
// check the order themselves. The pressures are total pressures, as the calculations read them.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "check.h"
#include "numbers.h"
#include "record_layout.h"
#include "tavd/tavca.h"
#include "text.h"

namespace tavdhost {

namespace {

constexpr std::int16_t kOldHeader = 1649;
constexpr std::int16_t kHeader = 1650;
constexpr std::int16_t kReference = 1651;
constexpr std::int16_t kDamperPoints = 1652;
constexpr std::int16_t kSoundPoints = 1653;
constexpr std::int16_t kAttenuationPoints = 1655;
constexpr std::int16_t kFlowPoints = 1657;
constexpr std::int16_t kFanLimits = 1658;
constexpr std::int16_t kThrowPoints = 1659;
constexpr std::int16_t kParameterThrow = 1660;
constexpr std::int16_t kFanCurve = 1666;

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
    {10, kReference, "a reference point"},
    {11, kReference, "a reference point"},
    {12, kFlowPoints, "a pressure curve"},
    {13, 0, ""},
    {20, kDamperPoints, "damper settings"},
    {22, kDamperPoints, "damper settings"},
    {30, 0, ""},
    {40, kFanCurve, "a fan curve"},
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
  const std::int16_t attribute = entry_.attributes.contains(kHeader) ? kHeader : kOldHeader;
  const int kind = flow_.kind;
  const bool known =
      std::ranges::any_of(kCurves, [&](const CurveOfKind& curve) { return curve.kind == kind; });
  if (!known) {
    add(attribute, 0, "kind 10, 11, 12, 13, 20, 22, 30 or 40, with 100 added for total pressures",
        std::to_string(kind));
  }
  if (flow_.b <= 0) add(attribute, 0, "a width or diameter above 0 mm", std::to_string(flow_.b));
  if (flow_.h < 0) add(attribute, 0, "a height above 0 mm, or 0 for a round duct", std::to_string(flow_.h));
  const bool is_fan = kind == 40;
  limits(is_fan && entry_.attributes.contains(kFanLimits) ? kFanLimits : attribute, is_fan);
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
  positive(kReference, 0, "a flow", flow_.qvref);
  positive(kReference, 0, "a pressure", flow_.dpref);
}

void TableCheck::damper() {
  const auto rows = rows_of(flow_.damper, flow_.ndamper);
  double before = HUGE_VAL;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const DamperPoint& row = rows[i];
    const bool good = positive(kDamperPoints, i + 1, "a flow", row.qv);
    if (!positive(kDamperPoints, i + 1, "a pressure", row.dp) || !good) continue;
    const double resistance = double{row.dp} / (double{row.qv} * double{row.qv});
    if (resistance >= before) {
      add(kDamperPoints, i + 1, "less resistance than the row before, most throttled first",
          brief(static_cast<float>(resistance)) + " after " + brief(static_cast<float>(before)) +
              " Pa/flow2");
    }
    before = resistance;
    if (i == 0) continue;
    const bool table_rises = rows.back().pos > rows.front().pos;
    if (table_rises ? !(row.pos > rows[i - 1].pos) : !(row.pos < rows[i - 1].pos)) {
      add(kDamperPoints, i + 1, "settings that rise, or that fall, from row to row",
          shortest(row.pos) + " after " + shortest(rows[i - 1].pos));
    }
  }
}

void TableCheck::pressure_curve() {
  const auto rows = rows_of(flow_.qvdppoints, flow_.nqvdp);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    positive(kFlowPoints, i + 1, "a flow", rows[i].qv);
    positive(kFlowPoints, i + 1, "a pressure", rows[i].dp);
    if (i == 0) continue;
    rises(kFlowPoints, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
    rises(kFlowPoints, i + 1, "a pressure", rows[i - 1].dp, rows[i].dp);
  }
}

void TableCheck::fan() {
  const auto rows = rows_of(flow_.fancurve, flow_.nfan);
  for (std::size_t i = 1; i < rows.size(); ++i) rises(kFanCurve, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
}

void TableCheck::sound() {
  const auto rows = rows_of(flow_.lwpoints, flow_.nlw);
  if (rows.empty()) return;
  if (rows.size() < 2) add(kSoundPoints, 0, "at least 2 rows", "1");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const bool good = positive(kSoundPoints, i + 1, "a flow", rows[i].qv);
    if (!positive(kSoundPoints, i + 1, "a pressure", rows[i].dp) || !good) return;
  }
  switch (flow_.kind) {
    case 10:
    case 11:
    case 12:
      sound_along_flow(rows);
      break;
    case 13:
    case 20:
    case 22:
      sound_curves(rows);
      break;
    case 30:
    case 40:
      sound_flows(rows);
      break;
    default:
      break;
  }
}

void TableCheck::sound_along_flow(const std::vector<LwPoint>& rows) {
  for (std::size_t i = 1; i < rows.size(); ++i)
    rises(kSoundPoints, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
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
      add(kSoundPoints, i + 1, "curves from the highest resistance down",
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
    if (!flows.empty()) rises(kSoundPoints, i + 1, "a flow", flows.back(), qv);
    flows.push_back(qv);
  }
  sound_groups(rows, flow_of, flows.size(), "flow");
}

// At least two groups of at least two rows, whose pressures rise.
void TableCheck::sound_groups(const std::vector<LwPoint>& rows, const std::vector<std::size_t>& group,
                              std::size_t groups, const char* what) {
  if (groups < 2) add(kSoundPoints, 0, std::string("rows of more than one ") + what, "one");
  if (groups > kMostCurves) {
    add(kSoundPoints, 0, "rows of at most " + std::to_string(kMostCurves) + " of " + what,
        std::to_string(groups));
  }
  std::vector<std::size_t> counts(groups);
  std::vector<float> before(groups);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t g = group[i];
    if (counts[g]++ > 0 && !(rows[i].dp > before[g])) {
      add(kSoundPoints, i + 1, std::string("pressures that rise within each ") + what,
          shortest(rows[i].dp) + " after " + shortest(before[g]));
    }
    before[g] = rows[i].dp;
  }
  for (std::size_t g = 0; g < groups; ++g) {
    const auto first = static_cast<std::size_t>(std::ranges::find(group, g) - group.begin());
    if (counts[g] < 2) add(kSoundPoints, first + 1, std::string("at least 2 rows for each ") + what, "1");
  }
}

void TableCheck::attenuation() {
  const auto rows = rows_of(flow_.dlwpoints, flow_.ndlwpoints);
  if (rows.size() > 1 && flow_.kind < 20) {
    add(kAttenuationPoints, 0, "one row, as the attenuation of this kind follows nothing",
        std::to_string(rows.size()));
  }
  const char* what = flow_.kind == 30 || flow_.kind == 40 ? "a flow" : "a setting";
  for (std::size_t i = 1; i < rows.size(); ++i) {
    rises(kAttenuationPoints, i + 1, what, rows[i - 1].pos, rows[i].pos);
  }
}

void TableCheck::throws() {
  const auto rows = rows_of(flow_.qvL2, flow_.nqvL2);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    positive(kThrowPoints, i + 1, "a flow", rows[i].qv);
    positive(kThrowPoints, i + 1, "a throw", rows[i].L2);
    if (i > 0) rises(kThrowPoints, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
  }
  const auto by_value = rows_of(flow_.parL2, flow_.nparL2);
  for (std::size_t i = 0; i < by_value.size(); ++i) {
    positive(kParameterThrow, i + 1, "a flow", by_value[i].qv);
    positive(kParameterThrow, i + 1, "a throw", by_value[i].L2);
    const bool same =
        i > 0 && std::memcmp(by_value[i].value, by_value[i - 1].value, TAVD_PARAMETER_CHARS) == 0;
    if (same) rises(kParameterThrow, i + 1, "a flow", by_value[i - 1].qv, by_value[i].qv);
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
