#include "many/levels.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "calc/calculations.h"
#include "calc/interpolation.h"
#include "calc/kinds.h"
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
// logarithms of gwlog10; here it is L + S*w, with |w - W| below kWayDistance, since one of the two logarithms
// is quick. In both the product and the sum are rounded, by less than 2^-52*(2*|S|*90 + 255) together. A
// slope is 0, then both are exactly L, or at least 1 dB over 80 decades. LevelLine.distance is |S|*1e-11:
// above |S|*(1e-13 + 5e-14) + 6e-14.

template <typename Steps>
bool along(const LevelLine& line, double lg_dp, Bands& lw) {
  const double way = lg_dp - line.lg_dp;
  bool certain = true;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const double level = wide(line.level[band]) + line.slope[band] * way;
    const Rounded rounded(level, Steps::kExact ? 0.0 : wide(line.distance[band]));
    lw[band] = rounded.low;
    certain &= rounded.certain();
  }
  return certain || Steps::kExact;
}

// Levels between those of two curves, at the flow qv between the flows of both. The exact level is
// l + (D/s)*w rounded to float, with the difference D of the two levels, the span s and the way w between
// logarithms of gwlog10. Here it is l + D*t with t = w'/s', where s' and w' are within e = kWayDistance of s
// and w. Then |w/s - t| <= e*(1 + |t|)/|s|, and |s| is above |s'|*(1 - 1e-6): less than 2*e*(1 + |t|)/|s'|.
// Quotients, products and sums of both are rounded by less than 8 times 2^-52 of |D*t| and |l| together. With
// D of 0 both are exactly l.
bool across(const Bands& first, const Bands& second, double span, double way, Bands& lw) {
  if (!(std::fabs(span) > kShortestSpan)) return false;
  const double t = way / span;
  const double reach = (1.0 + std::fabs(t)) * (2 * kWayDistance / std::fabs(span) + kRoundings);
  bool certain = true;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const double difference = wide(second[band] - first[band]);
    const double level = wide(first[band]);
    const Rounded rounded(level + difference * t,
                          std::fabs(difference) * reach + std::fabs(level) * kRoundings);
    lw[band] = rounded.low;
    certain &= rounded.certain();
  }
  return certain;
}

// Levels at qv between those of the curves at x1 and at x2, with logarithms that stand ready.
template <typename Steps>
bool across(const Bands& first, const Bands& second, float x1, float x2, double lg1, double lg2, double lg_qv,
            Bands& lw) {
  const bool one_place = same_abscissa(x1, x2);
  if (!Steps::kExact) return !one_place && across(first, second, lg2 - lg1, lg_qv - lg1, lw);
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const double slope = wide(second[band] - first[band]) / (lg2 - lg1);
    lw[band] = one_place ? first[band] : narrow(wide(first[band]) + slope * (lg_qv - lg1));
  }
  return true;
}

}  // namespace

template <typename Steps>
bool Levels::fixed_curve(float qv, const Limits& limits, Bands& lw, int* code) const {
  const PressureTerm term = limits.term(qv);
  float dp;
  float highest;
  limits.at(qv, term, &dp, &highest);
  dp = term.taken_from(dp);
  if (wide(dp) <= kSmallestCurvePressure) {
    *code = TAVCA_LW_NO_PRESSURE;
    return true;
  }
  if (!is_ordinary(dp)) return false;
  const LevelLine& line = lines_[static_cast<std::size_t>(choices_[0].line(qv))];
  if (!along<Steps>(line, Steps::lg(dp), lw)) return false;
  for (float& level : lw) level = limit(level);
  return true;
}

template <typename Steps>
bool Levels::resistance_curves(float qv, float dp, const Limits& limits, Bands& lw, int* code) const {
  const PressureTerm term = limits.term(qv);
  float mindp;
  float maxdp;
  limits.at(qv, term, &mindp, &maxdp);
  dp = term.taken_from(std::max(std::min(dp, maxdp), mindp));
  const float k = resistance(qv, dp);
  if (!is_ordinary(dp) || !is_ordinary(k)) return false;
  int idx = 0;
  for (const float step : steps_) idx += static_cast<int>(step > k);
  *code = codes_[idx];
  if (*code != TAVCA_OK) return true;

  const double lg_dp = Steps::lg(dp);
  float curve_qv[2];
  Bands lww[2];
  bool certain = true;
  for (int c = 0; c < 2; ++c) {
    curve_qv[c] = narrow(std::sqrt(wide(dp / values_.values[idx + c])));
    if (!is_ordinary(curve_qv[c])) return false;
    const RowChoice& choice = choices_[static_cast<std::size_t>(idx + c)];
    certain &= along<Steps>(lines_[static_cast<std::size_t>(choice.line(curve_qv[c]))], lg_dp, lww[c]);
  }
  if (!certain || !across<Steps>(lww[0], lww[1], curve_qv[0], curve_qv[1], Steps::lg(curve_qv[0]),
                                 Steps::lg(curve_qv[1]), Steps::lg(qv), lw)) {
    return false;
  }
  for (float& level : lw) level = limit(level);
  return true;
}

