#include "oracle/reference/transcription.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace transcription {

// ---- Helpers
// ---------------------------------------------------------------------------------------------------

namespace {

double lg(double x) {
  return std::log10(x);
}

// A count of rows as far as the table goes.
int rows(int16_t count, int capacity) {
  if (count < 0) return 0;
  if (count > capacity) return capacity;
  return count;
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// -1, 0, 1 without regard to the case of ASCII letters.
int compare_texts(const char* a, const char* b) {
  for (;; ++a, ++b) {
    const unsigned char ca = static_cast<unsigned char>(lower(*a));
    const unsigned char cb = static_cast<unsigned char>(lower(*b));
    if (ca < cb) return -1;
    if (ca > cb) return 1;
    if (ca == 0) return 0;
  }
}

void trim_right(char* s) {
  size_t n = std::strlen(s);
  while (n > 0 && s[n - 1] == ' ') {
    n = n - 1;
    s[n] = 0;
  }
}

// The first six characters of a value, trailing blanks dropped.
void copy_value(char sz[7], const char* value) {
  std::memset(sz, 0, 7);
  if (value == nullptr) return;
  for (int i = 0; i < 6; i++) {
    if (value[i] == 0) break;
    sz[i] = value[i];
  }
  trim_right(sz);
}

bool is_number(const char* s) {
  while (*s == ' ') s++;
  bool digit = false;
  bool point = false;
  bool blank = false;
  for (; *s != 0; s++) {
    if (*s >= '0' && *s <= '9') {
      if (blank) return false;
      digit = true;
    } else if (*s == '.') {
      if (point || blank) return false;
      point = true;
    } else if (*s == ' ') {
      blank = true;
    } else {
      return false;
    }
  }
  return digit;
}

void strip_quotes(char* s) {
  if (s[0] == '"') std::memmove(s, s + 1, std::strlen(s));
  const size_t n = std::strlen(s);
  if (n > 0 && s[n - 1] == '"') s[n - 1] = 0;
}

}  // namespace

// ---- Air and interpolation
// -------------------------------------------------------------------------------------

float pdyn(float qv, float area, int isvelocity) {
  if (isvelocity != 0) return 0.6F * qv * qv;
  if (static_cast<double>(area) < 1e-8) return 0.0F;
  const float v = (qv / 1000.0F) / area;
  return 0.6F * v * v;
}

float ductarea_m2(int16_t b, int16_t h) {
  const float bm = static_cast<float>(b) / 1000.0F;
  if (h > 0) return (static_cast<float>(h) / 1000.0F) * bm;
  return 0.7853982F * bm * bm;
}

int qminqmax(const FlowData* fd, float* qmin, float* qmax) {
  *qmin = 0.0F;
  *qmax = 0.0F;
  if (fd->nhdd == 0) return -1;
  *qmin = fd->qvmin;
  *qmax = fd->qvmax;
  return 0;
}

namespace {

bool same_abscissa(float x1, float x2) {
  const double d1 = x1;
  const double d2 = x2;
  return d1 / 99999999.9 > std::fabs(d1 - d2);
}

}  // namespace

float linlog_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  const float span = x2 - x1;
  const float step = x - x1;
  const double slope = (lg(y2) - lg(y1)) / static_cast<double>(span);
  return static_cast<float>(std::pow(10.0, lg(y1) + slope * static_cast<double>(step)));
}

float loglin_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  const float rise = y2 - y1;
  const double slope = static_cast<double>(rise) / (lg(x2) - lg(x1));
  return static_cast<float>(static_cast<double>(y1) + slope * (lg(x) - lg(x1)));
}

float lin_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  return y1 + ((y2 - y1) / (x2 - x1)) * (x - x1);
}

// ---- Parameters
// ------------------------------------------------------------------------------------------------

int param_valuetoreal(const char* value, float* real) {
  *real = 0.0F;
  char sz[7];
  copy_value(sz, value);
  if (!is_number(sz)) return -1;
  float number = 0.0F;
  if (std::sscanf(sz, "%f", &number) != 1) return -1;
  *real = number;
  return 0;
}

int param_valuecmp(const char* a, const char* b) {
  float number_a = 0.0F;
  float number_b = 0.0F;
  const bool numeric_a = param_valuetoreal(a, &number_a) == 0;
  const bool numeric_b = param_valuetoreal(b, &number_b) == 0;
  if (numeric_a && numeric_b) {
    if (number_a > number_b) return 1;
    if (number_a < number_b) return -1;
    return 0;
  }
  char text_a[7];
  char text_b[7];
  copy_value(text_a, a);
  copy_value(text_b, b);
  strip_quotes(text_a);
  strip_quotes(text_b);
  return compare_texts(text_a, text_b);
}

