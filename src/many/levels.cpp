#include "many/levels.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "calc/calculations.h"
#include "calc/interpolation.h"
#include "calc/kinds.h"
#include "many/bandvector.h"
#include "many/logarithm.h"
#include "many/nearly.h"
#include "many/paths.h"

namespace tavd {

using namespace sound;

namespace {

// Two logarithms, each off by kLogDistance at most, and the rounding of their difference, below 90 in size.
constexpr double kWayDistance = 2 * kLogDistance + 2e-14;
// Logarithms closer than this are divided by with care: not at all.
constexpr double kShortestSpan = 1e-6;
// A few roundings of a double, relative.
constexpr double kRoundings = 8 * std::numeric_limits<double>::epsilon();

// With quick logarithms, certain of nearly every result; and with those of the single function, and each step
// as it takes it.
struct QuickSteps {
  static constexpr bool kExact = false;
  static double lg(float x) { return quick_lg(x); }
};
struct ExactSteps {
  static constexpr bool kExact = true;
  static double lg(float x) { return tavd::lg(x); }
};

// Levels of a line at lg dp. The exact level is L + S*W rounded to float, with the way W between two
// logarithms of gwlog10; here it is L + S*w, with |w - W| below kWayDistance = 1e-13, since one of the two
// logarithms is quick. In both the product and the sum are rounded, by less than 2^-52*(2*|S|*90 + 255) =
// |S|*4e-14 + 5.7e-14 together. With a slope of 0 both are exactly L. distance_on_line() is above their sum,
// also when it is rounded to float.
template <typename Steps>
inline RoundedBands along(const LevelLine& line, double lg_dp) {
  DoubleBands level;
  DoubleBands slope;
  DoubleBands distance{};
  load_wide(line.level, level);
  load(line.slope, slope);
  if (!Steps::kExact) load_wide(line.distance, distance);
  return {level + slope * (lg_dp - line.lg_dp), distance};
}

// Levels between those of two curves, at the flow qv between the flows of both. The exact level is
// l + (D/s)*w rounded to float, with the difference D of the two levels, the span s and the way w between
// logarithms of gwlog10. Here it is l + D*t with t = w'/s', where s' and w' are within e = kWayDistance of s
// and w. Then |w/s - t| <= e*(1 + |t|)/|s|, and |s| is above |s'|*(1 - 1e-6): less than 2*e*(1 + |t|)/|s'|.
// Quotients, products and sums of both are rounded by less than 8 times 2^-52 of |D*t| and |l| together. With
// D of 0 both are exactly l.
inline RoundedBands quick_across(const FloatBands& first, const FloatBands& second, double span, double way) {
  const double of_span = 1.0 / span;
  const double t = way * of_span;
  const double reach = (1.0 + std::fabs(t)) * (2 * kWayDistance * std::fabs(of_span) + kRoundings);
  const DoubleBands difference = __builtin_convertvector(second - first, DoubleBands);
  const DoubleBands level = __builtin_convertvector(first, DoubleBands);
  DoubleBands difference_size = difference;
  DoubleBands level_size = level;
  take_size(difference_size);
  take_size(level_size);
  return {level + difference * t, difference_size * reach + level_size * kRoundings};
}

// The same as the single function has it.
inline void exact_across(const FloatBands& first, const FloatBands& second, double span, double way,
                         FloatBands& levels) {
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const double slope = wide(second[band] - first[band]) / span;
    levels[band] = narrow(wide(first[band]) + slope * way);
  }
}

// Whether same_abscissa() may be true, without its quotient: that is below 1.01e-8*x1.
inline bool may_be_same(float x1, float x2) {
  return wide(x1) * 1.01e-8 > std::fabs(wide(x1) - wide(x2));
}

// Where two curves lie, with logarithms that stand ready.
struct Places {
  float x1, x2;
  double lg1, lg2;
};

// Levels at lg x between those of the curves. They are certain where those of the curves are, too.
template <typename Steps>
inline bool across(const RoundedBands& first, const RoundedBands& second, const Places& at, double lg_x,
                   FloatBands& levels) {
  const double span = at.lg2 - at.lg1;
  const double way = lg_x - at.lg1;
  if (Steps::kExact) {
    levels = first.low;
    if (!same_abscissa(at.x1, at.x2)) exact_across(first.low, second.low, span, way, levels);
    return true;
  }
  RoundedBands between = quick_across(first.low, second.low, span, way);
  between.differ |= first.differ | second.differ;
  levels = between.low;
  const bool apart = both(!may_be_same(at.x1, at.x2), std::fabs(span) > kShortestSpan);
  return both(apart, between.certain());
}

constexpr FloatBands kNone{};
constexpr FloatBands kHighest = kNone + kHighestLevel;

// As limit() for each band.
inline void limit_bands(FloatBands& levels) {
  levels = levels > kHighest ? kHighest : (levels < kNone ? kNone : levels);
}

constexpr std::int32_t kRefused = 1;  // no code of tavca_lw is positive

// What a level gains outside of low..high, as of the single calculation, and x inside. The exact number is
// 30*(lg outside - lg x) rounded to float. Just outside of a limit it is small, and what quick logarithms are
// off too much of it: then it is not certain.
struct Outside {
  float x;
  float extra;
  std::int32_t ordinary;  // not bool, as in Limits
  std::int32_t certain;
};

template <typename Steps>
Outside bring_inside(float outside, float low, float high) {
  const bool below = low > outside;
  const bool above = both(!below, outside > high);
  const float x = below ? low : (above ? high : outside);
  const bool inside = !either(below, above);
  const bool ordinary = both(is_ordinary(outside), is_ordinary(x));
  const double way = kDbPerDecade * (Steps::lg(ordinary ? outside : 1.0F) - Steps::lg(ordinary ? x : 1.0F));
  const double distance = kDbPerDecade * kWayDistance + std::fabs(way) * kRoundings;
  const Rounded level(way, Steps::kExact ? 0.0 : distance);
  const bool certain = either(either(inside, Steps::kExact), level.certain());
  return {x, inside ? 0.0F : level.low, static_cast<std::int32_t>(either(inside, ordinary)),
          static_cast<std::int32_t>(certain)};
}

}  // namespace

