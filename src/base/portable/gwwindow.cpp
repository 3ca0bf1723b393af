// Windows, dialogs and message boxes through libtavdgui.
#include "base/gwwindow.h"

#include "tavdgui/tavdgui.h"

namespace tavd {
namespace {

constexpr std::uint32_t kRedrawOnResize = 3;  // in both directions
constexpr std::int32_t kWindowExtra = 8;      // bytes
constexpr std::uint32_t kArrowCursor = 0x7F00;
constexpr std::uint32_t kWindowBackground = 6;  // index of the window colour, plus 1

constexpr std::uint32_t kToolWindowStyle = 0x12C00000;  // WS_VISIBLE, WS_CLIPCHILDREN, WS_CAPTION

gwrect rect_of(const tgui_rect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

// The functions of libtavdgui that fill two numbers, with numbers that are set whatever they do.
void pair(void (*get)(std::int32_t*, std::int32_t*), int* first, int* second) {
  std::int32_t a = 0;
  std::int32_t b = 0;
  get(&a, &b);
  *first = a;
  *second = b;
}

}  // namespace

bool gwregisterclass(tavd_hmodule module, const char* name, gwprocedure procedure, unsigned record_size) {
  tgui_class window_class{};
  window_class.size = record_size;
  window_class.style = kRedrawOnResize;
  window_class.procedure = procedure;
  window_class.window_extra = kWindowExtra;
  window_class.module = module;
  window_class.cursor = kArrowCursor;
  window_class.background = kWindowBackground;
  window_class.name = name;
  return tgui_register_class(&window_class) != 0;
}

// libtavdgui keeps what it needs for painting with the window.
gwpaint::gwpaint(tavd_hwnd window) : window_(window), hdc_(tgui_begin_paint(window)), platform_{} {}

void gwpaint::end() {
  tgui_end_paint(window_);
}

gwrect gwclientrect(tavd_hwnd window) {
  tgui_rect rect{};
  tgui_client_rect(window, &rect);
  return rect_of(rect);
}

void gwinvalidate(tavd_hwnd window) {
  tgui_invalidate(window);
}

std::intptr_t gwwindowlong(tavd_hwnd window) {
  return tgui_window_long(window, 0);
}

void gwsetwindowlong(tavd_hwnd window, std::intptr_t value) {
  tgui_set_window_long(window, 0, value);
}

std::intptr_t gwdefproc(tavd_hwnd window, unsigned message, std::uintptr_t wparam, std::intptr_t lparam) {
  return tgui_default_procedure(window, message, wparam, lparam);
}

std::intptr_t gwsenditem(tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                         std::intptr_t lparam) {
  return tgui_send_item_message(dialog, item, message, wparam, lparam);
}

std::intptr_t gwsenditemw(tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                          std::intptr_t lparam) {
  return tgui_send_item_messagew(dialog, item, message, wparam, lparam);
}

gwrect gwwindowrect(tavd_hwnd window) {
  tgui_rect rect{};
  tgui_window_rect(window, &rect);
  return rect_of(rect);
}

tavd_hwnd gwparent(tavd_hwnd window) {
  return tgui_parent(window);
}

void gwscreen(int* width, int* height) {
  pair(tgui_screen, width, height);
}

void gwcursor(int* x, int* y) {
  pair(tgui_cursor, x, y);
}

void gwmove(tavd_hwnd window, int x, int y) {
  tgui_move_window(window, x, y, 0, 0);
}

tavd_hwnd gwfocus() {
  return tgui_focus();
}

void gwsetfocus(tavd_hwnd window) {
  tgui_set_focus(window);
}

tavd_hwnd gwcreatetoolwindow(tavd_hmodule module, const char* name, const char* title, int x, int y,
                             int width, int height) {
  return tgui_create_window(name, title, kToolWindowStyle, x, y, width, height, nullptr, 0, module);
}

// Windows of libtavdgui are all client area.
gwframe gwframesizes() {
  return {};
}

void gwdialogbaseunits(int* x, int* y) {
  pair(tgui_dialog_base_units, x, y);
}

std::uint32_t gwsyscolour(int index) {
  return tgui_system_colour(index);
}

std::intptr_t gwrundialog(tavd_hmodule module, const void* dialog_template, tavd_hwnd owner,
                          gwprocedure procedure) {
  return tgui_dialog_box(module, dialog_template, owner, procedure);
}

void gwenddialog(tavd_hwnd dialog, std::intptr_t result) {
  tgui_end_dialog(dialog, result);
}

int gwmessagebox(tavd_hwnd owner, const char* text, const char* caption, std::uint32_t flags) {
  return tgui_message_box(owner, text, caption, flags);
}

}  // namespace tavd
