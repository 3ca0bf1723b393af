#include "diagram/soundlevels.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "calc/interpolation.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr double kSmallestRow = 1e-06;   // l/s or m/s, and Pa, of a row that counts
constexpr double kFound = 0.1;           // dB; a level this near is the one that was sought
constexpr double kStepDown = 0.1;        // of a search below the table
constexpr float kStepUp = 2.0F;          // of one above it
constexpr double kLowestVal = 0.01;      // where a search below the table gives up
constexpr double kHighestVal = 20000.0;  // where one above it does
constexpr int kMostHalvings = 1002;

// Levels between two rows.
class LevelProbe {
 public:
  LevelProbe(const LevelRow& below, const LevelRow& above) : below_(below), above_(above) {}

  float at(float val) const {
    const LogPlace place(below_.val, above_.val, LogValue(val));
    float lw[TAVD_BANDS];
    for (int band = 0; band < TAVD_BANDS; ++band) {
      lw[band] = place.between(below_.lw[band], above_.lw[band]);
    }
    return tavca_LpA(lw);
  }

 private:
  const LevelRow& below_;
  const LevelRow& above_;
};

// The two rows of a group to search from: the last two, or the first ones whose upper level is not under L.
bool bracket(const LevelTable& table, float L, int g, int* below) {
  int first = 0;
  while (first < table.count() && table.row(first).group != g) {
    ++first;
  }
  int last = first;
  while (last + 1 < table.count() && table.row(last + 1).group == g) {
    ++last;
  }
  if (first >= last) {
    return false;
  }
  while (first < last - 1 && table.row(first + 1).lpa < L) {
    ++first;
  }
  *below = first;
  return true;
}

// Moves the end `*a` down until the level there is under L, with `*b` following. False once it is so low that
// there is no such level, or does not move any more.
bool widen_down(const LevelProbe& level, float L, float* a, float* b) {
  for (;;) {
    const float from = *a;
    *a = narrow(wide(from) * kStepDown);
    if (level.at(*a) < L) {
      return true;
    }
    *b = *a;
    if (!(*a >= kLowestVal) || *a == from) {
      return false;
    }
  }
}

// The same upward with the end `*b`, until the level is above L.
bool widen_up(const LevelProbe& level, float L, float* a, float* b) {
  for (;;) {
    const float from = *b;
    *b = from * kStepUp;
    if (level.at(*b) > L) {
      return true;
    }
    *a = *b;
    if (!(*b <= kHighestVal) || *b == from) {
      return false;
    }
  }
}

float halve(const LevelProbe& level, float L, float a, float b) {
  for (int round = 0; round < kMostHalvings; ++round) {
    const float m = (a + b) / 2.0F;
    const float p = level.at(m);
    if (wide(std::fabs(L - p)) < kFound) {
      return m;
    }
    // A half that is no smaller than the whole: every further round would be this one.
    float& end = p <= L ? a : b;
    if (end == m) {
      return 0.0F;
    }
    end = m;
  }
  return 0.0F;
}

}  // namespace

LevelTable::LevelTable() {
  // A band is heard alone when the others are silent.
  constexpr float kSilence = -1e9F;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    float lw[TAVD_BANDS];
    std::fill(lw, lw + TAVD_BANDS, kSilence);
    lw[band] = 0.0F;
    band_terms_[band] = tavca_LpA(lw);
  }
}

void LevelTable::add(const LevelRow& row) {
  if (count_ == TAVD_LW_ROWS) {
    return;
  }
  LevelRow& added = rows_[count_++];
  added = row;
  added.lpa = tavca_LpA(added.lw);
  lowest_ = std::min(lowest_, added.lpa);
  highest_ = std::max(highest_, added.lpa);
}

bool read_levels(const FlowData& fd, bool along_flow, LevelTable* table) {
  const int rows = row_count(fd.nlw, TAVD_LW_ROWS);
  for (int i = 0; i < rows; ++i) {
    const LwPoint point = fd.lwpoints[i];
    LevelRow row{};
    row.qv = point.qv;
    row.dp = point.dp;
    if (row.qv < kSmallestRow) {
      return false;
    }
    tavca_param_add_dp(&fd, row.qv, &row.dp);
    if (row.dp < kSmallestRow) {
      return false;
    }
    row.k = resistance(row.qv, row.dp);
    row.val = along_flow ? row.qv : row.dp;
    std::copy(std::begin(point.lw), std::end(point.lw), row.lw);
    tavca_param_add_lw(&fd, row.lw);
    table->add(row);
  }
  return true;
}

float lp_find(const LevelTable& table, float L, int g) {
  int below = 0;
  if (!bracket(table, L, g, &below)) {
    return 0.0F;
  }
  const LevelRow& row1 = table.row(below);
  const LevelRow& row2 = table.row(below + 1);
  const LevelProbe level(row1, row2);
  float a = row1.val;
  float b = row2.val;
  if (L <= row1.lpa) {
    b = row1.val;
    if (!widen_down(level, L, &a, &b)) {
      return 0.0F;
    }
  } else if (row2.lpa < L) {
    a = row2.val;
    if (!widen_up(level, L, &a, &b)) {
      return 0.0F;
    }
  }
  return halve(level, L, a, b);
}

}  // namespace tavd
