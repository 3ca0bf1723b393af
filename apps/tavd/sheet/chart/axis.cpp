#include "sheet/chart/axis.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"

namespace tavdhost {
namespace {

constexpr double kLabelGap = 0.9;  // mm, the least between two labels
constexpr double kMinorGap = 0.9;  // mm, the least between two lines of the grid

// Which digits of a decade have labels: from few to many.
constexpr std::array<double, 1> kOnes = {1};
constexpr std::array<double, 3> kThirds = {1, 2, 5};
constexpr std::array<double, 4> kUsual = {1, 2, 3, 5};
constexpr std::array<double, 9> kDigits = {1, 2, 3, 4, 5, 6, 7, 8, 9};
constexpr std::array<double, 14> kHalves = {1, 1.2, 1.5, 2, 2.5, 3, 3.5, 4, 4.5, 5, 6, 7, 8, 9};
constexpr std::size_t kEnoughLabels = 4;
constexpr std::size_t kFewestLabels = 3;
constexpr double kShortAxis = 4;  // ratio of its ends, below which a logarithmic axis may have round steps

// A number of the axis as a digit of a decade: exact, where a product of floating point is not.
struct Mark {
  double digits;  // from 1 up to 10
  int decade;
  double value() const { return decade < 0 ? digits / std::pow(10, -decade) : digits * std::pow(10, decade); }
};

std::string localized(std::string number, char decimal) {
  return decimal == '.' ? number : with_replaced(std::move(number), ".", std::string(1, decimal));
}

std::string plain(double value, char decimal) {
  constexpr double kNothing = 1e-12;  // what is left of 0 on a linear axis
  if (std::abs(value) < kNothing) return "0";
  char text[400];
  const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
  return localized({text, result.ptr}, decimal);
}

// Marks between the ends of the axis, with their numbers in the unit.
class Marks {
 public:
  Marks(const Axis& axis, const ChartUnit& unit) : axis_(axis), unit_(*unit.unit) {
    first_ = static_cast<int>(std::floor(std::log10(hosts::from_base(axis.low(), unit_))));
    last_ = static_cast<int>(std::floor(std::log10(hosts::from_base(axis.high(), unit_))));
  }

  std::vector<double> values(std::span<const double> digits) const {
    std::vector<double> found;
    for (int decade = first_; decade <= last_; ++decade) {
      for (const double digit : digits) {
        const double value = Mark{digit, decade}.value();
        if (axis_.holds(hosts::to_base(value, unit_))) found.push_back(value);
      }
    }
    return found;
  }
  double place(double value) const { return axis_.place(hosts::to_base(value, unit_)); }

 private:
  const Axis& axis_;
  const hosts::Unit& unit_;
  int first_, last_;
};

bool fit(const std::vector<Tick>& ticks, const LabelRoom& room) {
  for (std::size_t i = 1; i < ticks.size(); ++i) {
    const double needed = (room(ticks[i - 1].label) + room(ticks[i].label)) / 2 + kLabelGap;
    if (std::abs(ticks[i].place - ticks[i - 1].place) < needed) return false;
  }
  return true;
}

std::vector<Tick> labelled(const Marks& marks, std::span<const double> digits, char decimal) {
  std::vector<Tick> ticks;
  for (const double value : marks.values(digits))
    ticks.push_back({marks.place(value), plain(value, decimal)});
  return ticks;
}

// Those that fit best: 1, 2, 3 and 5 of each decade if these are enough, else more, else fewer.
std::vector<Tick> major_ticks(const Marks& marks, char decimal, const LabelRoom& room) {
  std::vector<Tick> usual = labelled(marks, kUsual, decimal);
  if (fit(usual, room)) {
    for (const std::span<const double> more :
         {std::span<const double>(kDigits), std::span<const double>(kHalves)}) {
      if (usual.size() >= kEnoughLabels) break;
      std::vector<Tick> ticks = labelled(marks, more, decimal);
      if (!fit(ticks, room)) break;
      usual = std::move(ticks);
    }
    return usual;
  }
  std::vector<Tick> thirds = labelled(marks, kThirds, decimal);
  if (fit(thirds, room)) return thirds;
  std::vector<Tick> ones = labelled(marks, kOnes, decimal);
  while (!fit(ones, room)) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < ones.size(); i += 2) std::swap(ones[kept++], ones[i]);
    ones.resize(kept);
  }
  return ones;
}

void add_minor_ticks(std::vector<Tick>& ticks, const Marks& marks) {
  const std::vector<Tick> major = ticks;
  for (const double value : marks.values(kDigits)) {
    const double place = marks.place(value);
    const bool is_free = std::ranges::none_of(
        ticks, [place](const Tick& tick) { return std::abs(tick.place - place) < kMinorGap; });
    if (is_free) ticks.push_back({place, ""});
  }
}

// The step of a linear axis whose labels are enough and fit.
double linear_step(const Axis& axis, const hosts::Unit& unit) {
  constexpr double kLabels = 6;
  const double rough = hosts::from_base(axis.high() - axis.low(), unit) / kLabels;
  const double decade = std::pow(10, std::floor(std::log10(rough)));
  for (const double digit : {1.0, 2.0, 5.0}) {
    if (digit * decade >= rough) return digit * decade;
  }
  return 10 * decade;
}

std::vector<Tick> linear_ticks(const Axis& axis, const hosts::Unit& unit, char decimal,
                               const LabelRoom& room) {
  double step = linear_step(axis, unit);
  const double low = hosts::from_base(axis.low(), unit);
  const double high = hosts::from_base(axis.high(), unit);
  constexpr double kEnd = 1e-9;  // of a step, that a rounding may have taken
  const auto numbered = [&](double by) {
    std::vector<Tick> ticks;
    for (double n = std::ceil(low / by - kEnd); n * by <= high + kEnd * by; ++n) {
      const double value = by < 1 ? n / std::round(1 / by) : n * by;
      ticks.push_back({axis.place(hosts::to_base(value, unit)), plain(value, decimal)});
    }
    return ticks;
  };
  std::vector<Tick> ticks = numbered(step);
  while (!fit(ticks, room)) ticks = numbered(step *= 2);
  constexpr double kParts = 5;  // of a step, between minor ticks
  const std::vector<Tick> minor = numbered(step / kParts);
  const std::vector<Tick> major = ticks;
  for (const Tick& tick : minor) {
    const bool is_free = std::ranges::none_of(
        major, [&tick](const Tick& other) { return std::abs(tick.place - other.place) < kMinorGap; });
    if (is_free) ticks.push_back({tick.place, ""});
  }
  return ticks;
}

}  // namespace

double Axis::place(double value) const {
  const double part = scale_ == Scale::kLinear ? (value - low_) / (high_ - low_)
                                               : std::log(value / low_) / std::log(high_ / low_);
  return begin_ + (end_ - begin_) * part;
}

std::vector<Tick> ticks_of(const Axis& axis, const ChartUnit& unit, char decimal, const LabelRoom& room) {
  if (axis.scale() == Scale::kLinear) return linear_ticks(axis, *unit.unit, decimal, room);
  const Marks marks(axis, unit);
  std::vector<Tick> ticks = major_ticks(marks, decimal, room);
  const bool is_short = axis.high() < kShortAxis * axis.low();
  if (is_short && ticks.size() < kFewestLabels) return linear_ticks(axis, *unit.unit, decimal, room);
  add_minor_ticks(ticks, marks);
  return ticks;
}

std::string chart_number(double value, char decimal) {
  return localized(brief(static_cast<float>(value)), decimal);
}

}  // namespace tavdhost
