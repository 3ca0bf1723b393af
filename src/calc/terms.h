// What the chosen value of a parameter contributes: the fields of its two rows, blended.
#pragma once

#include <cmath>
#include <cstdint>

#include "calc/numeric.h"
#include "tavd/flowdata.h"

namespace tavd {

inline bool is_chosen(const ParTable& par) {
  return par.value[0] != '\0';
}

// A row of the table, also for an index that a host has spoilt. The test comes out the same way on every
// sound record, so that it is predicted and the read does not wait for it.
inline const ParEntry& row_at(const ParTable& par, int index) {
  if (index >= 0 && index < TAVD_PARAMETER_ROWS) [[likely]]
    return par.table[index];
  return par.table[index < 0 ? 0 : TAVD_PARAMETER_ROWS - 1];
}

inline const ParEntry& lower_row(const ParTable& par) {
  return row_at(par, par.idx1);
}

inline const ParEntry& upper_row(const ParTable& par) {
  return row_at(par, par.idx2);
}

// The value of a field at the chosen place between two rows.
inline float blend(const ParTable& par, float lower, float upper) {
  const float frac = par.frac;
  return lower + frac * (upper - lower);
}

inline float blend(const ParTable& par, std::int16_t lower, std::int16_t upper) {
  const float frac = par.frac;
  return static_cast<float>(lower) + frac * static_cast<float>(upper - lower);
}

inline float dk_term(const ParTable& par) {
  return blend(par, lower_row(par).dk, upper_row(par).dk);
}

using Term = float (*)(const ParTable&);

// The term of one parameter of the record; `neutral` if it is not usable or nothing is chosen.
template <Term term>
float term_of(const FlowData& fd, int index, float neutral) {
  if (fd.npar <= index || !is_chosen(fd.par[index])) return neutral;
  return term(fd.par[index]);
}

template <Term term>
float sum_of_terms(const FlowData& fd) {
  return term_of<term>(fd, 0, 0.0F) + term_of<term>(fd, 1, 0.0F);
}

// What of a demanded pressure is left to the base data, Pa, where it is `with_term` with the pressure term.
// Without branches, so that a loop over many points becomes vectors.
inline float pressure_without_term(float dp, float with_term) {
  constexpr double kSmallestPressure = 1e-5;      // Pa; what is left at least
  constexpr double kSmallestPressureTerm = 1e-3;  // Pa; smaller terms leave it alone
  const float term = with_term - dp;
  const float left = dp - term;
  const bool is_demanded = !(wide(dp) < kSmallestPressure);
  const bool counts =
      both(std::fabs(wide(term)) > kSmallestPressureTerm, wide(with_term) > kSmallestPressure);
  const float at_least = wide(left) < kSmallestPressure ? narrow(kSmallestPressure) : left;
  return both(is_demanded, counts) ? at_least : dp;
}

// The pressure term of the chosen values at flow `qv`, for a record that is asked more than once at one flow.
class PressureTerm {
 public:
  PressureTerm(const FlowData& fd, float qv) : any_(fd.npar >= 1) {
    if (any_) term_ = sum_of_terms<dk_term>(fd) * qv * qv;
  }
  // `dp` with the term, Pa. Without parameters nothing is added, not even 0.
  float added_to(float dp) const { return any_ ? dp + term_ : dp; }

 private:
  bool any_;
  float term_ = 0.0F;  // Pa
};

}  // namespace tavd
