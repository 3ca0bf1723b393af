#include "many/limits.h"

#include "calc/calculations.h"
#include "calc/kinds.h"
#include "calc/numeric.h"
#include "tavd/tavca.h"

namespace tavd {

Limits::Limits(const FlowData& fd)
    : known_(fd.kind != TAVD_KIND_RESISTANCE_POINTS),
      follows_flow_(is_damper(fd.kind) || is_resistance(fd.kind)),
      any_term_(fd.npar >= 1),
      term_in_range_(false) {
  if (fd.npar >= 1) term_k_ = sum_of_terms<dk_term>(fd);
  if (!known_) return;
  code_ = minmaxdptot(&fd, 1.0F, nullptr, nullptr, nullptr);
  if (code_ != TAVCA_OK) {
    follows_flow_ = Choice(false);
    return;
  }
  term_in_range_ = any_term_;
  if (is_damper(fd.kind)) {
    const DamperPoint first = fd.damper[0];
    const DamperPoint last = fd.damper[row_count(fd.ndamper, TAVD_DAMPER_ROWS) - 1];
    high_ = point(first.qv, first.dp);
    low_ = point(last.qv, last.dp);
  } else if (is_resistance(fd.kind)) {
    high_ = low_ = point(fd.qvref, fd.dpref);
  } else {
    high_.dp = fd.dpmax;
    low_.dp = fd.dpmin;
  }
}

}  // namespace tavd
