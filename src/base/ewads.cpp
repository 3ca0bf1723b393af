// Duct sizes: comparison, derived sizes and text form.
#include "tavd/ewads.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace tavd {
namespace {

constexpr float kPi = 3.1415927F;
// A quarter of 3.1415926535. Ten decimals of pi, and not the full pi/4 of a double, are part of the result.
constexpr double kQuarterPi = 0.785398163375;

constexpr double kSmallestSquare = 0.001;    // mm2, below it there is no equivalent diameter
constexpr double kSmallestPerimeter = 1e-6;  // mm
constexpr double kSmallestDiagonal = 0.5;    // mm2
constexpr double kSmallestArea = 1e-6;       // m2

constexpr int kTextSize = 32;  // characters, terminator included

float dekv(const DuctSize& ds) {
  if (ds.shape == TAVD_DUCT_ROUND) return ds.b;
  const float x = (static_cast<float>(ds.b) * 4.0F * static_cast<float>(ds.h)) / kPi;
  if (static_cast<double>(x) < kSmallestSquare) return 0.0F;
  return static_cast<float>(std::sqrt(static_cast<double>(x)));
}

float dhydr(const DuctSize& ds) {
  if (ds.shape == TAVD_DUCT_ROUND) return ds.b;
  const float p = static_cast<float>(ds.b) * 2.0F + static_cast<float>(ds.h) * 2.0F;
  if (static_cast<double>(p) < kSmallestPerimeter) return 0.0F;
  return (static_cast<float>(ds.b) * 4.0F * static_cast<float>(ds.h)) / p;
}

std::int16_t diagonal(const DuctSize& ds) {
  if (ds.shape == TAVD_DUCT_ROUND) return ds.b;
  const double b = ds.b;
  const double h = ds.h;
  const double d = b * b + h * h;
  if (d < kSmallestDiagonal) return 0;
  const double rounded = std::floor(std::sqrt(d) + 0.5);
  return static_cast<std::int16_t>(std::min<double>(rounded, std::numeric_limits<std::int16_t>::max()));
}

float m2(const DuctSize& ds) {
  const double b = ds.b;
  const double h = ds.h;
  if (ds.shape == TAVD_DUCT_ROUND) return static_cast<float>(((b * kQuarterPi) / 1000.0 * b) / 1000.0);
  return static_cast<float>(((b / 1000.0) * h) / 1000.0);
}

float vms(const DuctSize& ds, double qv) {
  const double area = m2(ds);
  if (area <= kSmallestArea) return 0.0F;
  return static_cast<float>((qv / 1000.0) / area);
}

// The text form is ASCII, so the wide one is the narrow one character by character.
template <typename Char>
Char* print(const DuctSize& ds, Char* buffer) {
  char text[kTextSize];
  char* const capacity = text + sizeof text;
  char* end = std::to_chars(text, capacity, ds.b).ptr;
  if (ds.shape == TAVD_DUCT_RECTANGULAR) {
    *end++ = 'x';
    end = std::to_chars(end, capacity, ds.h).ptr;
  }
  *std::copy(text, end, buffer) = 0;
  return buffer;
}

// Reads what "%hd" reads: blanks, a sign, digits. Unlike "%hd" a number beyond 16 bits is held at their end.
template <typename Char>
bool scannumber(const Char* text, std::int16_t& number) {
  while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  if (*text < '0' || *text > '9') return false;
  constexpr std::int32_t kEnough = 1 << 20;  // beyond 16 bits, far from the end of 32
  std::int32_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = std::min<std::int32_t>(value * 10 + (*text - '0'), kEnough);
  }
  if (negative) value = -value;
  number = static_cast<std::int16_t>(std::clamp<std::int32_t>(value, std::numeric_limits<std::int16_t>::min(),
                                                              std::numeric_limits<std::int16_t>::max()));
  return true;
}

template <typename Char>
Char* find(Char* text, char c) {
  while (*text != 0 && *text != static_cast<Char>(c)) ++text;
  return *text == 0 ? nullptr : text;
}

template <typename Char>
int scan(Char* text, DuctSize& ds) {
  if (Char* upper = find(text, 'X')) *upper = 'x';
  Char* cross = find(text, 'x');
  if (cross == nullptr) {
    if (!scannumber(text, ds.b)) return EWADS_NO_SIZE;
    ds.shape = TAVD_DUCT_ROUND;
    ds.h = ds.b;
    return 0;
  }
  *cross = 0;
  if (!scannumber(text, ds.b) || !scannumber(cross + 1, ds.h)) return EWADS_NO_SIZE;
  ds.shape = TAVD_DUCT_RECTANGULAR;
  return 0;
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

bool ewads_is_circular(const DuctSize* ds) {
  return ds->shape != TAVD_DUCT_RECTANGULAR;
}

bool ewads_is_rectangular(const DuctSize* ds) {
  return ds->shape == TAVD_DUCT_RECTANGULAR;
}

int ewads_equal_size(const DuctSize* ds1, const DuctSize* ds2) {
  return ds1->shape == ds2->shape && ds1->b == ds2->b && ds1->h == ds2->h ? 1 : 0;
}

int ewads_greater_b_or_h(const DuctSize* ds1, const DuctSize* ds2) {
  const auto covers = [ds2](std::int16_t side) { return side >= ds2->b && side >= ds2->h; };
  return covers(ds1->b) || covers(ds1->h) ? 1 : 0;
}

float ewads_dekv(const DuctSize* ds) {
  return dekv(*ds);
}

float ewads_dhydr(const DuctSize* ds) {
  return dhydr(*ds);
}

std::int16_t ewads_diagonal(const DuctSize* ds) {
  return diagonal(*ds);
}

float ewads_m2(const DuctSize* ds) {
  return m2(*ds);
}

float ewads_vms(const DuctSize* ds, double qv) {
  return vms(*ds, qv);
}

void ewads_copy(DuctSize* dst, const DuctSize* src) {
  std::memmove(dst, src, sizeof *dst);
}

void ewads_swap(DuctSize* ds) {
  std::swap(ds->b, ds->h);
}

char* ewads_sprintf(const DuctSize* ds, char* buffer) {
  return print(*ds, buffer);
}

tavd_wchar* ewads_swprintf(const DuctSize* ds, tavd_wchar* buffer) {
  return print(*ds, buffer);
}

int ewads_sscanf(char* text, DuctSize* ds) {
  return scan(text, *ds);
}

int ewads_swscanf(tavd_wchar* text, DuctSize* ds) {
  return scan(text, *ds);
}