namespace {

int param_locate(const char* value, const ParEntry* table, int n, int16_t* idx1, int16_t* idx2, float* frac) {
  *idx1 = 0;
  *idx2 = 0;
  *frac = 0.0F;
  if (n == 0) return -1;
  float v = 0.0F;
  bool numeric = param_valuetoreal(value, &v) == 0;
  for (int i = 0; i < n; i++) {
    float ignored = 0.0F;
    if (param_valuetoreal(table[i].value, &ignored) != 0) numeric = false;
  }
  if (!numeric) {
    for (int i = 0; i < n; i++) {
      if (param_valuecmp(value, table[i].value) == 0) {
        *idx1 = static_cast<int16_t>(i);
        *idx2 = static_cast<int16_t>(i);
        return 0;
      }
    }
    return -1;
  }
  float v1 = 0.0F;
  param_valuetoreal(table[0].value, &v1);
  if (v1 >= v) return 0;
  for (int i = 1; i < n; i++) {
    float v2 = 0.0F;
    param_valuetoreal(table[i].value, &v2);
    if (v1 >= v2) return -1;
    if (v >= v1 && v <= v2) {
      *idx1 = static_cast<int16_t>(i - 1);
      *idx2 = static_cast<int16_t>(i);
      *frac = (v - v1) / (v2 - v1);
      return 0;
    }
    v1 = v2;
  }
  *idx1 = static_cast<int16_t>(n - 1);
  *idx2 = static_cast<int16_t>(n - 1);
  return 0;
}

int row_index(int16_t idx) {
  if (idx < 0) return 0;
  if (idx > TAVD_PARAMETER_ROWS - 1) return TAVD_PARAMETER_ROWS - 1;
  return idx;
}

bool chosen(const FlowData* fd, int p) {
  return fd->npar > p && fd->par[p].value[0] != 0;
}

float term_dk(const FlowData* fd, int p) {
  if (!chosen(fd, p)) return 0.0F;
  const float f1 = fd->par[p].table[row_index(fd->par[p].idx1)].dk;
  const float f2 = fd->par[p].table[row_index(fd->par[p].idx2)].dk;
  return f1 + fd->par[p].frac * (f2 - f1);
}

float term_dlw(const FlowData* fd, int p) {
  if (!chosen(fd, p)) return 0.0F;
  const int f1 = fd->par[p].table[row_index(fd->par[p].idx1)].dlw;
  const int f2 = fd->par[p].table[row_index(fd->par[p].idx2)].dlw;
  return static_cast<float>(f1) + fd->par[p].frac * static_cast<float>(f2 - f1);
}

float term_ddlw(const FlowData* fd, int p) {
  if (!chosen(fd, p)) return 0.0F;
  const int f1 = fd->par[p].table[row_index(fd->par[p].idx1)].ddlw;
  const int f2 = fd->par[p].table[row_index(fd->par[p].idx2)].ddlw;
  return static_cast<float>(f1) + fd->par[p].frac * static_cast<float>(f2 - f1);
}

float term_factor(const FlowData* fd, int p) {
  if (!chosen(fd, p)) return 1.0F;
  const float f1 = fd->par[p].table[row_index(fd->par[p].idx1)].factor;
  const float f2 = fd->par[p].table[row_index(fd->par[p].idx2)].factor;
  const float term = f1 + fd->par[p].frac * (f2 - f1);
  if (std::fabs(static_cast<double>(term)) < 1e-5) return 1.0F;
  return term;
}

}  // namespace

int param_setvalue(FlowData* fd, const char* name, const char* value) {
  char par[7];
  copy_value(par, name);
  int target = -1;
  if (fd->npar >= 1 && compare_texts(par, fd->par[0].name) == 0) {
    target = 0;
  } else if (fd->npar >= 2 && compare_texts(par, fd->par[1].name) == 0) {
    target = 1;
  }
  if (target < 0) return -1;
  char sz[7];
  copy_value(sz, value);
  std::memset(fd->par[target].value, 0, sizeof fd->par[target].value);
  std::memcpy(fd->par[target].value, sz, 7);
  int16_t idx1 = 0;
  int16_t idx2 = 0;
  float frac = 0.0F;
  const int n = rows(fd->par[target].count, TAVD_PARAMETER_ROWS);
  param_locate(sz, fd->par[target].table, n, &idx1, &idx2, &frac);
  fd->par[target].idx1 = idx1;
  fd->par[target].idx2 = idx2;
  fd->par[target].frac = frac;
  return 0;
}

void param_add_dp(const FlowData* fd, float qv, float* dp) {
  if (fd->npar < 1) return;
  const float k = term_dk(fd, 0) + term_dk(fd, 1);
  *dp = *dp + k * qv * qv;
}

void param_add_lw(const FlowData* fd, float* lw) {
  if (fd->npar < 1) return;
  const float d = term_dlw(fd, 0) + term_dlw(fd, 1);
  for (int b = 0; b < 8; b++) lw[b] = lw[b] + d;
}

void param_add_dlw(const FlowData* fd, float* dlw) {
  if (fd->npar < 1) return;
  const float d = term_ddlw(fd, 0) + term_ddlw(fd, 1);
  for (int b = 0; b < 8; b++) dlw[b] = dlw[b] + d;
}

void param_apply_factor(const FlowData* fd, float* x) {
  if (fd->npar < 1) return;
  *x = term_factor(fd, 0) * term_factor(fd, 1) * *x;
}

void param_remove_dp(const FlowData* fd, float qv, float* dp) {
  if (static_cast<double>(*dp) < 1e-5) return;
  float dppar = *dp;
  param_add_dp(fd, qv, &dppar);
  const float difference = dppar - *dp;
  if (std::fabs(static_cast<double>(difference)) > 0.001 && static_cast<double>(dppar) > 1e-5) {
    *dp = *dp - difference;
    if (static_cast<double>(*dp) < 1e-5) *dp = 1e-5F;
  }
}

// ---- Pressure
// --------------------------------------------------------------------------------------------------

namespace {

bool bad(const QvDpPoint& row) {
  return row.qv <= 0.0F || row.dp <= 0.0F;
}

}  // namespace

float floating_dp(const FlowData* fd, float qv) {
  const int n = rows(fd->nqvdp, TAVD_QVDP_ROWS);
  const QvDpPoint* row = fd->qvdppoints;
  if (n == 0) return 0.0F;
  if (bad(row[0])) return 0.0F;
  float dp = 0.0F;
  if (qv < row[0].qv) {
    dp = (row[0].dp / (row[0].qv * row[0].qv)) * qv * qv;
    param_add_dp(fd, qv, &dp);
    return dp;
  }
  if (bad(row[n - 1])) return 0.0F;
  if (qv > row[n - 1].qv) {
    dp = (row[n - 1].dp / (row[n - 1].qv * row[n - 1].qv)) * qv * qv;
    param_add_dp(fd, qv, &dp);
    return dp;
  }
  for (int i = 1; i <= n - 1; i++) {
    if (bad(row[i])) return 0.0F;
    if (row[i].qv > qv) {
      const double e = (lg(row[i].dp) - lg(row[i - 1].dp)) / (lg(row[i].qv) - lg(row[i - 1].qv));
      const double c = static_cast<double>(row[i].dp) / std::pow(static_cast<double>(row[i].qv), e);
      dp = static_cast<float>(c * std::pow(static_cast<double>(qv), e));
      param_add_dp(fd, qv, &dp);
      return dp;
    }
  }
  return 0.0F;
}

