// What a chart draws: frame, titles, tick labels and grid.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "diagram/chart.h"
#include "diagram/proportions.h"

namespace tavd {
namespace {

constexpr int kFrameMargin = 3;  // device units from the frame within which a grid line would double it
constexpr int kMostTicks = kDefaultExtent;  // more ticks than units cannot be seen apart
constexpr int kLastDigit = 10;              // of a decade
constexpr float kGreatestDecade = 1e8F;
// Of the ends of a logarithmic axis: the start of the search for its first digit, and how far outside a tick
// may lie, so that an end that is not quite round keeps its digit.
constexpr double kBelowStart = 0.95;
constexpr double kLowestTick = 0.98;
constexpr double kHighestTick = 1.02;

void draw_frame(const Chart& c) {
  gwline(c.hdc, c.plot_left, c.plot_top, c.plot_right, c.plot_top);
  gwline(c.hdc, c.plot_right, c.plot_top, c.plot_right, c.plot_bottom);
  gwline(c.hdc, c.plot_right, c.plot_bottom, c.plot_left, c.plot_bottom);
  gwline(c.hdc, c.plot_left, c.plot_bottom, c.plot_left, c.plot_top);
}

int text_length(const tavd_wchar* text) {
  int length = 0;
  while (text[length] != 0) ++length;
  return length;
}

// The narrow or the wide form of a title, whichever holds text, in a font of its own. Without the font the
// title is left out.
template <typename MakeFont>
void draw_title(tavd_hdc hdc, const char* narrow, const tavd_wchar* wide, MakeFont make_font, unsigned align,
                int x, int y) {
  if (narrow[0] == 0 && wide[0] == 0) return;
  const gwobject font = make_font();
  if (font == nullptr) return;
  const OwnedSelected selected(hdc, font);
  gwtextalign(hdc, align);
  if (narrow[0] != 0) {
    gwtextoutn(hdc, x, y, narrow, static_cast<int>(std::strlen(narrow)));
  } else {
    gwtextoutw(hdc, x, y, wide, text_length(wide));
  }
}

void draw_titles(const Chart& c) {
  const auto upright = [](std::int16_t height) {
    return [height] { return gwcreatefont(height, kWeightNormal, 0, 0, kChartFace); };
  };
  const int middle = (c.plot_left + c.plot_right) / 2;
  draw_title(c.hdc, c.title, c.titlew, upright(c.title_font), kAlignCenterTop, middle,
             c.rect_top + c.title_gap);
  draw_title(c.hdc, c.szX, c.szXw, upright(c.axis_font), kAlignCenterTop, middle, c.plot_bottom + c.xblock);
  draw_title(
      c.hdc, c.szY, c.szYw, [&c] { return gwcreatefont_upward(c.axis_font, kChartFace); }, kAlignCenterBottom,
      c.plot_left - c.yblock, (c.plot_top + c.plot_bottom) / 2);
}

// Where a tick stands against the ends of its axis. Positions are compared along the axis, so that x, which
// grows to the right, and y, which grows upward, share one walk.
class TickPlace {
 public:
  TickPlace(const AxisView& axis, float value)
      : pixel(held<int>(axis_position(axis, value))),
        along_(std::int64_t{pixel} * axis.sign),
        start_(axis.start * axis.sign + kFrameMargin),
        end_(axis.end * axis.sign - kFrameMargin) {}

  bool beyond_end() const { return along_ > end_; }
  bool before_start() const { return along_ < start_; }
  bool past_start() const { return along_ > start_; }

  int pixel;

