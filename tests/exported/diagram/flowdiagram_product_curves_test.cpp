// Curves of products that are measured point by point: fixed resistances and fans. Pixels by hand: in the
// plot of logarithmic axes x = 1955 + 7045 * lg(qv / 100) and y = 8045 - 3241.5 * lg(dp / 100).
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"

namespace {

using tavdtest::Record;
using tavdtest::Segment;
using Strings = std::vector<std::string>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr char kCurvePen[] = "select pen solid width=10 colour=#000000";
constexpr char kLabelFont[] =
    "select font height=-400 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 "
    "face=\"Microsoft Sans Serif\"";
constexpr char kFormerPen[] = "select stock black-pen";
constexpr char kFormerFont[] = "select stock system-font";

class ProductCurves : public tavdtest::FlowDiagram {
 protected:
  void build(Record& product) { ASSERT_EQ(0, tavdg_initdiagramdata(product.rec())); }

  // What is drawn over the chart as segments.
  std::vector<Segment> segments() {
    std::vector<Segment> all;
    for (const std::string& line : curves("line")) {
      Segment s{};
      std::sscanf(line.c_str(), "line %d %d %d %d", &s[0], &s[1], &s[2], &s[3]);
      all.push_back(s);
    }
    return all;
  }
};

// ---- Measured at several flows ----------------------------------------------------------------------------

class MeasuredCurve : public ProductCurves {
 protected:
  void build_points(const std::vector<QvDpPoint>& points, const char* class_id = "TST") {
    Record product(class_id, "PRODUCT");
    product.header(112, 100, 100, 100, 1000, 100, 10000).rows(1657, points);
    build(product);
  }
};

// From 100 l/s and 100 Pa, the corner, the square law to (200, 400), a straight segment to (500, 2000), and
// the square law to (1000, 8000): x 1955, 4075.7, 6879.2, 9000 and y 8045, 6093.4, 3827.7, 1876.1.
TEST_F(MeasuredCurve, IsStraightBetweenItsPointsWithSquareLawsOnBothSides) {
  build_points({{200, 400}, {500, 2000}});
  EXPECT_EQ((Strings{kCurvePen, "move 1955 8045", "line 1955 8045 4075 6093", "move 4075 6093",
                     "line 4075 6093 6879 3827", "move 6879 3827", "line 6879 3827 9000 1876", kFormerPen}),
            curves());
}

TEST_F(MeasuredCurve, OnePointIsASquareLaw) {
  build_points({{200, 400}});
  EXPECT_EQ((Strings{"line 1955 8045 4075 6093", "line 4075 6093 9000 1562"}), curves("line"));
}

TEST_F(MeasuredCurve, PointsAtBothLimitsNeedNoExtension) {
  build_points({{100, 200}, {1000, 5000}});
  ASSERT_EQ(1U, segments().size());
  EXPECT_EQ(1955, segments()[0][0]);
  EXPECT_EQ(9000, segments()[0][2]);
}

TEST_F(MeasuredCurve, PointsBeyondTheLimitsNeedNoExtension) {
  build_points({{50, 200}, {2000, 5000}});
  EXPECT_EQ(1U, segments().size());
}

TEST_F(MeasuredCurve, AnyPointWithoutFlowOrPressureLeavesTheWholeCurveOut) {
  for (const QvDpPoint bad :
       {QvDpPoint{0, 400}, {200, 0}, {1e-05F, 400}, {200, 1e-05F}, {-1, 400}, {200, -1}}) {
    build_points({{150, 300}, bad, {500, 2000}});
    EXPECT_EQ(Strings(), curves()) << bad.qv << ' ' << bad.dp;
    build_points({{150, 300}, {500, 2000}, bad});
    EXPECT_EQ(Strings(), curves()) << bad.qv << ' ' << bad.dp;
  }
}

TEST_F(MeasuredCurve, SmallestPointCountsFromAHundredThousandthUp) {
  build_points({{1.1e-05F, 1.1e-05F}, {500, 2000}});
  EXPECT_NE(Strings(), curves("line"));
}

// The duct of 0.1 m by 0.1 m: 60 Pa at 100 l/s, 240 at 200, 1500 at 500, 6000 at 1000. Supply air: 160 Pa
// (y 7383.4) at 200 l/s, 500 Pa (y 5779.3) at 500; at 100 l/s 40 Pa, below the plot; at 1000 l/s 2000 Pa.
// The extensions end at the points' total pressures.
TEST_F(MeasuredCurve, ExtensionsMeetThePointsAtTheirTotalPressure) {
  tavdg_set_dptype(1);
  build_points({{200, 400}, {500, 2000}}, "ASD");
  const std::vector<Segment> lines = segments();
  ASSERT_EQ(3U, lines.size());
  EXPECT_EQ(8045, lines[0][1]);
  EXPECT_EQ(4075, lines[0][2]);
  EXPECT_EQ(6093, lines[0][3]);
  EXPECT_EQ((Segment{4075, 7383, 6879, 5779}), lines[1]);
  EXPECT_EQ((Segment{6879, 3827, 9000, static_cast<int>(8045 - 3241.5 * std::log10(20.0))}), lines[2]);
}

TEST_F(MeasuredCurve, PointThatIsNoNumberIsLeftOutOfTheLine) {
  build_points({{200, 400}, {300, kNaN}, {500, 2000}});
  EXPECT_EQ(2U, segments().size());  // the two extensions
}

TEST_F(MeasuredCurve, ParametersRaiseTheCurve) {
  Record product("TST", "PRODUCT");
  struct __attribute__((packed)) {
    char value[6];
    float dk;
    std::int16_t dlw, ddlw;
    float factor;
  } row = {{'B', ' ', ' ', ' ', ' ', ' '}, 0.01F, 0, 0, 0};
  limits(product, 112)
      .rows(1657, std::vector<QvDpPoint>{{200, 400}})
      .bytes(1661, &row, sizeof row)
      .text(1514, "VALVE");
  tavdg_set_parameter("VALVE", "B");
  build(product);
  // 400 Pa and 0.01 * 200^2 = 400 Pa: from 200 Pa at 100 l/s to 10000 Pa at 707 l/s.
  EXPECT_EQ((Strings{"line 1955 7069 4075 5117", "line 4075 5117 7939 1562"}), curves("line"));
}

// ---- Fans -------------------------------------------------------------------------------------------------

// Axes from 0 to 1000 l/s and 0 to 10000 Pa. Both have labels of three characters (the axes start at zero):
// the plot runs from 1553, 1562 to 9400, 8447.
class FanCurve : public ProductCurves {
 protected:
  static constexpr double kLeft = 1553;
  static constexpr double kBottom = 8447;
  static constexpr double kPerFlow = 7.847;       // (9400 - 1553) / 1000
  static constexpr double kPerPressure = 0.6885;  // (8447 - 1562) / 10000

