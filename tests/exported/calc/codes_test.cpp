// What each function that returns a code answers: a row has the function, the record and the point that are
// asked, the code by its name in tavd/tavca.h and by its number, and the outputs. The numbers are copies on
// purpose: hosts were compiled with them, so that a constant which is renumbered fails here.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "support/products.h"

namespace {

using tavdtest::add_parameter;
using tavdtest::damper_product;
using tavdtest::entry;
using tavdtest::fan_product;
using tavdtest::kNonsense;
using tavdtest::product;
using tavdtest::put;
using tavdtest::range_product;
using tavdtest::resistance_product;
using tavdtest::sound_row;

// ---- Functions --------------------------------------------------------------

struct Answer {
  int code = 99;
  std::vector<float> outputs;
};

using Function = Answer (*)(const FlowData* fd, float qv, float dp);

Answer damper_pos(const FlowData* fd, float qv, float dp) {
  float pos = kNonsense;
  const int code = tavca_damper_pos(fd, qv, dp, &pos);
  return {code, {pos}};
}

Answer damper_pos_fixed(const FlowData* fd, float qv, float dp) {
  float pos = kNonsense;
  const int code = tavca_damper_pos_fixed(fd, qv, dp, &pos);
  return {code, {pos}};
}

// `dp` stands for the position; the code is the pressure itself.
Answer dptot_damperpos(const FlowData* fd, float qv, float pos) {
  const float pressure = tavca_dptot_damperpos(fd, qv, pos);
  return {static_cast<int>(pressure), {pressure}};
}

Answer fan_dp(const FlowData* fd, float qv, float) {
  float total = kNonsense;
  float fan_static = kNonsense;
  float dynamic = kNonsense;
  const int code = tavca_fan_dp(fd, qv, &total, &fan_static, &dynamic);
  return {code, {total, fan_static, dynamic}};
}

Answer fan_op_check(const FlowData* fd, float qv, float dp) {
  return {tavca_fan_op_check(fd, qv, dp), {}};
}

// With the two functions that give one of its results each.
Answer minmaxdptot(const FlowData* fd, float qv, float) {
  float min = kNonsense;
  float max = kNonsense;
  const int code = tavca_minmaxdptot(fd, qv, &min, &max);
  return {code, {min, max, tavca_dptotmin(fd, qv), tavca_dptotmax(fd, qv)}};
}

Answer qminqmax(const FlowData* fd, float, float) {
  float qmin = kNonsense;
  float qmax = kNonsense;
  const int code = tavca_qminqmax(fd, &qmin, &qmax);
  return {code, {qmin, qmax}};
}

Answer lw(const FlowData* fd, float qv, float dp) {
  constexpr DuctSize kRound200 = {0, 200, 200};
  std::vector<float> bands(TAVD_BANDS, kNonsense);
  const int code = tavca_lw(fd, qv, dp, bands.data(), &kRound200);
  return {code, bands};
}

Answer lw_into_nothing(const FlowData* fd, float qv, float dp) {
  constexpr DuctSize kRound200 = {0, 200, 200};
  return {tavca_lw(fd, qv, dp, nullptr, &kRound200), {}};
}

Answer dlw(const FlowData* fd, float qv, float dp) {
  std::vector<float> bands(TAVD_BANDS, kNonsense);
  const int code = tavca_dlw(fd, qv, dp, bands.data());
  return {code, bands};
}

// Of no record at all.
Answer load_flowdata(const FlowData*, float, float) {
  FlowData fd;
  std::memset(&fd, 0xA5, sizeof fd);
  const int code = tavca_load_flowdata(1, nullptr, &fd);
  return {code, {static_cast<float>(fd.nhdd), static_cast<float>(fd.szclass[0])}};
}

// The values of a parameter, as numbers: 1 and what is no number. `qv` chooses between them.
Answer valuetoreal(const FlowData*, float which, float) {
  float number = kNonsense;
  const int code = tavca_param_valuetoreal(which > 0.0F ? "1" : "1e3", &number);
  return {code, {number}};
}

// Chooses value 1 of parameter A, or, with `qv` 0, of a parameter whose name nobody has.
Answer setvalue(const FlowData* fd, float which, float) {
  const char* const name = which > 0.0F ? "A" : "SIZE";
  if (fd == nullptr) return {tavca_param_setvalue(nullptr, name, "1"), {}};
  FlowData copy = *fd;
  const int code = tavca_param_setvalue(&copy, name, "1");
  return {code, {static_cast<float>(std::memcmp(&copy, fd, sizeof copy) == 0)}};
}

// ---- Records ----------------------------------------------------------------

using MakeRecord = FlowData (*)();

constexpr MakeRecord nothing = nullptr;  // a null record

// The record is packed, so a count is set by its bytes.
template <std::int16_t FlowData::*count, int value, MakeRecord make>
FlowData with() {
  FlowData fd = make();
  const std::int16_t rows = value;
  std::memcpy(&(fd.*count), &rows, sizeof rows);
  return fd;
}

template <MakeRecord make>
constexpr MakeRecord without_flow_data = with<&FlowData::nhdd, 0, make>;

template <int kind>
FlowData of_kind() {
  return product(kind);
}

FlowData fixed() {
  return resistance_product(100.0F, 50.0F);
}
FlowData fixed_of_no_flow() {
  return resistance_product(0.0F, 33.0F);
}
FlowData fixed_of_negative_flow() {
  return resistance_product(-1.0F, 33.0F);
}

// Resistances 0.04, 0.01 and 0.0025 at positions 1, 2 and 3.
FlowData damper() {
  return damper_product({{1.0F, 100.0F, 400.0F}, {2.0F, 100.0F, 100.0F}, {3.0F, 100.0F, 25.0F}});
}
FlowData damper_without_first_flow() {
  return damper_product({{1, 0.0F, 400.0F}, {2, 100.0F, 100.0F}, {3, 100.0F, 25.0F}});
}
FlowData damper_without_last_flow() {
  return damper_product({{1, 100.0F, 400.0F}, {2, 100.0F, 100.0F}, {3, 0.0F, 25.0F}});
}
FlowData damper_with_negative_last_flow() {
  return damper_product({{1, 100.0F, 400.0F}, {2, -1.0F, 100.0F}});
}
FlowData damper_without_last_pressure() {
  return damper_product({{1, 100.0F, 400.0F}, {2, 100.0F, 100.0F}, {3, 100.0F, 0.0F}});
}

// At 150 l/s: 900 Pa on the first system line, 25 Pa on the second, 350 Pa on the curve.
FlowData fan() {
  return fan_product({{100.0F, 400.0F, 0.0F}, {200.0F, 300.0F, 0.0F}, {300.0F, 100.0F, 0.0F}});
}

FlowData with_sound(FlowData fd, std::initializer_list<LwPoint> rows) {
  fd.nlw = put(fd.lwpoints, rows);
  return fd;
}

// 100 Pa at 100 l/s.
FlowData point() {
  return with_sound(resistance_product(100.0F, 100.0F),
                    {sound_row(70.71F, 50.0F, 40), sound_row(141.42F, 200.0F, 52)});
}
FlowData point_without_pressure() {
  FlowData fd = point();
  fd.dpref = 0.0F;
  return fd;
}
template <int kind>
FlowData point_of_kind() {
  FlowData fd = point();
  fd.kind = kind;
  return fd;
}

// Three curves, each of two rows, of resistances 0.04, 0.01 and 0.0025.
FlowData curves() {
  return with_sound(
      damper(), {sound_row(50.0F, 100.0F, 50), sound_row(100.0F, 400.0F, 60), sound_row(50.0F, 25.0F, 30),
                 sound_row(100.0F, 100.0F, 40), sound_row(100.0F, 25.0F, 20), sound_row(200.0F, 100.0F, 30)});
}
FlowData one_curve() {
  return with_sound(damper(), {sound_row(100.0F, 100.0F, 40), sound_row(100.0F, 105.0F, 41),
                               sound_row(100.0F, 109.0F, 42)});
}
FlowData rising_curves() {
  return with_sound(damper(), {sound_row(100.0F, 25.0F, 20), sound_row(200.0F, 100.0F, 30),
                               sound_row(50.0F, 25.0F, 30), sound_row(100.0F, 100.0F, 40)});
}
FlowData curves_the_last_of_one_row() {
  FlowData fd = curves();
  fd.nlw = 5;
  return fd;
}
FlowData curves_with_a_row_without_flow() {
  FlowData fd = curves();
  fd.lwpoints[5] = sound_row(0.0005F, 100.0F, 40);
  return fd;
}
FlowData curves_with_a_row_without_pressure() {
  FlowData fd = curves();
  fd.lwpoints[5] = sound_row(100.0F, 0.0005F, 40);
  return fd;
}
FlowData twenty_curves() {
  FlowData fd = damper();
  float k = 1000.0F;
  for (int row = 0; row < 20; ++row, k *= 0.5F) fd.lwpoints[row] = sound_row(1.0F, k, 40);
  fd.nlw = 20;
  return fd;
}
FlowData twenty_curves_and_a_row() {
  FlowData fd = twenty_curves();
  fd.lwpoints[20] = fd.lwpoints[19];
  fd.nlw = 21;
  return fd;
}
FlowData twenty_curves_and_a_row_of_zeros() {
  FlowData fd = twenty_curves();
  fd.lwpoints[20] = sound_row(0.0F, 0.0F, 40);
  fd.nlw = 21;
  return fd;
}

// Two flows at two pressures each, limits 20 to 200 Pa and 50 to 100 l/s.
FlowData flows() {
  FlowData fd = range_product(20.0F, 200.0F);
  fd.qvmin = 50.0F;
  fd.qvmax = 100.0F;
  return with_sound(fd, {sound_row(50.0F, 20.0F, 20), sound_row(50.0F, 200.0F, 40),
                         sound_row(100.0F, 20.0F, 30), sound_row(100.0F, 200.0F, 50)});
}
FlowData one_flow() {
  return with_sound(flows(), {sound_row(50.0F, 20.0F, 20), sound_row(50.05F, 200.0F, 40)});
}
FlowData flows_with_a_row_without_flow() {
  FlowData fd = flows();
  fd.lwpoints[3] = sound_row(0.0005F, 100.0F, 40);
  return fd;
}
FlowData flows_with_a_row_without_pressure() {
  FlowData fd = flows();
  fd.lwpoints[3] = sound_row(100.0F, 0.0005F, 40);
  return fd;
}
template <int count>
FlowData many_flows() {
  FlowData fd = flows();
  for (int row = 0; row < count; ++row) {
    fd.lwpoints[row] = sound_row(50.0F + static_cast<float>(row), 20.0F, 40);
  }
  fd.nlw = count;
  return fd;
}

FlowData limits() {
  FlowData fd = product(10);
  fd.qvmin = 12.5F;
  fd.qvmax = 80.0F;
  return fd;
}

FlowData parameter() {
  FlowData fd = product(30);
  add_parameter(fd, "A", {entry("1", 0.01F)});
  return fd;
}

// ---- The table --------------------------------------------------------------

struct Row {
  const char* request;  // as it stands in the table
  Function function;
  MakeRecord record;
  float qv, dp;
  const char* name;
  int code;    // as the header has it
  int number;  // as hosts have it
  std::vector<float> outputs;
};

#define ROW(function, record, qv, dp, code, number, ...) \
  { #function " of " #record, function, record, qv, dp, #code, code, number, __VA_ARGS__ }

const std::vector<float> kNone = {};
const std::vector<float> kZero = {0};
const std::vector<float> kTwoZeros = {0, 0};
const std::vector<float> kThreeZeros = {0, 0, 0};
const std::vector<float> kFourZeros = {0, 0, 0, 0};
const std::vector<float> kSilence = {0, 0, 0, 0, 0, 0, 0, 0};

const std::vector<Row>& table() {
  static const std::vector<Row> rows = {
      ROW(load_flowdata, nothing, 0, 0, TAVCA_LOAD_NO_HEADER, -1, kTwoZeros),

      ROW(qminqmax, limits, 0, 0, TAVCA_OK, 0, {12.5F, 80.0F}),
      ROW(qminqmax, without_flow_data<limits>, 0, 0, TAVCA_LIMITS_NO_DATA, -1, kTwoZeros),
      ROW(qminqmax, nothing, 0, 0, TAVCA_LIMITS_NO_DATA, -1, kTwoZeros),

      ROW(setvalue, parameter, 1, 0, TAVCA_OK, 0, {0}),
      ROW(setvalue, parameter, 0, 0, TAVCA_PARAM_NO_NAME, -1, {1}),
      ROW(setvalue, of_kind<30>, 1, 0, TAVCA_PARAM_NO_NAME, -1, {1}),
      ROW(setvalue, nothing, 1, 0, TAVCA_PARAM_NO_NAME, -1, kNone),
      ROW(valuetoreal, nothing, 1, 0, TAVCA_OK, 0, {1}),
      ROW(valuetoreal, nothing, 0, 0, TAVCA_PARAM_NO_NUMBER, -1, kZero),

      ROW(minmaxdptot, fixed, 100, 0, TAVCA_OK, 0, {50, 50, 50, 50}),
      ROW(minmaxdptot, without_flow_data<fixed>, 45, 0, TAVCA_DPTOT_NO_DATA, -2, kFourZeros),
      ROW(minmaxdptot, nothing, 45, 0, TAVCA_DPTOT_NO_DATA, -2, kFourZeros),
      ROW(minmaxdptot, (with<&FlowData::nref, 0, fixed>), 45, 0, TAVCA_DPTOT_BAD_POINT, -3, kFourZeros),
      ROW(minmaxdptot, fixed_of_no_flow, 45, 0, TAVCA_DPTOT_BAD_POINT, -3, kFourZeros),
      ROW(minmaxdptot, fixed_of_negative_flow, 45, 0, TAVCA_DPTOT_BAD_POINT, -3, kFourZeros),
      ROW(minmaxdptot, of_kind<20>, 70, 0, TAVCA_DPTOT_BAD_DAMPER, -4, kFourZeros),
      ROW(minmaxdptot, damper_without_first_flow, 70, 0, TAVCA_DPTOT_BAD_DAMPER, -4, kFourZeros),
      ROW(minmaxdptot, damper_with_negative_last_flow, 70, 0, TAVCA_DPTOT_BAD_DAMPER, -4, kFourZeros),
      ROW(minmaxdptot, (with<&FlowData::ndamper, -32768, damper>), 70, 0, TAVCA_DPTOT_BAD_DAMPER, -4,
          kFourZeros),
      ROW(minmaxdptot, of_kind<50>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<0>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<14>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<21>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<99>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<-10>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<110>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),
      ROW(minmaxdptot, of_kind<32767>, 45, 0, TAVCA_DPTOT_OTHER_KIND, -6, kFourZeros),

      ROW(dptot_damperpos, without_flow_data<damper>, 100, 1.5F, TAVCA_DPTOT_NO_DATA, -2, {-2}),
      ROW(dptot_damperpos, nothing, 100, 1.5F, TAVCA_DPTOT_NO_DATA, -2, {-2}),

      // On an end row only the solver of any position has one.
      ROW(damper_pos, damper, 100, 100, TAVCA_OK, 0, {2}),
      ROW(damper_pos, damper, 100, 500, TAVCA_POS_ABOVE_TABLE, 1, {1}),
      ROW(damper_pos, damper, 100, 400, TAVCA_OK, 0, {1}),
      ROW(damper_pos, damper, 100, 25, TAVCA_OK, 0, {3}),
      ROW(damper_pos, damper, 100, 20, TAVCA_POS_BELOW_TABLE, -1, {3}),
      ROW(damper_pos_fixed, damper, 100, 150, TAVCA_OK, 0, {2}),
      ROW(damper_pos_fixed, damper, 100, 400, TAVCA_POS_ABOVE_TABLE, 1, {1}),
      ROW(damper_pos_fixed, damper, 100, 25, TAVCA_POS_BELOW_TABLE, -1, {3}),
      ROW(damper_pos, fixed, 100, 50, TAVCA_POS_NO_DAMPER, 2, kZero),
      ROW(damper_pos_fixed, fixed, 100, 50, TAVCA_POS_NO_DAMPER, 2, kZero),
      ROW(damper_pos, (with<&FlowData::ndamper, 0, damper>), 100, 50, TAVCA_POS_NO_TABLE, -3, kZero),
      ROW(damper_pos_fixed, (with<&FlowData::ndamper, 0, damper>), 100, 50, TAVCA_POS_NO_TABLE, -3, kZero),
      ROW(damper_pos, without_flow_data<fixed>, 100, 50, TAVCA_POS_NO_TABLE, -3, kZero),
      ROW(damper_pos_fixed, nothing, 100, 50, TAVCA_POS_NO_TABLE, -3, kZero),
      // No flow or pressure is found before anything else.
      ROW(damper_pos, damper, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos, damper, 50, 0, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos_fixed, damper, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos_fixed, damper, 50, 0, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos, fixed, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos, fixed, 50, 0, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos_fixed, fixed, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos_fixed, fixed, 50, 0, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos, of_kind<50>, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos, of_kind<50>, 50, 0, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos_fixed, of_kind<50>, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos_fixed, of_kind<50>, 50, 0, TAVCA_POS_BAD_POINT, -4, kZero),
      ROW(damper_pos, nothing, 0, 50, TAVCA_POS_BAD_POINT, -4, kZero),
      // The demand above the table is answered before the last row is looked at.
      ROW(damper_pos, damper_without_first_flow, 100, 200, TAVCA_POS_BAD_ROW, -5, kZero),
      ROW(damper_pos_fixed, damper_without_first_flow, 100, 200, TAVCA_POS_BAD_ROW, -5, kZero),
      ROW(damper_pos, damper_without_last_flow, 100, 200, TAVCA_POS_BAD_ROW, -5, kZero),
      ROW(damper_pos_fixed, damper_without_last_flow, 100, 200, TAVCA_POS_BAD_ROW, -5, kZero),
      ROW(damper_pos, damper_without_last_flow, 100, 500, TAVCA_POS_ABOVE_TABLE, 1, {1}),
      ROW(damper_pos, damper_without_last_pressure, 100, 200, TAVCA_OK, 0, {1.5F}),
      ROW(damper_pos_fixed, damper_without_last_pressure, 100, 200, TAVCA_POS_BAD_ROW, -5, kZero),

      ROW(fan_dp, fan, 150, 0, TAVCA_OK, 0, {350, 350, 0}),
      ROW(fan_dp, nothing, 150, 0, TAVCA_FAN_NO_RECORD, -10, kThreeZeros),
      ROW(fan_dp, fan, 50, 0, TAVCA_FAN_BELOW_CURVE, -100, {100, 100, 0}),
      ROW(fan_dp, fan, 400, 0, TAVCA_FAN_ABOVE_CURVE, -200, kThreeZeros),
      ROW(fan_dp, (with<&FlowData::nfan, 0, fan>), 50, 0, TAVCA_FAN_ABOVE_CURVE, -200, kThreeZeros),
      ROW(fan_dp, (with<&FlowData::nfan, -1, fan>), 50, 0, TAVCA_FAN_ABOVE_CURVE, -200, kThreeZeros),
      ROW(fan_dp, (with<&FlowData::nfan, -32768, fan>), 50, 0, TAVCA_FAN_ABOVE_CURVE, -200, kThreeZeros),
      ROW(fan_op_check, fan, 150, 350, TAVCA_OK, 0, kNone),
      ROW(fan_op_check, fan, 50, 99, TAVCA_OK, 0, kNone),
      ROW(fan_op_check, nothing, 150, 100, TAVCA_FAN_NO_RECORD, -10, kNone),
      ROW(fan_op_check, fan, 150, 1000, TAVCA_FAN_BELOW_CURVE, -100, kNone),
      ROW(fan_op_check, fan, 50, 101, TAVCA_FAN_BELOW_CURVE, -100, kNone),
      ROW(fan_op_check, fan, 150, 10, TAVCA_FAN_ABOVE_CURVE, -200, kNone),
      ROW(fan_op_check, fan, 301, 100, TAVCA_FAN_ABOVE_CURVE, -200, kNone),
      ROW(fan_op_check, fan, 50, 2, TAVCA_FAN_ABOVE_CURVE, -200, kNone),
      ROW(fan_op_check, (with<&FlowData::nfan, 0, fan>), 50, 10, TAVCA_FAN_ABOVE_CURVE, -200, kNone),
      ROW(fan_op_check, (with<&FlowData::nfan, -1, fan>), 50, 10, TAVCA_FAN_ABOVE_CURVE, -200, kNone),
      ROW(fan_op_check, (with<&FlowData::nfan, -32768, fan>), 50, 10, TAVCA_FAN_ABOVE_CURVE, -200, kNone),
      ROW(fan_op_check, fan, 150, 360, TAVCA_FAN_OVER_CURVE, -300, kNone),

      // No flow is found before anything else.
      ROW(lw, point, 0.0005F, 50, TAVCA_LW_NO_FLOW, -1, kSilence),
      ROW(lw, without_flow_data<point>, 0.0005F, 50, TAVCA_LW_NO_FLOW, -1, kSilence),
      ROW(lw, without_flow_data<point>, 100, 50, TAVCA_LW_NO_DATA, -2, kSilence),
      ROW(lw, nothing, 100, 50, TAVCA_LW_NO_DATA, -2, kSilence),
      ROW(lw_into_nothing, point, 100, 50, TAVCA_LW_NO_DATA, -2, kNone),
      ROW(lw_into_nothing, without_flow_data<point>, 100, 50, TAVCA_LW_NO_DATA, -2, kNone),
      ROW(lw, (with<&FlowData::nlw, 1, point>), 100, 50, TAVCA_LW_FEW_ROWS, -3, kSilence),
      ROW(lw, (with<&FlowData::nlw, 0, point>), 100, 50, TAVCA_LW_FEW_ROWS, -3, kSilence),
      ROW(lw, (with<&FlowData::nlw, -1, point>), 100, 50, TAVCA_LW_FEW_ROWS, -3, kSilence),
      ROW(lw, (with<&FlowData::nlw, -32768, point>), 100, 50, TAVCA_LW_FEW_ROWS, -3, kSilence),
      ROW(lw, point_of_kind<0>, 100, 50, TAVCA_LW_OTHER_KIND, -9, kSilence),
      ROW(lw, point_of_kind<14>, 100, 50, TAVCA_LW_OTHER_KIND, -9, kSilence),
      ROW(lw, point_of_kind<21>, 100, 50, TAVCA_LW_OTHER_KIND, -9, kSilence),
      ROW(lw, point_of_kind<50>, 100, 50, TAVCA_LW_OTHER_KIND, -9, kSilence),
      ROW(lw, point_of_kind<-1>, 100, 50, TAVCA_LW_OTHER_KIND, -9, kSilence),
      ROW(lw, point_without_pressure, 100, 50, TAVCA_LW_NO_PRESSURE, -11, kSilence),
      ROW(lw, (with<&FlowData::nref, 0, point_without_pressure>), 100, 50, TAVCA_LW_NO_PRESSURE, -11,
          kSilence),
      ROW(lw, twenty_curves_and_a_row, 100, 100, TAVCA_LW_MANY_CURVES, -21, kSilence),
      ROW(lw, twenty_curves_and_a_row_of_zeros, 100, 100, TAVCA_LW_MANY_CURVES, -21, kSilence),
      ROW(lw, curves_with_a_row_without_flow, 100, 100, TAVCA_LW_BAD_CURVE_ROW, -22, kSilence),
      ROW(lw, curves_with_a_row_without_pressure, 100, 100, TAVCA_LW_BAD_CURVE_ROW, -22, kSilence),
      ROW(lw, one_curve, 100, 100, TAVCA_LW_FEW_CURVES, -23, kSilence),
      ROW(lw, rising_curves, 100, 50, TAVCA_LW_RISING_CURVES, -24, kSilence),
      ROW(lw, curves_the_last_of_one_row, 100, 50, TAVCA_LW_SHORT_CURVE, -25, kSilence),
      ROW(lw, twenty_curves, 100, 100, TAVCA_LW_SHORT_CURVE, -25, kSilence),  // twenty are no fault as such
      ROW(lw, many_flows<21>, 60, 100, TAVCA_LW_MANY_FLOWS, -31, kSilence),
      ROW(lw, flows_with_a_row_without_flow, 70, 100, TAVCA_LW_BAD_FLOW_ROW, -32, kSilence),
      ROW(lw, flows_with_a_row_without_pressure, 70, 100, TAVCA_LW_BAD_FLOW_ROW, -32, kSilence),
      ROW(lw, one_flow, 50, 100, TAVCA_LW_FEW_FLOWS, -33, kSilence),
      ROW(lw, (with<&FlowData::nlw, 3, flows>), 70, 100, TAVCA_LW_SHORT_FLOW, -34, kSilence),
      ROW(lw, many_flows<20>, 60, 100, TAVCA_LW_SHORT_FLOW, -34, kSilence),

      ROW(dlw, nothing, 100, 100, TAVCA_OK, 0, kSilence),
      ROW(dlw, of_kind<50>, 100, 100, TAVCA_OK, 0, kSilence),
  };
  return rows;
}

// Two rows always make a pair, so that no record is known which gives this one.
static_assert(TAVCA_LW_NO_PAIR == -12);

TEST(ResultCodes, AreThoseOfTheTableWithTheirOutputs) {
  for (const Row& row : table()) {
    SCOPED_TRACE(testing::Message() << row.request << " at " << row.qv << ", " << row.dp << ": " << row.name);
    EXPECT_EQ(row.code, row.number);
    FlowData fd;
    if (row.record != nullptr) fd = row.record();
    const Answer answer = row.function(row.record != nullptr ? &fd : nullptr, row.qv, row.dp);
    EXPECT_EQ(answer.code, row.number);
    ASSERT_EQ(answer.outputs.size(), row.outputs.size());
    for (std::size_t i = 0; i < row.outputs.size(); ++i)
      EXPECT_FLOAT_EQ(answer.outputs[i], row.outputs[i]) << i;
  }
}

}  // namespace
