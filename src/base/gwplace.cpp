#include "base/gwplace.h"

#include <algorithm>

#include "base/gwwindow.h"

namespace tavd {
namespace {

constexpr int kMargin = 10;
constexpr int kBottomMargin = 30;
// What a task bar takes of the screen that a window is centred on.
constexpr int kTaskBar = 20;

struct Size {
  int width, height;
};

Size size(const gwrect& rect) {
  return {rect.right - rect.left, rect.bottom - rect.top};
}

void move_on_screen(tavd_hwnd window, Size own, int x, int y) {
  Size screen{};
  gwscreen(&screen.width, &screen.height);
  x = std::max(x, kMargin);
  y = std::max(y, kMargin);
  // Tested last, so that these win on a small screen.
  x = std::min(x, screen.width - kMargin - own.width);
  y = std::min(y, screen.height - kBottomMargin - own.height);
  gwmove(window, x, y);
}

}  // namespace

void gwwnd_to_cursor(tavd_hwnd window, std::int32_t dx, std::int32_t dy) {
  if (window == nullptr) return;
  int x = 0;
  int y = 0;
  gwcursor(&x, &y);
  move_on_screen(window, size(gwwindowrect(window)), x + dx, y + dy);
}

void gwwnd_center_on_cursor(tavd_hwnd window) {
  if (window == nullptr) return;
  const Size own = size(gwwindowrect(window));
  gwwnd_to_cursor(window, -(own.width / 2), -(own.height / 2));
}

void gwwnd_center(tavd_hwnd window) {
  if (window == nullptr) return;
  const Size own = size(gwwindowrect(window));
  gwrect around{};
  if (tavd_hwnd parent = gwparent(window)) {
    around = gwwindowrect(parent);
  } else {
    gwscreen(&around.right, &around.bottom);
    around.bottom -= kTaskBar;
  }
  const Size outer = size(around);
  move_on_screen(window, own, around.left + (outer.width - own.width) / 2,
                 around.top + (outer.height - own.height) / 2);
}

}  // namespace tavd
