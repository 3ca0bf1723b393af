#include "many/select/conditions.h"

#include <algorithm>
#include <cmath>

#include "calc/calculations.h"
#include "calc/kinds.h"
#include "tavd/tavca.h"
#include "tavd/tavdn.h"

namespace tavd {
namespace {

// Whether a pressure can be told at all: a curve of kind 12 has none at the flow of its last point, and the
// code of the range does not say so.
bool has_fixed_pressure(const FlowData& fd, int range_code, float qv) {
  if (range_code != TAVCA_OK) return false;
  return fd.kind != TAVD_KIND_RESISTANCE_POINTS || floating_dp(&fd, qv, nullptr) != 0.0F;
}

int why_not_range(int code, float lowest, float highest, float dp) {
  if (code != TAVCA_OK) return TAVDN_WHY_PRESSURE_UNKNOWN;
  if (!(dp >= lowest)) return TAVDN_WHY_PRESSURE_HIGH;
  return dp <= highest ? TAVDN_WHY_FITS : TAVDN_WHY_PRESSURE_LOW;
}

int why_not_position(int code) {
  switch (code) {
    case TAVCA_OK:
      return TAVDN_WHY_FITS;
    case TAVCA_POS_BELOW_TABLE:
      return TAVDN_WHY_PRESSURE_HIGH;
    case TAVCA_POS_ABOVE_TABLE:
      return TAVDN_WHY_PRESSURE_LOW;
    default:
      return TAVDN_WHY_PRESSURE_UNKNOWN;
  }
}

int why_not_fan(const FlowData& fd, int check) {
  if (fd.nfan < 1) return TAVDN_WHY_PRESSURE_UNKNOWN;
  switch (check) {
    case TAVCA_OK:
      return TAVDN_WHY_FITS;
    case TAVCA_FAN_BELOW_CURVE:
      return TAVDN_WHY_FAN_BELOW_CURVE;
    case TAVCA_FAN_OVER_CURVE:
      return TAVDN_WHY_FAN_OVER_CURVE;
    default:
      return TAVDN_WHY_FAN_ABOVE_CURVE;
  }
}

int why_not_fixed(const Duty& duty, bool is_known, float taken) {
  if (!is_known) return TAVDN_WHY_PRESSURE_UNKNOWN;
  if (!(taken <= duty.asked.dp)) return TAVDN_WHY_PRESSURE_HIGH;
  return taken >= duty.asked.dp_lowest ? TAVDN_WHY_FITS : TAVDN_WHY_PRESSURE_LOW;
}

int why_not_sound(const Duty& duty, int code, const float* lw, float lpa) {
  if (!duty.has_sound_limits()) return TAVDN_WHY_FITS;
  if (code != TAVCA_OK) return TAVDN_WHY_SOUND_UNKNOWN;
  for (int band = 0; duty.has_band_limits() && band < TAVD_BANDS; ++band) {
    const float limit = duty.asked.lw_max[band];
    if (limit != 0.0F && !(lw[band] <= limit)) return TAVDN_WHY_BAND;
  }
  return duty.asked.lp_max == 0.0F || lpa <= duty.asked.lp_max ? TAVDN_WHY_FITS : TAVDN_WHY_LEVEL;
}

int why_not_throw(const Duty& duty, int code, float length) {
  if (!duty.has_throw_limits()) return TAVDN_WHY_FITS;
  if (code != TAVDN_THROW_GIVEN) return TAVDN_WHY_THROW_UNKNOWN;
  if (!(length >= duty.asked.throw_min)) return TAVDN_WHY_THROW_SHORT;
  return duty.asked.throw_max == 0.0F || length <= duty.asked.throw_max ? TAVDN_WHY_FITS
                                                                        : TAVDN_WHY_THROW_LONG;
}

// The answer that a reason is the lack of; 0 for any other.
unsigned answer_of(int reason) {
  switch (reason) {
    case TAVDN_WHY_SIZE_UNKNOWN:
      return TAVDN_UNKNOWN_SIZE;
    case TAVDN_WHY_PRESSURE_UNKNOWN:
      return TAVDN_UNKNOWN_PRESSURE;
    case TAVDN_WHY_SOUND_UNKNOWN:
      return TAVDN_UNKNOWN_SOUND;
    case TAVDN_WHY_THROW_UNKNOWN:
      return TAVDN_UNKNOWN_THROW;
    default:
      return 0;
  }
}

bool excludes(const Duty& duty, int reason) {
  return reason != TAVDN_WHY_FITS && !duty.allows_unknown(answer_of(reason));
}

float distance_from_middle(const FlowData& fd, float qv) {
  const float low = fd.qvmin;
  const float high = fd.qvmax;
  const float half = 0.5F * (high - low);
  if (!(half > 0.0F)) return 0.0F;
  return std::fabs(qv - 0.5F * (low + high)) / half;
}

// What a product answers at the points of a block.
struct Answers {
  std::array<std::int32_t, kDutiesAtOnce> code;
  std::array<float, kDutiesAtOnce> first, second;
  std::array<float, kDutiesAtOnce * TAVD_BANDS> bands;
};

class Judge {
 public:
  Judge(const tavdn_product& product, const Candidate& candidate, const Duty* duties, Points& points,
        Reasons& reasons)
      : product_(product), candidate_(candidate), duties_(duties), points_(points), reasons_(reasons) {
    results_.size = sizeof results_;
  }

