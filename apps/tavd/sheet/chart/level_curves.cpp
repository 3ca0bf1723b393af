#include "sheet/chart/level_curves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

#include "shared/kinds.h"
#include "sheet/chart/roots.h"

namespace tavdhost {
namespace {

constexpr double kFaintest = 15;     // dB(A), below which nothing is asked for
constexpr double kLevelStep = 5;     // dB(A)
constexpr double kMostLevels = 8;    // curves of a chart
constexpr double kTolerance = 0.01;  // dB(A)

// A place in the field, each from 0 to 1: the flow from its lowest to its highest, and the pressure from the
// lowest that the product can have at this flow to the highest.
struct Place {
  double flow, pressure;
};

// What the product has at places of its field.
class Field {
 public:
  Field(const Sampler& sampler, const FlowCurves& limits) : sampler_(sampler), limits_(limits) {
    if (!hosts::is_fan(sampler.flow())) return;
    const FlowData& flow = sampler.flow();
    last_flow_ = flow.nfan > 0 ? flow.fancurve[std::min<int>(flow.nfan, TAVD_FAN_ROWS) - 1].qv : 0;
    const float last = static_cast<float>(last_flow_);
    last_pressure_ = sampler.fan_pressures({&last, 1})[0];
  }

  std::vector<CurvePoint> points(const std::vector<Place>& places) const;
  std::vector<double> levels(const std::vector<CurvePoint>& points) const;

 private:
  struct Span {
    double lowest, highest;
  };
  std::vector<Span> spans(const std::vector<float>& qv) const;
  double flow_at(double part) const;

  const Sampler& sampler_;
  const FlowCurves& limits_;
  double last_flow_ = 0, last_pressure_ = 0;  // of a fan's curve
};

double Field::flow_at(double part) const {
  if (!limits_.is_linear) return limits_.qv_min * std::pow(limits_.qv_max / limits_.qv_min, part);
  constexpr double kNearNothing = 0.01;  // of the largest flow: where a fan's field begins
  const double lowest = std::max(limits_.qv_min, kNearNothing * last_flow_);
  return lowest + (std::min(limits_.qv_max, last_flow_) - lowest) * part;
}

std::vector<Field::Span> Field::spans(const std::vector<float>& qv) const {
  std::vector<Span> spans(qv.size(), {limits_.dp_min, limits_.dp_max});
  const auto narrow = [this, &spans](std::size_t i, double lowest, double highest) {
    spans[i] = {std::max(lowest, limits_.dp_min), std::min(highest, limits_.dp_max)};
    if (!(lowest <= highest)) spans[i] = {NAN, NAN};
  };
  if (hosts::is_damper(sampler_.flow())) {
    const std::vector<Sampler::Range> ranges = sampler_.ranges(qv);
    for (std::size_t i = 0; i < qv.size(); ++i)
      narrow(i, double{ranges[i].lowest}, double{ranges[i].highest});
  }
  if (hosts::is_fan(sampler_.flow())) {
    const std::vector<float> pressures = sampler_.fan_pressures(qv);
    for (std::size_t i = 0; i < qv.size(); ++i) {
      const double part = double{qv[i]} / last_flow_;
      narrow(i, last_pressure_ * part * part, double{pressures[i]});
    }
  }
  return spans;
}

std::vector<CurvePoint> Field::points(const std::vector<Place>& places) const {
  std::vector<float> qv;
  qv.reserve(places.size());
  for (const Place place : places) qv.push_back(static_cast<float>(flow_at(place.flow)));
  const std::vector<Span> at = spans(qv);
  std::vector<CurvePoint> points;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const double part = places[i].pressure;
    const double dp = limits_.is_linear ? at[i].lowest + (at[i].highest - at[i].lowest) * part
                                        : at[i].lowest * std::pow(at[i].highest / at[i].lowest, part);
    points.push_back({double{qv[i]}, at[i].highest >= at[i].lowest ? double{static_cast<float>(dp)} : NAN});
  }
  return points;
}

std::vector<double> Field::levels(const std::vector<CurvePoint>& points) const {
  std::vector<float> qv, dp;
  for (const CurvePoint point : points) {
    qv.push_back(static_cast<float>(point.x));
    dp.push_back(static_cast<float>(point.y));
  }
  const std::vector<float> levels = sampler_.levels(qv, dp);
  std::vector<double> result(levels.begin(), levels.end());
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!std::isfinite(points[i].y)) result[i] = NAN;
  }
  return result;
}