// Points side by side. What they need of tables and logarithms is got in loops that become vectors; the rest
// is done point by point, band beside band.
template <typename Steps, std::size_t N>
struct Levels::Block {
  float qv[N];  // as it was asked, then inside the product's limits
  float dp[N];
  float extra[N];   // dB, beyond the limits
  float first[N];   // flow, or what else is looked for among the rows of the first curve
  float second[N];  // and of the second
  double lg_qv[N];
  double lg_dp[N];
  double lg_first[N];
  double lg_second[N];
  std::int32_t place[N];  // of the first curve; 0 at first
  std::int32_t code[N];

  void refuse_unless(std::size_t i, bool possible) { code[i] = possible ? code[i] : kRefused; }
};

template <typename Steps, std::size_t N>
void Levels::place_on_fixed_curve(Limits limits, Block<Steps, N>& block) const {
  for (std::size_t i = 0; i < N; ++i) {
    const float dp = limits.without_term(block.qv[i], limits.lowest(block.qv[i]));
    const bool ordinary = is_ordinary(dp);
    block.refuse_unless(i, ordinary);
    block.code[i] = wide(dp) <= kSmallestCurvePressure ? TAVCA_LW_NO_PRESSURE : block.code[i];
    block.first[i] = block.qv[i];
    block.lg_dp[i] = Steps::lg(ordinary ? dp : 1.0F);
  }
}

template <typename Steps, std::size_t N>
void Levels::place_on_curves(Limits limits, Block<Steps, N>& block) const {
  for (std::size_t i = 0; i < N; ++i) {
    const float qv = block.qv[i];
    const float mindp = limits.lowest(qv);
    const float maxdp = limits.highest(qv);
    // Written out, std::min and std::max take addresses.
    const float asked = block.dp[i];
    const float at_most = maxdp < asked ? maxdp : asked;
    const float dp = limits.without_term(qv, at_most < mindp ? mindp : at_most);
    const float k = resistance(qv, dp);
    block.refuse_unless(i, both(is_ordinary(dp), is_ordinary(k)));
    block.dp[i] = is_ordinary(dp) ? dp : 1.0F;
    block.first[i] = k;
  }
  for (const float step : steps_) {
    for (std::size_t i = 0; i < N; ++i) block.place[i] += static_cast<std::int32_t>(step > block.first[i]);
  }
  for (std::size_t i = 0; i < N; ++i) {
    const float dp = block.dp[i];
    const float first = narrow(std::sqrt(wide(dp / values_.values[block.place[i]])));
    const float second = narrow(std::sqrt(wide(dp / values_.values[block.place[i] + 1])));
    const bool ordinary = both(is_ordinary(first), is_ordinary(second));
    block.refuse_unless(i, ordinary);
    block.first[i] = ordinary ? first : 1.0F;
    block.second[i] = ordinary ? second : 1.0F;
  }
  for (std::size_t i = 0; i < N; ++i) {
    block.lg_dp[i] = Steps::lg(block.dp[i]);
    block.lg_qv[i] = Steps::lg(block.qv[i]);
    block.lg_first[i] = Steps::lg(block.first[i]);
    block.lg_second[i] = Steps::lg(block.second[i]);
  }
}

