// What holds of each of the library's three windows: its class, its painting, and the tools of one paint.
//
// A test of one window describes it by a class `Shown`, a fixture that builds something to draw, with
//
//   kClass, kClassRecordSize    the window class as hosts know it: copies on purpose, not the library's own
//   names kTools, kObjects            tools of the drawing, and all objects that a paint makes, at least
//   kSetUp, kEnd                operations of a paint before and behind the drawing's own
//   procedure, create_tools, destroy_tools, draw_bare, init_empty
//                               the window's functions of the library
//   build()                     gives it something to draw
//   expect_whole(recording)     that a paint whose tools could not all be made has drawn all the same
//
// and then `using MyWindow = tavdtest::PaintedWindow<Shown>;` is the fixture of its own tests, and
// INSTANTIATE_TYPED_TEST_SUITE_P(MyWindow, PaintedWindow, Shown) runs those that it shares with the others.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/painted.h"
#include "tavdgui/tavdgui.h"

namespace tavdtest {

template <typename Shown>
class PaintedWindow : public Shown {
 protected:
  void SetUp() override {
    Shown::SetUp();
    open(Shown::kWidth, Shown::kHeight);
  }
  void TearDown() override {
    close();
    Shown::TearDown();
  }

  // A window with this client area in place of the one before.
  void open(int width, int height) {
    close();
    painted_ = std::make_unique<Painted>(Shown::kClass, width, height);
    ASSERT_NE(nullptr, window());
  }
  tgui_window* window() const { return painted_->window(); }

  intptr_t paint() { return painted_->send_paint(); }
  const Recording& painting() const { return painted_->recording(); }
  // What a paint has drawn, without what it sets up and what it takes back.
  std::vector<std::string> drawn_by_paint() const {
    const std::vector<std::string> all = painting().lines();
    if (all.size() < Shown::kSetUp + Shown::kEnd) return all;
    return {all.begin() + Shown::kSetUp, all.end() - Shown::kEnd};
  }

  // Outside the paint the surface has what it had before.
  void expect_stock_objects() const {
    tgui_state state{};
    tgui_surface_state(painting().surface(), &state);
    EXPECT_EQ(tgui_stock_object(TGUI_BLACK_PEN), state.pen);
    EXPECT_EQ(tgui_stock_object(TGUI_WHITE_BRUSH), state.brush);
    EXPECT_EQ(tgui_stock_object(TGUI_SYSTEM_FONT), state.font);
  }

 private:
  void close() {
    if (painted_ != nullptr) tgui_destroy_window(window());
    painted_.reset();
  }

  std::unique_ptr<Painted> painted_;
};

TYPED_TEST_SUITE_P(PaintedWindow);

TYPED_TEST_P(PaintedWindow, ClassIsRegisteredAsWindowsWithEightBytesTheArrowAndTheWindowColour) {
  tgui_class c{};
  ASSERT_EQ(1, tgui_get_class(TypeParam::kClass, tgui_main_module(), &c));
  EXPECT_EQ(TypeParam::kClassRecordSize, c.size);
  EXPECT_EQ(3U, c.style);
  EXPECT_EQ(0, c.class_extra);
  EXPECT_EQ(8, c.window_extra);
  EXPECT_EQ(0x7F00U, c.cursor);
  EXPECT_EQ(6U, c.background);
  EXPECT_EQ(TypeParam::procedure, c.procedure);
}

TYPED_TEST_P(PaintedWindow, DrawsTheSameAsTheHostWould) {
  this->build();
  EXPECT_EQ(0, this->paint());
  const std::vector<std::string> drawn = this->draw().lines();
  EXPECT_FALSE(drawn.empty());
  EXPECT_EQ(drawn, this->drawn_by_paint());
}

TYPED_TEST_P(PaintedWindow, PaintsTheSameEveryTime) {
  this->build();
  this->paint();
  const std::string first = this->painting().text();
  EXPECT_NE("", first);
  this->paint();
  EXPECT_EQ(first, this->painting().text());
}

TYPED_TEST_P(PaintedWindow, WithoutASurfaceIsHarmless) {
  this->build();
  tgui_set_surface(this->window(), nullptr);
  const int objects = tgui_object_count();
  EXPECT_EQ(0, this->paint());
  EXPECT_EQ(objects, tgui_object_count());
  EXPECT_EQ("", this->painting().text());
}

TYPED_TEST_P(PaintedWindow, OtherMessagesGoToTheSystem) {
  this->build();
  for (const unsigned message : {0U, 1U, unsigned{TGUI_WM_SIZE}, 0x10U, 0x14U, 0x400U, 0xFFFFFFFFU}) {
    EXPECT_EQ(tgui_default_procedure(this->window(), message, 7, 9),
              tgui_send_message(this->window(), message, 7, 9))
        << message;
  }
  EXPECT_EQ("", this->painting().text());
}

TYPED_TEST_P(PaintedWindow, LeavesNoObject) {
  this->build();
  const int objects = tgui_object_count();
  for (int i = 0; i < 3; ++i) {
    this->paint();
    EXPECT_EQ(objects, tgui_object_count());
  }
}

TYPED_TEST_P(PaintedWindow, LeavesNoObjectWhateverCannotBeMade) {
  this->build();
  const int objects = tgui_object_count();
  for (int first = 0; first < TypeParam::kObjects; ++first) {
    for (const int failing : {1, 2, 100}) {
      SCOPED_TRACE(testing::Message() << first << ' ' << failing);
      tgui_fail_objects(first, failing);
      this->paint();
      tgui_fail_objects(0, 0);
      EXPECT_EQ(objects, tgui_object_count());
      this->expect_whole(this->painting());
      this->expect_stock_objects();
    }
  }
}

TYPED_TEST_P(PaintedWindow, ToolsAreNotMadeTwice) {
  const int objects = tgui_object_count();
  TypeParam::create_tools();
  EXPECT_EQ(objects + TypeParam::kTools, tgui_object_count());
  TypeParam::create_tools();
  EXPECT_EQ(objects + TypeParam::kTools, tgui_object_count());
  TypeParam::destroy_tools();
  EXPECT_EQ(objects, tgui_object_count());
  TypeParam::destroy_tools();
  EXPECT_EQ(objects, tgui_object_count());
}

TYPED_TEST_P(PaintedWindow, InitDeletesToolsOfAFormerLife) {
  const int objects = tgui_object_count();
  TypeParam::create_tools();
  this->init_empty();
  EXPECT_EQ(objects, tgui_object_count());
}

TYPED_TEST_P(PaintedWindow, NullContextIsHarmless) {
  this->build();
  const int objects = tgui_object_count();
  TypeParam::create_tools();
  TypeParam::draw_bare(nullptr);
  TypeParam::destroy_tools();
  EXPECT_EQ(objects, tgui_object_count());
  EXPECT_EQ("", this->painting().text());
}

REGISTER_TYPED_TEST_SUITE_P(PaintedWindow, ClassIsRegisteredAsWindowsWithEightBytesTheArrowAndTheWindowColour,
                            DrawsTheSameAsTheHostWould, PaintsTheSameEveryTime, WithoutASurfaceIsHarmless,
                            OtherMessagesGoToTheSystem, LeavesNoObject, LeavesNoObjectWhateverCannotBeMade,
                            ToolsAreNotMadeTwice, InitDeletesToolsOfAFormerLife, NullContextIsHarmless);

}  // namespace tavdtest
