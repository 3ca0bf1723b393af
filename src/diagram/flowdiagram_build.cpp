#include "diagram/flowdiagram_build.h"

#include <cstdio>

#include "base/gwtext.h"
#include "calc/kinds.h"
#include "db/encoding.h"
#include "diagram/axis.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace tavd {
namespace {

constexpr DisplayUnit kVelocityUnit = {"v [m/s]", 1.0F};

constexpr DisplayUnit kPressureUnits[] = {
    {"[Pa]", 1.0F},
    {"[kPa]", 0.001F},
    {"[\"WC]", 0.0040146308F},
    {"[in wg]", 0.0040146308F},
};
constexpr int kPressureUnitCount = static_cast<int>(sizeof kPressureUnits / sizeof kPressureUnits[0]);

constexpr double kAxisFromZero = 0.0001;  // a lower limit under this, l/s or Pa, is an axis from zero

const DisplayUnit& flow_unit(int unit) {
  return kFlowUnits[unit >= 0 && unit < kFlowUnitCount ? unit : 0];
}

const DisplayUnit& pressure_unit(int unit) {
  return kPressureUnits[unit >= 0 && unit < kPressureUnitCount ? unit : 0];
}

// The titles of the axes, and the factors of their units into the state.
struct AxisTitles {
  char x[kAxisTitleSize];
  char y[kAxisTitleSize];
};

AxisTitles choose_units(FlowDiagram& dg) {
  const bool velocity = is_by_velocity(dg.flowdata.kind);
  const DisplayUnit& x = velocity ? kVelocityUnit : flow_unit(dg.xunit);
  const DisplayUnit& y = pressure_unit(dg.yunit);
  dg.xfactor = x.factor;
  dg.yfactor = y.factor;
  AxisTitles titles;
  std::snprintf(titles.x, sizeof titles.x, "%s", x.title);
  std::snprintf(titles.y, sizeof titles.y, "%s %s", dg.dptype == TAVDG_DP_STATIC ? "dpst" : "dpt", y.title);
  return titles;
}

// A fan's axes are linear and may start at zero; all others are logarithmic.
ChartAxis set_up_axis(float factor, float lo, float hi, bool linear) {
  ChartAxis axis = axis_over(factor * lo, factor * hi);
  if (linear) {
    axis.log = false;
    if (lo < kAxisFromZero) {
      axis.len = static_cast<std::int16_t>(axis.len - axis.des);
      axis.des = 0;
    }
    axis_step(axis.min, axis.max, &axis.step);
  }
  return axis;
}

// The title of the kind that the database's texts have: the host's, else the product code.
void choose_title(FlowDiagram& dg, tavb_rec rec, std::int16_t utf8) {
  if (utf8 == TAVD_TEXTS_UTF8) {
    if (dg.usertitlew[0] != 0) {
      gwwcscpyfield(dg.titlew, dg.usertitlew, kChartTitleSize);
    } else {
      tavdf_copyproductcodew(dg.db, rec, dg.titlew, kChartTitleSize);
    }
  } else if (is_default_encoding(utf8)) {
    choose_narrow_title(dg, rec);
  }
}

void load_product(FlowDiagram& dg, const SavedParameters& choices, tavb_rec rec) {
  tavca_load_flowdata(dg.db, rec, &dg.flowdata);
  choices.apply(&dg.flowdata);
  tavca_check_end_reflection(&dg.flowdata);
}

struct WideAxisTitle {
  tavd_wchar text[kAxisTitleSize];
};

// The axis titles are ASCII.
WideAxisTitle widened(const char (&title)[kAxisTitleSize]) {
  WideAxisTitle wide{};
  for (int i = 0; i < kAxisTitleSize && title[i] != 0; ++i) wide.text[i] = static_cast<tavd_wchar>(title[i]);
  return wide;
}

Chart* make_chart(FlowDiagram& dg, bool wide) {
  const FlowData& fd = dg.flowdata;
  const AxisTitles titles = choose_units(dg);
  const bool linear = fd.kind == TAVD_KIND_FAN;
  const ChartAxis x = set_up_axis(dg.xfactor, fd.qvmin, fd.qvmax, linear);
  const ChartAxis y = set_up_axis(dg.yfactor, fd.dpmin, fd.dpmax, linear);
  if (wide) return chart_createw(x, y, widened(titles.x).text, widened(titles.y).text, dg.titlew);
  return chart_create(x, y, titles.x, titles.y, dg.title);
}

}  // namespace

bool build(FlowDiagram& dg, const SavedParameters& choices, tavb_rec rec) {
  dg.ready = false;
  dg.failed = false;
  chart_destroy(dg.chart);
  dg.chart = nullptr;
  if (rec == nullptr) return false;
  const std::int16_t utf8 = uses_utf8(dg.db);
  choose_title(dg, rec, utf8);
  load_product(dg, choices, rec);
  return build_chart(dg, utf8 == TAVD_TEXTS_UTF8);
}

bool build_chart(FlowDiagram& dg, bool wide) {
  if (has_limits(dg.flowdata, dg.flowdata.kind == TAVD_KIND_FAN)) dg.chart = make_chart(dg, wide);
  dg.ready = dg.chart != nullptr;
  dg.failed = !dg.ready;
  return dg.ready;
}

void set_xunit(FlowDiagram& dg, int unit) {
  if (unit >= 0 && unit < kFlowUnitCount) {
    dg.xunit = static_cast<std::int16_t>(unit);
    dg.xfactor = flow_unit(unit).factor;
  }
}

void set_yunit(FlowDiagram& dg, int unit) {
  if (unit >= 0 && unit < kPressureUnitCount) {
    dg.yunit = static_cast<std::int16_t>(unit);
    dg.yfactor = pressure_unit(unit).factor;
  }
}

}  // namespace tavd