template <typename Steps, std::size_t N>
void Levels::place_in_groups(Limits limits, Block<Steps, N>& block) const {
  std::int32_t certain[N];
  float asked_dp[N];
  float asked_qv[N];
  for (std::size_t i = 0; i < N; ++i) {
    asked_qv[i] = block.qv[i];
    asked_dp[i] = block.dp[i];
    const float mindp = limits.lowest(asked_qv[i]);
    const float maxdp = limits.highest(asked_qv[i]);
    const Outside dp = bring_inside<Steps>(asked_dp[i], mindp, maxdp);
    const Outside qv = bring_inside<Steps>(asked_qv[i], qvmin_, qvmax_);
    block.extra[i] = dp.extra + qv.extra;
    certain[i] = dp.certain & qv.certain;
    block.qv[i] = qv.x;
    block.dp[i] = dp.x;
    block.refuse_unless(i, both((dp.ordinary & qv.ordinary) != 0, is_ordinary(qv.x)));
  }
  for (std::size_t i = 0; i < N; ++i) {
    if (certain[i] != 0) continue;
    block.extra[i] = bring_inside<ExactSteps>(asked_dp[i], block.dp[i], block.dp[i]).extra;
    block.extra[i] += bring_inside<ExactSteps>(asked_qv[i], block.qv[i], block.qv[i]).extra;
  }
  for (std::size_t i = 0; i < N; ++i) {
    const float qv = block.qv[i];
    const float dp = limits.without_term(qv, block.dp[i]);
    const bool ordinary = both(is_ordinary(dp), is_ordinary(qv));
    block.refuse_unless(i, ordinary);
    block.first[i] = block.second[i] = dp;
    block.lg_dp[i] = Steps::lg(ordinary ? dp : 1.0F);
    block.lg_qv[i] = Steps::lg(ordinary ? qv : 1.0F);
  }
  for (const float step : steps_) {
    for (std::size_t i = 0; i < N; ++i) block.place[i] += static_cast<std::int32_t>(step <= block.qv[i]);
  }
}

inline const LevelLine& Levels::line(const RowChoice& choice, float target) const {
  const float* keys = keys_.data() + choice.keys;
  std::uint32_t place = 0;
  for (std::uint32_t block = 0; block < choice.blocks; ++block, keys += kKeysOfBlock) {
    for (std::uint32_t key = 0; key < kKeysOfBlock; ++key) {
      place +=
          static_cast<std::uint32_t>(keys[key] < target) + static_cast<std::uint32_t>(keys[key] <= target);
    }
  }
  return lines_[choice_lines_[choice.lines + place]];
}

// The levels of a point of the block; false where they are not certain.
template <typename Steps, std::size_t N>
bool Levels::levels_of(const Block<Steps, N>& block, std::size_t i, float* lw) const {
  const auto place = static_cast<std::size_t>(block.place[i]);
  RoundedBands first = along<Steps>(line(choices_[place], block.first[i]), block.lg_dp[i]);
  FloatBands levels = first.low;
  bool certain;
  if (search_ == Search::fixed_curve) {
    certain = first.certain() || Steps::kExact;
  } else {
    RoundedBands second = along<Steps>(line(choices_[place + 1], block.second[i]), block.lg_dp[i]);
    Places at = {block.first[i], block.second[i], block.lg_first[i], block.lg_second[i]};
    if (search_ == Search::flow_groups) {
      first.low = first.low > kHighest ? kHighest : first.low;
      second.low = second.low > kHighest ? kHighest : second.low;
      at = {values_.values[place], values_.values[place + 1], lg_values_[place], lg_values_[place + 1]};
    }
    certain = across<Steps>(first, second, at, block.lg_qv[i], levels);
    if (search_ == Search::flow_groups) levels = block.extra[i] + levels;
  }
  if (!certain) return false;
  limit_bands(levels);
  if (corrections_.any_size) levels += corrections_.size;
  if (corrections_.any_parameter) levels += corrections_.parameter;
  std::memcpy(lw, &levels, sizeof levels);
  return true;
}

