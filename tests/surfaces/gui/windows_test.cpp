#include "windows.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(Windows, LiveFromCreateToDestroyWithPaintBetween) {
  WatchedClass watched;
  const int before = tgui_window_count();
  tgui_window* const window = watched.window();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(tgui_window_count(), before + 1);
  EXPECT_EQ(tgui_is_invalid(window), 1);
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  EXPECT_EQ(tgui_is_invalid(window), 0);
  tgui_destroy_window(window);
  EXPECT_EQ(watched.taken(),
            (Messages{{window, TGUI_WM_CREATE}, {window, TGUI_WM_PAINT}, {window, TGUI_WM_DESTROY}}));
  EXPECT_EQ(tgui_window_count(), before);
}

TEST(Windows, ArgumentsAndAnswerOfAMessagePassThrough) {
  WatchedClass watched;
  tgui_window* const window = watched.window();
  watched.reaction = [](tgui_window*, unsigned message, std::uintptr_t wparam, std::intptr_t lparam) {
    return message == 0x8001 ? static_cast<std::intptr_t>(wparam) - lparam : 0;
  };
  EXPECT_EQ(tgui_send_message(window, 0x8001, 50, -8), 58);
  tgui_destroy_window(window);
}

TEST(Windows, MinusOneToCreateMakesNoWindow) {
  WatchedClass watched;
  const int before = tgui_window_count();
  watched.reaction = [](tgui_window*, unsigned message, std::uintptr_t, std::intptr_t) -> std::intptr_t {
    return message == TGUI_WM_CREATE ? -1 : 0;
  };
  EXPECT_EQ(watched.window(), nullptr);
  EXPECT_EQ(tgui_window_count(), before);
  ASSERT_EQ(watched.messages.size(), 2U);
  EXPECT_EQ(watched.messages[1].second, TGUI_WM_DESTROY);
}

TEST(Windows, MayBeDestroyedByTheirProcedureWhileCreated) {
  WatchedClass watched;
  const int before = tgui_window_count();
  watched.reaction = [](tgui_window* window, unsigned message, std::uintptr_t, std::intptr_t) {
    if (message == TGUI_WM_CREATE) {
      tgui_destroy_window(window);
    }
    return std::intptr_t{0};
  };
  EXPECT_EQ(watched.window(), nullptr);
  EXPECT_EQ(tgui_window_count(), before);
}

TEST(Windows, UnknownClassesAndParentsMakeNone) {
  WatchedClass watched;
  EXPECT_EQ(tgui_create_window("NO SUCH CLASS", "", 0, 0, 0, 1, 1, nullptr, 0, nullptr), nullptr);
  EXPECT_EQ(tgui_create_window(nullptr, "", 0, 0, 0, 1, 1, nullptr, 0, nullptr), nullptr);
  tgui_window* const gone = watched.window();
  tgui_destroy_window(gone);
  EXPECT_EQ(watched.window(1, gone), nullptr);
}

TEST(Windows, ParentsAreToldOfDestroyingBeforeTheirChildren) {
  WatchedClass watched;
  tgui_window* const parent = watched.window();
  tgui_window* const child = watched.window(2, parent);
  tgui_window* const grandchild = watched.window(3, child);
  EXPECT_EQ(tgui_parent(child), parent);
  EXPECT_EQ(tgui_parent(parent), nullptr);
  watched.taken();
  tgui_destroy_window(parent);
  EXPECT_EQ(watched.taken(),
            (Messages{{parent, TGUI_WM_DESTROY}, {child, TGUI_WM_DESTROY}, {grandchild, TGUI_WM_DESTROY}}));
}

TEST(Windows, AChildMayDestroyItsParentWhileItIsDestroyed) {
  WatchedClass watched;
  const int before = tgui_window_count();
  tgui_window* const parent = watched.window();
  tgui_window* const child = watched.window(2, parent);
  watched.reaction = [=](tgui_window* window, unsigned message, std::uintptr_t, std::intptr_t) {
    if (window == child && message == TGUI_WM_DESTROY) {
      tgui_destroy_window(parent);
    }
    return std::intptr_t{0};
  };
  tgui_destroy_window(child);
  EXPECT_EQ(tgui_window_count(), before);
  watched.reaction = nullptr;
}

