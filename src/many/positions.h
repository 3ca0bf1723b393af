// Positions of a damper at many points: its table with all worked out that no point changes.
#pragma once

#include "many/limits.h"
#include "tavd/flowdata.h"

namespace tavd {

class Positions {
 public:
  explicit Positions(const FlowData& fd);

  // As tavca_damper_pos and tavca_damper_pos_fixed, in less time. False where it is not certain that the
  // result is the same: the function itself has to be asked.
  bool quick_stepless(float qv, float dp, const Limits& limits, float* position, int* code) const;
  bool quick_stepped(float qv, float dp, const Limits& limits, float* position, int* code) const;

 private:
  bool stepless(float qv, float dp, float* position, int* code) const;
  bool stepped(float qv, float dp, float* position, int* code) const;
  int nearest(float qv, float dp, const double* distances, double farthest) const;

  int request_code_;  // of every point with flow and pressure
  bool numbers_;      // all resistances are ordinary numbers
  int rows_ = 0;
  int first_bad_flow_;  // row; the number of rows if there is none
  bool any_bad_row_;    // a flow or a pressure
  float k_[TAVD_DAMPER_ROWS];
  float steps_[TAVD_DAMPER_ROWS];  // lowest resistance from the second row to this one
  double lg_k_[TAVD_DAMPER_ROWS];
  float pos_[TAVD_DAMPER_ROWS];
  float dp_[TAVD_DAMPER_ROWS];
  float qv_squared_[TAVD_DAMPER_ROWS];
};

}  // namespace tavd
