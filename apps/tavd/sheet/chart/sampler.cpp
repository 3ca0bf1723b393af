#include "sheet/chart/sampler.h"

#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>

#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

void check(const char* function, int code) {
  if (code == TAVDN_NO_MEMORY) throw std::bad_alloc();
  if (code != TAVDN_OK) throw std::logic_error(tavdn_message(function, code));
}

tavdn_product* prepared_product(const FlowData& flow, const DuctSize* duct) {
  tavdn_product* product = nullptr;
  check("tavdn_prepare", tavdn_prepare(&flow, duct, &product));
  return product;
}

}  // namespace

Sampler::Sampler(const FlowData& flow, const DuctSize* duct, float room_damping)
    : product_(prepared_product(flow, duct)), room_damping_(room_damping) {}

void Sampler::calculate(std::span<const float> qv, std::span<const float> dp, tavdn_results& results) const {
  results.size = sizeof results;
  check("tavdn_calculate", tavdn_calculate(product_.get(), qv.size(), qv.data(),
                                           dp.empty() ? nullptr : dp.data(), room_damping_, &results));
}

std::vector<Sampler::Range> Sampler::ranges(std::span<const float> qv) const {
  std::vector<std::int32_t> codes(qv.size());
  std::vector<float> lowest(qv.size()), highest(qv.size());
  tavdn_results results{};
  results.range_code = codes.data();
  results.dp_min = lowest.data();
  results.dp_max = highest.data();
  calculate(qv, {}, results);
  std::vector<Range> ranges;
  for (std::size_t i = 0; i < qv.size(); ++i) {
    ranges.push_back(codes[i] == TAVCA_OK ? Range{lowest[i], highest[i]} : Range{kNone, kNone});
  }
  return ranges;
}

std::vector<float> Sampler::fan_pressures(std::span<const float> qv) const {
  std::vector<std::int32_t> codes(qv.size());
  std::vector<float> total(qv.size());
  tavdn_results results{};
  results.fan_code = codes.data();
  results.fan_total = total.data();
  calculate(qv, {}, results);
  for (std::size_t i = 0; i < qv.size(); ++i) {
    if (codes[i] != TAVCA_OK && codes[i] != TAVCA_FAN_BELOW_CURVE) total[i] = kNone;
  }
  return total;
}

std::vector<float> Sampler::levels(std::span<const float> qv, std::span<const float> dp) const {
  std::vector<std::int32_t> codes(qv.size());
  std::vector<float> levels(qv.size());
  tavdn_results results{};
  results.lw_code = codes.data();
  results.lpa = levels.data();
  calculate(qv, dp, results);
  for (std::size_t i = 0; i < qv.size(); ++i) {
    if (codes[i] != TAVCA_OK) levels[i] = kNone;
  }
  return levels;
}

std::vector<float> Sampler::throw_lengths(const std::string& value, std::span<const float> qv) const {
  std::vector<float> lengths(qv.size());
  check("tavdn_throw", tavdn_throw(product_.get(), value.c_str(), qv.size(), qv.data(), lengths.data()));
  return lengths;
}

std::vector<float> spaced(double lowest, double highest, std::size_t count, bool by_ratio) {
  std::vector<float> numbers;
  for (std::size_t i = 0; i < count; ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(count - 1);
    numbers.push_back(static_cast<float>(by_ratio ? lowest * std::pow(highest / lowest, part)
                                                  : lowest + (highest - lowest) * part));
  }
  numbers.front() = static_cast<float>(lowest);
  numbers.back() = static_cast<float>(highest);
  return numbers;
}

}  // namespace tavdhost
