// The cached pens and brushes of the system's colours, the debug monitor and the placing of windows.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>

#include "base/gwarray.h"
#include "base/gwmonitor.h"
#include "base/gwplace.h"
#include "base/gwsys.h"
#include "host.h"
#include "live_objects.h"

namespace {

using tavdtest::live_gdi_objects;

class SystemTools : public testing::Test {
 protected:
  SystemTools() : before_(live_gdi_objects()) { tavd::gwInit(GetModuleHandleA(nullptr)); }
  ~SystemTools() override {
    tavd::gwExit();
    EXPECT_EQ(live_gdi_objects(), before_);
    tavd::gwInit(nullptr);
    tavd::gwExit();
  }
  int made() const { return live_gdi_objects() - before_; }

 private:
  int before_;
};

TEST_F(SystemTools, PenIsSolidOneWideAndOfTheSystemColour) {
  LOGPEN pen{};
  ASSERT_NE(GetObjectA(tavd::gwSysPen(COLOR_HIGHLIGHT), sizeof pen, &pen), 0);
  EXPECT_EQ(pen.lopnStyle, UINT{PS_SOLID});
  EXPECT_EQ(pen.lopnWidth.x, 1);
  EXPECT_EQ(pen.lopnColor, GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(SystemTools, BrushIsSolidAndOfTheSystemColour) {
  LOGBRUSH brush{};
  ASSERT_NE(GetObjectA(tavd::gwSysBrush(COLOR_HIGHLIGHT), sizeof brush, &brush), 0);
  EXPECT_EQ(brush.lbStyle, UINT{BS_SOLID});
  EXPECT_EQ(brush.lbColor, GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(SystemTools, WithTwentyInUseAnotherColourGetsTheLastOne) {
  std::set<tavd::gwobject> pens;
  for (int index = 0; index < 20; ++index) pens.insert(tavd::gwSysPen(index));
  EXPECT_EQ(pens.size(), 20U);
  EXPECT_EQ(tavd::gwSysPen(20), tavd::gwSysPen(19));
  EXPECT_EQ(made(), 20);
}

TEST_F(SystemTools, ExitDeletesThemAll) {
  tavd::gwSysPen(1);
  tavd::gwSysPen(1);
  tavd::gwSysBrush(2);
  EXPECT_EQ(made(), 2);
  tavd::gwExit();
  EXPECT_EQ(made(), 0);
}

TEST_F(SystemTools, ModuleIsThatOfInit) {
  EXPECT_EQ(tavd::gwmodule(), GetModuleHandleA(nullptr));
}

class Monitor : public testing::Test {
 protected:
  Monitor() { tavd::gwarray_monitor_open(GetModuleHandleA(nullptr), 40, 50); }
  ~Monitor() override {
    DestroyWindow(window());
    EXPECT_EQ(window(), nullptr);
  }
  static HWND window() { return tavd::gwarray_monitor_window(); }
  static LONG_PTR shown() { return GetWindowLongPtrA(window(), 0); }
  static int dark_pixels() {
    UpdateWindow(window());
    RECT client{};
    GetClientRect(window(), &client);
    HDC hdc = GetDC(window());
    int dark = 0;
    for (int y = 0; y < client.bottom; ++y) {
      for (int x = 0; x < client.right; ++x) dark += GetPixel(hdc, x, y) == RGB(0, 0, 0) ? 1 : 0;
    }
    ReleaseDC(window(), hdc);
    return dark;
  }
};

TEST_F(Monitor, IsAToolWindowAtItsPlace) {
  ASSERT_NE(window(), nullptr);
  char text[64] = "";
  GetWindowTextA(window(), text, sizeof text);
  EXPECT_STREQ(text, "Gwarray - Debug monitor");
  GetClassNameA(window(), text, sizeof text);
  EXPECT_STREQ(text, "GWADEBWND");
  EXPECT_NE(GetWindowLongPtrA(window(), GWL_EXSTYLE) & WS_EX_TOOLWINDOW, 0);
  const LONG_PTR style = GetWindowLongPtrA(window(), GWL_STYLE);
  EXPECT_EQ(style & (WS_VISIBLE | WS_CLIPCHILDREN | WS_CAPTION),
            LONG_PTR{WS_VISIBLE | WS_CLIPCHILDREN | WS_CAPTION});
  EXPECT_EQ(GetParent(window()), nullptr);
  RECT rect{};
  GetWindowRect(window(), &rect);
  const LONG units = GetDialogBaseUnits();
  EXPECT_EQ(rect.left, 40);
  EXPECT_EQ(rect.top, 50);
  EXPECT_EQ(rect.right - rect.left, 25 * LOWORD(units) + 2 * GetSystemMetrics(SM_CXBORDER));
  EXPECT_EQ(rect.bottom - rect.top,
            GetSystemMetrics(SM_CYSMCAPTION) + 2 * (HIWORD(units) + GetSystemMetrics(SM_CYBORDER)));
}

TEST_F(Monitor, ShowsHowManyArraysLive) {
  EXPECT_EQ(shown(), 0);
  EXPECT_GT(dark_pixels(), 20) << "its text";
  gwarray array;
  tavd::gwarray_init(&array, 4);
  EXPECT_EQ(shown(), 1);
  EXPECT_NE(GetUpdateRect(window(), nullptr, FALSE), 0) << "it waits to be painted";
  const int one = dark_pixels();
  tavd::gwarray_monitor_update(888'888);
  EXPECT_GT(dark_pixels(), one) << "six digits are more than one";
  tavd::gwarray_monitor_update(1);
  EXPECT_EQ(dark_pixels(), one) << "what was there is erased";
  tavd::gwarray_release(&array);
  EXPECT_EQ(shown(), 0);
}

TEST_F(Monitor, LeavesNothingBehind) {
  dark_pixels();
  DestroyWindow(window());
  const int objects = live_gdi_objects();
  const int windows = tavdtest::live_windows();
  for (int i = 0; i < 100; ++i) {
    tavd::gwarray_monitor_open(GetModuleHandleA(nullptr), 40, 50);
    UpdateWindow(window());
    DestroyWindow(window());
    EXPECT_EQ(window(), nullptr);
  }
  EXPECT_EQ(live_gdi_objects(), objects);
  EXPECT_EQ(tavdtest::live_windows(), windows);
}

class Placement : public testing::Test {
 protected:
  static constexpr int kWidth = 200;
  static constexpr int kHeight = 100;

  Placement() {
    window_ = make(nullptr, 3, 4, kWidth, kHeight);
    screen_ = {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  }
  ~Placement() override { DestroyWindow(window_); }

  static HWND make(HWND owner, int x, int y, int width, int height) {
    return CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, x, y, width, height, owner, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
  }
  static void expect_place(HWND window, LONG x, LONG y) {
    RECT rect{};
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.left, x);
    EXPECT_EQ(rect.top, y);
    EXPECT_EQ(rect.right - rect.left, kWidth);
    EXPECT_EQ(rect.bottom - rect.top, kHeight);
  }

  HWND window_;
  POINT screen_;
};

TEST_F(Placement, FollowsTheCursor) {
  SetCursorPos(300, 200);
  tavd::gwwnd_to_cursor(window_, 15, -25);
  expect_place(window_, 315, 175);
  tavd::gwwnd_center_on_cursor(window_);
  expect_place(window_, 200, 150);
}

TEST_F(Placement, StaysOnTheScreen) {
  SetCursorPos(5, 5);
  tavd::gwwnd_to_cursor(window_, -20, -20);
  expect_place(window_, 10, 10);
  SetCursorPos(screen_.x - 1, screen_.y - 1);
  tavd::gwwnd_to_cursor(window_, 0, 0);
  expect_place(window_, screen_.x - 10 - kWidth, screen_.y - 30 - kHeight);
}

TEST_F(Placement, CentresOnTheScreenLessTheTaskBar) {
  tavd::gwwnd_center(window_);
  expect_place(window_, (screen_.x - kWidth) / 2, (screen_.y - 20 - kHeight) / 2);
}

TEST_F(Placement, CentresOverItsOwner) {
  HWND owner = make(nullptr, 400, 300, 400, 300);
  HWND owned = make(owner, 0, 0, kWidth, kHeight);
  tavd::gwwnd_center(owned);
  expect_place(owned, 500, 400);
  DestroyWindow(owned);
  DestroyWindow(owner);
}

}  // namespace