// A net over the field, its levels at the knots, and the curves between them: each runs from a side of a mesh
// on which its level is passed to another one (marching squares), at the exact place where it is.
class Net {
 public:
  explicit Net(const Field& field) : field_(field) {
    std::vector<Place> knots;
    for (std::size_t row = 0; row < kRows; ++row) {
      for (std::size_t column = 0; column < kColumns; ++column) knots.push_back(knot(column, row));
    }
    levels_ = field.levels(field.points(knots));
  }

  const std::vector<double>& levels() const { return levels_; }
  std::vector<std::vector<CurvePoint>> curves(double level) const;

 private:
  static constexpr std::size_t kColumns = 41;
  static constexpr std::size_t kRows = 21;

  // A side of a mesh: from the knot of its number to the next one in its row, or in its column.
  struct Side {
    std::size_t knot;
    bool upward;
    bool operator==(const Side&) const = default;
    bool operator<(const Side& side) const {
      return knot < side.knot || (knot == side.knot && upward < side.upward);
    }
    std::size_t other() const { return knot + (upward ? kColumns : 1); }
  };
  using Crossings = std::map<Side, CurvePoint>;
  using Links = std::map<Side, std::vector<Side>>;

  static Place knot(std::size_t column, std::size_t row) {
    return {static_cast<double>(column) / (kColumns - 1), static_cast<double>(row) / (kRows - 1)};
  }
  static Place knot(std::size_t number) { return knot(number % kColumns, number / kColumns); }
  static std::vector<Side> sides();

  Crossings crossings(double level) const;
  Links links(const Crossings& found, double level) const;
  static std::vector<CurvePoint> follow(Side side, Links& links, const Crossings& found);

  const Field& field_;
  std::vector<double> levels_;
};

std::vector<Net::Side> Net::sides() {
  std::vector<Side> all;
  for (std::size_t row = 0; row < kRows; ++row) {
    for (std::size_t column = 0; column < kColumns; ++column) {
      const std::size_t number = row * kColumns + column;
      if (column + 1 < kColumns) all.push_back({number, false});
      if (row + 1 < kRows) all.push_back({number, true});
    }
  }
  return all;
}

Net::Crossings Net::crossings(double level) const {
  std::vector<Side> passed;
  std::vector<Bracket> brackets;
  for (const Side& side : sides()) {
    const double from = levels_[side.knot] - level;
    const double to = levels_[side.other()] - level;
    if (!std::isfinite(from) || !std::isfinite(to) || (from < 0) == (to < 0)) continue;
    passed.push_back(side);
    brackets.push_back({0, 1, from, to});
  }
  const auto place = [&passed](std::size_t i, double part) {
    const Place from = knot(passed[i].knot);
    const Place to = knot(passed[i].other());
    return Place{from.flow + (to.flow - from.flow) * part,
                 from.pressure + (to.pressure - from.pressure) * part};
  };
  find_roots(brackets, kTolerance,
             [&](const std::vector<std::size_t>& asked, const std::vector<double>& parts) {
               std::vector<Place> places;
               for (std::size_t k = 0; k < asked.size(); ++k) places.push_back(place(asked[k], parts[k]));
               std::vector<double> levels = field_.levels(field_.points(places));
               for (double& found : levels) found -= level;
               return levels;
             });
  std::vector<Place> roots;
  for (std::size_t i = 0; i < passed.size(); ++i) roots.push_back(place(i, brackets[i].root));
  const std::vector<CurvePoint> points = field_.points(roots);
  Crossings found;
  for (std::size_t i = 0; i < passed.size(); ++i) found.emplace(passed[i], points[i]);
  return found;
}

