// Recordings through GDI: what is drawn goes into an enhanced metafile in memory, whose records are then
// read.
#include <windows.h>

#include "metafile.h"
#include "paint_detour.h"
#include "recording.h"

namespace recordings {

tavd_hmodule module() {
  return GetModuleHandleA(nullptr);
}

std::string drawn(const std::function<void(tavd_hdc)>& draw) {
  const HDC hdc = CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
  if (hdc == nullptr) return "no metafile\n";
  draw(hdc);
  const HENHMETAFILE file = CloseEnhMetaFile(hdc);
  std::string text = operations_of(file);
  DeleteEnhMetaFile(file);
  return text;
}

std::string painted(WindowProcedure procedure, int width, int height) {
  const HWND window = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, width, height, nullptr, nullptr,
                                      GetModuleHandleA(nullptr), nullptr);
  if (window == nullptr) return "no window\n";
  std::string text = drawn([&](tavd_hdc hdc) {
    const PaintDetour detour(hdc);
    procedure(window, WM_PAINT, 0, 0);
  });
  DestroyWindow(window);
  return text;
}

}  // namespace recordings
