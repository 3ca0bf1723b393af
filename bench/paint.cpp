#include "paint.h"

#include <cmath>
#include <cstring>

#include "diagram/flowdiagram.h"
#include "tavd/tavdg.h"

namespace bench {

namespace {

// A product of the kind with believable tables; every job puts its own into the one diagram of the process.
FlowData product(std::int16_t kind) {
  FlowData fd{};
  std::memcpy(fd.szclass, "TVX", 4);
  fd.kind = kind;
  fd.nhdd = 1;
  fd.qvmin = kind == tavd::kFanKind ? 0.0F : 20.0F;
  fd.qvmax = 500;
  fd.dpmin = kind == tavd::kFanKind ? 0.0F : 5.0F;
  fd.dpmax = 1000;
  fd.nref = 1;
  fd.qvref = 100;
  fd.dpref = 50;
  for (int i = 0; i < 10; ++i) {
    const float n = static_cast<float>(i);
    const float k = 0.08F / std::exp2(n);
    const float qv = 30 + 50 * n;
    fd.damper[fd.ndamper++] = {n + 1, 100, k * 1e4F};
    fd.qvdppoints[fd.nqvdp++] = {qv, 0.005F * qv * qv};
    fd.fancurve[fd.nfan++] = {qv, 950 - 90 * n, 0};
    for (int j = 0; j < 3; ++j) {
      const float dp = 15 * std::exp2(2 * static_cast<float>(j));
      LwPoint& row = fd.lwpoints[fd.nlw++];
      row.qv = kind == 30 ? qv : std::sqrt(dp / k);
      row.dp = dp;
      for (std::uint8_t& band : row.lw) band = static_cast<std::uint8_t>(22 + 2 * i + 12 * j);
    }
  }
  return fd;
}

// The diagram's drawing plane over the whole surface, as its window maps it.
void map_plane(tgui_surface* surface) {
  constexpr int kPlane = 10000;  // logical units
  int32_t width, height;
  tgui_surface_size(surface, &width, &height);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, kPlane, kPlane);
  tgui_set_viewport_ext(surface, width, height);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
}

}  // namespace

Paint::Paint(std::int16_t kind) : product_(product(kind)) {}

void Paint::whole(tgui_surface* surface) {
  take_over();
  map_plane(surface);
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(surface);
  tavdg_destroy_drawing_tools();
}

void Paint::chart_alone(tgui_surface* surface) {
  take_over();
  map_plane(surface);
  tavd::chart_draw(tavd::dg.chart, surface, true, true);
}

// Takes the one diagram of the process over from the job before, which had another product.
void Paint::take_over() {
  if (tavd::dg.flowdata.kind == product_.kind) return;
  tavdg_init_empty(tgui_main_module(), 0);
  const FlowData& fd = product_;
  const bool log = fd.kind != tavd::kFanKind;
  tavd::dg.flowdata = fd;
  tavd::dg.chart = tavd::chart_create(log, log, fd.qvmin, fd.dpmin, fd.qvmax, fd.dpmax, 50, 100, 3, 0, 3, 0,
                                      "qv [l/s]", "dpt [Pa]", "BENCH");
  tavd::dg.ready = true;
  tavdg_set_operation_point(100, 100);
  tavdg_set_qvlimits(50, 300);
}

}  // namespace bench
