// Asks a product at many points at once: the exact answers of the library, and not-a-number where it has
// none.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "drawing/own_drawings.h"
#include "tavd/flowdata.h"

namespace tavdhost {

class Sampler {
 public:
  // As flow_curves() takes them.
  Sampler(const FlowData& flow, const DuctSize* duct, float room_damping);

  const FlowData& flow() const { return *tavdn_flowdata(product_.get()); }

  struct Range {
    float lowest, highest;  // Pa
  };
  std::vector<Range> ranges(std::span<const float> qv) const;
  // Total pressure of a fan, Pa; left of its curve that of the system line through the curve's first point.
  std::vector<float> fan_pressures(std::span<const float> qv) const;
  // Levels in the room, dB(A). Products whose pressure follows from the flow are asked without pressures.
  std::vector<float> levels(std::span<const float> qv, std::span<const float> dp) const;
  // Throw lengths by the line of a parameter value, m.
  std::vector<float> throw_lengths(const std::string& value, std::span<const float> qv) const;

 private:
  void calculate(std::span<const float> qv, std::span<const float> dp, tavdn_results& results) const;

  Prepared product_;
  float room_damping_;
};

// So many numbers from the lowest to the highest, at equal ratios or at equal distances; both ends are exact.
std::vector<float> spaced(double lowest, double highest, std::size_t count, bool by_ratio);

}  // namespace tavdhost