int fan_dp(const FlowData* fd, float qv, float* dptot, float* dpst, float* pd) {
  float dynamic = fd == nullptr ? 0.0F : pdyn(qv, fd->ductarea, 0);
  if (dptot != nullptr) *dptot = 0.0F;
  if (dpst != nullptr) *dpst = 0.0F;
  if (pd != nullptr) *pd = dynamic;
  if (fd == nullptr) return -10;
  int code = 0;
  float dpref = 0.0F;
  const int n = rows(fd->nfan, TAVD_FAN_ROWS);
  const FanPoint* row = fd->fancurve;
  if (n > 0 && row[0].qv > qv) {
    float dp1 = row[0].dp;
    param_add_dp(fd, qv, &dp1);
    dpref = (dp1 / (row[0].qv * row[0].qv)) * qv * qv;
    code = -100;
  } else if (n == 0 || qv > row[n - 1].qv) {
    dpref = 0.0F;
    dynamic = 0.0F;
    code = -200;
  } else {
    for (int i = 1; i <= n - 1; i++) {
      if (row[i - 1].qv <= qv && row[i].qv >= qv) {
        dpref = lin_interp(row[i - 1].qv, row[i].qv, qv, row[i - 1].dp, row[i].dp);
        param_add_dp(fd, qv, &dpref);
        break;
      }
    }
  }
  float total = 0.0F;
  float stat = 0.0F;
  if (fd->kind100 < 100) {
    stat = dpref;
    total = dpref + dynamic;
  } else {
    total = dpref;
    stat = dpref - dynamic;
  }
  if (dptot != nullptr) *dptot = total;
  if (dpst != nullptr) *dpst = stat;
  if (pd != nullptr) *pd = dynamic;
  return code;
}

int fan_op_check(const FlowData* fd, float qv, float dp) {
  if (fd == nullptr) return -10;
  const int n = rows(fd->nfan, TAVD_FAN_ROWS);
  const FanPoint* row = fd->fancurve;
  if (n == 0) return -200;
  if (qv > row[n - 1].qv) return -200;
  float dp1 = row[0].dp;
  float dp2 = row[n - 1].dp;
  param_add_dp(fd, qv, &dp1);
  param_add_dp(fd, qv, &dp2);
  const float k1 = dp1 / (row[0].qv * row[0].qv);
  const float k2 = dp2 / (row[n - 1].qv * row[n - 1].qv);
  if (dp > k1 * qv * qv) return -100;
  if (k2 * qv * qv > dp) return -200;
  for (int i = 1; i <= n - 1; i++) {
    if (row[i - 1].qv <= qv && row[i].qv >= qv) {
      float dpref = lin_interp(row[i - 1].qv, row[i].qv, qv, row[i - 1].dp, row[i].dp);
      param_add_dp(fd, qv, &dpref);
      if (fd->kind100 < 100) dpref = dpref + pdyn(qv, fd->ductarea, 0);
      if (dp > dpref) return -300;
      return 0;
    }
  }
  return 0;
}

int minmaxdptot(const FlowData* fd, float qv, float* mindp, float* maxdp) {
  *maxdp = 0.0F;
  *mindp = 0.0F;
  if (fd->nhdd == 0) return -2;
  const int kind = fd->kind;
  if (kind == 10 || kind == 11) {
    if (fd->nref == 0 || fd->qvref <= 0.0F) return -3;
    *maxdp = (fd->dpref * qv * qv) / (fd->qvref * fd->qvref);
    *mindp = *maxdp;
  } else if (kind == 12) {
    *maxdp = floating_dp(fd, qv);
    *mindp = *maxdp;
  } else if (kind == 20 || kind == 22) {
    const int n = rows(fd->ndamper, TAVD_DAMPER_ROWS);
    if (n == 0) return -4;
    const DamperPoint first = fd->damper[0];
    const DamperPoint last = fd->damper[n - 1];
    if (first.qv <= 0.0F || last.qv <= 0.0F) return -4;
    *maxdp = (first.dp * qv * qv) / (first.qv * first.qv);
    *mindp = (last.dp * qv * qv) / (last.qv * last.qv);
  } else if (kind == 30 || kind == 13 || kind == 40) {
    *maxdp = fd->dpmax;
    *mindp = fd->dpmin;
  } else {
    return -6;
  }
  param_add_dp(fd, qv, mindp);
  param_add_dp(fd, qv, maxdp);
  return 0;
}

float dptotmin(const FlowData* fd, float qv) {
  float mindp = 0.0F;
  float maxdp = 0.0F;
  minmaxdptot(fd, qv, &mindp, &maxdp);
  return mindp;
}

float dptotmax(const FlowData* fd, float qv) {
  float mindp = 0.0F;
  float maxdp = 0.0F;
  minmaxdptot(fd, qv, &mindp, &maxdp);
  return maxdp;
}

// ---- Damper position
// -------------------------------------------------------------------------------------------

