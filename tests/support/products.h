// Records as a load leaves them, for tests that need no database. Kinds are plain numbers in tests, not those
// of tavd/attributes.h: records have the numbers in them, so that a constant which is renumbered must fail.
#pragma once

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string_view>

#include "tavd/tavca.h"

namespace tavdtest {

constexpr float kNonsense = -12345.678F;  // what out-arguments hold before a call

inline FlowData product(int kind) {
  FlowData fd;
  std::memset(&fd, 0, sizeof fd);
  fd.nhdd = 1;
  fd.kind = static_cast<std::int16_t>(kind);
  fd.kind100 = static_cast<std::int16_t>(kind + 100);
  return fd;
}

template <typename Row, int N>
std::int16_t put(Row (&table)[N], std::initializer_list<Row> rows) {
  std::copy(rows.begin(), rows.end(), table);
  return static_cast<std::int16_t>(rows.size());
}

inline FlowData resistance_product(float qvref, float dpref) {
  FlowData fd = product(10);
  fd.nref = 1;
  fd.qvref = qvref;
  fd.dpref = dpref;
  return fd;
}

inline FlowData curve_product(std::initializer_list<QvDpPoint> rows) {
  FlowData fd = product(12);
  fd.nqvdp = put(fd.qvdppoints, rows);
  return fd;
}

inline FlowData damper_product(std::initializer_list<DamperPoint> rows) {
  FlowData fd = product(20);
  fd.ndamper = put(fd.damper, rows);
  return fd;
}

inline FlowData fan_product(std::initializer_list<FanPoint> rows) {
  FlowData fd = product(40);
  fd.nfan = put(fd.fancurve, rows);
  return fd;
}

inline FlowData range_product(float dpmin, float dpmax) {
  FlowData fd = product(30);
  fd.dpmin = dpmin;
  fd.dpmax = dpmax;
  return fd;
}

inline ParEntry entry(std::string_view value, float dk, int dlw = 0, int ddlw = 0, float factor = 0.0F) {
  ParEntry row;
  std::memset(&row, 0, sizeof row);
  std::copy_n(value.begin(), std::min(value.size(), sizeof row.value), row.value);
  row.dk = dk;
  row.dlw = static_cast<std::int16_t>(dlw);
  row.ddlw = static_cast<std::int16_t>(ddlw);
  row.factor = factor;
  return row;
}

// Adds a parameter with its rows; nothing is chosen.
inline void add_parameter(FlowData& fd, const char* name, std::initializer_list<ParEntry> rows) {
  ParTable& par = fd.par[fd.npar];
  std::strncpy(par.name, name, sizeof par.name - 1);
  par.count = put(par.table, rows);
  fd.npar = static_cast<std::int16_t>(fd.npar + 1);
}

// A parameter whose one value, chosen, adds dk*qv^2 Pa to every pressure.
inline void add_pressure_term(FlowData& fd, float dk) {
  add_parameter(fd, "P", {entry("1", dk)});
  tavca_param_setvalue(&fd, "P", "1");
}

inline ParL2Point throw_row(std::string_view value, float qv, float L2) {
  ParL2Point row;
  std::memset(&row, ' ', sizeof row);
  std::copy_n(value.begin(), std::min(value.size(), sizeof row.value), row.value);
  row.qv = qv;
  row.L2 = L2;
  return row;
}

// A row of the sound table with one level in all bands.
inline LwPoint sound_row(float qv, float dp, int level) {
  LwPoint row;
  row.qv = qv;
  row.dp = dp;
  std::fill_n(row.lw, TAVD_BANDS, static_cast<std::uint8_t>(level));
  return row;
}

inline DlwPoint attenuation_row(float pos, int level) {
  DlwPoint row;
  row.pos = pos;
  std::fill_n(row.dlw, TAVD_BANDS, static_cast<std::uint8_t>(level));
  return row;
}

// A repeatable stream of numbers for properties.
class Numbers {
 public:
  // Evenly from low to high.
  float between(float low, float high) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    const double unit = static_cast<double>(state_ >> 11) / 9007199254740992.0;
    return static_cast<float>(low + unit * (high - low));
  }
  int upto(int last) { return static_cast<int>(between(0.0F, static_cast<float>(last) + 0.999F)); }

 private:
  std::uint64_t state_ = 20240607;
};

}  // namespace tavdtest
