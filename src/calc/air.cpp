// Formulas of air in a duct, and the limits of a product's flow.
#include "calc/numeric.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr float kHalfDensity = 0.6F;              // half of an air density of 1.2 kg/m3
constexpr float kQuarterPi = 0.7853982F;          // area of a circle over its diameter squared
constexpr float kPerThousand = 1000.0F;           // l/s to m3/s, mm to m
constexpr double kSmallestAreaOfVelocity = 1e-8;  // m2

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

float tavca_pdyn(float qv, float area, int isvelocity) {
  if (isvelocity != 0) return kHalfDensity * qv * qv;
  if (wide(area) < kSmallestAreaOfVelocity) return 0.0F;
  const float velocity = (qv / kPerThousand) / area;
  return kHalfDensity * velocity * velocity;
}

float tavca_ductarea_m2(std::int16_t b, std::int16_t h) {
  const float width = static_cast<float>(b) / kPerThousand;
  if (h > 0) return (static_cast<float>(h) / kPerThousand) * width;
  return kQuarterPi * width * width;
}

int tavca_qminqmax(const FlowData* fd, float* qmin, float* qmax) {
  const bool loaded = fd != nullptr && fd->nhdd != 0;
  if (qmin != nullptr) *qmin = loaded ? fd->qvmin : 0.0F;
  if (qmax != nullptr) *qmax = loaded ? fd->qvmax : 0.0F;
  if (!loaded) return TAVCA_LIMITS_NO_DATA;
  return TAVCA_OK;
}
