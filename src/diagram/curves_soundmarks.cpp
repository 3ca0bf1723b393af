// Dots of even sound levels on the curve of a fixed resistance.
#include <cmath>

#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "calc/calculations.h"
#include "calc/numeric.h"
#include "diagram/curves.h"
#include "diagram/curves_sound.h"
#include "diagram/flowdiagram.h"
#include "diagram/proportions.h"
#include "diagram/soundlevels.h"

namespace tavd {
namespace {

constexpr float kLevels[] = {20, 25, 30, 35, 40};  // dB(A)
constexpr double kSmallestMarkFound = 0.0001;      // l/s or Pa; a search that finds less has found nothing

// A dot with its level to the right, as far as it has a place.
void draw_mark(const FlowDiagram& dg, tavd_hdc hdc, float qv, float dp, float L, LevelTexts* texts) {
  show_static(dg, qv, &dp);
  if (!has_place(dg, qv, dp)) return;
  const int x = x_pixel(dg, qv);
  const int y = y_pixel(dg, dp);
  const int radius = dg.width / kSoundMarkPart;
  gwellipse(hdc, moved(x, -radius), moved(y, -radius), moved(x, radius), moved(y, radius));
  texts->draw(hdc, moved(x, radius), y, L);
}

bool is_inside(const DiagramRanges& r, float qv, float dp) {
  return qv >= r.xmin && qv <= r.xmax && dp >= r.ymin && dp <= r.ymax;
}

// Draws the marks of all levels. `point_at` gives the point of the curve where the search found a level,
// false if that is outside the chart.
template <typename PointAt>
void draw_marks(const FlowDiagram& dg, tavd_hdc hdc, bool along_flow, PointAt point_at) {
  LevelTable table(dg.roomdamp);
  if (!read_levels(dg.flowdata, along_flow, &table) || table.count() == 0) return;
  const Selected pen(hdc, dg.pen_sound);
  const Selected brush(hdc, gwstockobject(kLightGreyBrush));
  const Selected font(hdc, dg.font_label);
  const RedText red(hdc);
  const DiagramRanges r = base_ranges(dg);
  LevelTexts texts(dg.LpA_label);
  for (const float L : kLevels) {
    const float found = lp_find(table, L, 0);
    CurvePoint p{};
    if (!(found < kSmallestMarkFound) && point_at(r, table.row(0), found, &p)) {
      draw_mark(dg, hdc, p.x, p.y, L, &texts);
    }
  }
}

}  // namespace

void LevelTexts::draw(tavd_hdc hdc, int x, int y, float L) {
  if (first_ && label_[0] != 0) {
    gwtextout(hdc, x, y, "%0.0f %s", static_cast<double>(L), label_);
  } else {
    gwtextout(hdc, x, y, "%0.0f", static_cast<double>(L));
  }
  first_ = false;
}

// Searched along the pressure, on the square law of the first row.
void draw_lp_marks_ref(const FlowDiagram& dg, tavd_hdc hdc) {
  draw_marks(dg, hdc, false, [](const DiagramRanges& r, const LevelRow& first, float dp, CurvePoint* p) {
    const float qv = narrow(std::sqrt(wide(dp / first.k)));
    *p = {qv, first.k * qv * qv};
    return is_inside(r, qv, dp);
  });
}

// Searched along the flow, on the measured curve.
void draw_lp_marks_qvdp(const FlowDiagram& dg, tavd_hdc hdc) {
  draw_marks(dg, hdc, true, [&dg](const DiagramRanges& r, const LevelRow&, float qv, CurvePoint* p) {
    *p = {qv, floating_dp(&dg.flowdata, qv, dg.warning)};
    return is_inside(r, p->x, p->y);
  });
}

}  // namespace tavd