float dptot_damperpos(const FlowData* fd, float qv, float pos) {
  if (fd->nhdd == 0) return -2.0F;
  if (fd->kind != 20 && fd->kind != 22 && fd->kind != 13) return dptotmin(fd, qv);
  const DamperPoint* row = fd->damper;
  const int n = rows(fd->ndamper, TAVD_DAMPER_ROWS);
  if (n == 0 || static_cast<double>(row[0].qv) < 1e-7) return 0.0F;
  float dp = 0.0F;
  if (n == 1) {
    dp = (row[0].dp * qv * qv) / (row[0].qv * row[0].qv);
    param_add_dp(fd, qv, &dp);
    return dp;
  }
  const bool falls = row[0].pos > row[n - 1].pos;
  const float lowest = falls ? row[n - 1].pos : row[0].pos;
  const float highest = falls ? row[0].pos : row[n - 1].pos;
  if (pos < lowest) pos = lowest;
  if (pos > highest) pos = highest;
  int i = 0;
  if (falls) {
    while (i < n - 1 && !(pos > row[i + 1].pos)) i++;
  } else {
    while (i < n - 1 && !(row[i + 1].pos > pos)) i++;
  }
  if (i > n - 2) i = n - 2;
  const int j = i + 1;
  if (static_cast<double>(row[i].qv) < 1e-7 || static_cast<double>(row[j].qv) < 1e-7) return 0.0F;
  const float dpi = (row[i].dp * qv * qv) / (row[i].qv * row[i].qv);
  const float dpj = (row[j].dp * qv * qv) / (row[j].qv * row[j].qv);
  dp = linlog_interp(row[i].pos, row[j].pos, pos, dpi, dpj);
  param_add_dp(fd, qv, &dp);
  return dp;
}

namespace {

float resistance(const DamperPoint& row) {
  return row.dp / (row.qv * row.qv);
}

bool tiny(float x) {
  return static_cast<double>(x) < 1e-6;
}

}  // namespace

int damper_pos(const FlowData* fd, float qv, float dp, float* pos) {
  *pos = 0.0F;
  if (tiny(qv) || tiny(dp)) return -4;
  if (fd->nhdd == 0) return -3;
  if (fd->kind != 20 && fd->kind != 22) return 2;
  const DamperPoint* row = fd->damper;
  const int n = rows(fd->ndamper, TAVD_DAMPER_ROWS);
  if (n < 1) return -3;
  if (tiny(row[0].qv)) return -5;
  param_remove_dp(fd, qv, &dp);
  const float k = dp / (qv * qv);
  if (static_cast<double>(k) > 1.01 * static_cast<double>(resistance(row[0]))) {
    *pos = row[0].pos;
    return 1;
  }
  const int last = n - 1;
  if (tiny(row[last].qv)) return -5;
  if (static_cast<double>(resistance(row[last])) / 1.01 > static_cast<double>(k)) {
    *pos = row[last].pos;
    return -1;
  }
  int i = 1;
  for (; i <= last; i++) {
    if (tiny(row[i].qv)) return -5;
    if (k > resistance(row[i])) break;
  }
  if (i > last) {
    *pos = row[last].pos;
    return 0;
  }
  const float dpa = (row[i - 1].dp * qv * qv) / (row[i - 1].qv * row[i - 1].qv);
  const float dpb = (row[i].dp * qv * qv) / (row[i].qv * row[i].qv);
  const float difference = dpa - dpb;
  if (std::fabs(static_cast<double>(difference)) < 1e-5) {
    *pos = row[i].pos;
    return 0;
  }
  const double t = (lg(dp) - lg(dpb)) / (lg(dpa) - lg(dpb));
  const double pos_a = row[i - 1].pos;
  const double pos_b = row[i].pos;
  *pos = static_cast<float>(pos_b + t * (pos_a - pos_b));
  return 0;
}

int damper_pos_fixed(const FlowData* fd, float qv, float dp, float* pos) {
  *pos = 0.0F;
  if (tiny(qv) || tiny(dp)) return -4;
  if (fd->nhdd == 0) return -3;
  if (fd->kind != 20 && fd->kind != 22) return 2;
  const DamperPoint* row = fd->damper;
  const int n = rows(fd->ndamper, TAVD_DAMPER_ROWS);
  if (n < 1) return -3;
  if (tiny(row[0].qv)) return -5;
  if (n < 3) return damper_pos(fd, qv, dp, pos);
  param_remove_dp(fd, qv, &dp);
  const float k = dp / (qv * qv);
  if (!(k < resistance(row[0]))) {
    *pos = row[0].pos;
    return 1;
  }
  const int last = n - 1;
  if (tiny(row[last].qv)) return -5;
  if (!(resistance(row[last]) < k)) {
    *pos = row[last].pos;
    return -1;
  }
  const double lgdp = lg(dp);
  double dplg_diff_min = INFINITY;
  int winner = 0;
  for (int i = 0; i < n; i++) {
    if (tiny(row[i].qv) || tiny(row[i].dp)) return -5;
    const float dp_row = resistance(row[i]) * qv * qv;
    const double d = std::fabs(lg(dp_row) - lgdp);
    if (d < dplg_diff_min) {
      dplg_diff_min = d;
      winner = i;
    }
  }
  *pos = row[winner].pos;
  return 0;
}

// ---- Sound power
// -----------------------------------------------------------------------------------------------

