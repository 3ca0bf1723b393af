// Whether header and tables are what the calculations rely on: they look for neighbours row by row and do not
// check the order themselves. The pressures are total pressures, as the calculations read them.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "base/text.h"
#include "check/rows.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

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

class TableCheck : RowFindings {
 public:
  TableCheck(const Entry& entry, const FlowData& flow, Findings& findings)
      : RowFindings(findings), entry_(entry), flow_(flow) {}

  void header();
  void curve();
  void attenuation();
  void throws();
  void parameters();

 private:
  void limits(std::int16_t attribute, bool from_zero);
  void reference();
  void damper();
  void pressure_curve();
  void fan();
  template <typename Row>
  void throw_line(std::int16_t attribute, const Row* before, const Row& row, std::size_t number);
  void parameter(std::int16_t attribute, const ParTable& table);

  const Entry& entry_;
  const FlowData& flow_;
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
    const double resistance = resistance_of(row.qv, row.dp);
    if (resistance >= before) {
      add(TAVD_ATT_DAMPER_POINTS, i + 1, "less resistance than the row before, most throttled first",
          resistance_text(resistance) + " after " + resistance_text(before) + " Pa/flow2");
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
  for (std::size_t i = 0; i < rows.size(); ++i) {
    not_negative(TAVD_ATT_FAN_CURVE, i + 1, "a flow", rows[i].qv);
    not_negative(TAVD_ATT_FAN_CURVE, i + 1, "a pressure", rows[i].dp);
    if (i > 0) rises(TAVD_ATT_FAN_CURVE, i + 1, "a flow", rows[i - 1].qv, rows[i].qv);
  }
}

void TableCheck::attenuation() {
  const auto rows = rows_of(flow_.dlwpoints, flow_.ndlwpoints);
  if (rows.size() > 1 && flow_.kind < TAVD_KIND_DAMPER) {
    add(TAVD_ATT_DLW_POINTS, 0, "one row, as the attenuation of this kind follows nothing",
        std::to_string(rows.size()));
  }
  const bool by_flow = flow_.kind == TAVD_KIND_RANGE || flow_.kind == TAVD_KIND_FAN;
  const char* what = by_flow ? "a flow" : "a setting";
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (by_flow) not_negative(TAVD_ATT_DLW_POINTS, i + 1, what, rows[i].pos);
    if (i > 0) rises(TAVD_ATT_DLW_POINTS, i + 1, what, rows[i - 1].pos, rows[i].pos);
  }
}

// A row of a throw line, and the one before it on the same line: throws grow with the flow.
template <typename Row>
void TableCheck::throw_line(std::int16_t attribute, const Row* before, const Row& row, std::size_t number) {
  const bool has_flow = positive(attribute, number, "a flow", row.qv);
  const bool has_throw = positive(attribute, number, "a throw", row.L2);
  if (before == nullptr || !has_flow) return;
  if (!rises(attribute, number, "a flow", before->qv, row.qv) || !has_throw) return;
  rises(attribute, number, "a throw", before->L2, row.L2);
}

void TableCheck::throws() {
  const auto rows = rows_of(flow_.qvL2, flow_.nqvL2);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    throw_line(TAVD_ATT_QV_L2, i > 0 ? &rows[i - 1] : nullptr, rows[i], i + 1);
  }
  const auto by_value = rows_of(flow_.parL2, flow_.nparL2);
  for (std::size_t i = 0; i < by_value.size(); ++i) {
    const bool same =
        i > 0 && std::memcmp(by_value[i].value, by_value[i - 1].value, TAVD_PARAMETER_CHARS) == 0;
    throw_line(TAVD_ATT_PAR_L2, same ? &by_value[i - 1] : nullptr, by_value[i], i + 1);
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
  check.attenuation();
  check.throws();
  check.parameters();
}

}  // namespace tavdhost
