#include "base/gwmonitor.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "base/gwarray.h"
#include "gui_fixture.h"

namespace {

using tavdtest::Recording;

// The count lives as long as the process: each test leaves it as it found it, at 0.
class Monitor : public testing::Test {
 protected:
  Monitor() { tavd::gwarray_monitor_open(tgui_main_module(), 40, 50); }
  ~Monitor() override {
    tgui_destroy_window(window());
    EXPECT_EQ(window(), nullptr);
  }
  static tgui_window* window() { return tavd::gwarray_monitor_window(); }
  static std::intptr_t shown() { return tgui_window_long(window(), 0); }
};

TEST_F(Monitor, OpensAWindowOfItsClassAtItsPlace) {
  ASSERT_NE(window(), nullptr);
  EXPECT_STREQ(tgui_window_title(window()), "Gwarray - Debug monitor");
  EXPECT_EQ(tgui_parent(window()), nullptr);
  tgui_rect rect{};
  tgui_window_rect(window(), &rect);
  EXPECT_EQ(rect.left, 40);
  EXPECT_EQ(rect.top, 50);
  // 25 base units of 8 across and 2 of 16 down, without a frame.
  EXPECT_EQ(rect.right - rect.left, 200);
  EXPECT_EQ(rect.bottom - rect.top, 32);
}

TEST_F(Monitor, RegistersItsClassAsTold) {
  tgui_class window_class{};
  ASSERT_EQ(tgui_get_class("GWADEBWND", tgui_main_module(), &window_class), 1);
  EXPECT_EQ(window_class.style, 3U);
  EXPECT_EQ(window_class.class_extra, 0);
  EXPECT_EQ(window_class.window_extra, 8);
  EXPECT_EQ(window_class.cursor, 0x7F00U);
  EXPECT_EQ(window_class.background, 6U);
}

TEST_F(Monitor, CountsInitialisedLessReleasedArrays) {
  EXPECT_EQ(shown(), 0);
  gwarray first;
  gwarray second;
  tavd::gwarray_init(&first, 4);
  EXPECT_EQ(shown(), 1);
  tavd::gwarray_init(&second, 4);
  EXPECT_EQ(shown(), 2);
  tavd::gwarray_reset(&first);
  EXPECT_EQ(shown(), 2);
  tavd::gwarray_release(&first);
  tavd::gwarray_release(&second);
  EXPECT_EQ(shown(), 0);
}

TEST_F(Monitor, ArraysFromBeforeItOpenedLetTheCountFallBelowZero) {
  gwarray early{};
  tavd::gwarray_release(&early);
  EXPECT_EQ(shown(), -1);
  tavd::gwarray_init(&early, 4);
  EXPECT_EQ(shown(), 0);
}

TEST_F(Monitor, CountsNothingWhileItIsClosed) {
  tgui_destroy_window(window());
  gwarray array;
  tavd::gwarray_init(&array, 4);
  tavd::gwarray_monitor_open(tgui_main_module(), 0, 0);
  EXPECT_EQ(shown(), 0);
  gwarray counted;
  tavd::gwarray_init(&counted, 4);
  EXPECT_EQ(shown(), 1);
  tavd::gwarray_release(&counted);
  tgui_destroy_window(window());
  tavd::gwarray_release(&array);
}

TEST_F(Monitor, UpdateStoresTheNumberAndAsksForPainting) {
  tgui_send_message(window(), TGUI_WM_PAINT, 0, 0);
  EXPECT_EQ(tgui_is_invalid(window()), 0);
  tavd::gwarray_monitor_update(17);
  EXPECT_EQ(shown(), 17);
  EXPECT_EQ(tgui_is_invalid(window()), 1);
}

TEST_F(Monitor, PaintsItsNumber) {
  Recording recording;
  tgui_set_surface(window(), recording.hdc());
  tavd::gwarray_monitor_update(-42);
  tgui_send_message(window(), TGUI_WM_PAINT, 0, 0);
  EXPECT_EQ(recording.text(),
            "save 1\n"
            "background transparent\n"
            "select stock ansi-var-font\n"
            "text 4 4 \"Initialized arrays: -42\"\n"
            "restore 1\n");
}

TEST_F(Monitor, LeavesOtherMessagesToTheDefault) {
  EXPECT_EQ(tgui_send_message(window(), TGUI_WM_NCACTIVATE, 0, 0),
            tgui_default_procedure(window(), TGUI_WM_NCACTIVATE, 1, 0));
  EXPECT_EQ(tgui_send_message(window(), TGUI_WM_SIZE, 0, 0), 0);
  EXPECT_EQ(shown(), 0);
}

TEST_F(Monitor, UpdateOfAClosedOneOpensNothing) {
  tgui_destroy_window(window());
  tavd::gwarray_monitor_update(17);
  EXPECT_EQ(window(), nullptr);
}

TEST(MonitorOfAnotherModule, ThatHasNoClassForItStaysClosed) {
  tavd::gwarray_monitor_open(tgui_main_module(), 0, 0);  // the class is registered once, by the first module
  tgui_destroy_window(tavd::gwarray_monitor_window());
  tgui_unregister_class("GWADEBWND", tgui_main_module());
  tavd::gwarray_monitor_open(tgui_main_module(), 0, 0);
  EXPECT_EQ(tavd::gwarray_monitor_window(), nullptr);
  gwarray array;
  tavd::gwarray_init(&array, 4);
  tavd::gwarray_release(&array);
}

}  // namespace
