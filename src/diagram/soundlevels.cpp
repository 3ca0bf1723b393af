#include "diagram/soundlevels.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "calc/calculations.h"
#include "calc/interpolation.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "gwmath.h"

namespace tavd {
namespace {

constexpr double kSmallestRow = 1e-06;   // l/s or m/s, and Pa, of a row that counts
constexpr double kFound = 0.1;           // dB; a level this near is the one that was sought
constexpr double kStepDown = 0.1;        // of a search below the table
constexpr float kStepUp = 2.0F;          // of one above it
constexpr double kLowestVal = 0.01;      // where a search below the table gives up
constexpr double kHighestVal = 20000.0;  // where one above it does
constexpr int kMostHalvings = 1002;

// Levels between two rows, beyond them too. A search asks of a level only on which side of L it lies and
// whether it lies within a tenth of a dB, so that most questions are answered by an estimate: the powers of
// all bands in one sum, in place of one logarithm and one power for each band. Where the answer could hang on
// a rounding, the level is calculated exactly, so that a search takes the same course either way.
class LevelProbe {
 public:
  LevelProbe(const LevelTable& table, int below, float L);

  // The level at `val`, or a number on the same side of L that is as well within a tenth of a dB or not.
  double at(float val) const;

 private:
  double estimate(double way) const;
  float exact(float val) const;

  const LevelRow& below_;
  const LevelRow& above_;
  const double L_;
  const float roomdamp_;
  bool estimates_ = false;    // whether an estimate can be trusted at all
  double lg1_ = 0.0;          // lg of the lower row's `val`
  double start_[TAVD_BANDS];  // level of each band alone at the lower row, in the room
  double slope_[TAVD_BANDS];  // of each band, dB per decade of `val`
};

// An estimate is trusted where it is this far, in dB, from where an answer changes. Levels are rounded to
// float up to eleven times on their way, and a band that counts is under 1100 dB where the sums below are
// within kLargest, so that a rounding is at most 6.1e-5 dB.
constexpr double kTrusted = 0.002;
constexpr double kLargest = 500.0;  // dB; of a level in the room, and of a band's own term
constexpr double kDoublingsPerDb = 0.33219280948873623479;  // lg 10 to base 2, over 10
constexpr double kDbPerDecade = 10.0;

LevelProbe::LevelProbe(const LevelTable& table, int below, float L)
    : below_(table.row(below)), above_(table.row(below + 1)), L_(wide(L)), roomdamp_(table.roomdamp()) {
  lg1_ = lg(below_.val);
  const double span = lg(above_.val) - lg1_;
  // Rows closer than this may count as one, with the lower row's level everywhere.
  constexpr double kSmallestSpan = 1e-6;
  estimates_ = std::fabs(span) > kSmallestSpan;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const double term = wide(table.band_terms()[band]);
    estimates_ = estimates_ && std::fabs(term) < kLargest;
    start_[band] = wide(below_.lw[band]) + term;
    slope_[band] = wide(above_.lw[band] - below_.lw[band]) / span;
  }
}

double LevelProbe::at(float val) const {
  if (estimates_) {
    const double level = estimate(lg(val) - lg1_);
    const double off = std::fabs(level - L_);
    if (std::fabs(level) < kLargest && off > kTrusted && std::fabs(off - kFound) > kTrusted) return level;
  }
  return wide(exact(val));
}

double LevelProbe::estimate(double way) const {
  double power = 0.0;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    power += std::exp2((start_[band] + slope_[band] * way) * kDoublingsPerDb);
  }
  return kDbPerDecade * gwlog10(power);
}

float LevelProbe::exact(float val) const {
  const LogPlace place(below_.val, above_.val, LogValue(val));
  float lw[TAVD_BANDS];
  for (int band = 0; band < TAVD_BANDS; ++band) lw[band] = place.between(below_.lw[band], above_.lw[band]);
  return room_level(lw, roomdamp_);
}

// The two rows of a group to search from: the last two, or the first ones whose upper level is not under L.
bool bracket(const LevelTable& table, float L, int g, int* below) {
  int first = 0;
  while (first < table.count() && table.row(first).group != g) ++first;
  int last = first;
  while (last + 1 < table.count() && table.row(last + 1).group == g) ++last;
  if (first >= last) return false;
  while (first < last - 1 && table.row(first + 1).lpa < L) ++first;
  *below = first;
  return true;
}

// Moves the end `*a` down until the level there is under L, with `*b` following. False once it is so low that
// there is no such level, or does not move any more.
bool widen_down(const LevelProbe& level, float L, float* a, float* b) {
  for (;;) {
    const float from = *a;
    *a = narrow(wide(from) * kStepDown);
    if (level.at(*a) < L) return true;
    *b = *a;
    if (!(*a >= kLowestVal) || *a == from) return false;
  }
}

// The same upward with the end `*b`, until the level is above L.
bool widen_up(const LevelProbe& level, float L, float* a, float* b) {
  for (;;) {
    const float from = *b;
    *b = from * kStepUp;
    if (level.at(*b) > L) return true;
    *a = *b;
    if (!(*b <= kHighestVal) || *b == from) return false;
  }
}

float halve(const LevelProbe& level, float L, float a, float b) {
  for (int round = 0; round < kMostHalvings; ++round) {
    const float m = (a + b) / 2.0F;
    const double p = level.at(m);
    if (wide(std::fabs(L - narrow(p))) < kFound) return m;
    // A half that is no smaller than the whole: every further round would be this one.
    float& end = p <= L ? a : b;
    if (end == m) return 0.0F;
    end = m;
  }
  return 0.0F;
}

}  // namespace

LevelTable::LevelTable(float roomdamp) : roomdamp_(roomdamp) {
  // A band is heard alone when the others are silent.
  constexpr float kSilence = -1e9F;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    float lw[TAVD_BANDS];
    std::fill(lw, lw + TAVD_BANDS, kSilence);
    lw[band] = 0.0F;
    band_terms_[band] = room_level(lw, roomdamp);
  }
}

void LevelTable::add(const LevelRow& row) {
  if (count_ == TAVD_LW_ROWS) return;
  LevelRow& added = rows_[count_++];
  added = row;
  added.lpa = room_level(added.lw, roomdamp_);
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
    if (row.qv < kSmallestRow) return false;
    param_add_dp(&fd, row.qv, &row.dp);
    if (row.dp < kSmallestRow) return false;
    row.k = resistance(row.qv, row.dp);
    row.val = along_flow ? row.qv : row.dp;
    std::copy(std::begin(point.lw), std::end(point.lw), row.lw);
    param_add_lw(&fd, row.lw);
    table->add(row);
  }
  return true;
}

float lp_find(const LevelTable& table, float L, int g) {
  int below = 0;
  if (!bracket(table, L, g, &below)) return 0.0F;
  const LevelRow& row1 = table.row(below);
  const LevelRow& row2 = table.row(below + 1);
  const LevelProbe level(table, below, L);
  float a = row1.val;
  float b = row2.val;
  if (L <= row1.lpa) {
    b = row1.val;
    if (!widen_down(level, L, &a, &b)) return 0.0F;
  } else if (row2.lpa < L) {
    a = row2.val;
    if (!widen_up(level, L, &a, &b)) return 0.0F;
  }
  return halve(level, L, a, b);
}

}  // namespace tavd
