// The curves of charts beside the single functions of the library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "program/charts/scenes.h"
#include "support/products.h"
#include "support/program.h"
#include "tavd/tavca.h"

namespace {

using tavdhost::ChartCurve;
using tavdhost::CurveFamily;
using tavdhost::CurvePoint;
using tavdhost::flow_curves;
using tavdhost::FlowCurves;
using tavdhost::Product;

constexpr float kRoomDamping = 4;     // dB, that of tavca_LpA unless it is set
constexpr double kLevel = 0.02;       // dB(A), within which a level is met
constexpr double kPressure = 0.0005;  // of the pressure

double level_at(const Product& product, double qv, double dp) {
  float lw[TAVD_BANDS];
  const auto flow = static_cast<float>(qv);
  const auto pressure = static_cast<float>(dp);
  EXPECT_EQ(tavca_lw(&product.flow, flow, pressure, lw, &product.size), 0);
  return double{tavca_LpA(lw)};
}

// Whether the level is met at the place, or jumped over beside it: between two measured curves of a product
// the levels of the library need not be steady.
bool is_met(const Product& product, const CurvePoint& point, double level) {
  constexpr double kBeside = 1.002;
  if (std::abs(level_at(product, point.x, point.y) - level) < kLevel) return true;
  const auto jumps = [&](double flows, double pressures) {
    const double less = level_at(product, point.x / flows, point.y / pressures);
    const double more = level_at(product, point.x * flows, point.y * pressures);
    return (less - level) * (more - level) <= 0;
  };
  // Also along the line of a setting, where a field ends.
  return jumps(1, kBeside) || jumps(kBeside, 1) || jumps(kBeside, kBeside * kBeside);
}

// What the library answers for the curve at a flow; not a number for what is no pressure.
double pressure_at(const Product& product, const ChartCurve& curve, double qv) {
  const auto flow = static_cast<float>(qv);
  if (curve.family == CurveFamily::kPosition) {
    return double{tavca_dptot_damperpos(&product.flow, flow, static_cast<float>(curve.value))};
  }
  if (curve.family == CurveFamily::kResistance) return double{tavca_dptotmin(&product.flow, flow)};
  float total = 0;
  if (curve.family == CurveFamily::kFan) tavca_fan_dp(&product.flow, flow, &total, nullptr, nullptr);
  return curve.family == CurveFamily::kFan ? double{total} : NAN;
}

void expect_exact(const Product& product, const FlowCurves& curves) {
  for (const ChartCurve& curve : curves.curves) {
    ASSERT_GE(curve.points.size(), 2U);
    for (const CurvePoint& point : curve.points) {
      const double slack = 1 + 1e-6;
      EXPECT_TRUE(point.x * slack >= curves.qv_min && point.x <= curves.qv_max * slack) << point.x;
      EXPECT_TRUE(point.y * slack >= curves.dp_min && point.y <= curves.dp_max * slack) << point.y;
      if (curve.family == CurveFamily::kLevel) {
        EXPECT_TRUE(is_met(product, point, curve.value))
            << curve.value << " at " << point.x << ", " << point.y;
        continue;
      }
      const double expected = pressure_at(product, curve, point.x);
      if (!std::isfinite(expected) || expected <= 0) continue;
      EXPECT_NEAR(point.y, expected, kPressure * expected);
    }
  }
  for (const tavdhost::LevelMark& mark : curves.marks) {
    EXPECT_NEAR(level_at(product, mark.point.x, mark.point.y), mark.level, kLevel);
  }
}

struct ChartCurves : testing::Test {
  static void SetUpTestSuite() {
    const clitest::Folder folder;
    const std::string path = folder.file("catalogue.tavdb");
    ASSERT_EQ(clitest::run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", path}).exit_code, 0);
    products = charts::products_of(path);
  }
  static std::vector<Product> products;

  static const Product& named(const std::string& id) {
    return *std::ranges::find_if(products, [&id](const Product& p) { return p.key.object_id == id; });
  }
};
std::vector<Product> ChartCurves::products;

TEST_F(ChartCurves, AreTheNumbersOfTheLibraryWithinTheLimits) {
  std::set<CurveFamily> families;
  for (const Product& product : products) {
    const FlowCurves curves = flow_curves(product.flow, &product.size, kRoomDamping);
    SCOPED_TRACE(product.key.object_id);
    expect_exact(product, curves);
    for (const ChartCurve& curve : curves.curves) families.insert(curve.family);
  }
  EXPECT_EQ(families.size(), 5U);
}

TEST_F(ChartCurves, HaveAPositionForEachRowOfADamper) {
  const Product& damper = named("QZDA-160");
  const FlowCurves curves = flow_curves(damper.flow, &damper.size, kRoomDamping);
  std::set<double> positions;
  for (const ChartCurve& curve : curves.curves) {
    if (curve.family == CurveFamily::kPosition) positions.insert(curve.value);
  }
  EXPECT_EQ(positions.size(), static_cast<std::size_t>(damper.flow.ndamper));
}

// A curve of one level goes on until the field of the product ends: it leaves at a limit or at the first or
// the last position of the damper.
TEST_F(ChartCurves, OfLevelsReachFromEndToEnd) {
  for (const char* id : {"QZDA-160", "QZMA-600x400", "QZVA-160", "QZTA-160"}) {
    const Product& product = named(id);
    const FlowCurves curves = flow_curves(product.flow, &product.size, kRoomDamping);
    const double column = std::pow(curves.qv_max / curves.qv_min, 1.0 / 40);
    int count = 0;
    for (const ChartCurve& curve : curves.curves) {
      if (curve.family != CurveFamily::kLevel) continue;
      ++count;
      for (const CurvePoint& end : {curve.points.front(), curve.points.back()}) {
        float lowest = 0;
        float highest = INFINITY;
        tavca_minmaxdptot(&product.flow, static_cast<float>(end.x), &lowest, &highest);
        if (product.flow.kind == 13 || product.flow.kind == 30) lowest = 0, highest = INFINITY;
        const double low = std::max(double{lowest}, curves.dp_min);
        const double high = std::min(double{highest}, curves.dp_max);
        const bool at_side = end.x < curves.qv_min * column || end.x * column > curves.qv_max;
        EXPECT_TRUE(at_side || end.y < low * 1.05 || end.y > high / 1.05)
            << id << " " << curve.value << " " << end.x << " " << end.y;
      }
    }
    EXPECT_GE(count, 3) << id;
  }
}

TEST_F(ChartCurves, OfThrowLengthAreTheLibrarys) {
  const Product& product = named("QZSA-160");
  const tavdhost::ThrowCurves curves = tavdhost::throw_curves(product.flow);
  ASSERT_EQ(curves.curves.size(), 3U);
  for (const ChartCurve& curve : curves.curves) {
    for (const CurvePoint& point : curve.points) {
      const float length =
          tavca_L2_isothermal(&product.flow, static_cast<float>(point.x), curve.name.c_str());
      EXPECT_EQ(point.y, double{length});
    }
  }
}

TEST(ChartCurvesOfSingleProducts, KeepToTheirLimits) {
  FlowData flow = tavdtest::resistance_product(50, 20);
  flow.qvmin = 10;
  flow.qvmax = 100;
  flow.dpmin = 5;
  flow.dpmax = 45;
  const FlowCurves curves = flow_curves(flow, nullptr, kRoomDamping);
  ASSERT_EQ(curves.curves.size(), 1U);
  // dp = 20*(qv/50)^2: 5 Pa at 25 l/s, 45 Pa at 75 l/s.
  EXPECT_NEAR(curves.curves[0].points.front().x, 25, 1e-3);
  EXPECT_NEAR(curves.curves[0].points.back().x, 75, 1e-3);
}

TEST(ChartCurvesOfSingleProducts, AreNoneWithoutLimits) {
  EXPECT_FALSE(flow_curves(tavdtest::resistance_product(50, 20), nullptr, kRoomDamping).can_draw());
}

}  // namespace
