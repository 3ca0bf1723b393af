#include "diagram/curves.h"

#include <algorithm>
#include <iterator>

#include "calc/classes.h"
#include "diagram/flowdiagram.h"
#include "tavd/tavdg.h"

namespace tavd {
namespace {

constexpr double kSmallestDuct = 1e-09;  // m2
constexpr float kHalfAirDensity = 0.6F;  // kg/m3

using HasRows = bool (*)(const FlowData& fd);
using Draw = void (*)(tavd_hdc hdc);

bool always(const FlowData&) {
  return true;
}

bool has_reference(const FlowData& fd) {
  return fd.nref != 0;
}

bool has_qvdp(const FlowData& fd) {
  return fd.nqvdp != 0;
}

bool has_damper(const FlowData& fd) {
  return fd.ndamper != 0;
}

bool has_fan(const FlowData& fd) {
  return fd.nfan != 0;
}

void draw_nothing(tavd_hdc) {}

void draw_fan(tavd_hdc hdc) {
  draw_fan_curve(hdc);
  draw_fan_limits(hdc);
}

// What is drawn for a data kind, and which table it needs.
struct KindDrawing {
  HasRows has_curve;
  Draw draw_curve;
  HasRows has_sound;  // besides rows of sound
  Draw draw_sound;
  std::int16_t kind;
  bool curve_only;  // neither sound nor operating point nor flow limits
};

constexpr KindDrawing kDrawings[] = {
    {has_reference, draw_ref_curve, always, draw_lp_marks_ref, 10, false},  // fixed resistance
    {has_reference, draw_ref_curve, always, draw_lp_marks_ref, 11, false},  // the same by velocity
    // Measured products show their sound only if they have a reference point as well, though no mark reads
    // it.
    {has_qvdp, draw_qvdp_curve, has_reference, draw_lp_marks_qvdp, 12, false},
    {has_damper, draw_damper_lines, always, draw_lp_lines_damper, 20, false},  // adjustable damper
    {has_damper, draw_damper_lines, always, draw_lp_lines_damper, 22, false},  // the same by velocity
    {always, draw_nothing, always, draw_lp_lines_range, 30, false},            // works in a pressure range
    {has_fan, draw_fan, always, draw_nothing, kFanKind, true},
};

constexpr KindDrawing kLimitsOnly = {always, draw_nothing, always, draw_nothing, 0, false};

const KindDrawing& drawing_of(std::int16_t kind) {
  const auto* found = std::find_if(std::begin(kDrawings), std::end(kDrawings),
                                   [kind](const auto& d) { return d.kind == kind; });
  return found != std::end(kDrawings) ? *found : kLimitsOnly;
}

}  // namespace

// The dynamic pressure comes off for supply air and on top for extract air; other classes show the total
// pressure under either title.
void dg_static_dp(float qv, float* dp) {
  if (dg.dptype == 0) {
    return;
  }
  const int sign = -static_to_total_sign(dg.flowdata);
  if (sign == 0) {
    return;
  }
  float v = qv;
  if (dg.flowdata.isvelocity == 0) {
    const float area = dg.flowdata.ductarea;
    if (area < kSmallestDuct) {
      return;
    }
    v = (qv / 1000.0F) / area;
  }
  *dp += static_cast<float>(sign) * kHalfAirDensity * v * v;
}

bool draw_smoothed(tavd_hdc hdc, int n, const CurvePoint* points, bool log) {
  if (smooth_init(n, points, log, log, dg.resolution) != 0) {
    return false;
  }
  CurvePoint from{};
  CurvePoint to{};
  smooth_first(&from.x, &from.y);
  while (smooth_next(&to.x, &to.y) != 0) {
    dg_line(hdc, from.x, from.y, to.x, to.y);
    from = to;
  }
  smooth_end();
  return true;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdg_draw_diagram(tavd_hdc hdc) {
  if (!dg.ready || dg.chart == nullptr) {
    return;
  }
  chart_draw(dg.chart, hdc, true, true);
  const FlowData& fd = dg.flowdata;
  const KindDrawing& drawing = drawing_of(fd.kind);
  if (drawing.has_curve(fd)) {
    drawing.draw_curve(hdc);
  }
  if (drawing.curve_only) {
    return;
  }
  if (fd.nlw != 0 && drawing.has_sound(fd)) {
    drawing.draw_sound(hdc);
  }
  draw_operating_point(hdc);
  draw_flow_limits(hdc);
}
