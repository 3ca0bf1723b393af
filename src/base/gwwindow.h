// Windows, dialog items and their placement, as far as the library needs them of the platform. Message
// numbers are the same on all platforms.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

inline constexpr unsigned kWmCreate = 0x0001;
inline constexpr unsigned kWmDestroy = 0x0002;
inline constexpr unsigned kWmPaint = 0x000F;
inline constexpr unsigned kWmSetFont = 0x0030;
inline constexpr unsigned kWmNcActivate = 0x0086;
inline constexpr unsigned kWmInitDialog = 0x0110;
inline constexpr unsigned kWmCommand = 0x0111;

using gwprocedure = std::intptr_t (*)(tavd_hwnd, unsigned int, std::uintptr_t, std::intptr_t);

struct gwrect {
  int left, top, right, bottom;
};

// Registers a window class: redrawn on resizing, arrow cursor, background of the window colour, no class
// extra bytes, 8 window extra bytes. `record_size` is the size field of the class record as the platform gets
// it, 0x50 or 0x48. False if the platform refuses.
bool gwregisterclass(tavd_hmodule module, const char* name, gwprocedure procedure, unsigned record_size);

// Painting inside kWmPaint. The paint object lives on the stack of the window procedure.
class gwpaint {
 public:
  explicit gwpaint(tavd_hwnd window);
  gwpaint(const gwpaint&) = delete;
  gwpaint& operator=(const gwpaint&) = delete;
  tavd_hdc hdc() const { return hdc_; }
  void end();  // once, when the drawing is done

 private:
  tavd_hwnd window_;
  tavd_hdc hdc_;
  alignas(8) unsigned char platform_[96];  // the platform's paint record
};

gwrect gwclientrect(tavd_hwnd window);
void gwinvalidate(tavd_hwnd window);           // all of it, to be erased and painted
std::intptr_t gwwindowlong(tavd_hwnd window);  // the window's extra word
void gwsetwindowlong(tavd_hwnd window, std::intptr_t value);
std::intptr_t gwdefproc(tavd_hwnd window, unsigned message, std::uintptr_t wparam, std::intptr_t lparam);

// Dialog items by control id, narrow and wide.
std::intptr_t gwsenditem(tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                         std::intptr_t lparam);
std::intptr_t gwsenditemw(tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                          std::intptr_t lparam);

// Placement, for gwplace.cpp and gwmsg.cpp.
gwrect gwwindowrect(tavd_hwnd window);
tavd_hwnd gwparent(tavd_hwnd window);  // null for none
void gwscreen(int* width, int* height);
void gwcursor(int* x, int* y);
void gwmove(tavd_hwnd window, int x, int y);  // no size change, no change of z-order
tavd_hwnd gwfocus();
void gwsetfocus(tavd_hwnd window);

// A visible tool window with a caption, without a parent, of a registered class. Null if the
// platform refuses.
tavd_hwnd gwcreatetoolwindow(tavd_hmodule module, const char* name, const char* title, int x, int y,
                             int width, int height);
// What a tool window's frame adds, device units.
struct gwframe {
  int border_x, border_y, small_caption;
};
gwframe gwframesizes();
// Dialog base units, device units.
void gwdialogbaseunits(int* x, int* y);
// A system colour, 0x00BBGGRR.
std::uint32_t gwsyscolour(int index);

// Dialogs and message boxes, for gwmsg.cpp. `dialog_template` is a DLGTEMPLATE with its items; both functions
// answer -1 or 0 if the platform cannot show them, else the dialog's result or the button's id.
std::intptr_t gwrundialog(tavd_hmodule module, const void* dialog_template, tavd_hwnd owner,
                          gwprocedure procedure);
void gwenddialog(tavd_hwnd dialog, std::intptr_t result);
int gwmessagebox(tavd_hwnd owner, const char* text, const char* caption, std::uint32_t flags);

}  // namespace tavd
