#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "drawing.h"

namespace {

tgui_object_info info_of(const tgui_object* object) {
  tgui_object_info info;
  std::memset(&info, 0x5A, sizeof info);
  EXPECT_EQ(tgui_get_object(object, &info), 0);
  return info;
}

TEST(Objects, PenTellsStyleWidthAndColour) {
  tgui_object* const pen = tgui_create_pen(TGUI_PEN_DASHDOT, 7, 0x00112233);
  const tgui_object_info info = info_of(pen);
  EXPECT_EQ(info.kind, TGUI_PEN);
  EXPECT_EQ(info.stock, -1);
  EXPECT_EQ(info.style, TGUI_PEN_DASHDOT);
  EXPECT_EQ(info.width, 7);
  EXPECT_EQ(info.colour, 0x00112233U);
  EXPECT_EQ(info.font.height, 0);
  EXPECT_EQ(tgui_delete_object(pen), 1);
}

TEST(Objects, NegativePenWidthCountsAsItsMagnitude) {
  tgui_object* const pen = tgui_create_pen(TGUI_PEN_SOLID, -3, 0);
  tgui_object* const widest = tgui_create_pen(TGUI_PEN_SOLID, INT_MIN, 0);
  EXPECT_EQ(info_of(pen).width, 3);
  EXPECT_EQ(info_of(widest).width, INT_MAX);
  tgui_delete_object(pen);
  tgui_delete_object(widest);
}

TEST(Objects, UnknownPenStylesAreRefused) {
  EXPECT_EQ(tgui_create_pen(4, 1, 0), nullptr);
  EXPECT_EQ(tgui_create_pen(6, 1, 0), nullptr);
  EXPECT_EQ(tgui_create_pen(-1, 1, 0), nullptr);
}

TEST(Objects, BrushIsSolidAndKeepsNoFourthColourByte) {
  tgui_object* const brush = tgui_create_brush(0xFF010203);
  EXPECT_EQ(info_of(brush).kind, TGUI_BRUSH);
  EXPECT_EQ(info_of(brush).style, 0);
  EXPECT_EQ(info_of(brush).colour, 0x00010203U);
  tgui_delete_object(brush);
}

TEST(Objects, FontFaceIsCutAndTerminated) {
  tgui_font font{};
  font.height = -12;
  std::memset(font.face, 'x', sizeof font.face);
  tgui_object* const object = tgui_create_font(&font);
  EXPECT_EQ(info_of(object).kind, TGUI_FONT);
  EXPECT_EQ(info_of(object).font.height, -12);
  EXPECT_STREQ(info_of(object).font.face, std::string(31, 'x').c_str());
  tgui_delete_object(object);
  EXPECT_EQ(tgui_create_font(nullptr), nullptr);
}

TEST(Objects, StockObjectsAreThereAndOutliveDeletion) {
  for (const int number : {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13}) {
    tgui_object* const object = tgui_stock_object(number);
    ASSERT_NE(object, nullptr) << number;
    EXPECT_EQ(tgui_delete_object(object), 1);
    EXPECT_EQ(info_of(object).stock, number);
    EXPECT_EQ(tgui_stock_object(number), object);
  }
  for (const int number : {-1, 9, 10, 11, 14, INT_MAX, INT_MIN}) {
    EXPECT_EQ(tgui_stock_object(number), nullptr) << number;
  }
  EXPECT_EQ(info_of(tgui_stock_object(TGUI_LTGRAY_BRUSH)).colour, 0xC0C0C0U);
  EXPECT_EQ(info_of(tgui_stock_object(TGUI_NULL_BRUSH)).style, 1);
  EXPECT_EQ(info_of(tgui_stock_object(TGUI_NULL_PEN)).style, TGUI_PEN_NULL);
}

TEST(Objects, CountFollowsCreatingAndDeletingButNotStockObjects) {
  const int before = tgui_object_count();
  tgui_object* const pen = tgui_create_pen(0, 1, 0);
  tgui_object* const brush = tgui_create_brush(0);
  tgui_stock_object(TGUI_BLACK_PEN);
  EXPECT_EQ(tgui_object_count(), before + 2);
  tgui_delete_object(pen);
  EXPECT_EQ(tgui_object_count(), before + 1);
  tgui_delete_object(brush);
  EXPECT_EQ(tgui_object_count(), before);
}

TEST(Objects, NullAndDeletedOnesAreRefused) {
  tgui_object_info info;
  EXPECT_EQ(tgui_delete_object(nullptr), 0);
  EXPECT_EQ(tgui_get_object(nullptr, &info), -1);
  tgui_object* const pen = tgui_create_pen(0, 1, 0);
  EXPECT_EQ(tgui_get_object(pen, nullptr), 0);
  EXPECT_EQ(tgui_delete_object(pen), 1);
  const int count = tgui_object_count();
  EXPECT_EQ(tgui_delete_object(pen), 0);
  EXPECT_EQ(tgui_get_object(pen, &info), -1);
  EXPECT_EQ(tgui_object_count(), count);
}

TEST(Objects, CreationsFailInTheOrderedPlaces) {
  const int before = tgui_object_count();
  tgui_font font{};
  tgui_fail_objects(1, 2);
  tgui_object* const first = tgui_create_pen(0, 1, 0);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(tgui_create_brush(0), nullptr);
  EXPECT_EQ(tgui_create_font(&font), nullptr);
  tgui_object* const last = tgui_create_font(&font);
  EXPECT_NE(last, nullptr);
  EXPECT_EQ(tgui_object_count(), before + 2);
  tgui_delete_object(first);
  tgui_delete_object(last);
}

TEST(Objects, OrderedFailuresCanBeTakenBack) {
  tgui_fail_objects(0, 5);
  tgui_fail_objects(0, 0);
  tgui_object* const pen = tgui_create_pen(0, 1, 0);
  EXPECT_NE(pen, nullptr);
  tgui_delete_object(pen);
  tgui_fail_objects(-3, -1);
  tgui_object* const brush = tgui_create_brush(0);
  EXPECT_NE(brush, nullptr);
  tgui_delete_object(brush);
}

TEST(Objects, DeletedWhileSelectedStaysUsableOnItsSurface) {
  const SurfaceOwner surface = recording();
  const int before = tgui_object_count();
  tgui_object* const pen = tgui_create_pen(TGUI_PEN_DOT, 4, 0x0000FF);
  tgui_object* const former = tgui_select(surface.get(), pen);
  EXPECT_EQ(tgui_delete_object(pen), 1);
  EXPECT_EQ(tgui_object_count(), before);
  EXPECT_EQ(state_of(surface.get()).pen, pen);
  EXPECT_EQ(info_of(state_of(surface.get()).pen).width, 4);
  EXPECT_EQ(tgui_delete_object(pen), 0);
  EXPECT_EQ(tgui_select(surface.get(), former), pen);
  tgui_object_info info;
  EXPECT_EQ(tgui_get_object(pen, &info), -1);
  EXPECT_EQ(tgui_select(surface.get(), pen), nullptr);
  EXPECT_EQ(state_of(surface.get()).pen, former);
}

TEST(Objects, DeletedWhileASavedStateHasItComesBackWithThatState) {
  const SurfaceOwner surface = recording();
  tgui_object* const brush = tgui_create_brush(0x00FF00);
  tgui_object* const former = tgui_select(surface.get(), brush);
  EXPECT_EQ(tgui_save(surface.get()), 1);
  tgui_select(surface.get(), former);
  tgui_delete_object(brush);
  EXPECT_EQ(tgui_restore(surface.get(), 1), 1);
  EXPECT_EQ(info_of(state_of(surface.get()).brush).colour, 0x00FF00U);
}

}  // namespace