// Which sides a curve leads to through a mesh. Where it passes all four, the mean of the corners tells which
// belong together.
Net::Links Net::links(const Crossings& found, double level) const {
  Links links;
  const auto link = [&links](const Side& a, const Side& b) {
    links[a].push_back(b);
    links[b].push_back(a);
  };
  for (std::size_t number = 0; number + kColumns < levels_.size(); ++number) {
    if ((number + 1) % kColumns == 0) continue;
    const std::array<Side, 4> around = {
        {{number, false}, {number + 1, true}, {number + kColumns, false}, {number, true}}};
    std::vector<Side> passed;
    for (const Side& side : around) {
      if (found.contains(side)) passed.push_back(side);
    }
    if (passed.size() == 2) link(passed[0], passed[1]);
    if (passed.size() != 4) continue;
    const double mean = (levels_[number] + levels_[number + 1] + levels_[number + kColumns] +
                         levels_[number + kColumns + 1]) /
                        4;
    const bool cuts_first = (levels_[number] < level) != (mean < level);
    link(around[0], cuts_first ? around[3] : around[1]);
    link(around[2], cuts_first ? around[1] : around[3]);
  }
  return links;
}

std::vector<CurvePoint> Net::follow(Side side, Links& links, const Crossings& found) {
  std::vector<CurvePoint> points;
  std::optional<Side> at = side;
  while (at) {
    points.push_back(found.at(*at));
    std::vector<Side>& ways = links[*at];
    std::optional<Side> next;
    if (!ways.empty()) {
      next = ways.back();
      ways.pop_back();
      std::erase(links[*next], *at);
    }
    at = next;
  }
  // From lower to higher flows: dashes begin where the curve does.
  if (points.back().x < points.front().x) std::ranges::reverse(points);
  return points;
}

std::vector<std::vector<CurvePoint>> Net::curves(double level) const {
  const Crossings found = crossings(level);
  Links all = links(found, level);
  std::vector<std::vector<CurvePoint>> curves;
  // Those with an end first; what is left then are rings.
  for (const std::size_t ways : {1U, 2U}) {
    for (const auto& [side, point] : found) {
      if (all[side].size() == ways) curves.push_back(follow(side, all, found));
    }
  }
  return curves;
}

}  // namespace

std::vector<double> round_levels(const std::vector<double>& met) {
  double lowest = INFINITY;
  double highest = -INFINITY;
  for (const double level : met) {
    if (!std::isfinite(level)) continue;
    lowest = std::min(lowest, level);
    highest = std::max(highest, level);
  }
  if (!(lowest <= highest)) return {};
  double step = kLevelStep;
  const auto first = [&] { return std::ceil(std::max(lowest, kFaintest) / step) * step; };
  while ((highest - first()) / step >= kMostLevels) step *= 2;
  const double lowest_level = first();
  std::vector<double> levels;
  const int steps = static_cast<int>(std::floor((highest - lowest_level) / step));
  for (int i = 0; i <= steps; ++i) levels.push_back(lowest_level + i * step);
  return levels;
}

std::vector<ChartCurve> level_curves(const Sampler& sampler, const FlowCurves& limits) {
  if (sampler.flow().nlw == 0) return {};
  const Field field(sampler, limits);
  const Net net(field);
  std::vector<ChartCurve> curves;
  for (const double level : round_levels(net.levels())) {
    for (std::vector<CurvePoint>& points : net.curves(level)) {
      curves.push_back({CurveFamily::kLevel, level, "", std::move(points)});
    }
  }
  return curves;
}

}  // namespace tavdhost
