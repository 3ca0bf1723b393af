// Calculates a product at operating points, a block of them at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "product/operating_point.h"
#include "tavd/tavdn.h"

namespace tavdhost {

// A product that was made ready once. Takes memory for one block, however many follow.
class PointCalculator {
 public:
  // Calculates what `answers` holds; those were asked for with a pressure if the points have one.
  // `room_damping` is in dB. The product outlives this.
  PointCalculator(const Product& product, const Answers& answers, float room_damping = kRoomDamping);

  // A block of points, in place of the last one: flows, l/s, or m/s for products by air velocity, and as many
  // pressures, Pa, or none. Both stay the caller's and are read by point() too.
  void calculate(std::span<const float> qv, std::span<const float> dp);
  // One point of the block.
  OperatingPoint point(std::size_t index) const;

 private:
  struct Release {
    void operator()(tavdn_product* product) const { tavdn_release(product); }
  };
  // Positions by one of the solvers.
  struct Positions {
    std::vector<std::int32_t> codes;
    std::vector<float> positions;
  };

  tavdn_results results_of(std::size_t count);
  DamperAnswer damper(const Positions& found, std::size_t index) const;
  FanAnswer fan(std::size_t index) const;
  SoundAnswer sound(std::size_t index) const;

  const Product& product_;
  Answers answers_;
  float room_damping_;
  std::unique_ptr<tavdn_product, Release> prepared_;
  std::span<const float> qv_, dp_;  // of the block

  std::vector<std::int32_t> range_code_;
  std::vector<float> dp_min_, dp_max_;
  Positions stepless_, stepped_;
  std::vector<std::int32_t> fan_code_, fan_check_;
  std::vector<float> fan_total_, fan_static_, fan_dynamic_;
  std::vector<std::int32_t> lw_code_;
  std::vector<float> lw_, lw_A_, room_level_;
  std::vector<float> attenuation_;
  std::vector<float> throw_length_;
};

// Everything about one point: `qv` as above, `dp` in Pa if there is a pressure.
OperatingPoint calculated_point(const Product& product, float qv, std::optional<float> dp,
                                float room_damping = kRoomDamping);

}  // namespace tavdhost
