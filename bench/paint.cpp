#include "paint.h"

#include <cmath>
#include <cstring>

#include "diagram/flowdiagram_draw.h"
#include "tavd/attributes.h"

namespace bench {

namespace {

// A product of the kind with believable tables.
FlowData product(std::int16_t kind) {
  FlowData fd{};
  std::memcpy(fd.szclass, "TVX", 4);
  fd.kind = kind;
  fd.nhdd = 1;
  fd.qvmin = kind == TAVD_KIND_FAN ? 0.0F : 20.0F;
  fd.qvmax = 500;
  fd.dpmin = kind == TAVD_KIND_FAN ? 0.0F : 5.0F;
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
      row.qv = kind == TAVD_KIND_RANGE ? qv : std::sqrt(dp / k);
      row.dp = dp;
      for (std::uint8_t& band : row.lw) band = static_cast<std::uint8_t>(22 + 2 * i + 12 * j);
    }
  }
  return fd;
}

// The diagram's drawing plane over the whole surface, as its window maps it.
void map_plane(tgui_surface* surface) {
  int32_t width, height;
  tgui_surface_size(surface, &width, &height);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, TAVDG_EXTENT, TAVDG_EXTENT);
  tgui_set_viewport_ext(surface, width, height);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
}

}  // namespace

Paint::Paint(std::int16_t kind) {
  constexpr std::int16_t kNoDatabase = 0;
  tavd::set_up(diagram_, kNoDatabase);
  diagram_.flowdata = product(kind);
  const FlowData& fd = diagram_.flowdata;
  const bool log = kind != TAVD_KIND_FAN;
  const tavd::ChartAxis flow = {fd.qvmin, fd.qvmax, 50, 3, 0, log};
  const tavd::ChartAxis pressure = {fd.dpmin, fd.dpmax, 100, 3, 0, log};
  diagram_.chart = tavd::chart_create(flow, pressure, "qv [l/s]", "dpt [Pa]", "BENCH");
  diagram_.ready = true;
  diagram_.qv = 100;
  diagram_.dp = 100;
  diagram_.qvlimit1 = 50;
  diagram_.qvlimit2 = 300;
}

Paint::~Paint() {
  tavd::release(diagram_);
}

void Paint::whole(tgui_surface* surface) {
  map_plane(surface);
  tavd::create_tools(diagram_);
  tavd::draw(diagram_, surface);
  tavd::destroy_tools(diagram_);
}

void Paint::chart_alone(tgui_surface* surface) {
  map_plane(surface);
  tavd::chart_draw(diagram_.chart, surface, true, true);
}

}  // namespace bench