  void judge() {
    pressure();
    if (points_.count != 0) sound();
    if (points_.count != 0) throws();
    if (points_.count != 0) keys();
  }

 private:
  const Duty& duty(std::size_t i) const { return duties_[points_.duty[i]]; }

  template <typename Condition>
  bool any(Condition condition) const {
    for (std::size_t i = 0; i < points_.count; ++i) {
      if (condition(duty(i))) return true;
    }
    return false;
  }

  // Answers what `results_` asks for, and forgets what that was.
  void calculate() {
    const float roomdamp = duty(0).asked.roomdamp;
    tavdn_calculate(&product_, points_.count, points_.qv.data(), points_.dp.data(), roomdamp, &results_);
    results_ = {};
    results_.size = sizeof results_;
  }

  // Keeps the points that no reason excludes. `moved` is called for each that goes to another place.
  template <typename Why, typename Moved>
  void keep(Why why, Moved moved) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < points_.count; ++i) {
      const int reason = why(i);
      if (excludes(duty(i), reason)) {
        reasons_.tell(points_.duty[i], reason);
        continue;
      }
      points_.duty[kept] = points_.duty[i];
      points_.qv[kept] = points_.qv[i];
      points_.dp[kept] = points_.dp[i];
      moved(kept, i);
      ++kept;
    }
    points_.count = kept;
  }
  template <typename Why>
  void keep(Why why) {
    keep(why, [](std::size_t, std::size_t) {});
  }

  void pressure() {
    const FlowData& fd = product_.fd;
    if (is_damper(fd.kind)) {
      results_.position_code = answers_.code.data();
      calculate();
      keep([&](std::size_t i) { return why_not_position(answers_.code[i]); });
    } else if (fd.kind == TAVD_KIND_FAN) {
      results_.fan_check = answers_.code.data();
      calculate();
      keep([&](std::size_t i) { return why_not_fan(fd, answers_.code[i]); });
    } else {
      results_.range_code = answers_.code.data();
      results_.dp_min = answers_.first.data();
      results_.dp_max = answers_.second.data();
      calculate();
      if (is_resistance(fd.kind)) {
        fixed_pressure(fd);
      } else {
        keep([&](std::size_t i) {
          return why_not_range(answers_.code[i], answers_.first[i], answers_.second[i], points_.dp[i]);
        });
      }
    }
  }

  void fixed_pressure(const FlowData& fd) {
    keep([&](std::size_t i) {
      const bool is_known = has_fixed_pressure(fd, answers_.code[i], points_.qv[i]);
      const int reason = why_not_fixed(duty(i), is_known, answers_.first[i]);
      if (is_known) points_.dp[i] = answers_.first[i];
      return reason;
    });
  }

  void sound() {
    const auto asks = [](const Duty& d) { return d.has_sound_limits() || d.asked.rank == TAVDN_RANK_SOUND; };
    if (!any(asks)) return;
    results_.lw_code = answers_.code.data();
    results_.lpa = answers_.first.data();
    if (any([](const Duty& d) { return d.has_band_limits(); })) results_.lw = answers_.bands.data();
    calculate();
    keep(
        [&](std::size_t i) {
          return why_not_sound(duty(i), answers_.code[i], &answers_.bands[i * TAVD_BANDS], answers_.first[i]);
        },
        [&](std::size_t to, std::size_t from) {
          points_.key[to] = answers_.first[from];
          points_.has_key[to] = answers_.code[from] == TAVCA_OK && !std::isnan(answers_.first[from]);
        });
  }

  void throws() {
    if (!any([](const Duty& d) { return d.has_throw_limits(); })) return;
    results_.throw_code = answers_.code.data();
    results_.throw_length = answers_.first.data();
    calculate();
    keep([&](std::size_t i) { return why_not_throw(duty(i), answers_.code[i], answers_.first[i]); },
         [&](std::size_t to, std::size_t from) {
           points_.key[to] = points_.key[from];
           points_.has_key[to] = points_.has_key[from];
         });
  }

  // Those of the sound are there.
  void keys() {
    const bool by_pressure = any([](const Duty& d) { return d.asked.rank == TAVDN_RANK_PRESSURE; });
    if (by_pressure) lowest_pressures();
    for (std::size_t i = 0; i < points_.count; ++i) {
      switch (duty(i).asked.rank) {
        case TAVDN_RANK_PRESSURE:
          set_key(i, answers_.code[i] == TAVCA_OK, answers_.first[i]);
          break;
        case TAVDN_RANK_SIZE:
          set_key(i, candidate_.has_size(), candidate_.listed.area);
          break;
        case TAVDN_RANK_FIT:
          set_key(i, true, distance_from_middle(product_.fd, points_.qv[i]));
          break;
        default:
          break;
      }
    }
  }