TEST(Windows, ADyingWindowGetsNoChildrenAndIsNotToldTwice) {
  WatchedClass watched;
  const int before = tgui_window_count();
  tgui_window* const window = watched.window();
  tgui_window* child = window;
  watched.taken();
  watched.reaction = [&](tgui_window* dying, unsigned message, std::uintptr_t, std::intptr_t) {
    if (message == TGUI_WM_DESTROY) {
      tgui_destroy_window(dying);
      child = watched.window(2, dying);
    }
    return std::intptr_t{0};
  };
  tgui_destroy_window(window);
  EXPECT_EQ(child, nullptr);
  EXPECT_EQ(watched.taken(), (Messages{{window, TGUI_WM_DESTROY}}));
  EXPECT_EQ(tgui_window_count(), before);
}

TEST(Windows, NestNoDeeperThanFiftyBelowTheFirst) {
  WatchedClass watched;
  tgui_window* const outermost = watched.window();
  tgui_window* innermost = outermost;
  int made = 0;
  while (tgui_window* const next = watched.window(2, innermost)) {
    innermost = next;
    ASSERT_LE(++made, 50);
  }
  EXPECT_EQ(made, 50);
  tgui_destroy_window(outermost);
}

TEST(Windows, TitlesAreNarrowInAndUtf8Out) {
  tgui_window* const dialog = tgui_create_dialog(
      "Fl\xF6"
      "de \x80");
  EXPECT_STREQ(tgui_window_title(dialog),
               "Fl\xC3\xB6"
               "de \xE2\x82\xAC");
  tgui_destroy_window(dialog);
  EXPECT_STREQ(tgui_window_title(dialog), "");
  EXPECT_STREQ(tgui_window_title(nullptr), "");
}

TEST(Windows, ChildrenStandInTheirParentAndOwnedWindowsOnTheScreen) {
  WatchedClass watched;
  tgui_window* const parent = watched.window();  // at 10, 20
  tgui_window* const child = watched.window(2, parent);
  tgui_window* const owned = tgui_create_window("WATCHED", "", 0x80000000, 1, 2, 3, 4, parent, 0, nullptr);
  tgui_rect rect;
  tgui_window_rect(child, &rect);
  EXPECT_EQ(rect.left, 20);
  EXPECT_EQ(rect.top, 40);
  EXPECT_EQ(rect.right, 120);
  EXPECT_EQ(rect.bottom, 90);
  tgui_window_rect(owned, &rect);
  EXPECT_EQ(rect.left, 1);
  EXPECT_EQ(rect.bottom, 6);
  tgui_client_rect(child, &rect);
  EXPECT_EQ(rect.left, 0);
  EXPECT_EQ(rect.top, 0);
  EXPECT_EQ(rect.right, 100);
  EXPECT_EQ(rect.bottom, 50);
  tgui_destroy_window(parent);
}

TEST(Windows, MovingKeepsOrChangesTheSize) {
  WatchedClass watched;
  tgui_window* const window = watched.window();
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  watched.taken();
  tgui_rect rect;
  tgui_move_window(window, -5, 6, 0, -1);
  tgui_window_rect(window, &rect);
  EXPECT_EQ(rect.left, -5);
  EXPECT_EQ(rect.top, 6);
  EXPECT_EQ(rect.right, 95);
  EXPECT_EQ(rect.bottom, 56);
  EXPECT_EQ(tgui_is_invalid(window), 0);
  EXPECT_TRUE(watched.taken().empty());
  std::intptr_t size = 0;
  watched.reaction = [&](tgui_window*, unsigned message, std::uintptr_t, std::intptr_t lparam) {
    size = message == TGUI_WM_SIZE ? lparam : size;
    return std::intptr_t{0};
  };
  tgui_move_window(window, 0, 0, 300, 200);
  EXPECT_EQ(size, 200 << 16 | 300);
  EXPECT_EQ(tgui_is_invalid(window), 1);
  tgui_destroy_window(window);
}

TEST(Windows, RectanglesAtTheEndsOfTheRangeAreHeldThere) {
  WatchedClass watched;
  tgui_window* const window = watched.window();
  tgui_move_window(window, INT_MAX, INT_MIN, INT_MAX, INT_MAX);
  tgui_rect rect;
  tgui_window_rect(window, &rect);
  EXPECT_EQ(rect.right, INT_MAX);
  EXPECT_EQ(rect.bottom, -1);
  tgui_window* const child = watched.window(2, window);
  tgui_window_rect(child, &rect);
  EXPECT_EQ(rect.left, INT_MAX);
  tgui_destroy_window(window);
}