  void build_fan(const std::vector<FanPoint>& points, const char* class_id = "FAN", float dpmax = 10000) {
    Record fan(class_id, "FAN");
    fan.header(140, 100, 100, 0, 1000, 0, dpmax).rows(1666, points);
    build(fan);
  }
  static int x(double qv) { return static_cast<int>(kLeft + kPerFlow * qv); }
  static int y(double dp) { return static_cast<int>(kBottom - kPerPressure * dp); }

  // Consecutive segments that join, as polylines of their points.
  std::vector<std::vector<std::array<int, 2>>> polylines() {
    std::vector<std::vector<std::array<int, 2>>> all;
    for (const Segment& s : segments()) {
      if (all.empty() || all.back().back() != std::array<int, 2>{s[0], s[1]}) {
        all.push_back({{s[0], s[1]}});
      }
      all.back().push_back({s[2], s[3]});
    }
    return all;
  }
  static bool passes(const std::vector<std::array<int, 2>>& polyline, double qv, double dp) {
    return std::any_of(polyline.begin(), polyline.end(), [&](const auto& p) {
      return std::abs(p[0] - x(qv)) <= 1 && std::abs(p[1] - y(dp)) <= 1;
    });
  }

  const std::vector<FanPoint> points_ = {{200, 8000, 0}, {500, 7000, 0}, {800, 4000, 0}, {900, 1000, 0}};
};

TEST_F(FanCurve, IsSmoothThroughItsPointsThenComeTheTwoLimits) {
  build_fan(points_);
  const auto lines = polylines();
  ASSERT_EQ(3U, lines.size());
  // Four segments per span at the resolution of 2.
  EXPECT_EQ(1 + 3 * 4U, lines[0].size());
  for (const FanPoint& p : points_) {
    EXPECT_TRUE(passes(lines[0], p.qv, p.dp)) << p.qv;
  }
  EXPECT_EQ(1 + 10 * 4U, lines[1].size());
  EXPECT_EQ(1 + 10 * 4U, lines[2].size());
}

TEST_F(FanCurve, LimitsAreSquareLawsFromTheOrigin) {
  build_fan(points_);
  const auto lines = polylines();
  ASSERT_EQ(3U, lines.size());
  for (int i = 0; i <= 10; ++i) {
    const double share = i / 10.0;
    EXPECT_TRUE(passes(lines[1], 200 * share, 8000 * share * share)) << i;
    EXPECT_TRUE(passes(lines[2], 900 * share, 1000 * share * share)) << i;
  }
}

TEST_F(FanCurve, EachCurveSelectsPenAndFont) {
  build_fan(points_);
  EXPECT_EQ((Strings{kCurvePen, kLabelFont, kFormerFont, kFormerPen, kCurvePen, kLabelFont, kFormerFont,
                     kFormerPen}),
            curves("select"));
}

TEST_F(FanCurve, ResolutionSetsTheNumberOfSegments) {
  for (const auto& [resolution, per_span] : std::vector<std::pair<int, std::size_t>>{
           {0, 2}, {1, 2}, {2, 4}, {3, 4}, {4, 16}, {6, 64}, {7, 64}, {100, 64}, {-4, 2}}) {
    tavdg_setcurveresolution(resolution);
    build_fan(points_);
    EXPECT_EQ(23 * per_span, segments().size()) << resolution;
  }
}

// 60 Pa at 100 l/s in the duct of 0.01 m2: 240 Pa at 200 l/s, 4860 Pa at 900. The limits stay total.
TEST_F(FanCurve, StaticPressureMovesTheCurveAlone) {
  tavdg_set_dptype(1);
  build_fan(points_, "AEX");
  const auto lines = polylines();
  const auto is_met = [&](double qv, double dp) {
    return std::any_of(lines.begin(), lines.end(), [&](const auto& line) { return passes(line, qv, dp); });
  };
  EXPECT_TRUE(is_met(200, 8240));
  EXPECT_TRUE(is_met(900, 1000 + 4860));
  // The parabolas' ends.
  EXPECT_TRUE(is_met(200, 8000));
  EXPECT_TRUE(is_met(900, 1000));
}

TEST_F(FanCurve, PointWithoutFlowOrPressureLeavesTheCurveOutAndTheLimitsStand) {
  for (const FanPoint bad : {FanPoint{0, 7000, 0}, {500, 0, 0}, {-1, 7000, 0}, {500, -1, 0}}) {
    build_fan({points_[0], bad, points_[3]});
    EXPECT_EQ(2U, polylines().size()) << bad.qv << ' ' << bad.dp;
    EXPECT_EQ(80U, segments().size());
  }
}

TEST_F(FanCurve, BadFirstOrLastPointLeavesBothLimitsOut) {
  const auto starts_at_the_origin = [this] {
    const std::vector<Segment> lines = segments();
    return std::any_of(lines.begin(), lines.end(),
                       [](const Segment& s) { return s[0] == x(0) && s[1] == y(0); });
  };
  for (const FanPoint bad : {FanPoint{0, 8000, 0}, {200, 0, 0}, {kNaN, 8000, 0}, {200, kNaN, 0}}) {
    build_fan({bad, points_[1], points_[2]});
    EXPECT_FALSE(starts_at_the_origin()) << bad.qv << ' ' << bad.dp;
    build_fan({points_[0], points_[1], bad});
    EXPECT_FALSE(starts_at_the_origin()) << bad.qv << ' ' << bad.dp;
  }
  build_fan(points_);
  EXPECT_TRUE(starts_at_the_origin());
}

TEST_F(FanCurve, OnePointHasLimitsWithoutACurve) {
  build_fan({points_[1]});
  EXPECT_EQ(80U, segments().size());
}

TEST_F(FanCurve, TwentyPointsAreTheMost) {
  std::vector<FanPoint> many;
  many.reserve(25);
  for (int i = 0; i < 25; ++i) {
    many.push_back({static_cast<float>(40 * (i + 1)), static_cast<float>(9000 - 300 * i), 0});
  }
  build_fan(many);
  EXPECT_EQ(19 * 4 + 80U, segments().size());
}

TEST_F(FanCurve, FanWithoutPointsShowsTheChartAlone) {
  Record fan("FAN", "FAN");
  fan.header(140, 100, 100, 0, 1000, 0, 10000);
  build(fan);
  tavdg_set_operation_point(500, 5000);
  tavdg_set_qvlimits(400, 600);
  EXPECT_NE("", draw().text());
  EXPECT_EQ(Strings(), curves());
}

}  // namespace