  void set_key(std::size_t i, bool is_known, float key) {
    points_.has_key[i] = is_known && !std::isnan(key);
    points_.key[i] = key;
  }

  void lowest_pressures() {
    if (product_.fd.kind == TAVD_KIND_FAN) {
      results_.fan_code = answers_.code.data();
      results_.fan_total = answers_.first.data();
    } else {
      results_.range_code = answers_.code.data();
      results_.dp_min = answers_.first.data();
    }
    calculate();
  }

  const tavdn_product& product_;
  const Candidate& candidate_;
  const Duty* duties_;
  Points& points_;
  Reasons& reasons_;
  tavdn_results results_{};
  Answers answers_;
};

// One point, with all that a hit holds.
void calculate_hit(const tavdn_product& product, float roomdamp, tavdn_hit& hit) {
  tavdn_results out{};
  out.size = sizeof out;
  out.range_code = &hit.range_code;
  out.dp_min = &hit.dp_min;
  out.dp_max = &hit.dp_max;
  out.position_code = &hit.position_code;
  out.position = &hit.position;
  out.setting_code = &hit.setting_code;
  out.setting = &hit.setting;
  if (product.fd.kind == TAVD_KIND_FAN) {
    out.fan_check = &hit.fan_check;
    out.fan_code = &hit.fan_code;
    out.fan_total = &hit.fan_total;
    out.fan_static = &hit.fan_static;
    out.fan_dynamic = &hit.fan_dynamic;
  }
  out.lw_code = &hit.lw_code;
  out.lw = hit.lw;
  out.lpa = &hit.lpa;
  out.throw_code = &hit.throw_code;
  out.throw_length = &hit.throw_length;
  tavdn_calculate(&product, 1, &hit.qv, &hit.dp, roomdamp, &out);
}

bool is_pressure_unknown(const FlowData& fd, const tavdn_hit& hit) {
  if (is_damper(fd.kind)) return why_not_position(hit.position_code) == TAVDN_WHY_PRESSURE_UNKNOWN;
  if (fd.kind == TAVD_KIND_FAN) return fd.nfan < 1;
  if (is_resistance(fd.kind)) return !has_fixed_pressure(fd, hit.range_code, hit.qv);
  return hit.range_code != TAVCA_OK;
}

}  // namespace

int why_not_asked(const Duty& duty, const Candidate& candidate, float qv) {
  if (!duty.has_class(candidate.class_index)) return TAVDN_WHY_CLASS;
  if (duty.has_size_limits()) {
    if (!candidate.has_size()) {
      if (!duty.allows_unknown(TAVDN_UNKNOWN_SIZE)) return TAVDN_WHY_SIZE_UNKNOWN;
    } else if (!duty.fits_size(candidate.listed.duct)) {
      return TAVDN_WHY_SIZE;
    }
  }
  if (candidate.of_set[static_cast<std::size_t>(duty.asked.values)].count == 0) return TAVDN_WHY_VALUE;
  const FlowData& fd = candidate.fd();
  if (fd.isvelocity != 0 && !(qv > 0.0F)) return TAVDN_WHY_FLOW_UNKNOWN;
  if (!(qv >= fd.qvmin)) return TAVDN_WHY_FLOW_LOW;
  return qv <= fd.qvmax ? TAVDN_WHY_FITS : TAVDN_WHY_FLOW_HIGH;
}

void judge(const tavdn_product& product, const Candidate& candidate, const Duty* duties, Points& points,
           Reasons& reasons) {
  Judge(product, candidate, duties, points, reasons).judge();
}

void fill_hit(const tavdn_product& product, const Candidate& candidate, const Duty& duty, tavdn_hit& hit) {
  const FlowData& fd = product.fd;
  hit.qv = duty.flow_of(candidate);
  hit.dp = duty.asked.dp;
  hit.area = candidate.listed.area;
  hit.fit = distance_from_middle(fd, hit.qv);
  if (is_resistance(fd.kind)) {
    float taken = 0.0F;
    const int code = minmaxdptot(&fd, hit.qv, nullptr, &taken, nullptr);
    if (has_fixed_pressure(fd, code, hit.qv)) hit.dp = taken;
  }
  calculate_hit(product, duty.asked.roomdamp, hit);
  if (!candidate.has_size()) hit.unknown |= TAVDN_UNKNOWN_SIZE;
  if (is_pressure_unknown(fd, hit)) hit.unknown |= TAVDN_UNKNOWN_PRESSURE;
  if (hit.lw_code != TAVCA_OK) hit.unknown |= TAVDN_UNKNOWN_SOUND;
  if (hit.throw_code != TAVDN_THROW_GIVEN) hit.unknown |= TAVDN_UNKNOWN_THROW;
}

}  // namespace tavd
