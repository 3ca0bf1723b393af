// The sound table of a record, and how the rows around a point are found in it: for the single calculation,
// and for what is prepared for many points.
#pragma once

#include <cmath>
#include <numeric>
#include <utility>

#include "calc/numeric.h"
#include "tavd/flowdata.h"
#include "tavd/tavca.h"

namespace tavd::sound {

constexpr double kSmallestFlow = 0.001;          // l/s, of the request
constexpr float kSmallestMeasured = 0.001F;      // l/s and Pa, of a measured point
constexpr double kSmallestCurvePressure = 1e-7;  // Pa
constexpr double kSameResistance = 0.1;          // relative; rows within it belong to one curve
constexpr float kSameFlow = 0.1F;                // l/s; rows within it belong to one group
constexpr double kDbPerDecade = 30.0;            // beyond the limits of the product
constexpr float kHighestLevel = 99.0F;           // dB
constexpr int kMostCurves = 20;                  // curves or groups of one table

// Both bounds are decimal ones, 0.001 and 0.1; no float lies on them, so that "below" and "at most" are
// the same.
static_assert(is_first_above(kSmallestMeasured, 0.001) && is_first_above(kSameFlow, 0.1));

// The sound table of a record.
class Table {
 public:
  explicit Table(const FlowData& fd) : rows_(fd.lwpoints), count_(row_count(fd.nlw, TAVD_LW_ROWS)) {}
  int count() const { return count_; }
  float qv(int row) const { return rows_[row].qv; }
  float dp(int row) const { return rows_[row].dp; }
  float lw(int row, int band) const { return static_cast<float>(rows_[row].lw[band]); }
  bool measured(int row) const { return !(qv(row) < kSmallestMeasured || dp(row) < kSmallestMeasured); }

 private:
  const LwPoint* rows_;
  int count_;
};

// Two rows to interpolate between; -1: none.
struct Pair {
  int lo = -1;
  int hi = -1;
  bool complete() const { return lo >= 0 && hi >= 0; }
};

// Distinct resistances or flows of a table, in table order.
struct Distinct {
  float values[kMostCurves];
  int count = 0;
};

using Bands = float[TAVD_BANDS];

// The resistance of every row, formed once: the search for curves asks for it many times over.
struct Resistances {
  explicit Resistances(const Table& table) {
    for (int row = 0; row < table.count(); ++row) values[row] = resistance(table.qv(row), table.dp(row));
  }
  float values[TAVD_LW_ROWS];
};

// Some rows of a table, in its order.
struct Rows {
  int row[TAVD_LW_ROWS];
  int count = 0;
};

inline Rows all_rows(const Table& table) {
  Rows rows;
  rows.count = table.count();
  std::iota(rows.row, rows.row + rows.count, 0);
  return rows;
}

// Picks the two of `rows` around `target`, by `key`. Neither the order of the rows nor a target inside them
// is taken for granted; a target outside is reached from the pair that is left. A row that replaces one end
// does not hand the old one to the other end.
template <typename Key, typename Target>
Pair choose_pair(const Rows& rows, Key key, Target target) {
  Pair pair;
  for (int i = 0; i < rows.count; ++i) {
    const int row = rows.row[i];
    if (pair.lo < 0) {
      pair.lo = row;
      continue;
    }
    if (pair.hi < 0) {
      pair.hi = row;
      if (key(pair.lo) > key(row)) std::swap(pair.lo, pair.hi);
      continue;
    }
    if (key(pair.lo) > key(row)) {
      if (target < key(pair.lo)) pair.lo = row;
    } else if (key(row) > key(pair.hi)) {
      if (key(pair.hi) < target) pair.hi = row;
    } else if (target > key(row)) {
      pair.lo = row;
    } else {
      pair.hi = row;
    }
  }
  return pair;
}

// The values of `key` that no earlier row has. `same(value, collected)` is true for the same; the value
// that came last is tried first, since the rows of a curve stand together. Returns TAVCA_OK, `too_many` at a
// row after the 20th value, or `bad_row` at a row that was not measured.
template <typename Key, typename Same>
int collect(const Table& table, Key key, Same same, int too_many, int bad_row, Distinct* distinct) {
  for (int row = 0; row < table.count(); ++row) {
    if (distinct->count == kMostCurves) return too_many;
    if (!table.measured(row)) return bad_row;
    const float value = key(row);
    int known = distinct->count - 1;
    while (known >= 0 && !same(value, distinct->values[known])) --known;
    if (known >= 0) continue;
    distinct->values[distinct->count++] = value;
  }
  return TAVCA_OK;
}

inline float limit(float level) {
  if (level > kHighestLevel) return kHighestLevel;
  return level < 0.0F ? 0.0F : level;
}

// Whether two rows of these resistances belong to one curve, that of the first row; and whether a row lies on
// a curve that has been chosen, its very edge included.
constexpr auto same_curve = [](float k, float collected) {
  return std::fabs(wide(k - collected)) < kSameResistance * wide(collected);
};

inline bool is_on_curve(float k, float curve) {
  return std::fabs(wide(k - curve)) <= kSameResistance * wide(curve);
}

// Whether two rows of these flows belong to one group.
constexpr auto same_flow = [](float qv, float collected) { return std::fabs(qv - collected) < kSameFlow; };

// What the duct size and the chosen parameters change, after the limits of a level.
struct Corrections {
  bool any_size = false;
  bool any_parameter = false;
  float size = 0.0F;       // dB
  float parameter = 0.0F;  // dB

  // A term that is not there is not added, not even as 0.
  void add_to(Bands& lw) const {
    if (any_size) {
      for (float& level : lw) level += size;
    }
    if (any_parameter) {
      for (float& level : lw) level += parameter;
    }
  }
};

Corrections corrections_of(const FlowData& fd, const DuctSize* duct);

}  // namespace tavd::sound
