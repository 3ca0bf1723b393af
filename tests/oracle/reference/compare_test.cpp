// The library that ships against the second opinion, bit for bit, over random records and operating points of
// every kind. TAVD_COMPARE_POINTS sets how many points per kind (20 000 unless it is set); a million takes
// minutes.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "oracle/reference/records.h"
#include "oracle/reference/transcription.h"
#include "tavd/ewads.h"
#include "tavd/tavca.h"

namespace {

namespace ref = transcription;
using reference::Point;
using reference::Product;
using reference::Random;
using reference::Shape;

constexpr int kPointsPerRecord = 40;
constexpr int kUnknownKind = 50;
constexpr float kUnwritten = -12345.0F;  // nonsense in every out-argument before a call

int points_per_kind() {
  const char* text = std::getenv("TAVD_COMPARE_POINTS");
  return text != nullptr ? std::atoi(text) : 20'000;
}

// Counts what was compared and tells the first differences.
class Comparison {
 public:
  void at_record(int kind, std::uint64_t seed, Shape shape) {
    kind_ = kind;
    seed_ = seed;
    shape_ = shape;
  }
  void at_point(int number, const Point& point) {
    number_ = number;
    point_ = point;
  }

  void number(const char* what, float shipped, float expected) {
    ++compared_;
    const bool same = (std::isnan(shipped) && std::isnan(expected)) ||
                      std::bit_cast<std::uint32_t>(shipped) == std::bit_cast<std::uint32_t>(expected);
    if (!same) {
      tell(what, text(shipped), text(expected));
    }
  }
  void code(const char* what, int shipped, int expected) {
    ++compared_;
    if (shipped != expected) {
      tell(what, std::to_string(shipped), std::to_string(expected));
    }
  }
  void bytes(const char* what, const void* shipped, const void* expected, std::size_t length) {
    ++compared_;
    if (std::memcmp(shipped, expected, length) != 0) {
      const auto* a = static_cast<const unsigned char*>(shipped);
      const auto* b = static_cast<const unsigned char*>(expected);
      std::size_t at = 0;
      while (a[at] == b[at]) {
        ++at;
      }
      const std::string where = " at byte " + std::to_string(at);
      tell(what, std::to_string(a[at]) + where, std::to_string(b[at]) + where);
    }
  }
  void bands(const char* what, const float* shipped, const float* expected) {
    for (int b = 0; b < TAVD_BANDS; ++b) {
      number(what, shipped[b], expected[b]);
    }
  }

  void met(int lw_code) { ++lw_codes_[lw_code]; }
  const std::map<int, long>& lw_codes() const { return lw_codes_; }

  long compared() const { return compared_; }
  long differences() const { return differences_; }

 private:
  static std::string text(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    std::ostringstream out;
    out << std::setprecision(9) << value << " (0x" << std::hex << std::setw(8) << std::setfill('0') << bits
        << ")";
    return out.str();
  }

  void tell(const char* what, const std::string& shipped, const std::string& expected) {
    if (++differences_ > 10) {
      return;
    }
    ADD_FAILURE() << what << ": library " << shipped << ", second opinion " << expected << "\n  kind "
                  << kind_ << ", record seed " << seed_ << ", shape " << static_cast<int>(shape_)
                  << ", point " << number_ << ": qv " << text(point_.qv) << ", dp " << text(point_.dp)
                  << ", pos " << text(point_.pos) << ", duct " << point_.duct.shape << " " << point_.duct.b
                  << "x" << point_.duct.h;
  }

