// Windows, dialogs and message boxes through USER.
#include "base/gwwindow.h"

#include <windows.h>

#include <new>
#include <type_traits>

namespace tavd {

// The library's procedures are handed to the platform as they are.
static_assert(std::is_same_v<gwprocedure, WNDPROC>);
static_assert(std::is_same_v<gwprocedure, DLGPROC>);

namespace {

constexpr int kWindowExtra = 8;  // bytes: one pointer-sized word
const LPCSTR kArrowCursor = MAKEINTRESOURCEA(0x7F00);

gwrect rect_of(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
          static_cast<int>(rect.bottom)};
}

}  // namespace

// A platform that knows one size of the class record only refuses the others.
bool gwregisterclass(tavd_hmodule module, const char* name, gwprocedure procedure, unsigned record_size) {
  WNDCLASSEXA window_class{};
  window_class.cbSize = record_size;
  window_class.style = CS_HREDRAW | CS_VREDRAW;
  window_class.lpfnWndProc = procedure;
  window_class.cbWndExtra = kWindowExtra;
  window_class.hInstance = module;
  window_class.hCursor = LoadCursorA(nullptr, kArrowCursor);
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(std::intptr_t{COLOR_WINDOW + 1});
  window_class.lpszClassName = name;
  return RegisterClassExA(&window_class) != 0;
}

gwpaint::gwpaint(tavd_hwnd window) : window_(window), hdc_(nullptr), platform_{} {
  static_assert(sizeof(PAINTSTRUCT) <= sizeof platform_ && alignof(PAINTSTRUCT) <= 8);
  hdc_ = BeginPaint(window, new (platform_) PAINTSTRUCT{});
}

void gwpaint::end() {
  EndPaint(window_, std::launder(reinterpret_cast<PAINTSTRUCT*>(platform_)));
}

gwrect gwclientrect(tavd_hwnd window) {
  RECT rect{};
  GetClientRect(window, &rect);
  return rect_of(rect);
}

// A null window would invalidate all windows of the screen.
void gwinvalidate(tavd_hwnd window) {
  if (window != nullptr) InvalidateRect(window, nullptr, TRUE);
}

std::intptr_t gwwindowlong(tavd_hwnd window) {
  return GetWindowLongPtrA(window, 0);
}

void gwsetwindowlong(tavd_hwnd window, std::intptr_t value) {
  SetWindowLongPtrA(window, 0, value);
}

std::intptr_t gwdefproc(tavd_hwnd window, unsigned message, std::uintptr_t wparam, std::intptr_t lparam) {
  return DefWindowProcA(window, message, wparam, lparam);
}

std::intptr_t gwsenditem(tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                         std::intptr_t lparam) {
  return SendDlgItemMessageA(dialog, item, message, wparam, lparam);
}

std::intptr_t gwsenditemw(tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                          std::intptr_t lparam) {
  return SendDlgItemMessageW(dialog, item, message, wparam, lparam);
}

gwrect gwwindowrect(tavd_hwnd window) {
  RECT rect{};
  GetWindowRect(window, &rect);
  return rect_of(rect);
}

tavd_hwnd gwparent(tavd_hwnd window) {
  return GetParent(window);
}

void gwscreen(int* width, int* height) {
  *width = GetSystemMetrics(SM_CXSCREEN);
  *height = GetSystemMetrics(SM_CYSCREEN);
}

void gwcursor(int* x, int* y) {
  POINT point{};
  GetCursorPos(&point);
  *x = static_cast<int>(point.x);
  *y = static_cast<int>(point.y);
}

void gwmove(tavd_hwnd window, int x, int y) {
  SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

tavd_hwnd gwfocus() {
  return GetFocus();
}

void gwsetfocus(tavd_hwnd window) {
  SetFocus(window);
}

tavd_hwnd gwcreatetoolwindow(tavd_hmodule module, const char* name, const char* title, int x, int y,
                             int width, int height) {
  HWND window = CreateWindowExA(WS_EX_TOOLWINDOW, name, title, WS_VISIBLE | WS_CLIPCHILDREN | WS_CAPTION, x,
                                y, width, height, nullptr, nullptr, module, nullptr);
  if (window != nullptr) ShowWindow(window, SW_SHOW);
  return window;
}

gwframe gwframesizes() {
  return {GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CYBORDER), GetSystemMetrics(SM_CYSMCAPTION)};
}

void gwdialogbaseunits(int* x, int* y) {
  const LONG units = GetDialogBaseUnits();
  *x = LOWORD(units);
  *y = HIWORD(units);
}

std::uint32_t gwsyscolour(int index) {
  return GetSysColor(index);
}

std::intptr_t gwrundialog(tavd_hmodule module, const void* dialog_template, tavd_hwnd owner,
                          gwprocedure procedure) {
  return DialogBoxIndirectParamA(module, static_cast<LPCDLGTEMPLATEA>(dialog_template), owner, procedure, 0);
}

void gwenddialog(tavd_hwnd dialog, std::intptr_t result) {
  EndDialog(dialog, result);
}

int gwmessagebox(tavd_hwnd owner, const char* text, const char* caption, std::uint32_t flags) {
  return MessageBoxA(owner, text, caption, flags);
}

}  // namespace tavd
