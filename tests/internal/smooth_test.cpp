// The curve smoother as the diagrams use it: points in, a stream of points out.
#include "diagram/smooth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "oracle/reference/records.h"

namespace tavd {
namespace {

using Points = std::vector<CurvePoint>;

constexpr float kUnwritten = -12345.0F;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Axes {
  bool xlog = false;
  bool ylog = false;
};

// The whole curve; empty if the smoother refuses.
Points curve(const Points& input, int depth, Axes axes = {}) {
  Points out;
  Smoother smoother(input.data(), static_cast<int>(input.size()), axes.xlog, axes.ylog, depth);
  CurvePoint p{kUnwritten, kUnwritten};
  if (smoother.first(&p.x, &p.y)) {
    out.push_back(p);
  }
  while (smoother.next(&p.x, &p.y)) {
    out.push_back(p);
  }
  return out;
}

// Distance of a point from the line through two others.
double off_line(CurvePoint p, CurvePoint a, CurvePoint b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return std::fabs(dx * (p.y - a.y) - dy * (p.x - a.x)) / std::hypot(dx, dy);
}

const Points kParabola = {{0, 0}, {1, 1}, {2, 4}, {3, 9}, {4, 16}};

TEST(Smooth, FewerThanTwoPointsAreNoCurve) {
  const CurvePoint p{1, 1};
  for (const int n : {1, 0, -1, std::numeric_limits<int>::min()}) {
    Smoother smoother(&p, n, false, false, 2);
    float x = kUnwritten;
    float y = kUnwritten;
    EXPECT_FALSE(smoother.first(&x, &y)) << n;
    EXPECT_FALSE(smoother.next(&x, &y)) << n;
    EXPECT_EQ(kUnwritten, x);
    EXPECT_EQ(kUnwritten, y);
  }
}

TEST(Smooth, BlockThatIsTooLargeIsRefused) {
  const CurvePoint p{1, 1};
  Smoother smoother(&p, std::numeric_limits<int>::max(), false, false, 2);
  CurvePoint first{};
  EXPECT_FALSE(smoother.first(&first.x, &first.y));
}

TEST(Smooth, DepthSetsThePointsPerSpan) {
  const struct {
    int depth;
    std::size_t sub;
  } cases[] = {{std::numeric_limits<int>::min(), 3},
               {-1, 3},
               {0, 3},
               {1, 3},
               {2, 5},
               {3, 9},
               {4, 17},
               {5, 33},
               {6, 65},
               {7, 65},
               {std::numeric_limits<int>::max(), 65}};
  for (const auto& c : cases) {
    EXPECT_EQ(1 + (kParabola.size() - 1) * (c.sub - 1), curve(kParabola, c.depth).size()) << c.depth;
  }
}

TEST(Smooth, ParabolaHasThreeNewPointsPerSpanAndPassesThroughItsPoints) {
  const Points out = curve(kParabola, 2);
  ASSERT_EQ(17U, out.size());
  for (std::size_t i = 0; i < out.size(); ++i) {
    if (i % 4 == 0) {
      EXPECT_EQ(kParabola[i / 4].x, out[i].x);
      EXPECT_EQ(kParabola[i / 4].y, out[i].y);
    } else {
      // The curve leaves the origin half a turn below its chord, the parabola level.
      EXPECT_NEAR(out[i].x * out[i].x, out[i].y, i < 4 ? 0.2 : 0.12) << i;
      EXPECT_GT(out[i].x, out[i - 1].x);
      EXPECT_GT(out[i].y, out[i - 1].y);
    }
  }
}

// A valley of two chords at 45 degrees: level at the bottom, 13/8 pi at the left end, so that the tangents
// meet at (-2 + sqrt 2, 0), 0.35872 chords from the middle.
TEST(Smooth, FirstPointOfAValleyLiesWhereTheTangentsPullIt) {
  const Points out = curve({{-1, 1}, {0, 0}, {1, 1}}, 1);
  ASSERT_EQ(5U, out.size());
  const double cross_x = -2 + std::sqrt(2.0);
  const double ratio = std::hypot(cross_x + 0.5, 0.5) / std::sqrt(2.0);
  const double w = 0.5 - (ratio - 0.1) * 0.2 / 0.9;
  EXPECT_NEAR(-0.5 + (cross_x + 0.5) * w, out[1].x, 1e-6);
  EXPECT_NEAR(0.5 - 0.5 * w, out[1].y, 1e-6);
  EXPECT_NEAR(-out[1].x, out[3].x, 1e-6);
  EXPECT_NEAR(out[1].y, out[3].y, 1e-6);
}

TEST(Smooth, CollinearPointsAreHalved) {
  const Points out = curve({{0, 1}, {4, 3}, {12, 7}}, 2);
  const Points expected = {{0, 1}, {1, 1.5F}, {2, 2}, {3, 2.5F}, {4, 3}, {6, 4}, {8, 5}, {10, 6}, {12, 7}};
  ASSERT_EQ(expected.size(), out.size());
  for (std::size_t i = 0; i < out.size(); ++i) {
    EXPECT_EQ(expected[i].x, out[i].x) << i;
    EXPECT_EQ(expected[i].y, out[i].y) << i;
  }
}

// A power law is a straight line on logarithmic axes: new points are geometric means.
TEST(Smooth, PowerLawStaysOneOnLogarithmicAxes) {
  const Points out = curve({{1, 10}, {10, 1000}, {100, 100000}}, 1, {true, true});
  ASSERT_EQ(5U, out.size());
  EXPECT_NEAR(std::sqrt(10.0), out[1].x, 1e-5);
  EXPECT_NEAR(100.0, out[1].y, 1e-3);
  EXPECT_NEAR(10.0, out[2].x, 1e-5);
  EXPECT_NEAR(std::pow(10.0, 1.5), out[3].x, 1e-4);
}

// The last tangent looks back: it lies on the chord itself, and half of its half turn is taken for the
// start, so that the tangents meet in the first point, half a chord from the middle.
TEST(Smooth, TwoPointsAreBentByTheReversedEnd) {
  const Points out = curve({{1, 2}, {5, 6}}, 1);
  ASSERT_EQ(3U, out.size());
  const double w = 0.5 - (0.5 - 0.1) * 0.2 / 0.9;
  EXPECT_NEAR(3 - 2 * w, out[1].x, 1e-5);
  EXPECT_NEAR(4 - 2 * w, out[1].y, 1e-5);
  EXPECT_EQ(5.0F, out[2].x);
  EXPECT_EQ(6.0F, out[2].y);
}

TEST(Smooth, EachAxisHasItsOwnLogarithm) {
  const Points x_only = curve({{1, 0}, {10, 1}, {100, 2}}, 1, {true, false});
  ASSERT_EQ(5U, x_only.size());
  EXPECT_NEAR(std::sqrt(10.0), x_only[1].x, 1e-5);
  EXPECT_NEAR(0.5, x_only[1].y, 1e-6);
  const Points y_only = curve({{0, 1}, {1, 10}, {2, 100}}, 1, {false, true});
  ASSERT_EQ(5U, y_only.size());
  EXPECT_NEAR(0.5, y_only[1].x, 1e-6);
  EXPECT_NEAR(std::sqrt(10.0), y_only[1].y, 1e-5);
}

TEST(Smooth, FirstPointComesAsItWasGiven) {
  const Points input = {{0.1F, -3}, {0.3F, 30}, {0.7F, 300}};
  const Points out = curve(input, 2, {true, true});
  ASSERT_FALSE(out.empty());
  EXPECT_EQ(0.1F, out[0].x);
  EXPECT_EQ(-3.0F, out[0].y);
}

// -1 has no logarithm and stands for itself, so it comes back as 10^-1; 0 comes back as 1.
TEST(Smooth, CoordinateWithoutALogarithmComesBackAsAPowerOfTen) {
  const Points out = curve({{1, 1}, {10, -1}, {100, 0}}, 1, {true, true});
  ASSERT_EQ(5U, out.size());
  EXPECT_NEAR(0.1, out[2].y, 1e-7);
  EXPECT_NEAR(1.0, out[4].y, 1e-7);
}

TEST(Smooth, SShapedSpanKeepsItsNewPointOnTheChord) {
  const Points input = {{0, 0}, {1, 0}, {2, 1}, {3, 1}};
  const Points out = curve(input, 1);
  ASSERT_EQ(7U, out.size());
  EXPECT_LT(off_line(out[3], input[1], input[2]), 1e-6);
  EXPECT_GE(out[3].x, 1.25F);
  EXPECT_LE(out[3].x, 1.75F);
}

// Back and forth on one line, the last turn to the other side: up at one end of the middle span, down at the
// other.
const Points kHairpins = {{1, 0}, {0, 0}, {1, 0}, {0, -1e-06F}};

TEST(Smooth, VerticalTangentsAtBothEndsEndTheCurve) {
  for (const int depth : {1, 2, 6}) {
    const Points out = curve(kHairpins, depth);
    const Points whole = curve(kParabola, depth);
    const std::size_t per_span = (whole.size() - 1) / 4;
    ASSERT_EQ(1 + per_span, out.size()) << depth;
    EXPECT_EQ(0.0F, out.back().x);
    EXPECT_EQ(0.0F, out.back().y);
  }
}

TEST(Smooth, EndStaysTheEnd) {
  for (const Points& input : {kParabola, kHairpins}) {
    Smoother smoother(input.data(), static_cast<int>(input.size()), false, false, 2);
    CurvePoint p{};
    ASSERT_TRUE(smoother.first(&p.x, &p.y));
    while (smoother.next(&p.x, &p.y)) {
    }
    p = {kUnwritten, kUnwritten};
    for (int i = 0; i < 100; ++i) {
      EXPECT_FALSE(smoother.next(&p.x, &p.y));
    }
    EXPECT_EQ(kUnwritten, p.x);
  }
}

TEST(Smooth, CurveCanBeDrawnAgainFromItsFirstPoint) {
  Smoother smoother(kParabola.data(), 3, false, false, 1);
  CurvePoint p{};
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(smoother.first(&p.x, &p.y));
    EXPECT_EQ(0.0F, p.x);
    int points = 1;
    while (smoother.next(&p.x, &p.y)) {
      ++points;
    }
    EXPECT_EQ(5, points);
    EXPECT_EQ(2.0F, p.x);
  }
}

TEST(Smooth, WithoutTheFirstPointTheFirstSpanIsLeftOut) {
  Smoother smoother(kParabola.data(), 3, false, false, 1);
  CurvePoint p{};
  int points = 0;
  while (smoother.next(&p.x, &p.y)) {
    ++points;
  }
  EXPECT_EQ(2, points);
}

TEST(Smooth, TwoCurvesAtOnceDoNotMeet) {
  Smoother one(kParabola.data(), 5, false, false, 6);
  CurvePoint p{};
  ASSERT_TRUE(one.first(&p.x, &p.y));
  EXPECT_EQ(5U, curve({{0, 0}, {1, 1}, {2, 4}}, 1).size());
  std::size_t points = 1;
  while (one.next(&p.x, &p.y)) {
    ++points;
  }
  EXPECT_EQ(curve(kParabola, 6).size(), points);
}

// Random curves: the stream has all its points and passes through those that were given.
TEST(Smooth, RandomCurvesPassThroughTheirPoints) {
  reference::Random random(20);
  for (int round = 0; round < 2000; ++round) {
    const bool log = random.one_in(2);
    const int n = random.between(3, 20);
    const int depth = random.between(1, 6);
    Points input;
    float x = log ? random.logarithmic(1e-3F, 10) : random.uniform(-100, 100);
    for (int i = 0; i < n; ++i) {
      x = log ? x * random.uniform(1.05F, 3) : x + random.uniform(1, 30);
      input.push_back({x, log ? random.logarithmic(0.1F, 1e4F) : random.uniform(-100, 100)});
    }
    const Points out = curve(input, depth, {log, log});
    const std::size_t per_span = std::size_t{1} << depth;
    ASSERT_EQ(1 + static_cast<std::size_t>(n - 1) * per_span, out.size()) << round;
    for (std::size_t i = 0; i < input.size(); ++i) {
      const double tolerance = log ? 2e-6 : 0;
      EXPECT_NEAR(input[i].x, out[i * per_span].x, tolerance * std::fabs(input[i].x)) << round;
      EXPECT_NEAR(input[i].y, out[i * per_span].y, tolerance * std::fabs(input[i].y)) << round;
    }
  }
}

// Points of a circle: no new one strays far from it.
TEST(Smooth, ArcStaysNearItsCircle) {
  for (const double step : {0.2, 0.4, 0.8}) {
    Points input;
    for (int i = 0; i < 6; ++i) {
      input.push_back(
          {static_cast<float>(10 * std::cos(i * step)), static_cast<float>(10 * std::sin(i * step))});
    }
    for (const CurvePoint& p : curve(input, 4)) {
      EXPECT_NEAR(10.0, std::hypot(p.x, p.y), 10 * 0.05 * step * step) << step;
    }
  }
}

TEST(Smooth, HostileNumbersEnd) {
  const float numbers[] = {0,     -0.0F,  1,      -1,    kNaN,  kInfinity, -kInfinity,
                           3e38F, -3e38F, 1e-40F, 1e-6F, 10000, -1e-30F};
  reference::Random random(21);
  for (int round = 0; round < 20000; ++round) {
    Points input(static_cast<std::size_t>(random.between(2, 5)));
    for (CurvePoint& p : input) {
      p.x = numbers[random.below(static_cast<int>(std::size(numbers)))];
      p.y = numbers[random.below(static_cast<int>(std::size(numbers)))];
    }
    const int depth = random.between(0, 7);
    const std::size_t most =
        1 + (input.size() - 1) * (std::size_t{1} << std::clamp(depth, 1, kDeepestSmoothing));
    const Points out = curve(input, depth, {random.one_in(2), random.one_in(2)});
    EXPECT_GE(out.size(), 1U);
    EXPECT_LE(out.size(), most);
  }
}

}  // namespace
}  // namespace tavd
