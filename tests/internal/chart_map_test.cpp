// World to device, and clipping to the plot.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "diagram/chart.h"
#include "support/recording.h"

namespace tavd {
namespace {

using tavdtest::Recording;
using tavdtest::Segment;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Destroy {
  void operator()(Chart* chart) const { chart_destroy(chart); }
};
using ChartPtr = std::unique_ptr<Chart, Destroy>;

ChartPtr chart(bool log, float xmin, float ymin, float xmax, float ymax) {
  return ChartPtr(chart_create({xmin, xmax, 1, 5, 0, log}, {ymin, ymax, 1, 5, 0, log}, "", "", ""));
}

TEST(ChartPixel, LinearEndsAndMiddle) {
  const ChartPtr c = chart(false, 0, 0, 10, 100);
  EXPECT_EQ(1955, chart_x_pixel(c.get(), 0));
  EXPECT_EQ(5477, chart_x_pixel(c.get(), 5));  // 1955 + 704.5 * 5 = 5477.5
  EXPECT_EQ(9000, chart_x_pixel(c.get(), 10));
  EXPECT_EQ(8045, chart_y_pixel(c.get(), 0));
  EXPECT_EQ(6424, chart_y_pixel(c.get(), 25));  // 8045 - 64.83 * 25 = 6424.25
  EXPECT_EQ(1562, chart_y_pixel(c.get(), 100));
}

TEST(ChartPixel, TruncatesTowardZeroOnBothSidesOfIt) {
  const ChartPtr c = chart(false, 0, 0, 7045, 6483);  // one unit a world unit
  EXPECT_EQ(0, chart_x_pixel(c.get(), -1955.5F));
  EXPECT_EQ(-1, chart_x_pixel(c.get(), -1956.5F));
  EXPECT_EQ(0, chart_y_pixel(c.get(), 8045.5F));
  EXPECT_EQ(-1, chart_y_pixel(c.get(), 8046.5F));
}

TEST(ChartPixel, LogarithmicDecadesAreEqualSteps) {
  const ChartPtr c = chart(true, 1, 1, 100, 1000);
  EXPECT_EQ(1955, chart_x_pixel(c.get(), 1));
  EXPECT_EQ(5477, chart_x_pixel(c.get(), 10));
  EXPECT_EQ(9000, chart_x_pixel(c.get(), 100));
  EXPECT_EQ(8045, chart_y_pixel(c.get(), 1));
  EXPECT_EQ(8045 - 2161, chart_y_pixel(c.get(), 10));
  EXPECT_EQ(8045 - 4322, chart_y_pixel(c.get(), 100));
  EXPECT_EQ(static_cast<int>(1955 + 3522.5 * std::log10(2.0)), chart_x_pixel(c.get(), 2));
}

TEST(ChartPixel, ValuesWithoutAPlaceAreHeldAtTheEndOfTheInteger) {
  const ChartPtr log = chart(true, 1, 1, 100, 1000);
  EXPECT_EQ(std::numeric_limits<int>::min(), chart_x_pixel(log.get(), 0));
  EXPECT_EQ(std::numeric_limits<int>::max(), chart_y_pixel(log.get(), 0));
  const ChartPtr linear = chart(false, 0, 0, 10, 100);
  EXPECT_EQ(std::numeric_limits<int>::max(), chart_x_pixel(linear.get(), 1e30F));
  EXPECT_EQ(std::numeric_limits<int>::min(), chart_y_pixel(linear.get(), 1e30F));
  EXPECT_EQ(0, chart_x_pixel(linear.get(), kNaN));
}

TEST(ChartPlace, OnlyPositiveFiniteValuesHaveOneOnALogarithmicAxis) {
  const ChartPtr log = chart(true, 1, 1, 100, 1000);
  EXPECT_TRUE(chart_has_place(log.get(), 1e-30F, 1e30F));
  EXPECT_FALSE(chart_has_place(log.get(), 0, 10));
  EXPECT_FALSE(chart_has_place(log.get(), 10, 0));
  EXPECT_FALSE(chart_has_place(log.get(), -1, 10));
  EXPECT_FALSE(chart_has_place(log.get(), 10, kNaN));
  EXPECT_FALSE(chart_has_place(log.get(), kInfinity, 10));
  const ChartPtr linear = chart(false, 0, 0, 10, 100);
  EXPECT_TRUE(chart_has_place(linear.get(), -5, 0));
}

// A chart whose world is its device: x runs with it, y is turned about the plot's lower edge. The plot runs
// from 1955, 1562 to 9000, 8045.
class ChartClip : public ::testing::Test {
 protected:
  std::vector<Segment> clip(float x1, float y1, float x2, float y2) {
    recording_.clear();
    chart_clip_line(chart_.get(), recording_.surface(), x1, 8045 - y1, x2, 8045 - y2);
    return recording_.segments();
  }
  using Segments = std::vector<Segment>;

