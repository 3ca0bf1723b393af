// Lines of equal sound level through a field of flows and pressures.
#include <algorithm>
#include <cmath>

#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "calc/numeric.h"
#include "diagram/curves.h"
#include "diagram/curves_sound.h"
#include "diagram/flowdiagram.h"
#include "diagram/proportions.h"
#include "diagram/soundlevels.h"

namespace tavd {
namespace {

constexpr int kMostGroups = 20;                    // curves of a sound table
constexpr double kSameResistance = 0.1;            // relative; rows within it are one damper setting
constexpr double kSameFlow = 0.1;                  // l/s or m/s; rows within it are one flow
constexpr double kSmallestPressureFound = 0.0001;  // Pa; a search that finds less has found nothing

constexpr int kMostLevels = 10;
constexpr float kLevelStep = 5.0F;      // dB(A)
constexpr float kWideStep = 10.0F;      // the same where levels span more than
constexpr float kWideSpan = 20.0F;      // dB(A)
constexpr float kLowestLevel = 20.0F;   // dB(A)
constexpr float kHighestLevel = 60.0F;  // dB(A)
constexpr float kBeyondHighest = 1.0F;  // dB(A) that the last level may lie above the highest

// The levels to draw.
struct Levels {
  float lpa[kMostLevels];
  int count = 0;
};

// The groups of a sound table: its curves, by what their rows have in common.
struct Groups {
  float key[kMostGroups];  // resistance, Pa/(l/s)^2, or flow, l/s or m/s
  int count = 0;
};

float positive_or(float value, float otherwise) {
  return value > 0.0F ? value : otherwise;
}

float multiple_of_step(double steps) {
  return narrow(steps) * kLevelStep;
}

// Whole fives around the levels of the table, within what is of use in a room; the host may ask for others.
Levels choose_levels(const FlowDiagram& dg, const LevelTable& table) {
  const float low = multiple_of_step(std::floor(wide(table.lowest() / kLevelStep)));
  const float lo = low >= kLowestLevel ? low : kLowestLevel;
  const float high = multiple_of_step(std::ceil(wide(table.highest() / kLevelStep)));
  const float hi = std::min(high >= lo + kLevelStep ? high : lo + kLevelStep, kHighestLevel);
  const float step = hi - lo <= kWideSpan ? kLevelStep : kWideStep;

  const float first = positive_or(dg.lpmin, lo);
  const float last = positive_or(dg.lpmax, hi);
  const float by = positive_or(dg.lpstep, step);
  Levels levels;
  float L = first;
  do {
    levels.lpa[levels.count++] = L;
    L += by;
  } while (levels.count < kMostLevels && !(L > last + kBeyondHighest));
  return levels;
}

// Adjacent rows of similar resistance are one damper setting. False if one but the last has a single row:
// there is no range of levels to search in.
bool group_by_resistance(LevelTable* table, Groups* groups) {
  float last = -999.999F;  // the first row opens a group, whatever its resistance
  int rows_of_group = 0;
  for (int i = 0; i < table->count(); ++i) {
    LevelRow& row = table->row(i);
    if (groups->count == kMostGroups || std::fabs(wide(row.k - last)) <= wide(last) * kSameResistance) {
      ++rows_of_group;
    } else if (rows_of_group == 1) {
      return false;
    } else {
      last = row.k;
      groups->key[groups->count++] = row.k;
      rows_of_group = 1;
    }
    row.group = static_cast<std::int16_t>(groups->count - 1);
  }
  return true;
}

// Adjacent rows of one flow.
void group_by_flow(LevelTable* table, Groups* groups) {
  for (int i = 0; i < table->count(); ++i) {
    LevelRow& row = table->row(i);
    const int n = groups->count;
    if (n == 0 || (n < kMostGroups && std::fabs(wide(row.qv - groups->key[n - 1])) > kSameFlow)) {
      groups->key[groups->count++] = row.qv;
    }
    row.group = static_cast<std::int16_t>(groups->count - 1);
  }
}

// One level on all groups. `flow_at` gives the flow of a group at a pressure.
struct LevelLine {
  CurvePoint points[kMostGroups];
  int count = 0;
};

// False if a group does not reach the level.
template <typename FlowAt>
bool level_line(const FlowDiagram& dg, const LevelTable& table, const Groups& groups, float L, FlowAt flow_at,
                LevelLine* line) {
  for (int g = 0; g < groups.count; ++g) {
    const float dp = lp_find(table, L, g);
    if (dp < kSmallestPressureFound) return false;
    CurvePoint p{flow_at(groups.key[g], dp), dp};
    show_static(dg, p.x, &p.y);
    line->points[line->count++] = p;
  }
  return true;
}

// Draws the lines of all levels. `labelled_point` gives the point of a line that bears its label, or null.
template <typename FlowAt, typename LabelledPoint>
void draw_lines(const FlowDiagram& dg, tavd_hdc hdc, const LevelTable& table, const Groups& groups,
                FlowAt flow_at, LabelledPoint labelled_point) {
  const Levels levels = choose_levels(dg, table);
  const Selected pen(hdc, dg.pen_sound);
  const Selected font(hdc, dg.font_label);
  const RedText red(hdc);
  const DiagramRanges r = base_ranges(dg);
  LevelTexts texts(dg.LpA_label);
  for (int i = 0; i < levels.count; ++i) {
    LevelLine line;
    if (!level_line(dg, table, groups, levels.lpa[i], flow_at, &line)) continue;
    if (!draw_smoothed(dg, hdc, line.count, line.points, true)) return;
    const CurvePoint* at = labelled_point(line, r);
    if (at != nullptr && has_place(dg, at->x, at->y)) {
      texts.draw(hdc, moved(x_pixel(dg, at->x), dg.width / kLabelAsidePart), y_pixel(dg, at->y),
                 levels.lpa[i]);
    }
  }
}

bool is_between(float dp, const DiagramRanges& r) {
  return dp > r.ymin && dp < r.ymax;
}

}  // namespace

void draw_lp_lines_damper(const FlowDiagram& dg, tavd_hdc hdc) {
  LevelTable table(dg.roomdamp);
  Groups groups;
  if (!read_levels(dg.flowdata, false, &table) || !group_by_resistance(&table, &groups)) return;
  draw_lines(
      dg, hdc, table, groups, [](float k, float dp) { return narrow(std::sqrt(wide(dp / k))); },
      [](const LevelLine& line, const DiagramRanges& r) -> const CurvePoint* {
        for (const CurvePoint* end : {&line.points[line.count - 1], &line.points[0]}) {
          if (end->x < r.xmax && is_between(end->y, r)) return end;
        }
        return nullptr;
      });
}

void draw_lp_lines_range(const FlowDiagram& dg, tavd_hdc hdc) {
  LevelTable table(dg.roomdamp);
  Groups groups;
  if (!read_levels(dg.flowdata, false, &table)) return;
  group_by_flow(&table, &groups);
  draw_lines(
      dg, hdc, table, groups, [](float qv, float) { return qv; },
      [](const LevelLine& line, const DiagramRanges& r) -> const CurvePoint* {
        const CurvePoint* end = &line.points[line.count - 1];
        return is_between(end->y, r) ? end : nullptr;
      });
}

}  // namespace tavd