  int kind_ = 0;
  std::uint64_t seed_ = 0;
  Shape shape_ = Shape::sorted;
  int number_ = -1;
  Point point_{};
  long compared_ = 0;
  long differences_ = 0;
  std::map<int, long> lw_codes_;  // how often tavca_lw answered what
};

void compare_air(Comparison& same, const FlowData& fd, const Point& at) {
  same.number("tavca_pdyn", tavca_pdyn(at.qv, fd.ductarea, fd.isvelocity),
              ref::pdyn(at.qv, fd.ductarea, fd.isvelocity));
  same.number("tavca_ductarea_m2", tavca_ductarea_m2(at.duct.b, at.duct.h),
              ref::ductarea_m2(at.duct.b, at.duct.h));
  const float pairs[2][2] = {{fd.qvmin, fd.qvmax}, {at.qv, std::nextafter(at.qv, 1e30F)}};
  for (const auto& x : pairs) {
    same.number("tavca_linlog_interp", tavca_linlog_interp(x[0], x[1], at.qv, fd.dpmin, at.dp),
                ref::linlog_interp(x[0], x[1], at.qv, fd.dpmin, at.dp));
    same.number("tavca_loglin_interp", tavca_loglin_interp(x[0], x[1], at.qv, fd.dpmin, at.dp),
                ref::loglin_interp(x[0], x[1], at.qv, fd.dpmin, at.dp));
  }
}

void compare_pressure(Comparison& same, const FlowData& fd, const Point& at) {
  same.number("tavca_floating_dp", tavca_floating_dp(&fd, at.qv), ref::floating_dp(&fd, at.qv));
  float shipped[3] = {kUnwritten, kUnwritten, kUnwritten};
  float expected[3] = {};
  same.code("tavca_fan_dp", tavca_fan_dp(&fd, at.qv, &shipped[0], &shipped[1], &shipped[2]),
            ref::fan_dp(&fd, at.qv, &expected[0], &expected[1], &expected[2]));
  for (int i = 0; i < 3; ++i) {
    same.number("tavca_fan_dp outputs", shipped[i], expected[i]);
  }
  same.code("tavca_fan_op_check", tavca_fan_op_check(&fd, at.qv, at.dp),
            ref::fan_op_check(&fd, at.qv, at.dp));
  shipped[0] = shipped[1] = kUnwritten;
  same.code("tavca_minmaxdptot", tavca_minmaxdptot(&fd, at.qv, &shipped[0], &shipped[1]),
            ref::minmaxdptot(&fd, at.qv, &expected[0], &expected[1]));
  same.number("tavca_minmaxdptot min", shipped[0], expected[0]);
  same.number("tavca_minmaxdptot max", shipped[1], expected[1]);
  same.number("tavca_dptotmin", tavca_dptotmin(&fd, at.qv), ref::dptotmin(&fd, at.qv));
  same.number("tavca_dptotmax", tavca_dptotmax(&fd, at.qv), ref::dptotmax(&fd, at.qv));
}

void compare_damper(Comparison& same, const FlowData& fd, const Point& at) {
  same.number("tavca_dptot_damperpos", tavca_dptot_damperpos(&fd, at.qv, at.pos),
              ref::dptot_damperpos(&fd, at.qv, at.pos));
  float shipped = kUnwritten;
  float expected = 0;
  same.code("tavca_damper_pos", tavca_damper_pos(&fd, at.qv, at.dp, &shipped),
            ref::damper_pos(&fd, at.qv, at.dp, &expected));
  same.number("tavca_damper_pos position", shipped, expected);
  shipped = kUnwritten;
  same.code("tavca_damper_pos_fixed", tavca_damper_pos_fixed(&fd, at.qv, at.dp, &shipped),
            ref::damper_pos_fixed(&fd, at.qv, at.dp, &expected));
  same.number("tavca_damper_pos_fixed position", shipped, expected);
}

void compare_sound(Comparison& same, const FlowData& fd, const Point& at) {
  float shipped[TAVD_BANDS];
  float expected[TAVD_BANDS];
  std::fill(std::begin(shipped), std::end(shipped), kUnwritten);
  const int code = ref::lw(&fd, at.qv, at.dp, expected, &at.duct);
  same.code("tavca_lw", tavca_lw(&fd, at.qv, at.dp, shipped, &at.duct), code);
  same.met(code);
  same.bands("tavca_lw bands", shipped, expected);
  same.number("tavca_LpA", tavca_LpA(expected), ref::LpA(expected, 4.0F));
  std::fill(std::begin(shipped), std::end(shipped), kUnwritten);
  same.code("tavca_dlw", tavca_dlw(&fd, at.qv, at.dp, shipped), ref::dlw(&fd, at.qv, at.dp, expected));
  same.bands("tavca_dlw bands", shipped, expected);
}

void compare_sizes(Comparison& same, const Point& at, const Point& other) {
  const DuctSize* ds = &at.duct;
  same.code("ewads_is_circular", ewads_is_circular(ds) ? 1 : 0, ref::is_circular(ds) ? 1 : 0);
  same.code("ewads_is_rectangular", ewads_is_rectangular(ds) ? 1 : 0, ref::is_rectangular(ds) ? 1 : 0);
  same.code("ewads_equal_size", ewads_equal_size(ds, &other.duct), ref::equal_size(ds, &other.duct));
  same.code("ewads_greater_b_or_h", ewads_greater_b_or_h(ds, &other.duct),
            ref::greater_b_or_h(ds, &other.duct));
  same.number("ewads_dekv", ewads_dekv(ds), ref::dekv(ds));
  same.number("ewads_dhydr", ewads_dhydr(ds), ref::dhydr(ds));
  same.code("ewads_diagonal", ewads_diagonal(ds), ref::diagonal(ds));
  same.number("ewads_m2", ewads_m2(ds), ref::m2(ds));
  same.number("ewads_vms", ewads_vms(ds, at.qv), ref::vms(ds, at.qv));
  DuctSize shipped = *ds;
  DuctSize expected = *ds;
  ewads_swap(&shipped);
  ref::swap(&expected);
  same.bytes("ewads_swap", &shipped, &expected, sizeof shipped);
  char shipped_text[32] = {};
  char expected_text[32] = {};
  ewads_sprintf(ds, shipped_text);
  ref::print(ds, expected_text);
  same.bytes("ewads_sprintf", shipped_text, expected_text, sizeof shipped_text);
  same.code("ewads_sscanf", ewads_sscanf(shipped_text, &shipped), ref::scan(expected_text, &expected));
  same.bytes("ewads_sscanf size", &shipped, &expected, sizeof shipped);
  same.bytes("ewads_sscanf text", shipped_text, expected_text, sizeof shipped_text);
}

void compare_parameters(Comparison& same, Random& random, const Product& product, FlowData& shipped,
                        FlowData& expected) {
  const auto pick = [&] {
    return product.values[static_cast<std::size_t>(random.below(static_cast<int>(product.values.size())))];
  };
  for (const char* name : {"valve", "LEN", "LONGNAME"}) {
    const char* value = pick();
    same.code("tavca_param_setvalue", tavca_param_setvalue(&shipped, name, value),
              ref::param_setvalue(&expected, name, value));
  }
  same.bytes("tavca_param_setvalue record", &shipped, &expected, sizeof shipped);
  const char* a = pick();
  const char* b = pick();
  float shipped_real = kUnwritten;
  float expected_real = 0;
  same.code("tavca_param_valuetoreal", tavca_param_valuetoreal(a, &shipped_real),
            ref::param_valuetoreal(a, &expected_real));
  same.number("tavca_param_valuetoreal number", shipped_real, expected_real);
  same.code("tavca_param_valuecmp", tavca_param_valuecmp(a, b), ref::param_valuecmp(a, b));
}

void compare_record(Comparison& same, std::int16_t kind, std::uint64_t seed, int points) {
  Random random(seed);
  constexpr Shape kShapes[] = {Shape::sorted, Shape::full, Shape::shuffled, Shape::hostile, Shape::sorted};
  const Shape shape = kShapes[seed % std::size(kShapes)];
  same.at_record(kind, seed, shape);
  const Product product = random_product(random, kind, shape);
  FlowData shipped = product.fd;
  FlowData expected = product.fd;
  compare_parameters(same, random, product, shipped, expected);
  if (random.one_in(2)) {
    tavca_check_end_reflection(&shipped);
    ref::check_end_reflection(&expected);
    same.bytes("tavca_check_end_reflection", &shipped, &expected, sizeof shipped);
  }
  float qmin = kUnwritten;
  float qmax = kUnwritten;
  float expected_qmin = 0;
  float expected_qmax = 0;
  same.code("tavca_qminqmax", tavca_qminqmax(&shipped, &qmin, &qmax),
            ref::qminqmax(&expected, &expected_qmin, &expected_qmax));
  same.number("tavca_qminqmax min", qmin, expected_qmin);
  same.number("tavca_qminqmax max", qmax, expected_qmax);
  for (int band = -1; band <= TAVD_BANDS; ++band) {
    same.number("tavca_endref_A", tavca_endref_A(band, shipped.ductarea),
                ref::endref_A(band, shipped.ductarea));
  }

  Point before{};
  for (int i = 0; i < points; ++i) {
    const Point at = random_point(random, shipped, shape == Shape::hostile);
    same.at_point(i, at);
    compare_air(same, shipped, at);
    compare_pressure(same, shipped, at);
    compare_damper(same, shipped, at);
    compare_sound(same, shipped, at);
    const char* value = product.values[static_cast<std::size_t>(i) % product.values.size()];
    same.number("tavca_L2_isothermal", tavca_L2_isothermal(&shipped, at.qv, value),
                ref::L2_isothermal(&shipped, at.qv, value));
    compare_sizes(same, at, before);
    before = at;
  }
  same.bytes("record after the calculations", &shipped, &expected, sizeof shipped);
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

class SecondOpinion : public testing::TestWithParam<int> {};

TEST_P(SecondOpinion, EqualsTheLibraryBitForBit) {
  const int kind = GetParam();
  Comparison same;
  const int points = points_per_kind();
  ASSERT_GT(points, 0);
  std::uint64_t seed = static_cast<std::uint64_t>(kind) * 1'000'003;
  for (int done = 0; done < points && same.differences() < 1000; done += kPointsPerRecord) {
    compare_record(same, static_cast<std::int16_t>(kind), seed++, std::min(kPointsPerRecord, points - done));
  }
  EXPECT_EQ(same.differences(), 0) << "of " << same.compared() << " numbers";
  // The records are worth the comparison only if they lead everywhere.
  for (const int code : lw_codes_of(kind)) {
    EXPECT_GT(same.lw_codes().count(code), 0U) << "no record answered " << code;
  }
  if (kind != kUnknownKind) {
    EXPECT_GT(same.lw_codes().at(0), points / 4);
  }
  RecordProperty("compared", std::to_string(same.compared()));
}

INSTANTIATE_TEST_SUITE_P(Kind, SecondOpinion, testing::Values(10, 11, 12, 13, 20, 22, 30, 40, kUnknownKind),
                         testing::PrintToStringParamName());

}  // namespace
