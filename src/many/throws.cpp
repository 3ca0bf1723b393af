#include "many/throws.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "many/linepower.h"
#include "many/logarithm.h"
#include "many/nearly.h"
#include "many/paths.h"
#include "many/power.h"

namespace tavd {
namespace {

constexpr std::size_t kFlows = 64;  // side by side

// The exact length is factor times k*q^n rounded to float, with pow(q, n), which is right to an unit in its
// last place. Here q^n is 10^(n*lg q). The quick lg q is within kLogDistance of the true one too, so that the
// exponent is off by less than |n|*kLogDistance and its own rounding, 40*2^-53; times ln 10 that is relative
// to q^n.
struct Nearly {
  explicit Nearly(const ThrowLine& line)
      : exponent(wide(line.exponent)),
        coefficient(wide(line.coefficient)),
        relative(std::fabs(exponent) * (kLn10 * kLogDistance) + (kPowerDistance + kRoundings)) {}

  // Before the factor.
  Rounded at(float qv, bool* possible) const {
    const bool ordinary = is_ordinary(qv);
    const double power = exponent * quick_lg(ordinary ? qv : 1.0F);
    const bool moderate = std::fabs(power) < kLargestPower;
    const double length = coefficient * quick_power_of_ten(moderate ? power : 0.0);
    *possible = both(ordinary, moderate);
    return {length, std::fabs(length) * relative};
  }

 private:
  static constexpr double kLn10 = 2.30258509299404568402;
  static constexpr double kRoundings = 2e-14;
  double exponent;
  double coefficient;
  double relative;
};

[[gnu::noinline]] float exact_length(const ThrowLine& line, float qv) {
  return throw_length(line, qv);
}

struct Kernel {
  static std::size_t run(const ThrowLine& line, std::size_t n, const float* qv, float* lengths) {
    const Nearly nearly(line);
    std::size_t exact = 0;
    float flows[kFlows];
    float found[kFlows];
    int uncertain[kFlows];
    for (std::size_t first = 0; first < n; first += kFlows) {
      const std::size_t count = std::min(kFlows, n - first);
      std::fill(std::copy_n(qv + first, count, flows), flows + kFlows, 1.0F);
      int any = 0;
      for (std::size_t i = 0; i < kFlows; ++i) {
        bool possible;
        const Rounded length = nearly.at(flows[i], &possible);
        found[i] = line.factor * length.low;
        uncertain[i] = static_cast<int>(!(both(possible, length.certain())));
        any |= uncertain[i];
      }
      std::copy_n(found, count, lengths + first);
      if (any == 0) continue;
      for (std::size_t i = 0; i < count; ++i) {
        if (uncertain[i] == 0) continue;
        lengths[first + i] = exact_length(line, flows[i]);
        ++exact;
      }
    }
    return exact;
  }
};

// A line's tables cost what some hundred lengths do.
constexpr std::size_t kManyFlows = 2048;

std::size_t lengths_on_line(const ThrowLine& line, std::size_t n, const float* qv, float* lengths) {
  constexpr std::size_t kBlock = LinePower::kBlock;
  const LinePower power(line.coefficient, line.exponent);
  std::size_t exact = 0;
  const std::size_t whole = n - n % kBlock;
  for (std::size_t first = 0; first < whole; first += kBlock) {
    std::uint64_t uncertain = power.block(qv + first, line.factor, lengths + first);
    for (; uncertain != 0; uncertain &= uncertain - 1) {
      const std::size_t i = first + static_cast<std::size_t>(std::countr_zero(uncertain));
      lengths[i] = exact_length(line, qv[i]);
      ++exact;
    }
  }
  return exact + Paths<Kernel>::best()(line, n - whole, qv + whole, lengths + whole);
}

bool has_line_power(const ThrowLine& line) {
  return std::fabs(line.exponent) <= LinePower::kLargestExponent;
}

}  // namespace

std::size_t throw_lengths_by(std::size_t path, const ThrowLine& line, std::size_t n, const float* qv,
                             float* lengths) {
  if (path == kWidestPath && n >= kManyFlows && has_line_power(line)) {
    return lengths_on_line(line, n, qv, lengths);
  }
  return Paths<Kernel>::path(path)(line, n, qv, lengths);
}

std::size_t throw_lengths(const ThrowLine& line, std::size_t n, const float* qv, float* lengths) {
  return throw_lengths_by(kMachinePaths - 1, line, n, qv, lengths);
}

}  // namespace tavd
