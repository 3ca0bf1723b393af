// Straight-line interpolation; the two forms on a logarithmic axis are exported (tavd/tavca.h).
#pragma once

namespace tavd {

// y at `x` on the line through (x1, y1) and (x2, y2), beyond them too, all in float.
float tavca_lin_interp(float x1, float x2, float x, float y1, float y2);

}  // namespace tavd