TEST(Windows, ExtraBytesHoldValuesInsideTheirBounds) {
  WatchedClass watched;  // 16 bytes
  tgui_window* const window = watched.window();
  EXPECT_EQ(tgui_set_window_long(window, 8, -7), 0);
  EXPECT_EQ(tgui_set_window_long(window, 0, 5), 0);
  EXPECT_EQ(tgui_window_long(window, 8), -7);
  EXPECT_EQ(tgui_set_window_long(window, 8, 9), -7);
  EXPECT_EQ(tgui_window_long(window, 0), 5);
  for (const int offset : {-1, 9, 16, INT_MAX, INT_MIN}) {
    EXPECT_EQ(tgui_set_window_long(window, offset, 1), 0) << offset;
    EXPECT_EQ(tgui_window_long(window, offset), 0) << offset;
  }
  tgui_destroy_window(window);
}

TEST(Windows, FocusFollowsTheSetterAndLeavesDestroyedWindows) {
  WatchedClass watched;
  tgui_window* const first = watched.window();
  tgui_window* const second = watched.window();
  EXPECT_EQ(tgui_set_focus(first), nullptr);
  EXPECT_EQ(tgui_set_focus(second), first);
  EXPECT_EQ(tgui_focus(), second);
  tgui_destroy_window(second);
  EXPECT_EQ(tgui_focus(), nullptr);
  EXPECT_EQ(tgui_set_focus(first), nullptr);
  EXPECT_EQ(tgui_set_focus(second), nullptr);
  EXPECT_EQ(tgui_focus(), first);
  EXPECT_EQ(tgui_set_focus(nullptr), first);
  EXPECT_EQ(tgui_focus(), nullptr);
  tgui_destroy_window(first);
}

TEST(Windows, AnExceptionOfAProcedureStaysInside) {
  WatchedClass watched;
  tgui_window* const window = watched.window();
  watched.reaction = [](tgui_window*, unsigned, std::uintptr_t, std::intptr_t) -> std::intptr_t { throw 1; };
  EXPECT_EQ(tgui_send_message(window, 0x8001, 0, 0), 0);
  const int before = tgui_window_count();
  tgui_destroy_window(window);
  EXPECT_EQ(tgui_window_count(), before - 1);
}

void expect_answers_zero(tgui_window* window) {
  tgui_rect rect = {1, 2, 3, 4};
  EXPECT_EQ(tgui_send_message(window, TGUI_WM_PAINT, 0, 0), 0);
  EXPECT_EQ(tgui_default_procedure(window, TGUI_WM_PAINT, 0, 0), 0);
  tgui_set_surface(window, nullptr);
  EXPECT_EQ(tgui_begin_paint(window), nullptr);
  tgui_end_paint(window);
  tgui_client_rect(window, &rect);
  EXPECT_EQ(rect.right + rect.bottom, 0);
  rect = {1, 2, 3, 4};
  tgui_window_rect(window, &rect);
  EXPECT_EQ(rect.left + rect.right, 0);
  tgui_client_rect(window, nullptr);
  tgui_window_rect(window, nullptr);
  tgui_move_window(window, 1, 1, 1, 1);
  EXPECT_EQ(tgui_parent(window), nullptr);
  tgui_invalidate(window);
  EXPECT_EQ(tgui_is_invalid(window), 0);
  EXPECT_EQ(tgui_set_window_long(window, 0, 1), 0);
  EXPECT_EQ(tgui_window_long(window, 0), 0);
  EXPECT_EQ(tgui_create_list_box(window, 1), nullptr);
  EXPECT_EQ(tgui_create_combo_box(window, 1), nullptr);
  EXPECT_EQ(tgui_dialog_item(window, 1), nullptr);
  EXPECT_EQ(tgui_send_item_message(window, 1, TGUI_LB_GETCOUNT, 0, 0), 0);
  EXPECT_EQ(tgui_send_item_messagew(window, 1, TGUI_LB_GETCOUNT, 0, 0), 0);
  EXPECT_EQ(tgui_end_dialog(window, 1), 0);
  tgui_destroy_window(window);
}

TEST(Windows, NullAnswersZero) {
  expect_answers_zero(nullptr);
}

TEST(Windows, DestroyedOnesAnswerZero) {
  WatchedClass watched;
  tgui_window* const window = watched.window();
  tgui_destroy_window(window);
  watched.taken();
  expect_answers_zero(window);
  EXPECT_TRUE(watched.taken().empty());
}

}  // namespace
