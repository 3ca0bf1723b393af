// Paints of the flow diagram of one product, for the benchmarks of diagrams and pictures.
#pragma once

#include <cstdint>

#include "tavd/tavca.h"
#include "tavdgui/tavdgui.h"

namespace bench {

// One of each way of drawing.
inline constexpr std::int16_t kPaintedKinds[] = {10, 11, 12, 13, 20, 22, 30, 40};

class Paint {
 public:
  explicit Paint(std::int16_t kind);

  // The diagram with its curves, its pens and fonts included.
  void whole(tgui_surface* surface);
  void chart_alone(tgui_surface* surface);

 private:
  void take_over();

  FlowData product_;
};

}  // namespace bench
