// The flows or pressures of a sweep, as the user writes them.
#pragma once

#include <cstdint>
#include <string_view>

#include "product/amount.h"

namespace tavdhost {

// Numbers from one end to the other in equal steps, both ends included: where the last step leads past the
// end, it is shorter.
class SweepRange {
 public:
  static constexpr std::uint64_t kMostPoints = 1'000'000'000;

  // From "20:200:5" (from, to, step; a falling range has a negative step) or a single number, and behind the
  // last number perhaps a unit for all: "72:720:18m3/h". `option` names it in the message. Throws UserError
  // unless the ends are finite floats above 0 and the step leads from one to the other in at most kMostPoints
  // points.
  static SweepRange flows(std::string_view option, std::string_view text);
  static SweepRange pressures(std::string_view option, std::string_view text);

  std::uint64_t count() const { return count_; }
  // The number at `index`, from 0 to count() - 1, in the unit that it was typed in. Worked out and converted
  // in double, narrowed once.
  Amount flow_at(std::uint64_t index) const;
  float pressure_at(std::uint64_t index) const;

 private:
  SweepRange(double from, double to, double step, std::uint64_t count, const hosts::Unit* unit)
      : from_(from), to_(to), step_(step), count_(count), unit_(unit) {}
  static SweepRange parse(std::string_view option, std::string_view text, const Measured& measured);
  double at(std::uint64_t index) const;

  double from_, to_, step_;
  std::uint64_t count_;
  const hosts::Unit* unit_;  // null: base units
};

}  // namespace tavdhost
