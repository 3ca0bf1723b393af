// Figures made of the platform's own ones, the same for every platform.
#include "base/gwgdi.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace tavd {

void gwline(tavd_hdc hdc, int x1, int y1, int x2, int y2) {
  gwmoveto(hdc, x1, y1);
  gwlineto(hdc, x2, y2);
}

void gwdiscard(std::initializer_list<gwobject*> tools) {
  for (gwobject* tool : tools) {
    gwdelete(*tool);
    *tool = nullptr;
  }
}

void gwcircle(tavd_hdc hdc, int x, int y, int r) {
  gwellipse(hdc, x - r, y - r, x + r, y + r);
}

void gwtextout(tavd_hdc hdc, int x, int y, const char* format, ...) {
  constexpr int kTextSize = 256;
  if (format == nullptr) return;
  char text[kTextSize];
  std::va_list arguments;
  va_start(arguments, format);
  const int printed = std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  const int length = std::min(printed, kTextSize - 1);
  if (length > 0) gwtextoutn(hdc, x, y, text, length);
}

}  // namespace tavd
