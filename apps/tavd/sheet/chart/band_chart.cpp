#include "sheet/chart/band_chart.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "product/operating_point.h"
#include "sheet/chart/look.h"

namespace tavdhost {
namespace {

constexpr double kGap = 1;      // mm between numbers and what they belong to
constexpr double kBar = 0.62;   // of the room of a band
constexpr double kWide = 1.35;  // room of the A-weighted bar, in rooms of a band
constexpr double kBands = TAVD_BANDS;
constexpr std::uint32_t kBarColour = 0xC9A98A;
constexpr std::uint32_t kTotalColour = 0x6B4A2F;
constexpr LineStyle kBarEdge = {0.16, 0x4A321E};
constexpr TextStyle kLetters = {kChartLetters, false, kInk, TextDirection::kByText};

// Levels at the lower and the upper end, multiples of 10 dB.
struct LevelAxis {
  double low, high;
};

LevelAxis axis_of(const BandLevels& levels) {
  constexpr double kStep = 10;       // dB
  constexpr double kLeastSpan = 30;  // dB
  double lowest = double{levels.total_A};
  double highest = double{levels.total_A};
  for (const float level : levels.bands) {
    lowest = std::min(lowest, double{level});
    highest = std::max(highest, double{level});
  }
  const double high = std::ceil((highest + 1) / kStep) * kStep;
  const double low = std::min(std::floor((lowest - 1) / kStep) * kStep, high - kLeastSpan);
  return {low, high};
}

class BandChart {
 public:
  BandChart(Painter& painter, const Box& box, const BandLevels& levels, const ChartForm& form)
      : painter_(painter), box_(box), levels_(levels), form_(form), axis_(axis_of(levels)) {
    const double left = box.left + kRow + kGap + painter.measure("100", kLetters).width + kGap;
    // The highest number and the level of a bar as high as that stand above the plot.
    const double top = box.top + kRow / 2 + kGap;
    plot_ = {left, top, box.right() - left, box.bottom() - 2 * kRow - 2 * kGap - top};
    room_ = plot_.width / (kBands + kWide);
  }

  void draw() {
    draw_grid();
    for (std::size_t band = 0; band < levels_.bands.size(); ++band) {
      draw_bar(plot_.left + room_ * static_cast<double>(band), room_, double{levels_.bands[band]}, kBarColour,
               std::to_string(kBandHz[band]), false);
    }
    draw_bar(plot_.left + room_ * kBands, room_ * kWide, double{levels_.total_A}, kTotalColour,
             form_.texts.total_A, true);
    draw_titles();
  }

 private:
  double place(double level) const {
    return plot_.bottom() - (level - axis_.low) / (axis_.high - axis_.low) * plot_.height;
  }
  void draw_grid() const;
  void draw_bar(double left, double width, double level, std::uint32_t colour, const std::string& name,
                bool is_bold);
  void draw_titles() const;

  Painter& painter_;
  Box box_, plot_;
  const BandLevels& levels_;
  const ChartForm& form_;
  LevelAxis axis_;
  double room_;  // mm of a band
};

void BandChart::draw_grid() const {
  const double wish = kChartLetters * 1.4;  // mm between numbers
  double step = 10;
  while (step / (axis_.high - axis_.low) * plot_.height < wish) step *= 2;
  const auto steps = static_cast<int>((axis_.high - axis_.low) / step);
  for (int i = 0; i <= steps; ++i) {
    const double level = axis_.low + i * step;
    const double y = place(level);
    const std::array<PagePoint, 2> line = {{{plot_.left, y}, {plot_.right(), y}}};
    painter_.line(line, i == 0 ? kFrameLine : kMajorGrid);
    painter_.text(fixed(static_cast<float>(level), 0), kLetters,
                  {{plot_.left - kGap, y}, Along::kRight, Across::kMiddle}, box_);
  }
}

void BandChart::draw_bar(double left, double width, double level, std::uint32_t colour,
                         const std::string& name, bool is_bold) {
  const double middle = left + width / 2;
  const double half = std::min(width, room_) * kBar / 2;
  const Box bar = {middle - half, place(level), 2 * half, plot_.bottom() - place(level)};
  if (bar.height > 0) {
    painter_.area(bar, colour);
    const std::array<PagePoint, 4> edge = {
        {{bar.left, bar.bottom()}, {bar.left, bar.top}, {bar.right(), bar.top}, {bar.right(), bar.bottom()}}};
    painter_.line(edge, kBarEdge);
  }
  TextStyle style = kLetters;
  style.bold = is_bold;
  painter_.text(with_replaced(fixed(static_cast<float>(level), 0), ".", std::string(1, form_.decimal)), style,
                {{middle, place(level) - kGap / 2}, Along::kCentre, Across::kBottom}, box_);
  painter_.text(name, style, {{middle, plot_.bottom() + kGap / 2}, Along::kCentre, Across::kTop}, box_);
}

void BandChart::draw_titles() const {
  const auto with_unit = [this](const std::string& name, const std::string& unit) {
    return name + form_.comma() + " " + unit;
  };
  const double bands = plot_.left + room_ * kBands / 2;
  painter_.text(with_unit(form_.texts.octave_band, form_.hertz), kLetters,
                {{bands, plot_.bottom() + kRow + 1.5 * kGap}, Along::kCentre, Across::kTop}, box_);
  painter_.text(form_.decibel_A, kLetters,
                {{plot_.left + room_ * (kBands + kWide / 2), plot_.bottom() + kRow + 1.5 * kGap},
                 Along::kCentre,
                 Across::kTop},
                box_);
  constexpr double kUpward = 90;
  painter_.text(
      with_unit(form_.texts.sound_power, form_.decibel), kLetters,
      {{box_.left + kRow / 2, plot_.top + plot_.height / 2}, Along::kCentre, Across::kMiddle, kUpward}, box_);
}

}  // namespace

void draw_band_chart(Painter& painter, const Box& box, const BandLevels& levels, const ChartForm& form) {
  BandChart(painter, box, levels, form).draw();
}

}  // namespace tavdhost