namespace {

// The pair of rows to interpolate between: rows are offered in table order.
struct Bracket {
  int lo = -1;
  int hi = -1;
};

// `keys` holds the key of every row of the table, `in` tells which rows belong to the set.
Bracket select(const float* keys, const bool* in, int n, float target) {
  Bracket pair;
  for (int row = 0; row < n; row++) {
    if (!in[row]) continue;
    if (pair.lo < 0) {
      pair.lo = row;
    } else if (pair.hi < 0) {
      if (keys[pair.lo] > keys[row]) {
        pair.hi = pair.lo;
        pair.lo = row;
      } else {
        pair.hi = row;
      }
    } else if (keys[pair.lo] > keys[row]) {
      if (target < keys[pair.lo]) pair.lo = row;
    } else if (keys[row] > keys[pair.hi]) {
      if (keys[pair.hi] < target) pair.hi = row;
    } else if (target > keys[row]) {
      pair.lo = row;
    } else {
      pair.hi = row;
    }
  }
  return pair;
}

bool missing(Bracket pair) {
  return pair.lo < 0 || pair.hi < 0;
}

float limit(float level) {
  if (level > 99.0F) return 99.0F;
  if (level < 0.0F) return 0.0F;
  return level;
}

float resistance(const LwPoint& row) {
  return row.dp / (row.qv * row.qv);
}

bool unmeasured(const LwPoint& row) {
  return static_cast<double>(row.qv) < 0.001 || static_cast<double>(row.dp) < 0.001;
}

// By the rows' flow or pressure, whole table.
void flow_keys(const LwPoint* table, int n, float* keys) {
  for (int i = 0; i < n; i++) keys[i] = table[i].qv;
}

void pressure_keys(const LwPoint* table, int n, float* keys) {
  for (int i = 0; i < n; i++) keys[i] = table[i].dp;
}

int fixed_curve(const FlowData* fd, float qv, float* lw) {
  const LwPoint* table = fd->lwpoints;
  const int n = rows(fd->nlw, TAVD_LW_ROWS);
  float dp = dptotmin(fd, qv);
  param_remove_dp(fd, qv, &dp);
  if (static_cast<double>(dp) <= 1e-7) return -11;
  float keys[TAVD_LW_ROWS];
  bool in[TAVD_LW_ROWS];
  flow_keys(table, n, keys);
  for (int i = 0; i < n; i++) in[i] = true;
  const Bracket pair = select(keys, in, n, qv);
  if (missing(pair)) return -12;
  const LwPoint& lo = table[pair.lo];
  const LwPoint& hi = table[pair.hi];
  for (int b = 0; b < 8; b++) {
    const float level_lo = lo.lw[b];
    const float level_hi = hi.lw[b];
    if (fd->kind == 12) {
      lw[b] = loglin_interp(lo.qv, hi.qv, qv, level_lo, level_hi);
    } else {
      lw[b] = loglin_interp(lo.dp, hi.dp, dp, level_lo, level_hi);
    }
    lw[b] = limit(lw[b]);
  }
  return 0;
}

int resistance_curves(const FlowData* fd, float qv, float dp, float* lw) {
  const LwPoint* table = fd->lwpoints;
  const int n = rows(fd->nlw, TAVD_LW_ROWS);
  float mindp = 0.0F;
  float maxdp = 0.0F;
  minmaxdptot(fd, qv, &mindp, &maxdp);
  if (maxdp < dp) dp = maxdp;
  if (mindp > dp) dp = mindp;
  param_remove_dp(fd, qv, &dp);
  const float k = dp / (qv * qv);

  float kpxx[20];
  int count = 0;
  for (int i = 0; i < n; i++) {
    if (count == 20) return -21;
    if (unmeasured(table[i])) return -22;
    const float kr = resistance(table[i]);
    bool known = false;
    for (int j = 0; j < count; j++) {
      const float difference = kr - kpxx[j];
      if (std::fabs(static_cast<double>(difference)) < 0.1 * static_cast<double>(kpxx[j])) known = true;
    }
    if (!known) {
      kpxx[count] = kr;
      count = count + 1;
    }
  }
  if (count < 2) return -23;

  int idx = 0;
  for (int i = 1; i <= count - 2; i++) {
    if (kpxx[i] > k) idx = i;
  }
  const float kv[2] = {kpxx[idx], kpxx[idx + 1]};
  if (!(kv[1] < kv[0])) return -24;

  float qvc[2];
  float lww[2][8];
  for (int c = 0; c < 2; c++) {
    const float quotient = dp / kv[c];
    qvc[c] = static_cast<float>(std::sqrt(static_cast<double>(quotient)));
  }
  for (int c = 0; c < 2; c++) {
    float keys[TAVD_LW_ROWS];
    bool in[TAVD_LW_ROWS];
    flow_keys(table, n, keys);
    for (int i = 0; i < n; i++) {
      const float difference = resistance(table[i]) - kv[c];
      in[i] = std::fabs(static_cast<double>(difference)) <= 0.1 * static_cast<double>(kv[c]);
    }
    const Bracket pair = select(keys, in, n, qvc[c]);
    if (missing(pair)) return -25;
    const LwPoint& lo = table[pair.lo];
    const LwPoint& hi = table[pair.hi];
    for (int b = 0; b < 8; b++) lww[c][b] = loglin_interp(lo.dp, hi.dp, dp, lo.lw[b], hi.lw[b]);
  }
  for (int b = 0; b < 8; b++) {
    lw[b] = loglin_interp(qvc[0], qvc[1], qv, lww[0][b], lww[1][b]);
    lw[b] = limit(lw[b]);
  }
  return 0;
}

// 30 dB per decade between two values.
float thirty_per_decade(float value, float at) {
  return static_cast<float>(30.0 * (lg(value) - lg(at)));
}

int flow_groups(const FlowData* fd, float qv, float dp, float* lw) {
  const LwPoint* table = fd->lwpoints;
  const int n = rows(fd->nlw, TAVD_LW_ROWS);
  float extra = 0.0F;
  float mindp = 0.0F;
  float maxdp = 0.0F;
  minmaxdptot(fd, qv, &mindp, &maxdp);
  if (mindp > dp) {
    extra = thirty_per_decade(dp, mindp);
    dp = mindp;
  } else if (dp > maxdp) {
    extra = thirty_per_decade(dp, maxdp);
    dp = maxdp;
  }
  if (fd->qvmin > qv) {
    extra = extra + thirty_per_decade(qv, fd->qvmin);
    qv = fd->qvmin;
  } else if (qv > fd->qvmax) {
    extra = extra + thirty_per_decade(qv, fd->qvmax);
    qv = fd->qvmax;
  }
  param_remove_dp(fd, qv, &dp);

  float qvxx[20];
  int count = 0;
  for (int i = 0; i < n; i++) {
    if (count == 20) return -31;
    if (unmeasured(table[i])) return -32;
    bool known = false;
    for (int j = 0; j < count; j++) {
      const float difference = table[i].qv - qvxx[j];
      if (std::fabs(static_cast<double>(difference)) < 0.1) known = true;
    }
    if (!known) {
      qvxx[count] = table[i].qv;
      count = count + 1;
    }
  }
  if (count < 2) return -33;

  int idx = count - 1;
  for (int i = count - 1; i >= 1; i--) {
    if (qvxx[i] > qv) idx = i;
  }
  const float qvc[2] = {qvxx[idx - 1], qvxx[idx]};

  float lww[2][8];
  for (int c = 0; c < 2; c++) {
    float keys[TAVD_LW_ROWS];
    bool in[TAVD_LW_ROWS];
    pressure_keys(table, n, keys);
    for (int i = 0; i < n; i++) {
      const float difference = table[i].qv - qvc[c];
      in[i] = std::fabs(static_cast<double>(difference)) <= 0.1;
    }
    const Bracket pair = select(keys, in, n, dp);
    if (missing(pair)) return -34;
    const LwPoint& lo = table[pair.lo];
    const LwPoint& hi = table[pair.hi];
    for (int b = 0; b < 8; b++) {
      lww[c][b] = loglin_interp(lo.dp, hi.dp, dp, lo.lw[b], hi.lw[b]);
      if (lww[c][b] > 99.0F) lww[c][b] = 99.0F;
    }
  }
  for (int b = 0; b < 8; b++) {
    lw[b] = extra + loglin_interp(qvc[0], qvc[1], qv, lww[0][b], lww[1][b]);
    lw[b] = limit(lw[b]);
  }
  return 0;
}

}  // namespace

