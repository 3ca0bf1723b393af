#include "answers/sweep_range.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/text.h"

namespace tavdhost {
namespace {

// Steps like 0.1 are not exact in binary: a range this close to a whole number of steps ends with a full one.
constexpr double kWholeSteps = 1e-6;

std::vector<std::string_view> split(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t colon = 0; (colon = text.find(':')) != std::string_view::npos;
       text.remove_prefix(colon + 1))
    parts.push_back(text.substr(0, colon));
  parts.push_back(text);
  return parts;
}

bool read_number(std::string_view text, double& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

bool is_positive_float(double value, const hosts::Unit* unit) {
  const auto narrow = static_cast<float>(unit == nullptr ? value : hosts::to_base(value, *unit));
  return std::isfinite(narrow) && narrow > 0;
}

UserError refusal(std::string_view option, std::string_view text, const std::string& expected) {
  return UserError{std::string(option) + " is " + in_quotes(text) + ", expected " + expected};
}

std::uint64_t count_points(double steps) {
  const double whole = std::round(steps);
  const double full = std::abs(steps - whole) <= kWholeSteps ? whole : std::floor(steps) + 1;
  return static_cast<std::uint64_t>(std::max(full, 1.0)) + 1;
}

// The unit of the whole range, which stands behind its last number.
Measured split_range(std::string_view option, std::string_view text, hosts::Quantity first,
                     hosts::Quantity second) {
  const std::size_t colon = text.rfind(':');
  const std::size_t begin = colon == std::string_view::npos ? 0 : colon + 1;
  const Measured last = split_unit(option, text.substr(begin), first, second);
  return {text.substr(0, begin + last.number.size()), last.unit};
}

}  // namespace

SweepRange SweepRange::flows(std::string_view option, std::string_view text) {
  return parse(option, text, split_range(option, text, hosts::Quantity::kFlow, hosts::Quantity::kVelocity));
}

SweepRange SweepRange::pressures(std::string_view option, std::string_view text) {
  return parse(option, text,
               split_range(option, text, hosts::Quantity::kPressure, hosts::Quantity::kPressure));
}

SweepRange SweepRange::parse(std::string_view option, std::string_view text, const Measured& measured) {
  const std::vector<std::string_view> parts = split(measured.number);
  double from = 0;
  double to = 0;
  double step = 0;
  const bool readable = parts.size() == 1 ? read_number(parts[0], from)
                                          : parts.size() == 3 && read_number(parts[0], from) &&
                                                read_number(parts[1], to) && read_number(parts[2], step);
  if (!readable) throw refusal(option, text, "FROM:TO:STEP such as 20:200:5, or one number");
  if (parts.size() == 1) to = from;
  if (!is_positive_float(from, measured.unit) || !is_positive_float(to, measured.unit))
    throw refusal(option, text, "numbers above 0, at most 3.4e38");
  if (parts.size() == 1) return {from, to, 0, 1, measured.unit};
  if (step == 0) throw refusal(option, text, "a step other than 0");
  if (from == to) return {from, to, step, 1, measured.unit};
  const double steps = (to - from) / step;
  if (steps < 0) {
    throw refusal(option, text,
                  to > from ? "a step above 0 for a rising range" : "a step below 0 for a falling range");
  }
  if (!(steps < static_cast<double>(kMostPoints))) {
    throw refusal(option, text, "at most " + std::to_string(kMostPoints) + " points");
  }
  return {from, to, step, count_points(steps), measured.unit};
}

Amount SweepRange::flow_at(std::uint64_t index) const {
  const double number = at(index);
  return {static_cast<float>(number), number, unit_};
}

float SweepRange::pressure_at(std::uint64_t index) const {
  const double number = at(index);
  return static_cast<float>(unit_ == nullptr ? number : hosts::to_base(number, *unit_));
}

double SweepRange::at(std::uint64_t index) const {
  if (index == 0) return from_;
  if (index + 1 >= count_) return to_;
  return from_ + static_cast<double>(index) * step_;
}

}  // namespace tavdhost
