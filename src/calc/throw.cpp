// Throw length at a flow.
#include <algorithm>
#include <cmath>

#include "calc/calculations.h"
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

bool throw_line(const FlowData& fd, const char* value, ThrowLine* line) {
  QvL2Point points[TAVD_QVL2_ROWS];
  const int n = throw_points(fd, value, points);
  if (n < 1 || !fit_power(points, n, &line->exponent, &line->coefficient)) return false;
  line->factor = param_factor(&fd);
  return true;
}

float throw_length(const ThrowLine& line, float qv) {
  return line.factor * narrow(wide(line.coefficient) * std::pow(wide(qv), wide(line.exponent)));
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

float tavca_L2_isothermal(const FlowData* fd, float qv, const char* value) {
  ThrowLine line;
  if (fd == nullptr || !throw_line(*fd, value, &line)) return 0.0F;
  return throw_length(line, qv);
}