int lw(const FlowData* fd, float qv, float dp, float* lw, const DuctSize* duct) {
  for (int b = 0; b < 8; b++) lw[b] = 0.0F;
  if (static_cast<double>(qv) < 0.001) return -1;
  if (fd->nhdd == 0) return -2;
  if (fd->nlw < 2) return -3;
  int code = 0;
  if (fd->kind == 10 || fd->kind == 11 || fd->kind == 12) {
    code = fixed_curve(fd, qv, lw);
  } else if (fd->kind == 13 || fd->kind == 20 || fd->kind == 22) {
    code = resistance_curves(fd, qv, dp, lw);
  } else if (fd->kind == 30 || fd->kind == 40) {
    code = flow_groups(fd, qv, dp, lw);
  } else {
    return -9;
  }
  if (code != 0) {
    for (int b = 0; b < 8; b++) lw[b] = 0.0F;
    return code;
  }
  if (std::fabs(static_cast<double>(fd->lwsizecoef)) > 0.1) {
    const float area = duct == nullptr ? 0.0F : m2(duct);
    if (static_cast<double>(area) < 1e-7) return 0;
    const float term = static_cast<float>((static_cast<double>(fd->lwsizecoef) / 3.0 * 10.0) * lg(area));
    for (int b = 0; b < 8; b++) lw[b] = lw[b] + term;
  }
  param_add_lw(fd, lw);
  return 0;
}

int dlw(const FlowData* fd, float qv, float dp, float* dlw) {
  for (int b = 0; b < 8; b++) dlw[b] = 0.0F;
  if (fd->nhdd == 0) return 0;
  if (fd->ndlw != 0) {
    for (int b = 0; b < 8; b++) dlw[b] = fd->dlw[b];
    param_add_dlw(fd, dlw);
    return 0;
  }
  const int n = rows(fd->ndlwpoints, TAVD_DLW_ROWS);
  if (n == 1) {
    for (int b = 0; b < 8; b++) dlw[b] = fd->dlwpoints[0].dlw[b];
    param_add_dlw(fd, dlw);
    return 0;
  }
  const float pos0 = fd->dlwpoints[0].pos;
  const float pos1 = fd->dlwpoints[1].pos;
  if (fd->kind < 20 || n == 0 || !(pos1 > pos0)) return 0;
  float t = 0.0F;
  if (fd->kind == 30 || fd->kind == 40) {
    t = (qv - pos0) / (pos1 - pos0);
  } else {
    float dpos = 0.0F;
    const int status = damper_pos(fd, qv, dp, &dpos);
    if (status >= -1) t = (dpos - pos0) / (pos1 - pos0);
  }
  for (int b = 0; b < 8; b++) {
    const int band0 = fd->dlwpoints[0].dlw[b];
    const int band1 = fd->dlwpoints[1].dlw[b];
    dlw[b] = static_cast<float>(band0) + t * static_cast<float>(band1 - band0);
  }
  param_add_dlw(fd, dlw);
  return 0;
}

// ---- Room
// ------------------------------------------------------------------------------------------------------

float LpA(const float* lw, float roomdamp) {
  const float correction[8] = {-26.2F, -16.1F, -8.6F, -3.2F, 0.0F, 1.2F, 1.0F, -1.1F};
  float lphz[8];
  for (int b = 0; b < 8; b++) lphz[b] = (lw[b] + correction[b]) - roomdamp;
  float sum = lphz[0];
  for (int b = 1; b < 8; b++) {
    const float hi = sum > lphz[b] ? sum : lphz[b];
    const float lo = sum > lphz[b] ? lphz[b] : sum;
    const float d = -(hi - lo) / 10.0F;
    sum =
        static_cast<float>(static_cast<double>(hi) + 10.0 * lg(1.0 + std::pow(10.0, static_cast<double>(d))));
  }
  return sum;
}