template <typename Steps, std::size_t N>
void Levels::at(std::size_t n, const float* qv, const float* dp, const Limits& limits, float* lw,
                std::int32_t* codes) const {
  if (search_ == Search::none) {
    std::fill_n(codes, n, kRefused);
    return;
  }
  Block<Steps, N> block{};
  std::fill(std::copy_n(qv, n, block.qv), block.qv + N, 1.0F);
  std::fill(std::copy_n(dp, n, block.dp), block.dp + N, 1.0F);
  for (std::size_t i = 0; i < N; ++i) {
    const bool ordinary = is_ordinary(block.qv[i]);
    block.code[i] = ordinary ? TAVCA_OK : kRefused;
    block.qv[i] = ordinary ? block.qv[i] : 1.0F;
    // 1: not a number is left to the single function.
    block.dp[i] = block.dp[i] == block.dp[i] ? block.dp[i] : 1.0F;
  }
  if (failure_ == TAVCA_OK && search_ == Search::fixed_curve) place_on_fixed_curve(limits, block);
  if (failure_ == TAVCA_OK && search_ == Search::resistance_curves) place_on_curves(limits, block);
  if (failure_ == TAVCA_OK && search_ == Search::flow_groups) place_in_groups(limits, block);
  for (std::size_t i = 0; i < n; ++i, lw += TAVD_BANDS) {
    codes[i] = block.code[i];
    if (wide(qv[i]) < kSmallestFlow) {
      codes[i] = TAVCA_LW_NO_FLOW;
    } else if (!is_ordinary(qv[i])) {
      codes[i] = kRefused;
    } else if (codes[i] == TAVCA_OK && failure_ != TAVCA_OK) {
      codes[i] = failure_;
    } else if (codes[i] == TAVCA_OK && search_ != Search::fixed_curve) {
      codes[i] = dp[i] == dp[i] ? codes_[block.place[i]] : kRefused;
    }
    if (codes[i] == TAVCA_OK && !levels_of(block, i, lw)) codes[i] = kRefused;
    if (codes[i] < TAVCA_OK) std::fill_n(lw, TAVD_BANDS, 0.0F);
  }
}

namespace {

constexpr std::size_t kPoints = 32;  // side by side

[[gnu::noinline]] int exact_level(const LevelSource& source, float qv, float dp, float* lw) {
  std::int32_t code;
  source.levels.at<ExactSteps, 1>(1, &qv, &dp, source.limits, lw, &code);
  return code != kRefused ? code : sound_power(&source.fd, qv, dp, source.duct, nullptr, lw);
}

struct Kernel {
  static std::size_t run(const LevelSource& source, std::size_t n, const float* qv, const float* dp,
                         float* lw, std::int32_t* codes) {
    std::size_t exact = 0;
    for (std::size_t first = 0; first < n; first += kPoints) {
      const std::size_t count = std::min(kPoints, n - first);
      source.levels.at<QuickSteps, kPoints>(count, qv + first, dp + first, source.limits,
                                            lw + first * TAVD_BANDS, codes + first);
      for (std::size_t i = first; i < first + count; ++i) {
        if (codes[i] != kRefused) continue;
        codes[i] = exact_level(source, qv[i], dp[i], lw + i * TAVD_BANDS);
        ++exact;
      }
    }
    return exact;
  }
};

}  // namespace

std::size_t levels_by(std::size_t path, const LevelSource& source, std::size_t n, const float* qv,
                      const float* dp, float* lw, std::int32_t* codes) {
  return Paths<Kernel>::path(path)(source, n, qv, dp, lw, codes);
}

std::size_t levels_at(const LevelSource& source, std::size_t n, const float* qv, const float* dp, float* lw,
                      std::int32_t* codes) {
  if (n > kFewPoints) return levels_by(kMachinePaths - 1, source, n, qv, dp, lw, codes);
  for (std::size_t i = 0; i < n; ++i) codes[i] = exact_level(source, qv[i], dp[i], lw + i * TAVD_BANDS);
  return n;
}

}  // namespace tavd
