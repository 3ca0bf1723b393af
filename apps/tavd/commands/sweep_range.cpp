#include "commands/sweep_range.h"

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

bool is_positive_float(double value) {
  const auto narrow = static_cast<float>(value);
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

}  // namespace

SweepRange SweepRange::parse(std::string_view option, std::string_view text) {
  const std::vector<std::string_view> parts = split(text);
  double from = 0;
  double to = 0;
  double step = 0;
  const bool readable = parts.size() == 1 ? read_number(parts[0], from)
                                          : parts.size() == 3 && read_number(parts[0], from) &&
                                                read_number(parts[1], to) && read_number(parts[2], step);
  if (!readable) throw refusal(option, text, "FROM:TO:STEP such as 20:200:5, or one number");
  if (parts.size() == 1) to = from;
  if (!is_positive_float(from) || !is_positive_float(to))
    throw refusal(option, text, "numbers above 0, at most 3.4e38");
  if (parts.size() == 1) return {from, to, 0, 1};
  if (step == 0) throw refusal(option, text, "a step other than 0");
  if (from == to) return {from, to, step, 1};
  const double steps = (to - from) / step;
  if (steps < 0) {
    throw refusal(option, text,
                  to > from ? "a step above 0 for a rising range" : "a step below 0 for a falling range");
  }
  if (!(steps < static_cast<double>(kMostPoints))) {
    throw refusal(option, text, "at most " + std::to_string(kMostPoints) + " points");
  }
  return {from, to, step, count_points(steps)};
}

float SweepRange::at(std::uint64_t index) const {
  if (index == 0) return static_cast<float>(from_);
  if (index + 1 >= count_) return static_cast<float>(to_);
  return static_cast<float>(from_ + static_cast<double>(index) * step_);
}

}  // namespace tavdhost