float endref_A(int band, float area) {
  double a = 0;
  double b = 0;
  double c = 0;
  double d = 0;
  double e = 0;
  double f = 0;
  if (!(area > 0.0F)) return 0.0F;
  switch (band) {
    case 0:
      if (!(area <= 2.0F)) return 0.0F;
      a = -4.180323, b = 0.005358645, c = 4.479978, d = -2.089967, e = 2.89852, f = -0.8244423;
      break;
    case 1:
      if (!(area < 2.0F)) return 0.0F;
      a = -5.132286, b = -0.006359372, c = -4.883283, d = 9.80316, e = -5.098264, f = 1.19296;
      break;
    case 2:
      if (!(area < 0.6F)) return 0.0F;
      a = -3.530523, b = 0.01298109, c = -5.984685, d = 8.345772, e = -2.697747, f = 0.3195841;
      break;
    case 3:
      if (!(area < 0.2F)) return 0.0F;
      a = -2.109755, b = 0.0184693, c = -5.735232, d = 12.5837, e = -9.256503, f = 2.383516;
      break;
    case 4:
      if (!(area < 0.05F)) return 0.0F;
      a = -0.06347646, b = 0.01996665, c = -0.5754496, d = 1.910558, e = -1.943477, f = 0.5582853;
      break;
    default:
      return 0.0F;
  }
  const double A = area;
  const float area2 = area * area;
  const float area3 = area * area * area;
  const double E =
      a * std::log(A) + b / A + c + d * A + e * static_cast<double>(area2) + f * static_cast<double>(area3);
  if (E < 0) return 0.0F;
  return static_cast<float>(E);
}

void check_end_reflection(FlowData* fd) {
  const int n = rows(fd->nlw, TAVD_LW_ROWS);
  if (n == 0) return;
  const char* keys[5] = {"ASD", "AEX", "AED", "AOD", "CCB"};
  for (const char* key : keys) {
    if (std::memcmp(fd->szclass, key, 3) == 0) return;
  }
  if (static_cast<double>(fd->ductarea) < 1e-6) return;
  for (int b = 0; b < 8; b++) {
    const double E = endref_A(b, fd->ductarea);
    const double whole = std::floor(E + 0.5);
    const int r = whole > 127 ? 127 : static_cast<int>(whole);
    for (int i = 0; i < n; i++) {
      const int level = fd->lwpoints[i].lw[b];
      fd->lwpoints[i].lw[b] = level > r ? static_cast<uint8_t>(level - r) : static_cast<uint8_t>(0);
    }
  }
}

// ---- Throw
// -----------------------------------------------------------------------------------------------------

namespace {

int fit_power(const QvL2Point* pts, int n, float* nL2, float* kL2) {
  const double q0 = pts[0].qv;
  const double L0 = pts[0].L2;
  if (q0 < 1e-7) return -1;
  if (n == 1) {
    *nL2 = 1.0F;
    *kL2 = static_cast<float>(L0 / q0);
    return 0;
  }
  const double q1 = pts[1].qv;
  const double L1 = pts[1].L2;
  if (q1 < 1e-7) return -1;
  const double exponent = (lg(L1) - lg(L0)) / (lg(q1) - lg(q0));
  *nL2 = static_cast<float>(exponent);
  *kL2 = static_cast<float>(L0 / std::pow(q0, exponent));
  return 0;
}

bool one_value(double a, double b) {
  return std::fabs(a - b) < 0.01;
}

double row_value(const ParL2Point* table, int i) {
  float real = 0.0F;
  param_valuetoreal(table[i].value, &real);
  return real;
}

int param_l2_points(const ParL2Point* table, int n, QvL2Point out[2], const char* value) {
  out[0].qv = 0.0F;
  out[0].L2 = 0.0F;
  out[1].qv = 0.0F;
  out[1].L2 = 0.0F;
  if (n < 1) return -1;
  char sz[7];
  copy_value(sz, value);
  if (sz[0] == 0) {
    const int taken = n >= 2 ? 2 : 1;
    for (int i = 0; i < taken; i++) {
      out[i].qv = table[i].qv;
      out[i].L2 = table[i].L2;
    }
    return taken;
  }
  float pos_real = 0.0F;
  bool numeric = param_valuetoreal(sz, &pos_real) == 0;
  for (int i = 0; i < n; i++) {
    float ignored = 0.0F;
    if (param_valuetoreal(table[i].value, &ignored) != 0) numeric = false;
  }
  if (!numeric) {
    int first = -1;
    int second = -1;
    for (int i = 0; i < n; i++) {
      if (param_valuecmp(sz, table[i].value) != 0) continue;
      if (first < 0) {
        first = i;
      } else {
        second = i;
      }
    }
    if (first < 0) return -2;
    out[0].qv = table[first].qv;
    out[0].L2 = table[first].L2;
    if (second < 0) return 1;
    out[1].qv = table[second].qv;
    out[1].L2 = table[second].L2;
    return 2;
  }

  const double pos = pos_real;
  int lo = -1;
  int lo2 = -1;
  int hi = -1;
  int hi2 = -1;
  for (int i = 0; i < n; i++) {
    const double pos1 = row_value(table, i);
    double pos2 = i + 1 < n ? row_value(table, i + 1) : pos1 - 9999.9;
    if (pos + 0.0001 > pos1) {
      lo = i;
      lo2 = one_value(pos1, pos2) ? i + 1 : -1;
      if (one_value(pos1, pos)) break;
      while (i < n - 1 && one_value(pos1, pos2)) {
        i = i + 1;
        pos2 = i + 1 < n ? row_value(table, i + 1) : pos1 - 9999.9;
      }
    } else if (pos1 > pos) {
      hi = i;
      hi2 = one_value(pos1, pos2) ? i + 1 : -1;
      break;
    }
  }
  if (lo < 0) return -2;
  const double pos1 = row_value(table, lo);
  const double d = hi > 0 ? row_value(table, hi) - pos1 : 0.0;
  if (d < 0.01) {
    out[0].qv = table[lo].qv;
    out[0].L2 = table[lo].L2;
    if (lo2 < 0) return 1;
    out[1].qv = table[lo2].qv;
    out[1].L2 = table[lo2].L2;
    return 2;
  }
  const double t = (pos - pos1) / d;
  const double q_lo = table[lo].qv;
  const double L_lo = table[lo].L2;
  const double q_hi = table[hi].qv;
  const double L_hi = table[hi].L2;
  if (lo2 < 0 || hi2 < 0) {
    out[0].qv = table[lo].qv;
    out[0].L2 = static_cast<float>(L_lo + t * ((L_hi / q_hi) * q_lo - L_lo));
    return 1;
  }
  const double q_lo2 = table[lo2].qv;
  const double L_lo2 = table[lo2].L2;
  const double q_hi2 = table[hi2].qv;
  const double L_hi2 = table[hi2].L2;
  const double e1 = (lg(L_lo2) - lg(L_lo)) / (lg(q_lo2) - lg(q_lo));
  const double e2 = (lg(L_hi2) - lg(L_hi)) / (lg(q_hi2) - lg(q_hi));
  const double c1 = L_lo / std::pow(q_lo, e1);
  const double c2 = L_hi / std::pow(q_hi, e2);
  const double q[2] = {q_lo + t * (q_hi - q_lo), q_lo2 + t * (q_hi2 - q_lo2)};
  for (int i = 0; i < 2; i++) {
    const double a = c1 * std::pow(q[i], e1);
    const double b = c2 * std::pow(q[i], e2);
    out[i].qv = static_cast<float>(q[i]);
    out[i].L2 = static_cast<float>(a + t * (b - a));
  }
  return 2;
}

}  // namespace

