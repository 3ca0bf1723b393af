// Ticks: which labels and grid lines an axis gets.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "diagram/chart.h"
#include "support/recording.h"

namespace tavd {
namespace {

using tavdtest::Recording;
using tavdtest::Segment;
using tavdtest::Text;
using Strings = std::vector<std::string>;
using Ints = std::vector<int>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Destroy {
  void operator()(Chart* chart) const { chart_destroy(chart); }
};
using ChartPtr = std::unique_ptr<Chart, Destroy>;

// A plot from 1955, 1562 to 9000, 8045 whose other axis has no ticks.
ChartPtr x_chart(bool log, float min, float max, float step, std::int16_t decimals = 0) {
  return ChartPtr(chart_create({min, max, step, 5, decimals, log}, {0, 1, 0, 5, 0, false}, "", "", ""));
}
ChartPtr y_chart(bool log, float min, float max, float step, std::int16_t decimals = 0) {
  return ChartPtr(chart_create({0, 1, 0, 5, 0, false}, {min, max, step, 5, decimals, log}, "", "", ""));
}

struct Ticks {
  Strings labels;
  Ints label_places;
  Ints grid;
};

// The frame's four lines come first.
Ticks ticks_of(Chart* chart, std::size_t coordinate) {
  Recording recording;
  chart_draw(chart, recording.surface(), true, true);
  Ticks ticks;
  for (const Text& t : recording.texts()) {
    ticks.labels.push_back(t.text);
    ticks.label_places.push_back(coordinate == 0 ? t.x : t.y);
  }
  const std::vector<Segment> segments = recording.segments();
  for (std::size_t i = 4; i < segments.size(); ++i) {
    EXPECT_EQ(segments[i][coordinate], segments[i][coordinate + 2]) << "a grid line is straight";
    ticks.grid.push_back(segments[i][coordinate]);
  }
  return ticks;
}
Ticks x_ticks(const ChartPtr& chart) {
  return ticks_of(chart.get(), 0);
}
Ticks y_ticks(const ChartPtr& chart) {
  return ticks_of(chart.get(), 1);
}

// The pixels of values, for axes whose mapping is tested elsewhere.
Ints x_pixels(const ChartPtr& chart, std::initializer_list<float> values) {
  Ints pixels;
  for (const float v : values) {
    pixels.push_back(chart_x_pixel(chart.get(), v));
  }
  return pixels;
}

TEST(ChartDecade, LargestPowerOfTenThatDoesNotExceedTheValueAndOnePerCent) {
  EXPECT_EQ(1.0F, chart_decade(0.995F));
  EXPECT_EQ(1.0F, chart_decade(1));
  EXPECT_EQ(10.0F, chart_decade(80));
  EXPECT_EQ(10.0F, chart_decade(99));
  EXPECT_EQ(100.0F, chart_decade(99.1F));
  EXPECT_EQ(100.0F, chart_decade(100.5F));
  EXPECT_NEAR(0.01, chart_decade(0.05F), 1e-8);
}

TEST(ChartDecade, IsTenMillionAtMost) {
  EXPECT_EQ(1e7F, chart_decade(1e9F));
  EXPECT_EQ(1e7F, chart_decade(kInfinity));
  EXPECT_EQ(1e7F, chart_decade(kNaN));
}

TEST(ChartDecade, EndsForZeroAndNegativeValues) {
  EXPECT_EQ(0.0F, chart_decade(0));
  EXPECT_EQ(0.0F, chart_decade(-5));
  EXPECT_EQ(0.0F, chart_decade(-kInfinity));
}

TEST(ChartLinearTicks, LabelsAtTheFrameHaveNoGridLine) {
  // 704.5 units a world unit: 1955, 3364, 4773, 6182, 7591, 9000; labels 400 / 3 before them.
  const Ticks ticks = x_ticks(x_chart(false, 0, 10, 2));
  EXPECT_EQ((Strings{"0", "2", "4", "6", "8", "10"}), ticks.labels);
  EXPECT_EQ((Ints{3364, 4773, 6182, 7591}), ticks.grid);
  EXPECT_EQ((Ints{1822, 3231, 4640, 6049, 7458, 8867}), ticks.label_places);
}

TEST(ChartLinearTicks, YMirrorsX) {
  // 64.83 units a world unit upward from 8045; labels 200 below their tick.
  const Ticks ticks = y_ticks(y_chart(false, 0, 100, 25));
  EXPECT_EQ((Strings{"0", "25", "50", "75", "100"}), ticks.labels);
  EXPECT_EQ((Ints{6424, 4803, 3182}), ticks.grid);
  EXPECT_EQ((Ints{8245, 6624, 5003, 3382, 1762}), ticks.label_places);
}

TEST(ChartLinearTicks, LabelPastTheEndIsDrawnWithoutGridLine) {
  const Ticks ticks = x_ticks(x_chart(false, 0, 9.9F, 2));
  EXPECT_EQ((Strings{"0", "2", "4", "6", "8", "10"}), ticks.labels);
  EXPECT_EQ(4U, ticks.grid.size());
  EXPECT_GT(ticks.label_places.back() + 133, 9000);
}

TEST(ChartLinearTicks, TickMoreThanHalfAStepPastTheEndIsNotReached) {
  const Ticks ticks = x_ticks(x_chart(false, 0, 8.9F, 2));
  EXPECT_EQ("8", ticks.labels.back());
}

TEST(ChartLinearTicks, StartIsTheNearestMultipleNotBelowTheEnd) {
  EXPECT_EQ("2", x_ticks(x_chart(false, 0.5F, 10, 2)).labels.front());
  EXPECT_EQ("2", x_ticks(x_chart(false, 1.5F, 10, 2)).labels.front());
  EXPECT_EQ("4", x_ticks(x_chart(false, 2.5F, 10, 2)).labels.front());
  EXPECT_EQ("-4", x_ticks(x_chart(false, -5, 10, 2)).labels.front());
}

TEST(ChartLinearTicks, DecimalsAreShown) {
  EXPECT_EQ((Strings{"0.00", "0.25", "0.50", "0.75", "1.00"}),
            x_ticks(x_chart(false, 0, 1, 0.25F, 2)).labels);
}

TEST(ChartLogarithmicTicks, FromEightyToTwoThousand) {
  const ChartPtr chart = x_chart(true, 80, 2000, 0);
  const Ticks ticks = x_ticks(chart);
  EXPECT_EQ((Strings{"100", "100", "200", "300", "500", "1000", "1000", "2000"}), ticks.labels);
  EXPECT_EQ(x_pixels(chart, {90, 100, 100, 150, 200, 300, 400, 500, 600, 700, 800, 900, 1000, 1000, 1500}),
            ticks.grid);
}

TEST(ChartLogarithmicTicks, StartJustAboveADecadeHasTheLineAtOneAndAHalf) {
  const ChartPtr chart = x_chart(true, 100.5F, 1000, 0);
  const Ticks ticks = x_ticks(chart);
  // 100 is within two per cent of the start: labelled, left of the frame, no grid line.
  EXPECT_EQ((Strings{"100", "200", "300", "500", "1000"}), ticks.labels);
  EXPECT_EQ(x_pixels(chart, {150, 200, 300, 400, 500, 600, 700, 800, 900}), ticks.grid);
}

TEST(ChartLogarithmicTicks, StartJustBelowADecadeKeepsIt) {
  const ChartPtr chart = x_chart(true, 0.995F, 9, 0);
  const Ticks ticks = x_ticks(chart);
  EXPECT_EQ((Strings{"1", "2", "3", "5"}), ticks.labels);
  EXPECT_EQ(x_pixels(chart, {1, 1.5F, 2, 3, 4, 5, 6, 7, 8}), ticks.grid);
}

TEST(ChartLogarithmicTicks, EndWithinTwoPerCentKeepsItsDigit) {
  EXPECT_EQ("5", x_ticks(x_chart(true, 1, 4.95F, 0)).labels.back());
  EXPECT_EQ("3", x_ticks(x_chart(true, 1, 4.85F, 0)).labels.back());
}

TEST(ChartLogarithmicTicks, YMirrorsX) {
  const ChartPtr chart = y_chart(true, 10, 100, 0);
  const Ticks ticks = y_ticks(chart);
  EXPECT_EQ((Strings{"10", "20", "30", "50", "100"}), ticks.labels);
  Ints expected;
  for (const float v : {15.0F, 20.0F, 30.0F, 40.0F, 50.0F, 60.0F, 70.0F, 80.0F, 90.0F}) {
    expected.push_back(chart_y_pixel(chart.get(), v));
  }
  EXPECT_EQ(expected, ticks.grid);
}

// The line at 1.5 must lie strictly past the margin of three units, a digit may lie on it.
TEST(ChartLogarithmicTicks, DigitOnTheMarginDrawsAndOneAndAHalfDoesNot) {
  const ChartPtr chart = x_chart(true, 2, 20, 0);
  chart->plot_left = 0;
  chart->plot_right = 1000;
  chart->xscale = 1000;
  // 2 stands at 0, 3 at 176.
  chart->xmin = 2;
  Ticks ticks = x_ticks(chart);
  EXPECT_EQ(176, ticks.grid.front());
  // With the left edge at -3, 2 stands at -3 still; moved by the start value 1.9862 it stands on the margin,
  // 0.
  chart->plot_left = -3;
  chart->xmin = 1.9862F;
  ASSERT_EQ(0, chart_x_pixel(chart.get(), 2));
  ticks = x_ticks(chart);
  EXPECT_EQ(0, ticks.grid.front());
  // The same place for 1.5 gives no line.
  chart->xmin = 1.48965F;
  ASSERT_EQ(0, chart_x_pixel(chart.get(), 1.5F));
  ticks = x_ticks(chart);
  EXPECT_EQ(chart_x_pixel(chart.get(), 2), ticks.grid.front());
}

TEST(ChartTicks, LabelsCanBeSwitchedOffPerAxis) {
  const ChartPtr chart(chart_create({0, 10, 5, 5, 0, false}, {10, 100, 0, 5, 0, true}, "", "", ""));
  Recording recording;
  chart_draw(chart.get(), recording.surface(), false, false);
  EXPECT_TRUE(recording.texts().empty());
  EXPECT_EQ(4U + 1U + 9U, recording.segments().size());
  recording.clear();
  chart_draw(chart.get(), recording.surface(), true, false);
  EXPECT_EQ(3U, recording.texts().size());
  recording.clear();
  chart_draw(chart.get(), recording.surface(), false, true);
  EXPECT_EQ(5U, recording.texts().size());
}

// Whatever the ends of an axis are, its ticks come to an end, and the frame is drawn.
void expect_end(bool log, float lo, float hi, float step) {
  const ChartPtr chart = x_chart(log, lo, hi, step, 3);
  Recording recording;
  chart_draw(chart.get(), recording.surface(), true, true);
  EXPECT_GE(recording.lines("line").size(), 4U);
  EXPECT_LE(recording.lines("text").size(), 10000U) << log << ' ' << lo << ' ' << hi << ' ' << step;
}

TEST(ChartTicks, HostileAxesEnd) {
  const float ends[] = {-kInfinity, -1e38F,     -5,   0,     1e-45F,    1e-30F,
                        1,          1.0000001F, 1e9F, 3e38F, kInfinity, kNaN};
  for (const float lo : ends) {
    for (const float hi : ends) {
      expect_end(true, lo, hi, 0);
      for (const float step : {0.0F, -1.0F, 1e-45F, 1.0F, 1e30F, kInfinity, kNaN}) {
        expect_end(false, lo, hi, step);
      }
    }
  }
}

TEST(ChartTicks, NegativeOrZeroStartOfALogarithmicAxisHasNone) {
  for (const float lo : {-5.0F, 0.0F, kNaN}) {
    const Ticks ticks = x_ticks(x_chart(true, lo, 100, 0));
    EXPECT_TRUE(ticks.labels.empty());
    EXPECT_TRUE(ticks.grid.empty());
  }
}

TEST(ChartTicks, EqualEndsHaveNone) {
  EXPECT_TRUE(x_ticks(x_chart(false, 7, 7, 1)).labels.empty());
  EXPECT_TRUE(x_ticks(x_chart(true, 7, 7, 0)).labels.empty());
}

TEST(ChartTicks, StepThatIsLostInRoundingEndsAtTheFirstTick) {
  const float lo = 1e9F;
  const Ticks ticks = x_ticks(x_chart(false, lo, 1000000064.0F, 10));
  EXPECT_EQ((Strings{"1000000000"}), ticks.labels);
}

TEST(ChartTicks, HugeLogarithmicAxisHasItsTicks) {
  const Ticks ticks = x_ticks(x_chart(true, 1e30F, 1e33F, 0));
  EXPECT_FALSE(ticks.labels.empty());
}

}  // namespace
}  // namespace tavd
