#include "calc/parameter.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "base/gwtext.h"
#include "calc/numeric.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr double kNoFactor = 1e-5;  // throw factors smaller than this count as 1

// A parameter value as a terminated text: the six characters that count, without trailing blanks.
class ValueText {
 public:
  explicit ValueText(const char* value) { gwstrtrimcpy(text_, value != nullptr ? value : "", kChars); }
  char* data() { return text_; }

 private:
  static constexpr int kChars = TAVD_PARAMETER_CHARS;
  char text_[kChars + 1];
};

float number_of(const char* value) {
  float number;
  tavca_param_valuetoreal(value, &number);
  return number;
}

float dlw_term(const ParTable& par) {
  return blend(par, lower_row(par).dlw, upper_row(par).dlw);
}

float ddlw_term(const ParTable& par) {
  return blend(par, lower_row(par).ddlw, upper_row(par).ddlw);
}

float factor_term(const ParTable& par) {
  const float factor = blend(par, lower_row(par).factor, upper_row(par).factor);
  return std::fabs(wide(factor)) < kNoFactor ? 1.0F : factor;
}

void add_to_bands(float* bands, float d) {
  for (int band = 0; band < TAVD_BANDS; ++band) bands[band] += d;
}

bool locate_text(const char* value, const ParEntry* table, int n, std::int16_t* idx1, std::int16_t* idx2) {
  for (int row = 0; row < n; ++row) {
    if (tavca_param_valuecmp(value, table[row].value) != 0) continue;
    *idx1 = *idx2 = static_cast<std::int16_t>(row);
    return true;
  }
  return false;
}

bool locate_number(float value, const ParEntry* table, int n, std::int16_t* idx1, std::int16_t* idx2,
                   float* frac) {
  float lower = number_of(table[0].value);
  if (lower >= value) return true;
  for (int row = 1; row < n; ++row) {
    const float upper = number_of(table[row].value);
    if (lower >= upper) return false;
    if (lower <= value && value <= upper) {
      *idx1 = static_cast<std::int16_t>(row - 1);
      *idx2 = static_cast<std::int16_t>(row);
      *frac = (value - lower) / (upper - lower);
      return true;
    }
    lower = upper;
  }
  *idx1 = *idx2 = static_cast<std::int16_t>(n - 1);
  return true;
}

bool is_name_of(const ParTable& par, const char* name) {
  char own_name[sizeof par.name + 1];
  std::memcpy(own_name, par.name, sizeof par.name);
  own_name[sizeof par.name] = '\0';
  return gwstricmp(own_name, name) == 0;
}

ParTable* find_parameter(FlowData* fd, const char* name) {
  for (int index = 0; index < TAVD_PARAMETERS && index < fd->npar; ++index) {
    if (is_name_of(fd->par[index], name)) return &fd->par[index];
  }
  return nullptr;
}

}  // namespace

bool is_numeric(const char* value) {
  float number;
  return tavca_param_valuetoreal(value, &number) == TAVCA_OK;
}

bool strip_quotes(char* s) {
  bool removed = false;
  if (s[0] == '"') {
    std::memmove(s, s + 1, std::strlen(s));
    removed = true;
  }
  const std::size_t length = std::strlen(s);
  if (length > 0 && s[length - 1] == '"') {
    s[length - 1] = '\0';
    removed = true;
  }
  return removed;
}

bool param_locate(const char* value, const ParEntry* table, int n, std::int16_t* idx1, std::int16_t* idx2,
                  float* frac) {
  *idx1 = *idx2 = 0;
  *frac = 0.0F;
  if (n <= 0) return false;
  bool numeric = is_numeric(value);
  for (int row = 0; row < n && numeric; ++row) numeric = is_numeric(table[row].value);
  return numeric ? locate_number(number_of(value), table, n, idx1, idx2, frac)
                 : locate_text(value, table, n, idx1, idx2);
}

void param_add_dp(const FlowData* fd, float qv, float* dp) {
  *dp = PressureTerm(*fd, qv).added_to(*dp);
}

void param_remove_dp(const FlowData* fd, float qv, float* dp) {
  *dp = pressure_without_term(*dp, PressureTerm(*fd, qv).added_to(*dp));
}

float param_factor(const FlowData* fd) {
  return term_of<factor_term>(*fd, 0, 1.0F) * term_of<factor_term>(*fd, 1, 1.0F);
}

void param_apply_factor(const FlowData* fd, float* x) {
  *x = param_factor(fd) * *x;
}

float param_lw_term(const FlowData* fd) {
  return sum_of_terms<dlw_term>(*fd);
}

void param_add_lw(const FlowData* fd, float* lw) {
  if (fd->npar < 1) return;
  add_to_bands(lw, param_lw_term(fd));
}

void param_add_dlw(const FlowData* fd, float* dlw) {
  if (fd->npar < 1) return;
  add_to_bands(dlw, sum_of_terms<ddlw_term>(*fd));
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavca_param_valuetoreal(const char* value, float* real) {
  ValueText text(value);
  float number = 0.0F;
  int result = TAVCA_PARAM_NO_NUMBER;
  if (gwisnumber(text.data()) != 0) {
    // Unlike the scanf family, from_chars reads a point as a point in every locale.
    const char* first = text.data() + std::strspn(text.data(), " ");
    const auto scan = std::from_chars(first, first + std::strlen(first), number);
    if (scan.ec == std::errc()) result = TAVCA_OK;
  }
  if (real != nullptr) *real = result == TAVCA_OK ? number : 0.0F;
  return result;
}

int tavca_param_valuecmp(const char* a, const char* b) {
  float number_a;
  float number_b;
  if (tavca_param_valuetoreal(a, &number_a) == TAVCA_OK &&
      tavca_param_valuetoreal(b, &number_b) == TAVCA_OK) {
    return static_cast<int>(number_a > number_b) - static_cast<int>(number_a < number_b);
  }
  ValueText text_a(a);
  ValueText text_b(b);
  strip_quotes(text_a.data());
  strip_quotes(text_b.data());
  const int order = gwstricmp(text_a.data(), text_b.data());
  return static_cast<int>(order > 0) - static_cast<int>(order < 0);
}

int tavca_param_setvalue(FlowData* fd, const char* name, const char* value) {
  if (fd == nullptr || name == nullptr) return TAVCA_PARAM_NO_NAME;
  ValueText szPar(name);
  ParTable* par = find_parameter(fd, szPar.data());
  if (par == nullptr) return TAVCA_PARAM_NO_NAME;
  // The caller's text may lie in the record itself, so it is read before anything is written.
  ValueText chosen(value);
  // Cleared first: nothing of a longer value stays behind a shorter one.
  gwstrtrimcpy(par->value, chosen.data(), TAVD_PARAMETER_CHARS);
  std::int16_t idx1;
  std::int16_t idx2;
  float frac;
  param_locate(par->value, par->table, row_count(par->count, TAVD_PARAMETER_ROWS), &idx1, &idx2, &frac);
  par->idx1 = idx1;
  par->idx2 = idx2;
  par->frac = frac;
  return TAVCA_OK;
}
