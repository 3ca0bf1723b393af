// From octave bands of sound power to the level in the room, and the reflection at the end of a duct.
#include <algorithm>
#include <cmath>

#include "calc/calculations.h"
#include "calc/classes.h"
#include "calc/numeric.h"
#include "calc/settings.h"
#include "calc/weighting.h"
#include "gwmath.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

// End reflection of an opening of A m2, dB: a*ln(A) + b/A + c + d*A + e*A^2 + f*A^3, a curve fitted per band
// over areas from 0 up to `limit`.
struct EndReflection {
  double a, b, c, d, e, f;
  float limit;           // m2
  bool limit_inclusive;  // whether an area of exactly `limit` still has a value
};
constexpr EndReflection kEndReflection[] = {
    {-4.180323, 0.005358645, 4.479978, -2.089967, 2.89852, -0.8244423, 2.0F, true},       // 63 Hz
    {-5.132286, -0.006359372, -4.883283, 9.80316, -5.098264, 1.19296, 2.0F, false},       // 125 Hz
    {-3.530523, 0.01298109, -5.984685, 8.345772, -2.697747, 0.3195841, 0.6F, false},      // 250 Hz
    {-2.109755, 0.0184693, -5.735232, 12.5837, -9.256503, 2.383516, 0.2F, false},         // 500 Hz
    {-0.06347646, 0.01996665, -0.5754496, 1.910558, -1.943477, 0.5582853, 0.05F, false},  // 1000 Hz
};
constexpr int kEndReflectionBands = sizeof kEndReflection / sizeof *kEndReflection;

constexpr double kSmallestReflectingArea = 1e-6;  // m2
constexpr double kLargestReflection = 127.0;      // dB, what a signed byte holds

// The level of two sources together, dB. Each of the two ends up as `hi` or as `lo` whatever they are, so
// that not-a-number in either gives not-a-number; std::max and std::min would drop it.
float energy_sum(float a, float b) {
  const float hi = a > b ? a : b;
  const float lo = a > b ? b : a;
  const float d = -(hi - lo) / 10.0F;
  return narrow(wide(hi) + 10.0 * gwlog10(1.0 + std::pow(10.0, wide(d))));
}

bool in_range(const EndReflection& curve, float area) {
  if (!(area > 0.0F)) return false;
  return curve.limit_inclusive ? area <= curve.limit : area < curve.limit;
}

// The sound tables of terminals and chilled beams, the classes with a pressure sign, hold no end reflection.
bool has_end_reflection(const FlowData& fd) {
  return static_to_total_sign(fd) == 0;
}

// Whole dB from 0 to 127. An opening of a few mm2 reflects more than that by its formula.
int rounded_reflection(int band, float area) {
  const double rounded = std::floor(wide(tavca_endref_A(band, area)) + 0.5);
  return static_cast<int>(std::min(rounded, kLargestReflection));
}

}  // namespace

float room_level(const float* lw, float roomdamp) {
  float sum = 0.0F;
  for (int band = 0; band < TAVD_BANDS; ++band) {
    const float lphz = (lw[band] + kAWeighting[band]) - roomdamp;
    sum = band == 0 ? lphz : energy_sum(sum, lphz);
  }
  return sum;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

float tavca_LpA(const float* lw) {
  return lw != nullptr ? room_level(lw, room_damping()) : 0.0F;
}

float tavca_endref_A(int band, float area) {
  if (band < 0 || band >= kEndReflectionBands) return 0.0F;
  const EndReflection& curve = kEndReflection[band];
  if (!in_range(curve, area)) return 0.0F;
  const double A = wide(area);
  const double A2 = wide(area * area);
  const double A3 = wide(area * area * area);
  const double E = curve.a * std::log(A) + curve.b / A + curve.c + curve.d * A + curve.e * A2 + curve.f * A3;
  return E < 0.0 ? 0.0F : narrow(E);
}

void tavca_check_end_reflection(FlowData* fd) {
  if (fd == nullptr) return;
  const int n = row_count(fd->nlw, TAVD_LW_ROWS);
  if (n == 0 || !has_end_reflection(*fd) || wide(fd->ductarea) < kSmallestReflectingArea) return;
  int reflection[TAVD_BANDS];
  for (int band = 0; band < TAVD_BANDS; ++band) reflection[band] = rounded_reflection(band, fd->ductarea);
  for (int row = 0; row < n; ++row) {
    for (int band = 0; band < TAVD_BANDS; ++band) {
      std::uint8_t& level = fd->lwpoints[row].lw[band];
      level = static_cast<std::uint8_t>(std::max(level - reflection[band], 0));
    }
  }
}
