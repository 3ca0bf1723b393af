// The measured points of a throw line, and the power law through them.
#include <algorithm>
#include <cmath>

#include "base/gwtext.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr double kSmallestFlowOfPoint = 1e-7;  // l/s; points below it fit no line
constexpr double kOneValue = 0.01;             // rows closer than this belong to one parameter value
constexpr double kAtOrBelow = 0.0001;          // slack of "at or below" between parameter values
constexpr double kBehindLastValue = -9999.9;   // to the last value, for a next value that is never the same

// In place of a number of points.
constexpr int kNoTable = -1;
constexpr int kCannotPlace = -2;

// The rows of the values next to the one asked for: the first two rows of the value at or below it (lo, lo2)
// and of the value above it (hi, hi2); -1 where there is none.
struct Neighbours {
  int lo = -1;
  int lo2 = -1;
  int hi = -1;
  int hi2 = -1;
};

// The throw line L2 = coefficient*qv^exponent in double.
struct Line {
  double exponent;
  double coefficient;
  double at(double qv) const { return coefficient * std::pow(qv, exponent); }
};

float number_of(const ParL2Point& row) {
  float number;
  tavca_param_valuetoreal(row.value, &number);
  return number;
}

bool one_value(float a, float b) {
  return std::fabs(wide(a - b)) < kOneValue;
}

Line line_through(float qv1, float L2_1, float qv2, float L2_2) {
  Line line;
  line.exponent = (lg(L2_2) - lg(L2_1)) / (lg(qv2) - lg(qv1));
  line.coefficient = wide(L2_1) / std::pow(wide(qv1), line.exponent);
  return line;
}

void take_row(float* out, const ParL2Point& row) {
  out[0] = row.qv;
  out[1] = row.L2;
}

int take_first_rows(const ParL2Point* table, int n, float* out) {
  const int taken = std::min(n, 2);
  for (int row = 0; row < taken; ++row, out += 2) take_row(out, table[row]);
  return taken;
}

int take_text_rows(const ParL2Point* table, int n, float* out, const char* value) {
  int first = -1;
  int last = -1;
  for (int row = 0; row < n; ++row) {
    if (tavca_param_valuecmp(value, table[row].value) != 0) continue;
    (first < 0 ? first : last) = row;
  }
  if (first < 0) return kCannotPlace;
  take_row(out, table[first]);
  if (last < 0) return 1;
  take_row(out + 2, table[last]);
  return 2;
}

Neighbours find_neighbours(const ParL2Point* table, int n, float pos) {
  const auto next_number = [&](int row, float number) {
    return row + 1 < n ? number_of(table[row + 1]) : narrow(wide(number) + kBehindLastValue);
  };
  Neighbours rows;
  for (int i = 0; i < n; ++i) {
    const float pos1 = number_of(table[i]);
    float pos2 = next_number(i, pos1);
    const int second = one_value(pos1, pos2) ? i + 1 : -1;
    if (wide(pos) + kAtOrBelow > wide(pos1)) {
      rows.lo = i;
      rows.lo2 = second;
      if (one_value(pos1, pos)) break;
      while (one_value(pos1, pos2)) {
        ++i;
        if (i >= n - 1) break;
        pos2 = number_of(table[i + 1]);
      }
    } else if (pos1 > pos) {
      rows.hi = i;
      rows.hi2 = second;
      break;
    }
  }
  return rows;
}

// One point per value: the lower value's flow, with the upper value's line taken as proportional to the flow.
int blend_points(const ParL2Point& lo, const ParL2Point& hi, double t, float* out) {
  const double lower = wide(lo.L2);
  out[0] = lo.qv;
  out[1] = narrow(lower + t * ((wide(hi.L2) / wide(hi.qv)) * wide(lo.qv) - lower));
  return 1;
}

// Two points per value: both values have a throw line, and the lines are blended at two flows between theirs.
int blend_lines(const ParL2Point* table, const Neighbours& rows, double t, float* out) {
  const ParL2Point& lo = table[rows.lo];
  const ParL2Point& lo2 = table[rows.lo2];
  const ParL2Point& hi = table[rows.hi];
  const ParL2Point& hi2 = table[rows.hi2];
  const Line lower = line_through(lo.qv, lo.L2, lo2.qv, lo2.L2);
  const Line upper = line_through(hi.qv, hi.L2, hi2.qv, hi2.L2);
  const double flows[2] = {wide(lo.qv) + t * (wide(hi.qv) - wide(lo.qv)),
                           wide(lo2.qv) + t * (wide(hi2.qv) - wide(lo2.qv))};
  for (const double q : flows) {
    const double a = lower.at(q);
    *out++ = narrow(q);
    *out++ = narrow(a + t * (upper.at(q) - a));
  }
  return 2;
}

int take_number_rows(const ParL2Point* table, int n, float* out, float pos) {
  const Neighbours rows = find_neighbours(table, n, pos);
  if (rows.lo < 0) return kCannotPlace;
  const double pos1 = wide(number_of(table[rows.lo]));
  const double distance = rows.hi > 0 ? wide(number_of(table[rows.hi])) - pos1 : 0.0;
  if (distance < kOneValue) {
    take_row(out, table[rows.lo]);
    if (rows.lo2 < 0) return 1;
    take_row(out + 2, table[rows.lo2]);
    return 2;
  }
  const double t = (wide(pos) - pos1) / distance;
  if (rows.lo2 < 0 || rows.hi2 < 0) return blend_points(table[rows.lo], table[rows.hi], t, out);
  return blend_lines(table, rows, t, out);
}

}  // namespace

bool fit_power(const QvL2Point* points, int n, float* nL2, float* kL2) {
  *nL2 = 0.0F;
  *kL2 = 0.0F;
  if (n < 1 || wide(points[0].qv) < kSmallestFlowOfPoint) return false;
  if (n == 1) {
    *nL2 = 1.0F;
    *kL2 = narrow(wide(points[0].L2) / wide(points[0].qv));
    return true;
  }
  if (wide(points[1].qv) < kSmallestFlowOfPoint) return false;
  const Line line = line_through(points[0].qv, points[0].L2, points[1].qv, points[1].L2);
  *nL2 = narrow(line.exponent);
  *kL2 = narrow(line.coefficient);
  return true;
}

int param_l2_points(const ParL2Point* table, int n, float out[4], const char* value) {
  std::fill_n(out, 4, 0.0F);
  if (n < 1) return kNoTable;
  n = std::min<int>(n, TAVD_PARL2_ROWS);
  if (value == nullptr || gwstrtrimlen(value, TAVD_PARAMETER_CHARS) == 0) {
    return take_first_rows(table, n, out);
  }
  float pos;
  bool numeric = tavca_param_valuetoreal(value, &pos) == TAVCA_OK;
  for (int row = 0; row < n && numeric; ++row) numeric = is_numeric(table[row].value);
  return numeric ? take_number_rows(table, n, out, pos) : take_text_rows(table, n, out, value);
}

}  // namespace tavd