float L2_isothermal(const FlowData* fd, float qv, const char* value) {
  QvL2Point points[TAVD_QVL2_ROWS] = {};
  int n = 0;
  if (fd->nparL2 > 0) {
    n = param_l2_points(fd->parL2, rows(fd->nparL2, TAVD_PARL2_ROWS), points, value);
    if (n < 1) return 0.0F;
  } else if (fd->nqvL2 > 0) {
    n = rows(fd->nqvL2, TAVD_QVL2_ROWS);
    for (int i = 0; i < n; i++) points[i] = fd->qvL2[i];
  } else {
    return 0.0F;
  }
  float nL2 = 0.0F;
  float kL2 = 0.0F;
  if (fit_power(points, n, &nL2, &kL2) != 0) return 0.0F;
  float L2 = static_cast<float>(static_cast<double>(kL2) *
                                std::pow(static_cast<double>(qv), static_cast<double>(nL2)));
  param_apply_factor(fd, &L2);
  return L2;
}

// ---- Duct sizes
// ------------------------------------------------------------------------------------------------

bool is_circular(const DuctSize* ds) {
  return ds->shape != 1;
}

bool is_rectangular(const DuctSize* ds) {
  return ds->shape == 1;
}

int equal_size(const DuctSize* ds1, const DuctSize* ds2) {
  return ds1->shape == ds2->shape && ds1->b == ds2->b && ds1->h == ds2->h ? 1 : 0;
}

int greater_b_or_h(const DuctSize* ds1, const DuctSize* ds2) {
  const bool b_smaller = ds1->b < ds2->b || ds1->b < ds2->h;
  const bool h_smaller = ds1->h < ds2->b || ds1->h < ds2->h;
  return b_smaller && h_smaller ? 0 : 1;
}

float dekv(const DuctSize* ds) {
  const float b = ds->b;
  const float h = ds->h;
  if (ds->shape == 0) return b;
  const float x = (b * 4.0F * h) / 3.1415927F;
  if (static_cast<double>(x) < 0.001) return 0.0F;
  return static_cast<float>(std::sqrt(static_cast<double>(x)));
}

float dhydr(const DuctSize* ds) {
  const float b = ds->b;
  const float h = ds->h;
  if (ds->shape == 0) return b;
  const float p = b * 2.0F + h * 2.0F;
  if (static_cast<double>(p) < 1e-6) return 0.0F;
  return (b * 4.0F * h) / p;
}

int16_t diagonal(const DuctSize* ds) {
  if (ds->shape == 0) return ds->b;
  const double b = ds->b;
  const double h = ds->h;
  const double d = b * b + h * h;
  if (d < 0.5) return 0;
  const double whole = std::floor(std::sqrt(d) + 0.5);
  return whole > 32767 ? static_cast<int16_t>(32767) : static_cast<int16_t>(whole);
}

float m2(const DuctSize* ds) {
  const double b = ds->b;
  const double h = ds->h;
  if (ds->shape == 0) return static_cast<float>(((b * 0.785398163375) / 1000.0 * b) / 1000.0);
  return static_cast<float>(((b / 1000.0) * h) / 1000.0);
}

float vms(const DuctSize* ds, double qv) {
  const double area = m2(ds);
  if (area <= 1e-6) return 0.0F;
  return static_cast<float>((qv / 1000.0) / area);
}

void swap(DuctSize* ds) {
  const int16_t b = ds->b;
  ds->b = ds->h;
  ds->h = b;
}

void print(const DuctSize* ds, char* buffer) {
  if (ds->shape == 1) {
    std::sprintf(buffer, "%hdx%hd", ds->b, ds->h);
  } else {
    std::sprintf(buffer, "%hd", ds->b);
  }
}

int scan(char* text, DuctSize* ds) {
  char* upper = std::strchr(text, 'X');
  if (upper != nullptr) *upper = 'x';
  char* x = std::strchr(text, 'x');
  if (x == nullptr) {
    if (std::sscanf(text, "%hd", &ds->b) != 1) return -1;
    ds->shape = 0;
    ds->h = ds->b;
    return 0;
  }
  *x = 0;
  if (std::sscanf(text, "%hd", &ds->b) != 1) return -1;
  if (std::sscanf(x + 1, "%hd", &ds->h) != 1) return -1;
  ds->shape = 1;
  return 0;
}

}  // namespace transcription