  Recording recording_;
  ChartPtr chart_ = chart(false, 1955, 0, 9000, 6483);
};

TEST_F(ChartClip, InsideStaysExact) {
  EXPECT_EQ(Segments({{2000, 3000, 8000, 3000}}), clip(2000, 3000, 8000, 3000));
  EXPECT_EQ(Segments({{2000, 3000, 8000, 7000}}), clip(2000, 3000, 8000, 7000));
  EXPECT_EQ(Segments({{1955, 1562, 9000, 8045}}), clip(1955, 1562, 9000, 8045));
}

TEST_F(ChartClip, RunsFromLeftToRightWhateverTheOrder) {
  EXPECT_EQ(Segments({{2000, 7000, 8000, 3000}}), clip(8000, 3000, 2000, 7000));
}

TEST_F(ChartClip, VerticalIsClamped) {
  EXPECT_EQ(Segments({{5000, 1562, 5000, 8045}}), clip(5000, 0, 5000, 9999));
  EXPECT_EQ(Segments({{5000, 8045, 5000, 3000}}), clip(5000, 9999, 5000, 3000));
  EXPECT_EQ(Segments({{5000, 3000, 5000, 4000}}), clip(5000, 3000, 5000, 4000));
}

TEST_F(ChartClip, OutsideOneEdgeIsNotDrawn) {
  EXPECT_EQ(Segments(), clip(0, 3000, 1954, 4000));
  EXPECT_EQ(Segments(), clip(9001, 3000, 9999, 4000));
  EXPECT_EQ(Segments(), clip(3000, 0, 4000, 1561));
  EXPECT_EQ(Segments(), clip(3000, 8046, 4000, 9000));
}

TEST_F(ChartClip, EndsOnTheEdgesAreDrawn) {
  EXPECT_EQ(Segments({{1955, 3000, 1955, 3000}}), clip(955, 3000, 1955, 3000));
  EXPECT_EQ(Segments({{3000, 1562, 4000, 1562}}), clip(3000, 1562, 4000, 1562));
}

TEST_F(ChartClip, SidesMoveTheOtherCoordinateTruncated) {
  // k = 333 / 1000; 55 units to the plot: 3000 + 18.3.
  EXPECT_EQ(Segments({{1955, 3018, 2900, 3333}}), clip(1900, 3000, 2900, 3333));
  // k = -333 / 1000; the end lies 900 units out: 2667 + 299.7.
  EXPECT_EQ(Segments({{8900, 3000, 9000, 2966}}), clip(8900, 3000, 9900, 2667));
}

TEST_F(ChartClip, TopAndBottomMoveXTruncated) {
  // k = 3: 562 units to the top edge are 187.3 units of x, 955 above the bottom edge 318.3.
  EXPECT_EQ(Segments({{3187, 1562, 4000, 4000}}), clip(3000, 1000, 4000, 4000));
  EXPECT_EQ(Segments({{3000, 6000, 3681, 8045}}), clip(3000, 6000, 4000, 9000));
  // Falling: k = -3.
  EXPECT_EQ(Segments({{3318, 8045, 4000, 6000}}), clip(3000, 9000, 4000, 6000));
}

TEST_F(ChartClip, BothEndsOutAcrossThePlot) {
  // The diagonal of a square around the plot: k = 1, through (1955, 1955).
  EXPECT_EQ(Segments({{1955, 1955, 8045, 8045}}), clip(0, 0, 10000, 10000));
}

TEST_F(ChartClip, PastACornerLeavesWhatTheStepsLeave) {
  // k = -1, passing 17 units outside the upper left corner: first to (1955, 1545), then along the line to the
  // top edge, where both ends meet outside the plot.
  EXPECT_EQ(Segments({{1938, 1562, 1938, 1562}}), clip(1900, 1600, 2000, 1500));
}

TEST_F(ChartClip, SteepSegmentFarBeyondSixteenBitsKeepsItsPlace) {
  // Rises 400000 units over 10: cut to -32768..32767 between x 5004.2 and 5005.8, then clipped with k =
  // 65535.
  EXPECT_EQ(Segments({{5004, 1562, 5004, 8045}}), clip(5000, -200000, 5010, 200000));
}

TEST_F(ChartClip, LongSegmentBeyondSixteenBitsDoesNotTurn) {
  const std::vector<Segment> drawn = clip(-1e6F, 3000, 1e6F, 5000);
  ASSERT_EQ(1U, drawn.size());
  EXPECT_EQ(1955, drawn[0][0]);
  EXPECT_EQ(9000, drawn[0][2]);
  // 2000 units over two million: between 4001.9 and 4009 on the plot.
  EXPECT_NEAR(4002, drawn[0][1], 1);
  EXPECT_NEAR(4009, drawn[0][3], 1);
}

TEST_F(ChartClip, OneVeryFarEndIsCutFromTheNearOne) {
  EXPECT_EQ(Segments({{3000, 3000, 3000, 8045}}), clip(3000, 3000, 3001, 1e30F));
}

TEST_F(ChartClip, FarSegmentThatMissesIsNotDrawn) {
  EXPECT_EQ(Segments(), clip(40000, 0, 50000, 10000));
  EXPECT_EQ(Segments(), clip(-1e6F, -1e6F, 1e6F, -9e5F));
}

TEST_F(ChartClip, EndsThatAreNoNumbersAreNotDrawn) {
  EXPECT_EQ(Segments(), clip(kNaN, 3000, 4000, 4000));
  EXPECT_EQ(Segments(), clip(3000, 3000, 4000, kNaN));
  EXPECT_EQ(Segments(), clip(3000, 3000, kInfinity, 4000));
}

TEST(ChartClipLogarithmic, EndsWithoutAPlaceAreNotDrawn) {
  const ChartPtr c = chart(true, 1, 1, 100, 1000);
  Recording recording;
  chart_clip_line(c.get(), recording.surface(), 0, 1, 100, 1000);
  chart_clip_line(c.get(), recording.surface(), 1, -1, 100, 1000);
  chart_clip_line(c.get(), recording.surface(), 1, 1, 100, kNaN);
  EXPECT_EQ("", recording.text());
  chart_clip_line(c.get(), recording.surface(), 1, 1, 100, 1000);
  EXPECT_EQ(std::vector<Segment>({{1955, 8045, 9000, 1562}}), recording.segments());
}

TEST(ChartClipNull, DrawsNothing) {
  Recording recording;
  chart_clip_line(nullptr, recording.surface(), 1, 1, 2, 2);
  EXPECT_EQ("", recording.text());
}

}  // namespace
}  // namespace tavd
