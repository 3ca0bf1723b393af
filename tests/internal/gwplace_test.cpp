#include "base/gwplace.h"

#include <gtest/gtest.h>

#include "gui_fixture.h"

namespace {

using tavdtest::Window;

class Placement : public testing::Test {
 protected:
  Placement() : window_(tavdtest::make_dialog()) {
    tgui_set_screen(800, 600);
    tgui_move_window(window_.get(), 3, 4, 200, 100);
  }
  ~Placement() override {
    tgui_set_screen(1920, 1080);
    tgui_set_cursor(0, 0);
  }

  tgui_window* window() { return window_.get(); }
  // Left and upper edge; the size must never change.
  void expect_place(int x, int y, int width = 200, int height = 100) {
    tgui_rect rect{};
    tgui_window_rect(window(), &rect);
    EXPECT_EQ(rect.left, x);
    EXPECT_EQ(rect.top, y);
    EXPECT_EQ(rect.right - rect.left, width);
    EXPECT_EQ(rect.bottom - rect.top, height);
  }

 private:
  Window window_;
};

TEST_F(Placement, FollowsTheCursor) {
  tgui_set_cursor(300, 200);
  tavd::gwwnd_to_cursor(window(), 15, -25);
  expect_place(315, 175);
}

TEST_F(Placement, LeftAndUpperEdgeStayTenInside) {
  tgui_set_cursor(9, 9);
  tavd::gwwnd_to_cursor(window(), 0, 0);
  expect_place(10, 10);
  tavd::gwwnd_to_cursor(window(), -500, 1);
  expect_place(10, 10);
}

TEST_F(Placement, RightEdgeStaysTenAndLowerEdgeThirtyInside) {
  tgui_set_cursor(799, 599);
  tavd::gwwnd_to_cursor(window(), 0, 0);
  expect_place(800 - 10 - 200, 600 - 30 - 100);
}

TEST_F(Placement, EdgesThatJustFitStay) {
  tgui_set_cursor(590, 470);
  tavd::gwwnd_to_cursor(window(), 0, 0);
  expect_place(590, 470);
  tavd::gwwnd_to_cursor(window(), 1, 1);
  expect_place(590, 470);
}

TEST_F(Placement, RightAndLowerEdgeWinOnASmallScreen) {
  tgui_set_screen(150, 90);
  tavd::gwwnd_to_cursor(window(), 0, 0);
  expect_place(150 - 10 - 200, 90 - 30 - 100);
  tavd::gwwnd_center(window());
  expect_place(150 - 10 - 200, 90 - 30 - 100);
}

TEST_F(Placement, CentresOnTheCursor) {
  tgui_set_cursor(400, 300);
  tavd::gwwnd_center_on_cursor(window());
  expect_place(300, 250);
}

TEST_F(Placement, HalvesOfAnOddSizeAreCut) {
  tgui_move_window(window(), 0, 0, 201, 101);
  tgui_set_cursor(400, 300);
  tavd::gwwnd_center_on_cursor(window());
  expect_place(300, 250, 201, 101);
}

TEST_F(Placement, CentresOnTheScreenLessTheTaskBar) {
  tavd::gwwnd_center(window());
  expect_place((800 - 200) / 2, (600 - 20 - 100) / 2);
}

TEST_F(Placement, NullWindowIsLeftAlone) {
  tavd::gwwnd_to_cursor(nullptr, 0, 0);
  tavd::gwwnd_center_on_cursor(nullptr);
  tavd::gwwnd_center(nullptr);
  expect_place(3, 4);
}

}  // namespace
