#include "diagram/productdiagram.h"

#include <algorithm>

#include "base/gwtext.h"
#include "base/gwwindow.h"
#include "base/held.h"
#include "diagram/proportions.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"

namespace tavd {
namespace {

constexpr int kSmallestLabel = 5;  // logical units

void paint(const Painter& painter, tavd_hwnd hwnd) {
  gwpaint painting(hwnd);
  const tavd_hdc hdc = painting.hdc();
  const gwrect client = gwclientrect(hwnd);
  gwmapmode(hdc, kAnisotropic);
  gwwindoworg(hdc, 0, 0);
  gwwindowext(hdc, kDefaultExtent, kDefaultExtent);
  gwviewportext(hdc, client.right - client.left, client.bottom - client.top);
  gwbkmode(hdc, kTransparent);
  painter.create_tools();
  painter.draw(hdc);
  painting.end();
  painter.destroy_tools();
}

}  // namespace

void set_up(ProductDiagram& diagram, std::int16_t db) {
  tavfm_init(&diagram.familylist);
  diagram.db = db;
  diagram.xfactor = 1.0F;
  diagram.yfactor = 1.0F;
  diagram.width = kDefaultExtent;
  diagram.height = kDefaultExtent;
  diagram.resolution = TAVDG_RESOLUTION;
}

void release(ProductDiagram& diagram) {
  tavfm_release(&diagram.familylist);
  chart_destroy(diagram.chart);
  diagram.chart = nullptr;
}

void set_resolution(ProductDiagram& diagram, int n) {
  diagram.resolution = (n / 2) * 2;
}

bool has_limits(const FlowData& fd, bool from_zero) {
  const bool start = from_zero ? fd.qvmin >= 0.0F && fd.dpmin >= 0.0F : fd.qvmin > 0.0F && fd.dpmin > 0.0F;
  return fd.nhdd >= 1 && start && fd.qvmax > fd.qvmin && fd.dpmax > fd.dpmin;
}

void choose_narrow_title(ProductDiagram& diagram, tavb_rec rec) {
  if (diagram.usertitle[0] != 0) {
    gwstrcpyfield(diagram.title, diagram.usertitle, kChartTitleSize);
  } else {
    tavdf_copyproductcode(diagram.db, rec, diagram.title, kChartTitleSize);
  }
}

DiagramRanges base_ranges(const ProductDiagram& d) {
  DiagramRanges r{};
  chart_get_ranges(d.chart, &r.xmin, &r.ymin, &r.xmax, &r.ymax);
  return {r.xmin / d.xfactor, r.ymin / d.yfactor, r.xmax / d.xfactor, r.ymax / d.yfactor};
}

void draw_point_mark(tavd_hdc hdc, int x, int y, int radius) {
  gwcircle(hdc, x, y, radius);
  gwcircle(hdc, x, y, radius / 2);
  gwcircle(hdc, x, y, radius / 2 / 2);
}

void resize(ProductDiagram& diagram, int left, int top, int right, int bottom) {
  if (diagram.chart != nullptr) {
    chart_resize(diagram.chart, left, top, right, bottom);
    diagram.width = held<int>(std::int64_t{right} - left);
    diagram.height = held<int>(std::int64_t{bottom} - top);
  }
}

void resize_default(ProductDiagram& diagram) {
  if (diagram.chart != nullptr) {
    chart_resize_default(diagram.chart);
    diagram.width = kDefaultExtent;
    diagram.height = kDefaultExtent;
  }
}

ToolSizes tool_sizes(const ProductDiagram& diagram) {
  const int wide = std::max(diagram.height / kWidePenPart, 1);
  return {wide, wide > 1 ? wide / 2 : wide,
          held<std::int16_t>(std::int64_t{std::max(diagram.height / kLabelFontPart, kSmallestLabel)})};
}

std::intptr_t diagram_proc(const ProductDiagram& diagram, const Painter& painter, tavd_hwnd hwnd,
                           unsigned int msg, std::uintptr_t wparam, std::intptr_t lparam) {
  if (msg != kWmPaint || diagram.chart == nullptr || diagram.failed) {
    return gwdefproc(hwnd, msg, wparam, lparam);
  }
  paint(painter, hwnd);
  return 0;
}

}  // namespace tavd
