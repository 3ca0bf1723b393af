// What of a sound table no point changes.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "calc/interpolation.h"
#include "calc/kinds.h"
#include "many/levels.h"

namespace tavd {

using namespace sound;

namespace {

int short_unless_complete(const RowChoice& a, const RowChoice& b, int code) {
  return a.complete && b.complete ? 0 : code;
}

// The sets of rows are few and short; their keys are sorted once.
std::vector<float> distinct_keys(std::vector<float> keys) {
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

}  // namespace

Levels::Levels(const FlowData& fd, const Limits& limits, const DuctSize* duct)
    : corrections_(corrections_of(fd, duct)), qvmin_(fd.qvmin), qvmax_(fd.qvmax) {
  if (fd.nhdd == 0 || fd.nlw < 2 || !limits.known()) return;
  const Table table(fd);
  // Rows that are no numbers stand in no order.
  for (int row = 0; row < table.count(); ++row) {
    if (!std::isfinite(table.qv(row)) || !std::isfinite(table.dp(row))) return;
  }
  switch (fd.kind) {
    case TAVD_KIND_RESISTANCE:
    case TAVD_KIND_RESISTANCE_VELOCITY:
      prepare_fixed_curve(table);
      break;
    case TAVD_KIND_LIMITS:
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      prepare_curves(table);
      break;
    case TAVD_KIND_RANGE:
    case TAVD_KIND_FAN:
      prepare_groups(table);
      break;
    default:
      break;
  }
}

std::uint16_t Levels::line_of(const Table& table, Pair pair) {
  for (std::size_t i = 0; i < pairs_.size(); ++i) {
    if (pairs_[i].lo == pair.lo && pairs_[i].hi == pair.hi) return static_cast<std::uint16_t>(i);
  }
  LevelLine line{};
  const bool one_place = same_abscissa(table.dp(pair.lo), table.dp(pair.hi));
  if (!one_place) line.lg_dp = lg(table.dp(pair.lo));
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const float level = table.lw(pair.lo, band);
    line.level[band] = level;
    if (one_place) continue;
    line.slope[band] = wide(table.lw(pair.hi, band) - level) / (lg(table.dp(pair.hi)) - line.lg_dp);
    line.distance[band] = narrow(distance_on_line(line.slope[band]));
  }
  pairs_.push_back(pair);
  lines_.push_back(line);
  return static_cast<std::uint16_t>(lines_.size() - 1);
}

template <typename Key>
RowChoice Levels::choice(const Table& table, const Rows& rows, Key key) {
  RowChoice choice{};
  choice.complete = rows.count >= 2;
  if (!choice.complete) return choice;
  std::vector<float> keys;
  keys.reserve(static_cast<std::size_t>(rows.count));
  for (int i = 0; i < rows.count; ++i) keys.push_back(key(rows.row[i]));
  keys = distinct_keys(std::move(keys));
  choice.keys = static_cast<std::uint32_t>(keys_.size());
  choice.lines = static_cast<std::uint32_t>(choice_lines_.size());
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const auto add = [&](double target) {
    choice_lines_.push_back(line_of(table, choose_pair(rows, key, target)));
  };
  double before = -kInfinity;
  for (const float value : keys) {
    add(before == -kInfinity ? before : (before + wide(value)) / 2.0);
    add(wide(value));
    before = wide(value);
  }
  add(kInfinity);
  while (keys.size() % kKeysOfBlock != 0) keys.push_back(std::numeric_limits<float>::infinity());
  choice.blocks = static_cast<std::uint32_t>(keys.size()) / kKeysOfBlock;
  keys_.insert(keys_.end(), keys.begin(), keys.end());
  return choice;
}

void Levels::prepare_fixed_curve(const Table& table) {
  search_ = Search::fixed_curve;
  choices_.push_back(choice(table, all_rows(table), [&](int row) { return table.qv(row); }));
}

void Levels::prepare_curves(const Table& table) {
  const Resistances row_k(table);
  for (int row = 0; row < table.count(); ++row) {
    if (!std::isfinite(row_k.values[row])) return;
  }
  search_ = Search::resistance_curves;
  const auto k = [&](int row) { return row_k.values[row]; };
  failure_ = collect(table, k, same_curve, TAVCA_LW_MANY_CURVES, TAVCA_LW_BAD_CURVE_ROW, &values_);
  if (failure_ == TAVCA_OK && values_.count < 2) failure_ = TAVCA_LW_FEW_CURVES;
  if (failure_ != TAVCA_OK) return;
  for (int curve = 0; curve < values_.count; ++curve) {
    Rows rows;
    for (int row = 0; row < table.count(); ++row) {
      if (is_on_curve(row_k.values[row], values_.values[curve])) rows.row[rows.count++] = row;
    }
    choices_.push_back(choice(table, rows, [&](int row) { return table.qv(row); }));
  }
  for (int curve = 0; curve + 1 < values_.count; ++curve) {
    const auto at = static_cast<std::size_t>(curve);
    if (!(values_.values[curve + 1] < values_.values[curve])) {
      codes_[curve] = TAVCA_LW_RISING_CURVES;
    } else {
      codes_[curve] = short_unless_complete(choices_[at], choices_[at + 1], TAVCA_LW_SHORT_CURVE);
    }
  }
  // The last curve from the second on, and before the last, that is above k counts: the number of those that
  // any curve behind them, or they themselves, are above k.
  std::fill(std::begin(steps_), std::end(steps_), -std::numeric_limits<float>::infinity());
  for (int i = values_.count - 2; i >= 1; --i) steps_[i - 1] = std::max(values_.values[i], steps_[i]);
}

void Levels::prepare_groups(const Table& table) {
  search_ = Search::flow_groups;
  const auto flow = [&](int row) { return table.qv(row); };
  failure_ = collect(table, flow, same_flow, TAVCA_LW_MANY_FLOWS, TAVCA_LW_BAD_FLOW_ROW, &values_);
  if (failure_ == TAVCA_OK && values_.count < 2) failure_ = TAVCA_LW_FEW_FLOWS;
  if (failure_ != TAVCA_OK) return;
  for (int group = 0; group < values_.count; ++group) {
    Rows rows;
    for (int row = 0; row < table.count(); ++row) {
      if (same_flow(table.qv(row), values_.values[group])) rows.row[rows.count++] = row;
    }
    choices_.push_back(choice(table, rows, [&](int row) { return table.dp(row); }));
    lg_values_[group] = lg(values_.values[group]);
  }
  for (int group = 0; group + 1 < values_.count; ++group) {
    const auto at = static_cast<std::size_t>(group);
    codes_[group] = short_unless_complete(choices_[at], choices_[at + 1], TAVCA_LW_SHORT_FLOW);
  }
  // The first group from the second on that is above the flow, or else the last: as many are passed as
  // neither they nor any before them are above it.
  std::fill(std::begin(steps_), std::end(steps_), std::numeric_limits<float>::infinity());
  float highest = -std::numeric_limits<float>::infinity();
  for (int i = 1; i <= values_.count - 2; ++i) steps_[i - 1] = highest = std::max(highest, values_.values[i]);
}

}  // namespace tavd
