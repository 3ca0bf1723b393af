// Paints of the flow diagram of one product, for the benchmarks of diagrams and pictures.
#pragma once

#include <cstdint>

#include "diagram/flowdiagram.h"
#include "tavd/attributes.h"
#include "tavdgui/tavdgui.h"

namespace bench {

// One of each way of drawing.
inline constexpr std::int16_t kPaintedKinds[] = {TAVD_KIND_RESISTANCE,
                                                 TAVD_KIND_RESISTANCE_VELOCITY,
                                                 TAVD_KIND_RESISTANCE_POINTS,
                                                 TAVD_KIND_LIMITS,
                                                 TAVD_KIND_DAMPER,
                                                 TAVD_KIND_DAMPER_VELOCITY,
                                                 TAVD_KIND_RANGE,
                                                 TAVD_KIND_FAN};

class Paint {
 public:
  explicit Paint(std::int16_t kind);
  ~Paint();
  Paint(const Paint&) = delete;
  Paint& operator=(const Paint&) = delete;

  // The diagram with its curves, its pens and fonts included.
  void whole(tgui_surface* surface);
  void chart_alone(tgui_surface* surface);

 private:
  tavd::FlowDiagram diagram_{};
};

}  // namespace bench
