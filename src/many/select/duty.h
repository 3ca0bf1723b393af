// Duties: whether they can be asked, and what is worked out once for all products.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "many/select/catalogue.h"
#include "tavd/tavdn_select.h"

namespace tavd {

// TAVDN_OK or one of TAVDN_DUTY_.
int check_duty(const tavdn_catalogue& catalogue, const tavdn_duty* duty, std::size_t room);

// The flow, l/s.
double litres_per_second(const tavdn_duty& duty);

// A duty that can be asked.
class Duty {
 public:
  Duty(const tavdn_catalogue& catalogue, const tavdn_duty& asked);

  // l/s
  float flow() const { return static_cast<float>(flow_); }
  // In the product's own measure; 0 or less where it has no size to convert by.
  float flow_of(const Candidate& candidate) const;

  bool has_class(std::size_t class_index) const { return classes_.empty() || classes_[class_index]; }
  bool has_size_limits() const { return asked.duct_min.b != 0 || asked.duct_max.b != 0; }
  bool fits_size(const DuctSize& duct) const;
  bool allows_unknown(unsigned answer) const { return (asked.unknown_allowed & answer) != 0; }
  bool has_band_limits() const { return has_band_limits_; }
  bool has_sound_limits() const { return has_band_limits_ || asked.lp_max != 0.0F; }
  bool has_throw_limits() const { return asked.throw_min != 0.0F || asked.throw_max != 0.0F; }

  const tavdn_duty& asked;

 private:
  double flow_;  // l/s
  bool has_band_limits_;
  std::vector<bool> classes_;  // of the catalogue; empty: all
};

}  // namespace tavd