 private:
  std::int64_t along_;
  std::int64_t start_;
  std::int64_t end_;
};

// Ticks of a linear axis, from the multiple of the step nearest to the lower end. A label is put before the
// position is tested, so that a tick just past the end still gets one.
template <typename Label, typename Grid>
void walk_linear(const AxisView& axis, Label label, Grid grid) {
  if (!std::isfinite(axis.step) || axis.step <= 0.0F) return;
  float v = static_cast<float>(axis.step * std::floor(static_cast<double>(axis.min / axis.step) + 0.5));
  if (v < axis.min) v += axis.step;
  if (!std::isfinite(v)) return;
  for (int ticks = 0; ticks < kMostTicks; ++ticks) {
    const TickPlace place(axis, v);
    label(place.pixel, v);
    if (place.beyond_end()) return;
    if (place.past_start()) grid(place.pixel);
    const float next = v + axis.step;
    // The step of a very narrow range far from zero is lost in rounding.
    if (!(next > v) || !(next <= axis.max + axis.step / 2.0F)) return;
    v = next;
  }
}

// The digit of the decade at which a logarithmic axis starts, one below its first tick, so that a start
// between two digits is not missed. Digits above 10 belong to no decade, so the search ends behind them.
int start_digit(float decade, float min) {
  int k = 1;
  while (k < kLastDigit + 2 && static_cast<float>(k) * decade < kBelowStart * static_cast<double>(min)) ++k;
  return k > 1 ? k - 1 : k;
}

bool is_labelled(int digit) {
  return digit == 1 || digit == 2 || digit == 3 || digit == 5 || digit == kLastDigit;
}

// The ticks of one decade from digit k on. The ends of the range need not be round numbers: within two per
// cent they keep their nearest digit.
template <typename Label, typename Grid>
void walk_decade(const AxisView& axis, float decade, int k, Label label, Grid grid) {
  for (int j = k; j <= kLastDigit; ++j) {
    if (j == 2 && k == 1) {
      const TickPlace between(axis, 1.5F * decade);
      if (between.beyond_end()) return;
      if (between.past_start()) grid(between.pixel);
    }
    const float v = static_cast<float>(j) * decade;
    if (v < kLowestTick * static_cast<double>(axis.min)) continue;
    if (v > kHighestTick * static_cast<double>(axis.max)) return;
    const TickPlace place(axis, v);
    if (is_labelled(j)) label(place.pixel, v);
    if (place.before_start()) continue;
    if (place.beyond_end()) return;
    grid(place.pixel);
  }
}

template <typename Label, typename Grid>
void walk_logarithmic(const AxisView& axis, Label label, Grid grid) {
  float decade = chart_decade(axis.min);
  if (!(axis.min > 0.0F) || !(decade > 0.0F)) return;
  int k = start_digit(decade, axis.min);
  do {
    walk_decade(axis, decade, k, label, grid);
    k = 1;
    decade *= 10.0F;
  } while (decade < axis.max);
}

// An axis whose ends are no numbers, or whose ends coincide, has no ticks.
template <typename Label, typename Grid>
void walk_ticks(const AxisView& axis, Label label, Grid grid) {
  if (!std::isfinite(axis.min) || !std::isfinite(axis.max) || !std::isfinite(axis.scale)) return;
  if (axis.log) {
    walk_logarithmic(axis, label, grid);
  } else {
    walk_linear(axis, label, grid);
  }
}

void draw_number(tavd_hdc hdc, int x, int y, int decimals, float value) {
  gwtextout(hdc, x, y, "%0.*f", decimals, static_cast<double>(value));
}

void draw_x_ticks(const Chart& c, bool labels) {
  const OwnedSelected font(c.hdc, gwcreatefont_upward(c.tick_font, kChartFace));
  // The labels read upward and are aligned at their end: the longest one decides how far below the plot
  // that is.
  const int longest = std::snprintf(nullptr, 0, "%0.*f", c.xdes, static_cast<double>(c.xmax));
  const int label_w = (longest * c.tick_font) / kDrawnDigitPart;
  const int label_y = c.plot_bottom + c.xlabel_gap + label_w;
  gwtextalign(c.hdc, kAlignRightTop);
  walk_ticks(
      chart_x_axis(c),
      [&](int p, float v) {
        if (labels) draw_number(c.hdc, moved(p, -(c.tick_font / kXLabelShiftPart)), label_y, c.xdes, v);
      },
      [&](int p) { gwline(c.hdc, p, c.plot_top, p, c.plot_bottom); });
}

void draw_y_ticks(const Chart& c, bool labels) {
  const OwnedSelected font(c.hdc, gwcreatefont(c.tick_font, kWeightNormal, 0, 0, kChartFace));
  gwtextalign(c.hdc, kAlignRightBottom);
  walk_ticks(
      chart_y_axis(c),
      [&](int p, float v) {
        if (labels) {
          draw_number(c.hdc, c.plot_left - c.ylabel_gap, moved(p, c.tick_font / kYLabelShiftPart), c.ydes, v);
        }
      },
      [&](int p) { gwline(c.hdc, c.plot_left, p, c.plot_right, p); });
}

}  // namespace

void chart_draw(Chart* chart, tavd_hdc hdc, bool xlabels, bool ylabels) {
  if (chart == nullptr) return;
  chart->hdc = hdc;
  const OwnedSelected pen(hdc, gwcreatepen(kPenSolid, chart->pen_width, kBlack));
  draw_frame(*chart);
  draw_titles(*chart);
  draw_x_ticks(*chart, xlabels);
  draw_y_ticks(*chart, ylabels);
}

float chart_decade(float v) {
  float t = kGreatestDecade;
  do {
    t /= 10.0F;
  } while (v + v / 100.0F < t && t > 0.0F);
  return t;
}

}  // namespace tavd
