// Throw length at a flow.
#include <algorithm>
#include <cmath>

#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {

int throw_points(const FlowData& fd, const char* value, QvL2Point (&points)[TAVD_QVL2_ROWS]) {
  const int by_value = row_count(fd.nparL2, TAVD_PARL2_ROWS);
  if (by_value > 0) {
    float pairs[4];
    const int n = param_l2_points(fd.parL2, by_value, pairs, value);
    points[0] = {pairs[0], pairs[1]};
    points[1] = {pairs[2], pairs[3]};
    return n;
  }
  const int n = row_count(fd.nqvL2, TAVD_QVL2_ROWS);
  std::copy_n(fd.qvL2, n, points);
  return n;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

float tavca_L2_isothermal(const FlowData* fd, float qv, const char* value) {
  if (fd == nullptr) return 0.0F;
  QvL2Point points[TAVD_QVL2_ROWS];
  const int n = throw_points(*fd, value, points);
  if (n < 1) return 0.0F;
  float nL2;
  float kL2;
  if (!fit_power(points, n, &nL2, &kL2)) return 0.0F;
  float L2 = narrow(wide(kL2) * std::pow(wide(qv), wide(nL2)));
  param_apply_factor(fd, &L2);
  return L2;
}
