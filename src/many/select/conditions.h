// Which of several duties one product fits, with one choice of its parameters.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "many/select/catalogue.h"
#include "many/select/duty.h"

namespace tavd {

// Duties that are asked of a product at once. They have the same room damping.
inline constexpr std::size_t kDutiesAtOnce = 256;

// Operating points of the duties that are still to be judged, side by side.
struct Points {
  std::size_t count = 0;
  std::array<std::uint32_t, kDutiesAtOnce> duty{};  // its place in the block
  std::array<float, kDutiesAtOnce> qv{};            // in the product's own measure
  std::array<float, kDutiesAtOnce> dp{};            // Pa
  std::array<float, kDutiesAtOnce> key{};           // what it is ranked by
  std::array<bool, kDutiesAtOnce> has_key{};

  // The operating points of others.
  void take(const Points& others) {
    count = others.count;
    std::copy_n(others.duty.begin(), count, duty.begin());
    std::copy_n(others.qv.begin(), count, qv.begin());
    std::copy_n(others.dp.begin(), count, dp.begin());
  }
  void add(std::size_t place, float flow, float pressure) {
    duty[count] = static_cast<std::uint32_t>(place);
    qv[count] = flow;
    dp[count] = pressure;
    ++count;
  }
};

// Where reasons are told: one for each duty of the block. Of several choices the one that comes farthest
// counts, which has the largest.
struct Reasons {
  std::array<unsigned char, kDutiesAtOnce> of;  // TAVDN_WHY_
  void clear(std::size_t duties) {
    std::fill_n(of.begin(), duties, static_cast<unsigned char>(TAVDN_WHY_FITS));
  }
  void tell(std::uint32_t duty, int reason) {
    if (reason > of[duty]) of[duty] = static_cast<unsigned char>(reason);
  }
};

// Whether the product may be asked at all: its class, its size, and its flow limits; TAVDN_WHY_FITS if so.
// `qv` is the flow in its own measure.
int why_not_asked(const Duty& duty, const Candidate& candidate, float qv);

// Leaves the points that fit, with their keys.
void judge(const tavdn_product& product, const Candidate& candidate, const Duty* duties, Points& points,
           Reasons& reasons);

// All numbers of a hit, of which product and variant are told.
void fill_hit(const tavdn_product& product, const Candidate& candidate, const Duty& duty, tavdn_hit& hit);

}  // namespace tavd
