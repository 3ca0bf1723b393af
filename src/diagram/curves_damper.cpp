// The lines of a damper's settings and their texts.
#include "diagram/curves.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "diagram/flowdiagram.h"
#include "diagram/proportions.h"

namespace tavd {
namespace {

constexpr double kSmallestFlowOfRow = 1e-06;  // l/s or m/s, of a row that counts
constexpr double kSamePosition = 0.001;       // damper positions this close are one
constexpr double kAtRightEdge = 0.98;         // of xmax: a line that ends from here on leaves at the right

struct DamperLine {
  int row;
  float pos;
  bool whole;  // a whole number of the damper's scale
  float k;     // Pa/(l/s)^2
  float x2;    // where the line meets the upper edge, l/s
};

constexpr std::size_t kTextSize = 256;

// The text of a damper line: the host's label for its position, else the position, if that is a whole number
// or the first of all. Returns whether the position stands for lack of a label on the first line.
bool damper_text(const FlowDiagram& dg, const DamperLine& line, char (&text)[kTextSize]) {
  text[0] = 0;
  for (int j = 0; j < dg.nalabels; ++j) {
    const ALabel& label = dg.alabels[j];
    if (std::fabs(label.value - line.pos) < kSamePosition && label.text[0] != 0) {
      std::snprintf(text, sizeof text, "%s", label.text);
    }
  }
  if (text[0] != 0) return false;
  if (line.row == 0) {
    std::snprintf(text, sizeof text, "%s %0.0f", dg.damperpos_label, static_cast<double>(line.pos));
    return true;
  }
  if (line.whole) std::snprintf(text, sizeof text, "%0.0f", static_cast<double>(line.pos));
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
void label_damper_line(const FlowDiagram& dg, tavd_hdc hdc, const DiagramRanges& r, const DamperLine& line) {
  const bool at_right = line.x2 >= kAtRightEdge * static_cast<double>(r.xmax);
  const float qv = at_right ? r.xmax : line.x2;
  const float dp = at_right ? line.k * r.xmax * r.xmax : r.ymax;
  gwtextalign(hdc, at_right ? kAlignLeftBottom : kAlignCenterBottom);
  char text[kTextSize];
  if (damper_text(dg, line, text)) gwtextalign(hdc, kAlignRightBottom);
  expand_format(text);
  if (text[0] != 0 && has_place(dg, qv, dp)) {
    const int dx = at_right ? dg.width / kLabelAsidePart : 0;
    const int dy = at_right ? dg.height / kLabelBelowPart : -(dg.height / kLabelAbovePart);
    gwtextoutn(hdc, moved(x_pixel(dg, qv), dx), moved(y_pixel(dg, dp), dy), text,
               static_cast<int>(std::strlen(text)));
  }
}

}  // namespace

void draw_damper_lines(const FlowDiagram& dg, tavd_hdc hdc) {
  const FlowData& fd = dg.flowdata;
  const DiagramRanges r = base_ranges(dg);
  const Selected font(hdc, dg.font_label);
  Selected pen(hdc, dg.pen_curve);
  const int rows = row_count(fd.ndamper, TAVD_DAMPER_ROWS);
  for (int i = 0; i < rows; ++i) {
    const DamperPoint row = fd.damper[i];
    if (!(row.qv > kSmallestFlowOfRow)) continue;
    float dpref = row.dp;
    param_add_dp(&fd, row.qv, &dpref);
    show_static(dg, row.qv, &dpref);
    const float k = resistance(row.qv, dpref);
    if (!(k > 0.0F)) continue;
    const auto x1 = static_cast<float>(std::sqrt(static_cast<double>(r.ymin / k)));
    const auto x2 = static_cast<float>(std::sqrt(static_cast<double>(r.ymax / k)));
    const double pos = row.pos;
    const bool whole = pos - std::floor(pos) < kSamePosition;
    pen.change(whole ? dg.pen_curve : dg.pen_minor);
    draw_line(dg, hdc, x1, r.ymin, x2, r.ymax);
    if (x1 <= r.xmax) label_damper_line(dg, hdc, r, {i, row.pos, whole, k, x2});
  }
}

}  // namespace tavd
