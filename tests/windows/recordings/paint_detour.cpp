#include "paint_detour.h"

#include <stdexcept>

namespace recordings {
namespace {

constexpr char kLibrary[] = "tavd.dll";

HDC painting;

HDC WINAPI begin_paint(HWND, PAINTSTRUCT*) {
  return painting;
}

BOOL WINAPI end_paint(HWND, const PAINTSTRUCT*) {
  return TRUE;
}

}  // namespace

PaintDetour::PaintDetour(HDC target)
    : begin_(GetModuleHandleA(kLibrary), "BeginPaint", reinterpret_cast<void*>(begin_paint)),
      end_(GetModuleHandleA(kLibrary), "EndPaint", reinterpret_cast<void*>(end_paint)) {
  if (begin_.original() == nullptr || end_.original() == nullptr) {
    throw std::runtime_error("tavd.dll does not import BeginPaint and EndPaint");
  }
  painting = target;
}

}  // namespace recordings
