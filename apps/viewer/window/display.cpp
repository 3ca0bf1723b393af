#include "window/display.h"

#include <algorithm>

namespace viewer {
namespace {

constexpr int kStandardDpi = USER_DEFAULT_SCREEN_DPI;

// A function of user32 that older systems lack.
template <typename Function>
Function* of_user32(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32"), name);
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

int system_dpi() {
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return std::max(dpi, kStandardDpi);
}

LOGFONTW message_font(int dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  using ParametersForDpi = BOOL WINAPI(UINT, UINT, void*, UINT, UINT);
  auto* parameters = of_user32<ParametersForDpi>("SystemParametersInfoForDpi");
  if (parameters != nullptr &&
      parameters(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi)) != FALSE) {
    return metrics.lfMessageFont;
  }
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, system_dpi());
  return metrics.lfMessageFont;
}

int height_of_line(HFONT font) {
  HDC screen = GetDC(nullptr);
  HGDIOBJ former = SelectObject(screen, font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(screen, &metrics);
  SelectObject(screen, former);
  ReleaseDC(nullptr, screen);
  return static_cast<int>(metrics.tmHeight);
}

}  // namespace

int dpi_of(HWND window) {
  auto* of_window = of_user32<UINT WINAPI(HWND)>("GetDpiForWindow");
  const int dpi = of_window != nullptr ? static_cast<int>(of_window(window)) : 0;
  return dpi > 0 ? dpi : system_dpi();
}

int scaled(int pixels, int dpi) {
  return MulDiv(pixels, dpi, kStandardDpi);
}

UiFont::~UiFont() {
  if (font_ != nullptr) DeleteObject(font_);
}

// Controls may draw with the former font until they have the new one, so their owner sets it at once.
void UiFont::make(int dpi) {
  const LOGFONTW wanted = message_font(dpi);
  HFONT made = CreateFontIndirectW(&wanted);
  if (made == nullptr) return;
  if (font_ != nullptr) DeleteObject(font_);
  font_ = made;
  line_height_ = height_of_line(font_);
}

}  // namespace viewer
