#include "base/gwmonitor.h"

#include "base/gwarray.h"
#include "base/gwgdi.h"
#include "base/gwwindow.h"

namespace tavd {
namespace {

constexpr char kClassName[] = "GWADEBWND";
constexpr char kTitle[] = "Gwarray - Debug monitor";
constexpr unsigned kClassRecordSize = 0x50;
constexpr int kWidthInBaseUnits = 25;

tavd_hwnd monitor_wnd = nullptr;
std::int32_t monitor_count = 0;
bool monitor_registered = false;

void count(std::int32_t change) {
  monitor_count += change;
  gwarray_monitor_update(monitor_count);
}

void paint(tavd_hwnd window) {
  int base_x = 0;
  int base_y = 0;
  gwdialogbaseunits(&base_x, &base_y);
  const int place = base_y / 4;
  gwpaint painting(window);
  tavd_hdc hdc = painting.hdc();
  const int saved = gwsavedc(hdc);
  gwbkmode(hdc, kTransparent);
  gwselect(hdc, gwstockobject(kAnsiVarFont));
  gwtextout(hdc, place, place, "Initialized arrays: %ld", static_cast<long>(gwwindowlong(window)));
  gwrestoredc(hdc, saved);
  painting.end();
}

std::intptr_t gwarray_monitor_proc(tavd_hwnd window, unsigned message, std::uintptr_t wparam,
                                   std::intptr_t lparam) {
  switch (message) {
    case kWmCreate:
      gwsetwindowlong(window, 0);
      return 0;
    case kWmDestroy:
      monitor_wnd = nullptr;
      gwarray_observe(nullptr);
      return 0;
    case kWmPaint:
      paint(window);
      return 0;
    // The caption always looks active.
    case kWmNcActivate:
      return gwdefproc(window, message, 1, lparam);
    default:
      return gwdefproc(window, message, wparam, lparam);
  }
}

}  // namespace

void gwarray_monitor_open(tavd_hmodule instance, std::int32_t x, std::int32_t y) {
  if (!monitor_registered) {
    gwregisterclass(instance, kClassName, gwarray_monitor_proc, kClassRecordSize);
    monitor_registered = true;
  }
  int base_x = 0;
  int base_y = 0;
  gwdialogbaseunits(&base_x, &base_y);
  const gwframe frame = gwframesizes();
  const int width = kWidthInBaseUnits * base_x + 2 * frame.border_x;
  const int height = frame.small_caption + 2 * (base_y + frame.border_y);
  monitor_wnd = gwcreatetoolwindow(instance, kClassName, kTitle, x, y, width, height);
  gwarray_observe(monitor_wnd != nullptr ? count : nullptr);
}

void gwarray_monitor_update(std::int32_t n) {
  if (monitor_wnd == nullptr) return;
  gwsetwindowlong(monitor_wnd, n);
  gwinvalidate(monitor_wnd);
}

tavd_hwnd gwarray_monitor_window() {
  return monitor_wnd;
}

}  // namespace tavd