namespace {

// As bring_inside of the single calculation. The exact number is 30*(lg outside - lg x) rounded to float.
// Just outside of a limit it is small, and what quick logarithms are off too much of it.
bool bring_inside(float* x, float low, float high, float* extra) {
  const float outside = *x;
  if (low > outside) {
    *x = low;
  } else if (outside > high) {
    *x = high;
  } else {
    *extra = 0.0F;
    return true;
  }
  if (!is_ordinary(outside) || !is_ordinary(*x)) return false;
  const double way = kDbPerDecade * (quick_lg(outside) - quick_lg(*x));
  const Rounded level(way, kDbPerDecade * kWayDistance + std::fabs(way) * kRoundings);
  *extra = level.certain() ? level.low : narrow(kDbPerDecade * (lg(outside) - lg(*x)));
  return true;
}

}  // namespace

template <typename Steps>
bool Levels::flow_groups(float qv, float dp, const Limits& limits, Bands& lw, int* code) const {
  float mindp;
  float maxdp;
  limits.at(qv, limits.term(qv), &mindp, &maxdp);
  float extra;
  float extra_qv;
  if (!bring_inside(&dp, mindp, maxdp, &extra) || !bring_inside(&qv, qvmin_, qvmax_, &extra_qv)) return false;
  extra += extra_qv;
  dp = limits.term(qv).taken_from(dp);
  if (!is_ordinary(dp) || !is_ordinary(qv)) return false;
  int idx = 0;
  for (const float step : steps_) idx += static_cast<int>(step <= qv);
  *code = codes_[idx];
  if (*code != TAVCA_OK) return true;

  const double lg_dp = Steps::lg(dp);
  Bands lww[2];
  bool certain = true;
  for (int c = 0; c < 2; ++c) {
    const RowChoice& choice = choices_[static_cast<std::size_t>(idx + c)];
    certain &= along<Steps>(lines_[static_cast<std::size_t>(choice.line(dp))], lg_dp, lww[c]);
    for (float& level : lww[c]) level = std::min(level, kHighestLevel);
  }
  if (!certain || !across<Steps>(lww[0], lww[1], values_.values[idx], values_.values[idx + 1],
                                 lg_values_[idx], lg_values_[idx + 1], Steps::lg(qv), lw)) {
    return false;
  }
  for (float& level : lw) level = limit(extra + level);
  return true;
}

template <typename Steps>
bool Levels::at(float qv, float dp, const Limits& limits, float* lw, int* code) const {
  if (search_ == Search::none || !is_ordinary(qv)) return false;
  *code = TAVCA_OK;
  Bands bands;
  bool certain = true;
  if (wide(qv) < kSmallestFlow) {
    *code = TAVCA_LW_NO_FLOW;
  } else if (failure_ != TAVCA_OK) {
    *code = failure_;
  } else if (search_ == Search::fixed_curve) {
    certain = fixed_curve<Steps>(qv, limits, bands, code);
  } else if (std::isnan(dp)) {
    return false;
  } else if (search_ == Search::resistance_curves) {
    certain = resistance_curves<Steps>(qv, dp, limits, bands, code);
  } else {
    certain = flow_groups<Steps>(qv, dp, limits, bands, code);
  }
  if (!certain) return false;
  if (*code != TAVCA_OK) {
    std::fill_n(lw, TAVD_BANDS, 0.0F);
  } else {
    corrections_.add_to(bands);
    std::copy_n(bands, TAVD_BANDS, lw);
  }
  return true;
}

namespace {

[[gnu::noinline]] int exact_level(const LevelSource& source, float qv, float dp, float* lw) {
  int code;
  if (source.levels.at<ExactSteps>(qv, dp, source.limits, lw, &code)) return code;
  return sound_power(&source.fd, qv, dp, source.duct, nullptr, lw);
}

struct Kernel {
  static std::size_t run(const LevelSource& source, std::size_t n, const float* qv, const float* dp,
                         float* lw, std::int32_t* codes) {
    std::size_t exact = 0;
    for (std::size_t i = 0; i < n; ++i, lw += TAVD_BANDS) {
      int code;
      if (!source.levels.at<QuickSteps>(qv[i], dp[i], source.limits, lw, &code)) {
        code = exact_level(source, qv[i], dp[i], lw);
        ++exact;
      }
      codes[i] = code;
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
  return levels_by(kMachinePaths - 1, source, n, qv, dp, lw, codes);
}

}  // namespace tavd
