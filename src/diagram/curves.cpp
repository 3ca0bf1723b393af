#include "diagram/curves.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "calc/classes.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "diagram/flowdiagram.h"
#include "tavd/tavdg.h"

namespace tavd {
namespace {

constexpr double kSmallestFlow = 1e-06;           // l/s or m/s, of a row that counts
constexpr double kSmallestReferenceFlow = 1e-05;  // the same, of the reference point
constexpr double kSmallestDuct = 1e-09;           // m2
constexpr float kHalfAirDensity = 0.6F;           // kg/m3
constexpr double kSamePosition = 0.001;           // damper positions this close are one
constexpr double kAtRightEdge = 0.98;  // of xmax: a line that ends from here on leaves at the right

bool has_reference(const FlowData& fd) {
  return fd.nref != 0;
}

bool has_damper(const FlowData& fd) {
  return fd.ndamper != 0;
}

// What is drawn for a data kind. A null function draws nothing.
struct KindDrawing {
  bool (*has_curve)(const FlowData& fd);
  void (*draw_curve)(tavd_hdc hdc);
  void (*draw_sound)(tavd_hdc hdc);  // level marks or lines
  std::int16_t kind;
  bool curve_only;  // neither sound nor operating point nor flow limits
};

constexpr KindDrawing kDrawings[] = {
    {has_reference, draw_ref_curve, nullptr, 10, false},  // fixed resistance
    {has_reference, draw_ref_curve, nullptr, 11, false},  // the same by velocity
    {has_damper, draw_damper_lines, nullptr, 20, false},  // adjustable damper
    {has_damper, draw_damper_lines, nullptr, 22, false},  // the same by velocity
    {nullptr, nullptr, nullptr, kFanKind, true},
};

constexpr KindDrawing kLimitsOnly = {nullptr, nullptr, nullptr, 0, false};

const KindDrawing& drawing_of(std::int16_t kind) {
  const auto* found = std::find_if(std::begin(kDrawings), std::end(kDrawings),
                                   [kind](const auto& d) { return d.kind == kind; });
  return found != std::end(kDrawings) ? *found : kLimitsOnly;
}

void draw_operating_point(tavd_hdc hdc);
void draw_flow_limits(tavd_hdc hdc);

}  // namespace

// The dynamic pressure comes off for supply air and on top for extract air; other classes show the total
// pressure under either title.
void dg_static_dp(float qv, float* dp) {
  if (dg.dptype == 0) {
    return;
  }
  const int sign = -static_to_total_sign(dg.flowdata);
  if (sign == 0) {
    return;
  }
  float v = qv;
  if (dg.flowdata.isvelocity == 0) {
    const float area = dg.flowdata.ductarea;
    if (area < kSmallestDuct) {
      return;
    }
    v = (qv / 1000.0F) / area;
  }
  *dp += static_cast<float>(sign) * kHalfAirDensity * v * v;
}

// The square law is a straight line on logarithmic axes: one segment from end to end.
void draw_ref_curve(tavd_hdc hdc) {
  const float qvref = dg.flowdata.qvref;
  float dpref = dg.flowdata.dpref;
  if (!(qvref > kSmallestReferenceFlow)) {
    return;
  }
  tavca_param_add_dp(&dg.flowdata, qvref, &dpref);
  const float k = resistance(qvref, dpref);
  const DiagramRanges r = dg_ranges();
  float y1 = k * r.xmin * r.xmin;
  float y2 = k * r.xmax * r.xmax;
  if (y1 <= r.ymax && y2 >= r.ymin) {
    const Selected pen(hdc, dg.pen_curve);
    dg_static_dp(r.xmin, &y1);
    dg_static_dp(r.xmax, &y2);
    dg_line(hdc, r.xmin, y1, r.xmax, y2);
  }
}

namespace {

struct DamperLine {
  int row;
  float pos;
  bool whole;  // a whole number of the damper's scale
  float k;     // Pa/(l/s)^2
  float x2;    // where the line meets the upper edge, l/s
};

void label_damper_line(tavd_hdc hdc, const DiagramRanges& r, const DamperLine& line);

}  // namespace

void draw_damper_lines(tavd_hdc hdc) {
  const FlowData& fd = dg.flowdata;
  const DiagramRanges r = dg_ranges();
  const Selected font(hdc, dg.font_label);
  Selected pen(hdc, dg.pen_curve);
  const int rows = row_count(fd.ndamper, TAVD_DAMPER_ROWS);
  for (int i = 0; i < rows; ++i) {
    const DamperPoint row = fd.damper[i];
    if (!(row.qv > kSmallestFlow)) {
      continue;
    }
    float dpref = row.dp;
    tavca_param_add_dp(&fd, row.qv, &dpref);
    dg_static_dp(row.qv, &dpref);
    const float k = resistance(row.qv, dpref);
    if (!(k > 0.0F)) {
      continue;
    }
    const auto x1 = static_cast<float>(std::sqrt(static_cast<double>(r.ymin / k)));
    const auto x2 = static_cast<float>(std::sqrt(static_cast<double>(r.ymax / k)));
    const double pos = row.pos;
    const bool whole = pos - std::floor(pos) < kSamePosition;
    pen.change(whole ? dg.pen_curve : dg.pen_minor);
    dg_line(hdc, x1, r.ymin, x2, r.ymax);
    if (x1 <= r.xmax) {
      label_damper_line(hdc, r, {i, row.pos, whole, k, x2});
    }
  }
}

namespace {

constexpr std::size_t kTextSize = 256;

// The text of a damper line: the host's label for its position, else the position, if that is a whole number
// or the first of all. Returns whether the position stands for lack of a label on the first line.
bool damper_text(const DamperLine& line, char (&text)[kTextSize]) {
  text[0] = 0;
  for (int j = 0; j < dg.nalabels; ++j) {
    const ALabel& label = dg.alabels[j];
    if (std::fabs(label.value - line.pos) < kSamePosition && label.text[0] != 0) {
      std::snprintf(text, sizeof text, "%s", label.text);
    }
  }
  if (text[0] != 0) {
    return false;
  }
  if (line.row == 0) {
    std::snprintf(text, sizeof text, "%s %0.0f", dg.damperpos_label, static_cast<double>(line.pos));
    return true;
  }
  if (line.whole) {
    std::snprintf(text, sizeof text, "%0.0f", static_cast<double>(line.pos));
  }
  return false;
}

// The length of the conversion that the text behind a "%" begins, 0 if it begins none: flags, width,
// precision and size of a printf conversion, then its letter.
std::size_t conversion_length(const char* text) {
  std::size_t n = std::strspn(text, "-+ #0");
  n += text[n] == '*' ? 1 : std::strspn(text + n, "0123456789");
  if (text[n] == '.') {
    ++n;
    n += text[n] == '*' ? 1 : std::strspn(text + n, "0123456789");
  }
  n += std::strspn(text + n, "hlLqjzt");
  return text[n] != 0 && std::strchr("diouxXeEfFgGaAcCsSpn", text[n]) != nullptr ? n + 1 : 0;
}

// Texts of damper lines are read as formats with nothing to format: "%%" is one percent sign, a conversion
// gives nothing. They come from the host, so no print function ever sees them as a format.
void expand_format(char* text) {
  char* to = text;
  for (const char* from = text; *from != 0;) {
    if (*from == '%') {
      if (from[1] == '%') {
        ++from;
      } else if (const std::size_t n = conversion_length(from + 1); n != 0) {
        from += 1 + n;
        continue;
      }
    }
    *to++ = *from++;
  }
  *to = 0;
}

// Puts the text where the line leaves the plot, at the right or at the top.
void label_damper_line(tavd_hdc hdc, const DiagramRanges& r, const DamperLine& line) {
  const bool at_right = line.x2 >= kAtRightEdge * static_cast<double>(r.xmax);
  const float qv = at_right ? r.xmax : line.x2;
  const float dp = at_right ? line.k * r.xmax * r.xmax : r.ymax;
  gwtextalign(hdc, at_right ? kAlignLeftBottom : kAlignCenterBottom);
  char text[kTextSize];
  if (damper_text(line, text)) {
    gwtextalign(hdc, kAlignRightBottom);
  }
  expand_format(text);
  if (text[0] != 0 && dg_has_place(qv, dp)) {
    const int dx = at_right ? dg.width / 200 : 0;
    const int dy = at_right ? dg.height / 50 : -(dg.height / 500);
    gwtextoutn(hdc, moved(dg_x_pixel(qv), dx), moved(dg_y_pixel(dp), dy), text,
               static_cast<int>(std::strlen(text)));
  }
}

// Circles around the point, or a line at its flow if the pressure is off the chart.
void draw_operating_point(tavd_hdc hdc) {
  const DiagramRanges r = dg_ranges();
  const bool qv_inside = dg.qv > r.xmin && dg.qv < r.xmax;
  const bool dp_inside = dg.dp > r.ymin && dg.dp < r.ymax;
  if (!qv_inside) {
    return;
  }
  const Selected pen(hdc, dg.pen_point);
  if (dp_inside) {
    draw_point_mark(hdc, dg_x_pixel(dg.qv), dg_y_pixel(dg.dp), dg.width / 50);
  } else {
    dg_line(hdc, dg.qv, r.ymin, dg.qv, r.ymax);
  }
}

// A bracket on the lower edge of the plot whose foot points to the side. Logical units, not scaled.
void draw_flow_limit(tavd_hdc hdc, float qv, int foot) {
  if (qv > dg.flowdata.qvmin && qv < dg.flowdata.qvmax) {
    const int x = dg_x_pixel(qv);
    const int y = dg_y_pixel(dg.flowdata.dpmin);
    gwline(hdc, x, moved(y, -5), x, moved(y, 10));
    gwline(hdc, x, moved(y, 10), moved(x, foot), moved(y, 10));
  }
}

void draw_flow_limits(tavd_hdc hdc) {
  if (dg.qvlimit1 > 0.0F) {
    const Selected pen(hdc, dg.pen_limit);
    draw_flow_limit(hdc, dg.qvlimit1, 5);
    draw_flow_limit(hdc, dg.qvlimit2, -5);
  }
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdg_draw_diagram(tavd_hdc hdc) {
  if (!dg.ready || dg.chart == nullptr) {
    return;
  }
  chart_draw(dg.chart, hdc, true, true);
  const KindDrawing& drawing = drawing_of(dg.flowdata.kind);
  if (drawing.draw_curve != nullptr && drawing.has_curve(dg.flowdata)) {
    drawing.draw_curve(hdc);
  }
  if (drawing.curve_only) {
    return;
  }
  if (drawing.draw_sound != nullptr && dg.flowdata.nlw != 0) {
    drawing.draw_sound(hdc);
  }
  draw_operating_point(hdc);
  draw_flow_limits(hdc);
}
