#include "sheet/notes.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "base/numbers.h"
#include "base/text.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

constexpr float kSame = 0.001F;          // of a number that is taken for that of a row
constexpr float kSamePosition = 0.001F;  // no unit
constexpr float kThrowVelocity = 0.2F;   // m/s, at which a throw ends

bool is_same(float a, float b) {
  return std::abs(a - b) <= kSame * std::abs(b);
}

std::string range_in(const SheetForm& form, float low, float high, const hosts::Unit& unit) {
  return with_unit(*form.texts, brief(shown(low, unit)) + "–" + brief(shown(high, unit)),
                   unit_sign(*form.texts, unit));
}

bool is_between_positions(const FlowData& flow, const std::optional<DamperAnswer>& answer) {
  if (!answer || answer->code != 0) return false;
  for (int row = 0; row < flow.ndamper; ++row) {
    const float position = flow.damper[row].pos;
    if (std::abs(position - answer->position) <= kSamePosition) return false;
  }
  return true;
}

bool is_sound_between(const FlowData& flow, const OperatingPoint& point) {
  if (!point.sound || point.sound->code != 0) return false;
  const float dp = hosts::has_fixed_pressure(flow) ? point.dp_min : point.dp.value_or(0);
  for (int row = 0; row < flow.nlw; ++row) {
    if (is_same(flow.lwpoints[row].qv, point.qv) && is_same(flow.lwpoints[row].dp, dp)) return false;
  }
  return true;
}

template <typename Row>
bool is_between_rows(const Row* rows, int count, float qv) {
  for (int row = 0; row < count; ++row) {
    if (is_same(rows[row].qv, qv)) return false;
  }
  return count > 0;
}

bool is_curve_between(const FlowData& flow, float qv) {
  if (hosts::is_fan(flow)) return is_between_rows(flow.fancurve, flow.nfan, qv);
  return is_between_rows(flow.qvdppoints, flow.nqvdp, qv);
}

bool is_throw_between(const FlowData& flow, const OperatingPoint& point) {
  if (!point.throw_length) return false;
  if (flow.nqvL2 > 0) return is_between_rows(flow.qvL2, flow.nqvL2, point.qv);
  return is_between_rows(flow.parL2, flow.nparL2, point.qv);
}

void add_outside(std::vector<std::string>& notes, const SheetSubject& subject, const SheetForm& form) {
  const SheetTexts::Notes& texts = form.texts->notes;
  const FlowData& flow = subject.chosen.product.flow;
  const OperatingPoint& point = subject.point;
  if (!point.flow_in_range) notes.push_back(filled(texts.flow_outside, flow_limits_in(form, flow)));
  if (!point.dp_in_range.value_or(true)) {
    notes.push_back(filled(texts.pressure_outside, pressure_limits_in(form, flow)));
  }
  if (point.reachable.value_or(true)) return;
  const hosts::Unit& unit = *form.units.pressure;
  std::string why;
  if (point.fan && point.fan->check_code) {
    why = text_of(form.texts->check_codes, *point.fan->check_code);
  } else if (hosts::has_fixed_pressure(flow)) {
    why = filled(texts.takes, with_unit(*form.texts, fixed(shown(point.dp_min, unit), unit.decimals),
                                        unit_sign(*form.texts, unit)));
  } else {
    why = filled(texts.takes, range_in(form, point.dp_min, point.dp_max, unit));
  }
  notes.push_back(filled(texts.unreachable, why));
  if (point.sound && point.sound->code == 0) notes.emplace_back(texts.levels_elsewhere);
}

void add_interpolated(std::vector<std::string>& notes, const SheetSubject& subject, const SheetForm& form) {
  const SheetTexts::Notes& texts = form.texts->notes;
  const FlowData& flow = subject.chosen.product.flow;
  const OperatingPoint& point = subject.point;
  for (const ParTable& table : std::span(flow.par, static_cast<std::size_t>(flow.npar))) {
    const bool is_between =
        table.value[0] != '\0' && table.idx1 != table.idx2 && table.frac > 0 && table.frac < 1;
    if (is_between) notes.push_back(filled(texts.parameter_between, printable(table.name)));
  }
  if (is_between_positions(flow, point.stepless)) notes.emplace_back(texts.position_between);
  if (is_curve_between(flow, point.qv)) notes.emplace_back(texts.curve_between);
  if (is_sound_between(flow, point)) notes.emplace_back(texts.sound_between);
  if (is_throw_between(flow, point)) notes.emplace_back(texts.throw_between);
}

}  // namespace

std::vector<std::string> sheet_notes(const SheetSubject& subject, const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  std::vector<std::string> notes;
  add_outside(notes, subject, form);
  add_interpolated(notes, subject, form);
  notes.emplace_back(texts.notes.total_pressure);
  if (subject.point.throw_length) {
    const hosts::Unit& unit = *form.units.velocity;
    notes.push_back(filled(texts.notes.throw_velocity,
                           with_unit(texts, brief(shown(kThrowVelocity, unit)), unit_sign(texts, unit))));
  }
  if (subject.sketch) notes.push_back(filled(texts.notes.millimetres, unit_sign(texts, "mm")));
  return notes;
}

std::string flow_limits_in(const SheetForm& form, const FlowData& flow) {
  return range_in(form, flow.qvmin, flow.qvmax, form.units.flow_of(flow));
}

std::string pressure_limits_in(const SheetForm& form, const FlowData& flow) {
  return range_in(form, flow.dpmin, flow.dpmax, *form.units.pressure);
}

}  // namespace tavdhost
