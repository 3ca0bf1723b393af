// The pressure range of a product at any flow, once its tables have been looked at.
#pragma once

#include "calc/terms.h"
#include "tavd/flowdata.h"

namespace tavd {

class Limits {
 public:
  explicit Limits(const FlowData& fd);

  // Whether at() answers: every kind but 12, whose curve is searched anew for each flow.
  bool known() const { return known_; }
  // As of minmaxdptot, the same for every flow.
  int code() const { return code_; }

  PressureTerm term(float qv) const { return {any_term_, term_k_, qv}; }

  // As minmaxdptot.
  void at(float qv, const PressureTerm& term, float* lowest, float* highest) const {
    const float low = low_.dp * qv * qv / low_.qv_squared;
    const float high = high_.dp * qv * qv / high_.qv_squared;
    const float range_low = follows_flow_ ? low : low_.dp;
    const float range_high = follows_flow_ ? high : high_.dp;
    *lowest = code_ == 0 ? term.added_to(range_low) : 0.0F;
    *highest = code_ == 0 ? term.added_to(range_high) : 0.0F;
  }

 private:
  // A point of the square law, as square_law() takes it apart; or a fixed pressure.
  struct Point {
    float dp = 0.0F;
    float qv_squared = 0.0F;
  };
  static Point point(float qv, float dp) { return {dp, qv * qv}; }

  bool known_;
  int code_ = 0;
  bool follows_flow_ = false;
  Point low_, high_;
  bool any_term_;
  float term_k_ = 0.0F;
};

}  // namespace tavd
