#include <cstdio>

#include "base/gwtext.h"
#include "db/encoding.h"
#include "diagram/axis.h"
#include "diagram/flowdiagram.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"

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

AxisTitles choose_units() {
  const bool velocity = dg.flowdata.kind == 22 || dg.flowdata.kind == 11;
  const DisplayUnit& x = velocity ? kVelocityUnit : flow_unit(dg.xunit);
  const DisplayUnit& y = pressure_unit(dg.yunit);
  dg.xfactor = x.factor;
  dg.yfactor = y.factor;
  AxisTitles titles;
  std::snprintf(titles.x, sizeof titles.x, "%s", x.title);
  std::snprintf(titles.y, sizeof titles.y, "%s %s", dg.dptype == 1 ? "dpst" : "dpt", y.title);
  return titles;
}

// A fan's axes are linear and may start at zero; all others are logarithmic.
AxisSetup set_up_axis(float factor, float lo, float hi, bool linear) {
  AxisSetup axis = axis_over(factor * lo, factor * hi);
  if (linear) {
    if (lo < kAxisFromZero) {
      axis.len = static_cast<std::int16_t>(axis.len - axis.des);
      axis.des = 0;
    }
    axis_step(axis.min, axis.max, &axis.step);
  }
  return axis;
}

// The title of the kind that the database's texts have: the host's, else the product code.
void choose_title(tavb_rec rec, std::int16_t utf8) {
  if (utf8 == 1) {
    if (dg.usertitlew[0] != 0) {
      gwwcscpyfield(dg.titlew, dg.usertitlew, kChartTitleSize);
    } else {
      tavdf_copyproductcodew(dg.db, rec, dg.titlew, kChartTitleSize);
    }
  } else if (utf8 == 0 || utf8 == 2) {
    choose_narrow_title(dg, rec);
  }
}

void load_product(tavb_rec rec) {
  tavca_load_flowdata(dg.db, rec, &dg.flowdata);
  dg_savedpar.apply(&dg.flowdata);
  tavca_check_end_reflection(&dg.flowdata);
}

struct WideAxisTitle {
  tavd_wchar text[kAxisTitleSize];
};

// The axis titles are ASCII.
WideAxisTitle widened(const char (&title)[kAxisTitleSize]) {
  WideAxisTitle wide{};
  for (int i = 0; i < kAxisTitleSize && title[i] != 0; ++i) {
    wide.text[i] = static_cast<tavd_wchar>(title[i]);
  }
  return wide;
}

Chart* make_chart(bool wide) {
  const FlowData& fd = dg.flowdata;
  const AxisTitles titles = choose_units();
  const bool linear = fd.kind == kFanKind;
  const AxisSetup x = set_up_axis(dg.xfactor, fd.qvmin, fd.qvmax, linear);
  const AxisSetup y = set_up_axis(dg.yfactor, fd.dpmin, fd.dpmax, linear);
  const auto make = [&](auto create, const auto* szX, const auto* szY, const auto* title) {
    return create(!linear, !linear, x.min, y.min, x.max, y.max, x.step, y.step, x.len, x.des, y.len, y.des,
                  szX, szY, title);
  };
  if (wide) {
    return make(chart_createw, widened(titles.x).text, widened(titles.y).text, dg.titlew);
  }
  return make(chart_create, titles.x, titles.y, dg.title);
}

}  // namespace

float dg_xunit_factor(int unit) {
  return flow_unit(unit).factor;
}

float dg_yunit_factor(int unit) {
  return pressure_unit(unit).factor;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdg_set_xunit(int u) {
  if (u >= 0 && u < kFlowUnitCount) {
    dg.xunit = static_cast<std::int16_t>(u);
    dg.xfactor = dg_xunit_factor(u);
  }
}

void tavdg_set_yunit(int u) {
  if (u >= 0 && u < kPressureUnitCount) {
    dg.yunit = static_cast<std::int16_t>(u);
    dg.yfactor = dg_yunit_factor(u);
  }
}

void tavdg_set_dptype(int t) {
  dg.dptype = t == 1 ? 1 : 0;
}

int tavdg_initdiagramdata(tavb_rec rec) {
  dg.ready = false;
  dg.error = 0;
  chart_destroy(dg.chart);
  dg.chart = nullptr;
  if (rec == nullptr) {
    return -1;
  }
  const std::int16_t utf8 = uses_utf8(dg.db);
  choose_title(rec, utf8);
  load_product(rec);
  if (has_limits(dg.flowdata, dg.flowdata.kind == kFanKind)) {
    dg.chart = make_chart(utf8 == 1);
  }
  if (dg.chart == nullptr) {
    dg.error = -1;
    return -1;
  }
  dg.ready = true;
  return 0;
}
