// Many points against the single functions of the library that ships, bit for bit, and both against the
// second transcription, over random records and points of every kind. TAVD_COMPARE_POINTS sets how many
// points per kind (20 000 unless it is set); a million takes minutes.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "exported/many/results.h"
#include "oracle/reference/records.h"
#include "oracle/reference/transcription.h"
#include "tavd/tavca.h"
#include "tavd/tavdn.h"

namespace {

namespace ref = transcription;
using manytest::kNoCode;
using manytest::kUnwritten;
using manytest::Results;
using reference::Point;
using reference::Product;
using reference::Random;
using reference::Shape;

constexpr int kUnknownKind = 50;
// Points of one call: fewer and more than any number that is worked on at once, and none that divides by it.
constexpr int kPointsOfCall[] = {1, 7, 40, 3, 131, 16, 40, 300};
constexpr int kLevels = 20;  // rows at most that are handed to tavdn_lpa beside the bands of the product

int points_per_kind() {
  const char* text = std::getenv("TAVD_COMPARE_POINTS");
  return text != nullptr ? std::atoi(text) : 20'000;
}

bool same(float a, float b) {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

bool same(int a, int b) {
  return a == b;
}

std::string text(float value) {
  std::ostringstream out;
  out << std::setprecision(9) << value << " (0x" << std::hex << std::bit_cast<std::uint32_t>(value) << ")";
  return out.str();
}

std::string text(int value) {
  return std::to_string(value);
}

// Counts what was compared and tells the first differences.
class Comparison {
 public:
  void at(int kind, std::uint64_t seed, std::size_t number, const Point& point) {
    kind_ = kind;
    seed_ = seed;
    number_ = number;
    point_ = point;
  }

  // What the arrays hold, the single function answers and the second transcription expects.
  template <typename Number>
  void check(const char* what, Number many, Number single, Number expected) {
    ++compared_;
    if (same(many, single) && same(single, expected)) return;
    if (++differences_ > 10) return;
    ADD_FAILURE() << what << ": many " << text(many) << ", single " << text(single) << ", second opinion "
                  << text(expected) << "\n  kind " << kind_ << ", record seed " << seed_ << ", point "
                  << number_ << ": qv " << text(point_.qv) << ", dp " << text(point_.dp);
  }

  void met(int lw_code) { ++lw_codes_[lw_code]; }
  const std::map<int, long>& lw_codes() const { return lw_codes_; }
  long compared() const { return compared_; }
  long differences() const { return differences_; }

 private:
  int kind_ = 0;
  std::uint64_t seed_ = 0;
  std::size_t number_ = 0;
  Point point_{};
  long compared_ = 0;
  long differences_ = 0;
  std::map<int, long> lw_codes_;  // how often tavca_lw answered what
};

// A product as it is handed to tavdn_prepare, and the points it is asked at.
struct Case {
  FlowData fd;
  DuctSize size;
  const DuctSize* duct;
  std::vector<Point> points;
  bool with_dp;
  float roomdamp;
};

void compare_pressure(Comparison& compare, const Case& c, const Point& p, std::size_t i,
                      const tavdn_results& out) {
  float single[3] = {};
  float expected[3] = {};
  compare.check("range_code", out.range_code[i], tavca_minmaxdptot(&c.fd, p.qv, &single[0], &single[1]),
                ref::minmaxdptot(&c.fd, p.qv, &expected[0], &expected[1]));
  compare.check("dp_min", out.dp_min[i], single[0], expected[0]);
  compare.check("dp_max", out.dp_max[i], single[1], expected[1]);
  compare.check("fan_code", out.fan_code[i], tavca_fan_dp(&c.fd, p.qv, &single[0], &single[1], &single[2]),
                ref::fan_dp(&c.fd, p.qv, &expected[0], &expected[1], &expected[2]));
  compare.check("fan_total", out.fan_total[i], single[0], expected[0]);
  compare.check("fan_static", out.fan_static[i], single[1], expected[1]);
  compare.check("fan_dynamic", out.fan_dynamic[i], single[2], expected[2]);
  compare.check("fan_check", out.fan_check[i], tavca_fan_op_check(&c.fd, p.qv, p.dp),
                ref::fan_op_check(&c.fd, p.qv, p.dp));
}

void compare_damper(Comparison& compare, const Case& c, const Point& p, std::size_t i,
                    const tavdn_results& out) {
  float single = 0;
  float expected = 0;
  compare.check("position_code", out.position_code[i], tavca_damper_pos(&c.fd, p.qv, p.dp, &single),
                ref::damper_pos(&c.fd, p.qv, p.dp, &expected));
  compare.check("position", out.position[i], single, expected);
  compare.check("setting_code", out.setting_code[i], tavca_damper_pos_fixed(&c.fd, p.qv, p.dp, &single),
                ref::damper_pos_fixed(&c.fd, p.qv, p.dp, &expected));
  compare.check("setting", out.setting[i], single, expected);
}

void compare_sound(Comparison& compare, const Case& c, const Point& p, std::size_t i,
                   const tavdn_results& out) {
  float single[TAVD_BANDS];
  float expected[TAVD_BANDS];
  const int code = ref::lw(&c.fd, p.qv, p.dp, expected, c.duct);
  compare.check("lw_code", out.lw_code[i], tavca_lw(&c.fd, p.qv, p.dp, single, c.duct), code);
  compare.met(code);
  for (int b = 0; b < TAVD_BANDS; ++b) {
    compare.check("lw", out.lw[i * TAVD_BANDS + static_cast<std::size_t>(b)], single[b], expected[b]);
  }
  compare.check("lpa", out.lpa[i], code == 0 ? tavca_LpA(single) : 0.0F,
                code == 0 ? ref::LpA(expected, c.roomdamp) : 0.0F);
  compare.check("dlw_code", out.dlw_code[i], tavca_dlw(&c.fd, p.qv, p.dp, single),
                ref::dlw(&c.fd, p.qv, p.dp, expected));
  for (int b = 0; b < TAVD_BANDS; ++b) {
    compare.check("dlw", out.dlw[i * TAVD_BANDS + static_cast<std::size_t>(b)], single[b], expected[b]);
  }
}

void compare_throw(Comparison& compare, const Case& c, const Point& p, std::size_t i,
                   const tavdn_results& out) {
  const char* value = c.fd.par[0].value;
  compare.check("throw_length", out.throw_length[i], tavca_L2_isothermal(&c.fd, p.qv, value),
                ref::L2_isothermal(&c.fd, p.qv, value));
  EXPECT_TRUE(out.throw_code[i] == 0 || (out.throw_code[i] == -1 && out.throw_length[i] == 0.0F));
}

void compare_tables(Comparison& compare, const Case& c, Random& random, const Product& product,
                    const tavdn_product* prepared) {
  const std::size_t n = c.points.size();
  std::vector<float> qv(n);
  std::vector<float> lengths(n, kUnwritten);
  for (std::size_t i = 0; i < n; ++i) qv[i] = c.points[i].qv;
  const char* value =
      product.values[static_cast<std::size_t>(random.below(static_cast<int>(product.values.size())))];
  ASSERT_EQ(tavdn_throw(prepared, value, n, qv.data(), lengths.data()), 0);
  for (std::size_t i = 0; i < n; ++i) {
    compare.check("tavdn_throw", lengths[i], tavca_L2_isothermal(&c.fd, qv[i], value),
                  ref::L2_isothermal(&c.fd, qv[i], value));
  }
  const auto rows = static_cast<std::size_t>(random.between(1, kLevels));
  std::vector<float> lw(rows * TAVD_BANDS);
  const float highest = random.one_in(2) ? 90.0F : 30.0F;
  for (float& level : lw) {
    level = random.uniform(-20.0F, highest);
    if (random.one_in(9)) level = std::round(level);
    if (random.one_in(500)) level = random.one_in(2) ? NAN : std::numeric_limits<float>::infinity();
    if (random.one_in(500)) level = random.logarithmic(1.0F, 1e30F) * (random.one_in(2) ? 1.0F : -1.0F);
  }
  std::vector<float> lpa(rows, kUnwritten);
  ASSERT_EQ(tavdn_lpa(rows, lw.data(), c.roomdamp, lpa.data()), 0);
  for (std::size_t i = 0; i < rows; ++i) {
    const float* row = lw.data() + i * TAVD_BANDS;
    compare.check("tavdn_lpa", lpa[i], tavca_LpA(row), ref::LpA(row, c.roomdamp));
  }
}

Case random_case(Random& random, const Product& product, Shape shape, int points) {
  Case c{};
  c.fd = product.fd;
  for (const char* name : {"valve", "LEN", "LONGNAME"}) {
    const auto choice = random.below(static_cast<int>(product.values.size()));
    tavca_param_setvalue(&c.fd, name, product.values[static_cast<std::size_t>(choice)]);
  }
  if (shape == Shape::hostile && random.one_in(3)) {
    c.fd.par[0].idx1 = static_cast<std::int16_t>(random.between(-32768, 32767));
    c.fd.par[1].idx2 = static_cast<std::int16_t>(random.between(-2, 30));
  }
  if (random.one_in(2)) tavca_check_end_reflection(&c.fd);
  for (int i = 0; i < points; ++i) c.points.push_back(random_point(random, c.fd, shape == Shape::hostile));
  c.size = c.points.front().duct;
  c.duct = random.one_in(5) ? nullptr : &c.size;
  c.with_dp = !random.one_in(10);
  if (!c.with_dp) {
    for (Point& point : c.points) point.dp = 0.0F;
  }
  c.roomdamp = random.one_in(3) ? 4.0F : random.uniform(-5.0F, 20.0F);
  return c;
}

void compare_case(Comparison& compare, Random& random, const Product& product, const Case& c, int kind,
                  std::uint64_t seed) {
  tavdn_product* prepared = nullptr;
  ASSERT_EQ(tavdn_prepare(&c.fd, c.duct, &prepared), 0);
  tavca_setroomdamp(c.roomdamp);  // of the single function; libtavdn must not see it
  const std::size_t n = c.points.size();
  std::vector<float> qv(n);
  std::vector<float> dp(n);
  for (std::size_t i = 0; i < n; ++i) {
    qv[i] = c.points[i].qv;
    dp[i] = c.points[i].dp;
  }
  Results results(n);
  const tavdn_results& out = results.record;
  ASSERT_EQ(tavdn_calculate(prepared, n, qv.data(), c.with_dp ? dp.data() : nullptr, c.roomdamp, &out), 0);
  for (std::size_t i = 0; i < n; ++i) {
    const Point& p = c.points[i];
    compare.at(kind, seed, i, p);
    compare_pressure(compare, c, p, i, out);
    compare_damper(compare, c, p, i, out);
    compare_sound(compare, c, p, i, out);
    compare_throw(compare, c, p, i, out);
  }
  compare_tables(compare, c, random, product, prepared);
  tavdn_release(prepared);
  tavca_setroomdamp(4.0F);
}

// The codes of tavca_lw that a kind can answer, but for -12: two rows or more always make a pair.
std::vector<int> lw_codes_of(int kind) {
  switch (kind) {
    case 10:
    case 11:
    case 12:
      return {0, -1, -2, -3, -11};
    case 13:
    case 20:
    case 22:
      return {0, -1, -2, -3, -21, -22, -23, -24, -25};
    case 30:
    case 40:
      return {0, -1, -2, -3, -31, -32, -33, -34};
    default:
      return {-1, -2, -3, -9};
  }
}

class ManyPoints : public testing::TestWithParam<int> {};

TEST_P(ManyPoints, EqualTheSingleFunctionsBitForBit) {
  const int kind = GetParam();
  constexpr Shape kShapes[] = {Shape::sorted, Shape::full, Shape::shuffled, Shape::hostile, Shape::sorted};
  Comparison compare;
  const int points = points_per_kind();
  ASSERT_GT(points, 0);
  std::uint64_t seed = static_cast<std::uint64_t>(kind) * 1'000'003;
  for (int done = 0; done < points && compare.differences() < 1000; ++seed) {
    Random random(seed);
    const Shape shape = kShapes[seed % std::size(kShapes)];
    const Product product = random_product(random, static_cast<std::int16_t>(kind), shape);
    const int count =
        std::min(kPointsOfCall[(seed / std::size(kShapes)) % std::size(kPointsOfCall)], points - done);
    compare_case(compare, random, product, random_case(random, product, shape, count), kind, seed);
    done += count;
  }
  EXPECT_EQ(compare.differences(), 0) << "of " << compare.compared() << " numbers";
  // The records are worth the comparison only if they lead everywhere.
  for (const int code : lw_codes_of(kind)) {
    EXPECT_GT(compare.lw_codes().count(code), 0U) << "no record answered " << code;
  }
  if (kind != kUnknownKind) {
    EXPECT_GT(compare.lw_codes().at(0), points / 4);
  }
  RecordProperty("compared", std::to_string(compare.compared()));
}

INSTANTIATE_TEST_SUITE_P(Kind, ManyPoints, testing::Values(10, 11, 12, 13, 20, 22, 30, 40, kUnknownKind),
                         testing::PrintToStringParamName());

}  // namespace
