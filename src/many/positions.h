// Positions of a damper at many points: its table with all worked out that no point changes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "many/limits.h"
#include "tavd/flowdata.h"

namespace tavd {

class Positions {
 public:
  explicit Positions(const FlowData& fd);

  // As tavca_damper_pos and tavca_damper_pos_fixed point by point; return for how many those had to be asked.
  std::size_t stepless(const FlowData& fd, const Limits& limits, std::size_t n, const float* qv,
                       const float* dp, float* positions, std::int32_t* codes) const;
  std::size_t stepped(const FlowData& fd, const Limits& limits, std::size_t n, const float* qv,
                      const float* dp, float* positions, std::int32_t* codes) const;

  // The first by a path of many/paths.h.
  std::size_t stepless_by(std::size_t path, const FlowData& fd, const Limits& limits, std::size_t n,
                          const float* qv, const float* dp, float* positions, std::int32_t* codes) const;

 private:
  struct SteplessKernel;
  template <std::size_t N>
  struct Block;
  template <std::size_t N>
  void solve(const Limits& limits, Block<N>& block) const;
  bool quick_stepped(float qv, float dp, const Limits& limits, float* position, std::int32_t* code) const;
  bool stepped_between(float qv, float dp, float* position, std::int32_t* code) const;
  int nearest(float qv, float dp, const double* distances, double farthest) const;

  int request_code_;  // of every point with flow and pressure
  bool numbers_;      // all resistances are ordinary numbers
  int rows_ = 0;
  bool any_bad_flow_;  // in a row
  bool any_bad_row_;   // a flow or a pressure
  float k_[TAVD_DAMPER_ROWS];
  float steps_[TAVD_DAMPER_ROWS];  // lowest resistance from the second row to this one
  double lg_k_[TAVD_DAMPER_ROWS];
  float pos_[TAVD_DAMPER_ROWS];
  float dp_[TAVD_DAMPER_ROWS];
  float qv_squared_[TAVD_DAMPER_ROWS];
};

}  // namespace tavd
