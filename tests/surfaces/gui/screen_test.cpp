#include <gtest/gtest.h>

#include "tavdgui/tavdgui.h"

namespace {

TEST(Screen, HasItsSizeUntilTheHostSaysOtherwise) {
  int width = -1;
  int height = -1;
  tgui_screen(&width, &height);
  EXPECT_EQ(width, 1920);
  EXPECT_EQ(height, 1080);
  tgui_set_screen(800, 600);
  tgui_set_screen(0, 700);
  tgui_set_screen(700, -1);
  tgui_screen(&width, &height);
  EXPECT_EQ(width, 800);
  EXPECT_EQ(height, 600);
  tgui_screen(nullptr, nullptr);
  tgui_set_screen(1920, 1080);
}

TEST(Screen, KeepsTheCursorWhereItWasPut) {
  int x = -1;
  int y = -1;
  tgui_cursor(&x, &y);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
  tgui_set_cursor(-7, 5000);
  tgui_cursor(&x, &y);
  EXPECT_EQ(x, -7);
  EXPECT_EQ(y, 5000);
  tgui_set_cursor(0, 0);
}

TEST(Screen, SystemColoursAreThoseOfAnUnchangedDesktop) {
  EXPECT_EQ(tgui_system_colour(5), 0xFFFFFFU);   // window
  EXPECT_EQ(tgui_system_colour(2), 0xD1B499U);   // active caption, blue first
  EXPECT_EQ(tgui_system_colour(24), 0xE1FFFFU);  // hint
  EXPECT_EQ(tgui_system_colour(30), 0xF0F0F0U);  // menu bar
  EXPECT_EQ(tgui_system_colour(-1), 0U);
  EXPECT_EQ(tgui_system_colour(31), 0U);
}

TEST(Screen, TellsTheDialogBaseUnits) {
  int x = 0;
  int y = 0;
  tgui_dialog_base_units(&x, &y);
  EXPECT_EQ(x, 8);
  EXPECT_EQ(y, 16);
  tgui_dialog_base_units(nullptr, nullptr);
}

}  // namespace
