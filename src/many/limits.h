// The pressure range of a product at any flow, once its tables have been looked at.
#pragma once

#include <bit>
#include <cstdint>

#include "calc/terms.h"
#include "tavd/flowdata.h"

namespace tavd {

// A choice between two numbers that is the same for all points of a loop. Of a plain condition g++ makes no
// vectors.
class Choice {
 public:
  explicit Choice(bool first) : bits_(first ? -1 : 0) {}
  float of(float first, float second) const {
    return std::bit_cast<float>((std::bit_cast<std::int32_t>(first) & bits_) |
                                (std::bit_cast<std::int32_t>(second) & ~bits_));
  }

 private:
  std::int32_t bits_;
};

class Limits {
 public:
  explicit Limits(const FlowData& fd);

  // Whether lowest() and highest() answer: every kind but 12, whose curve is searched anew for each flow.
  bool known() const { return known_; }
  // As of minmaxdptot, the same for every flow.
  int code() const { return code_; }

  // As minmaxdptot.
  float lowest(float qv) const { return in_range(low_, qv); }
  float highest(float qv) const { return in_range(high_, qv); }

  // As param_remove_dp.
  float without_term(float qv, float dp) const {
    return pressure_without_term(dp, with_term(any_term_, qv, dp));
  }

 private:
  // A point of the square law, as square_law() takes it apart; or a fixed pressure.
  struct Point {
    float dp = 0.0F;
    float qv_squared = 0.0F;
  };
  static Point point(float qv, float dp) { return {dp, qv * qv}; }

  float with_term(Choice any, float qv, float dp) const { return any.of(dp + term_k_ * qv * qv, dp); }
  float in_range(const Point& end, float qv) const {
    return with_term(term_in_range_, qv, follows_flow_.of(end.dp * qv * qv / end.qv_squared, end.dp));
  }

  bool known_;
  int code_ = 0;
  Choice follows_flow_;
  Choice any_term_;
  Choice term_in_range_;  // not where there is no range, but 0
  Point low_, high_;
  float term_k_ = 0.0F;
};

}  // namespace tavd
