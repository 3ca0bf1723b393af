#include "calls.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "oracle/reference/records.h"
#include "tavd/ewads.h"
#include "tavd/tavca.h"

namespace numbers {

namespace {

constexpr float kUnwritten = -12345.0F;

// Every not-a-number counts as the same one: its sign and its bits are no part of a result.
std::string text(float value) {
  if (std::isnan(value)) return "nan";
  std::array<char, 16> digits{};
  std::snprintf(digits.data(), digits.size(), "%08x", std::bit_cast<std::uint32_t>(value));
  return digits.data();
}

std::string text(double value) {
  if (std::isnan(value)) return "nan";
  std::array<char, 24> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx",
                static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(value)));
  return digits.data();
}

std::string text(int value) {
  return std::to_string(value);
}

template <typename... Values>
std::string list(Values... values) {
  std::string all;
  ((all += (all.empty() ? "" : " ") + text(values)), ...);
  return all;
}

std::string bands(const float* values) {
  std::string all;
  for (int band = 0; band < TAVD_BANDS; ++band) all += ' ' + text(values[band]);
  return all;
}

std::string levels(const FlowData& fd) {
  std::string all;
  const int rows = std::clamp<int>(fd.nlw, 0, TAVD_LW_ROWS);
  for (int row = 0; row < rows; ++row) {
    for (const unsigned char level : fd.lwpoints[row].lw) all += ' ' + text(int{level});
  }
  return all;
}

}  // namespace

void Calls::line(const char* function, const std::string& arguments, const std::string& results) {
  std::fprintf(out_, "%s|%s|%s|%s\n", function, product_.c_str(), arguments.c_str(), results.c_str());
}

void Calls::record(const FlowData& fd) {
  float a = kUnwritten;
  float b = kUnwritten;
  const int code = tavca_qminqmax(&fd, &a, &b);
  line("tavca_qminqmax", "", list(code, a, b));
  for (int band = -1; band <= TAVD_BANDS; ++band) {
    const float area = fd.ductarea;
    line("tavca_endref_A", list(band, area), list(tavca_endref_A(band, area)));
  }
  FlowData changed = fd;
  tavca_check_end_reflection(&changed);
  line("tavca_check_end_reflection", "", levels(changed));
}

void Calls::flow(const FlowData& fd, float qv) {
  const std::string at = list(qv);
  const float area = fd.ductarea;
  line("tavca_pdyn", at, list(tavca_pdyn(qv, area, fd.isvelocity)));
  line("tavca_floating_dp", at, list(tavca_floating_dp(&fd, qv)));
  std::array<float, 3> out{};
  out.fill(kUnwritten);
  const int fan = tavca_fan_dp(&fd, qv, &out[0], &out[1], &out[2]);
  line("tavca_fan_dp", at, list(fan, out[0], out[1], out[2]));
  out.fill(kUnwritten);
  const int range = tavca_minmaxdptot(&fd, qv, &out[0], &out[1]);
  line("tavca_minmaxdptot", at, list(range, out[0], out[1]));
  line("tavca_dptotmin", at, list(tavca_dptotmin(&fd, qv)));
  line("tavca_dptotmax", at, list(tavca_dptotmax(&fd, qv)));
}

void Calls::point(const FlowData& fd, float qv, float dp, const DuctSize& duct) {
  const std::string at = list(qv, dp);
  line("tavca_fan_op_check", at, list(tavca_fan_op_check(&fd, qv, dp)));
  float position = kUnwritten;
  const int code = tavca_damper_pos(&fd, qv, dp, &position);
  line("tavca_damper_pos", at, list(code, position));
  position = kUnwritten;
  const int fixed = tavca_damper_pos_fixed(&fd, qv, dp, &position);
  line("tavca_damper_pos_fixed", at, list(fixed, position));
  std::array<float, TAVD_BANDS> lw{};
  lw.fill(kUnwritten);
  const int sound = tavca_lw(&fd, qv, dp, lw.data(), &duct);
  line("tavca_lw", at, list(sound) + bands(lw.data()));
  line("tavca_LpA", at, list(tavca_LpA(lw.data())));
  std::array<float, TAVD_BANDS> dlw{};
  dlw.fill(kUnwritten);
  const int attenuation = tavca_dlw(&fd, qv, dp, dlw.data());
  line("tavca_dlw", at, list(attenuation) + bands(dlw.data()));
  const float lowest = fd.qvmin;
  const float highest = fd.qvmax;
  const float pressure = fd.dpmin;
  line("tavca_linlog_interp", at, list(tavca_linlog_interp(lowest, highest, qv, pressure, dp)));
  line("tavca_loglin_interp", at, list(tavca_loglin_interp(lowest, highest, qv, pressure, dp)));
}

void Calls::position(const FlowData& fd, float qv, float pos) {
  line("tavca_dptot_damperpos", list(qv, pos), list(tavca_dptot_damperpos(&fd, qv, pos)));
}

void Calls::throw_length(const FlowData& fd, float qv, const char* value) {
  line("tavca_L2_isothermal", list(qv) + ' ' + value, list(tavca_L2_isothermal(&fd, qv, value)));
}

void Calls::size(const DuctSize& ds, float qv) {
  const std::string at = list(int{ds.shape}, int{ds.b}, int{ds.h});
  line("tavca_ductarea_m2", at, list(tavca_ductarea_m2(ds.b, ds.h)));
  line("ewads_dekv", at, list(ewads_dekv(&ds)));
  line("ewads_dhydr", at, list(ewads_dhydr(&ds)));
  line("ewads_diagonal", at, list(int{ewads_diagonal(&ds)}));
  line("ewads_m2", at, list(ewads_m2(&ds)));
  line("ewads_vms", at + ' ' + list(qv), list(ewads_vms(&ds, static_cast<double>(qv))));
}

// Arguments are made of whole numbers by one division each, so that they are the same everywhere.
void math_functions(std::FILE* out) {
  constexpr int kArguments = 100'000;
  const auto tell = [out](const char* function, const std::string& at, double result) {
    std::fprintf(out, "libm.%s||%s|%s\n", function, at.c_str(), text(result).c_str());
  };
  reference::Random random(1);
  for (int i = 0; i < kArguments; ++i) {
    const double positive = static_cast<double>(static_cast<float>(random.between(1, 1'000'000)) / 999.0F);
    const double power = static_cast<double>(static_cast<float>(random.between(-30'000, 30'000)) / 4999.0F);
    tell("log10", text(positive), std::log10(positive));
    tell("log", text(positive), std::log(positive));
    tell("sqrt", text(positive), std::sqrt(positive));
    tell("exp2", text(power), std::exp2(power));
    tell("pow10", text(power), std::pow(10.0, power));
    tell("pow", text(positive) + ' ' + text(power), std::pow(positive, power));
  }
}

}  // namespace numbers
