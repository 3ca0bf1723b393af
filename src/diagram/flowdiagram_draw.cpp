#include "diagram/flowdiagram_draw.h"

#include <algorithm>
#include <iterator>

#include "base/gwgdi.h"
#include "diagram/curves.h"
#include "tavd/attributes.h"

namespace tavd {
namespace {

using HasRows = bool (*)(const FlowData& fd);
using Draw = void (*)(const FlowDiagram& dg, tavd_hdc hdc);

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

void draw_nothing(const FlowDiagram&, tavd_hdc) {}

void draw_fan(const FlowDiagram& dg, tavd_hdc hdc) {
  draw_fan_curve(dg, hdc);
  draw_fan_limits(dg, hdc);
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
    {has_reference, draw_ref_curve, always, draw_lp_marks_ref, TAVD_KIND_RESISTANCE, false},
    {has_reference, draw_ref_curve, always, draw_lp_marks_ref, TAVD_KIND_RESISTANCE_VELOCITY, false},
    // Measured products show their sound only if they have a reference point as well, though no mark
    // reads it.
    {has_qvdp, draw_qvdp_curve, has_reference, draw_lp_marks_qvdp, TAVD_KIND_RESISTANCE_POINTS, false},
    {has_damper, draw_damper_lines, always, draw_lp_lines_damper, TAVD_KIND_DAMPER, false},
    {has_damper, draw_damper_lines, always, draw_lp_lines_damper, TAVD_KIND_DAMPER_VELOCITY, false},
    {always, draw_nothing, always, draw_lp_lines_range, TAVD_KIND_RANGE, false},
    {has_fan, draw_fan, always, draw_nothing, TAVD_KIND_FAN, true},
};

constexpr KindDrawing kLimitsOnly = {always, draw_nothing, always, draw_nothing, 0, false};

const KindDrawing& drawing_of(std::int16_t kind) {
  const auto* found = std::find_if(std::begin(kDrawings), std::end(kDrawings),
                                   [kind](const auto& d) { return d.kind == kind; });
  return found != std::end(kDrawings) ? *found : kLimitsOnly;
}

}  // namespace

void create_tools(FlowDiagram& dg) {
  destroy_tools(dg);
  const auto [wide, narrow, label] = tool_sizes(dg);
  dg.pen_sound = gwcreatepen(kPenSolid, wide, kRed);
  dg.pen_limit = gwcreatepen(kPenSolid, 2 * wide, kRed);
  dg.pen_curve = gwcreatepen(kPenSolid, narrow, kBlack);
  dg.pen_minor = gwcreatepen(kPenSolid, narrow, kGrey);
  dg.pen_point = gwcreatepen(kPenSolid, narrow, kBlue);
  dg.font_label = gwcreatefont(label, kWeightNormal, 0, 0, kChartFace);
}

void destroy_tools(FlowDiagram& dg) {
  gwdiscard({&dg.pen_sound, &dg.pen_limit, &dg.pen_curve, &dg.pen_minor, &dg.pen_point, &dg.font_label});
}

void draw(const FlowDiagram& dg, tavd_hdc hdc) {
  if (!dg.ready || dg.chart == nullptr) return;
  chart_draw(dg.chart, hdc, true, true);
  const FlowData& fd = dg.flowdata;
  const KindDrawing& drawing = drawing_of(fd.kind);
  if (drawing.has_curve(fd)) drawing.draw_curve(dg, hdc);
  if (drawing.curve_only) return;
  if (fd.nlw != 0 && drawing.has_sound(fd)) drawing.draw_sound(dg, hdc);
  draw_operating_point(dg, hdc);
  draw_flow_limits(dg, hdc);
}

}  // namespace tavd
