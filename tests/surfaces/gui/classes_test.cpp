#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tavdgui/tavdgui.h"

namespace {

std::intptr_t answers_nothing(tgui_window*, unsigned, std::uintptr_t, std::intptr_t) {
  return 0;
}

tgui_class class_named(const char* name, tgui_module* module = nullptr) {
  tgui_class record{};
  record.size = 0x50;
  record.style = 3;
  record.procedure = answers_nothing;
  record.window_extra = 8;
  record.module = module;
  record.cursor = 0x7F00;
  record.background = 6;
  record.name = name;
  return record;
}

TEST(Classes, BothRecordSizesAreTakenAndOthersRefused) {
  tgui_class record = class_named("SIZED");
  for (const std::uint32_t size : {0U, 0x40U, 0x47U, 0x49U, 0x51U, 0x58U, 0xFFFFFFFFU}) {
    record.size = size;
    EXPECT_EQ(tgui_register_class(&record), 0U) << size;
  }
  for (const std::uint32_t size : {0x48U, 0x50U}) {
    record.size = size;
    EXPECT_NE(tgui_register_class(&record), 0U) << size;
    EXPECT_EQ(tgui_unregister_class("SIZED", nullptr), 1);
  }
}

TEST(Classes, BadRecordsAreRefused) {
  EXPECT_EQ(tgui_register_class(nullptr), 0U);
  tgui_class record = class_named(nullptr);
  EXPECT_EQ(tgui_register_class(&record), 0U);
  record.name = "";
  EXPECT_EQ(tgui_register_class(&record), 0U);
  const std::string longest(63, 'n');
  const std::string too_long(64, 'n');
  record.name = too_long.c_str();
  EXPECT_EQ(tgui_register_class(&record), 0U);
  record.name = longest.c_str();
  record.procedure = nullptr;
  EXPECT_EQ(tgui_register_class(&record), 0U);
  record.procedure = answers_nothing;
  for (const int extra : {-1, 257, INT_MIN, INT_MAX}) {
    record.window_extra = extra;
    EXPECT_EQ(tgui_register_class(&record), 0U) << extra;
  }
  record.window_extra = 256;
  record.class_extra = -1;
  EXPECT_EQ(tgui_register_class(&record), 0U);
  record.class_extra = 0;
  EXPECT_NE(tgui_register_class(&record), 0U);
  EXPECT_EQ(tgui_unregister_class(longest.c_str(), nullptr), 1);
}

TEST(Classes, NamesAreUniqueInAModuleWithoutRegardToCase) {
  tgui_module* const module = tgui_module_create("other");
  tgui_class record = class_named("Unique");
  tgui_class again = class_named("UNIQUE");
  tgui_class other = class_named("unique", module);
  const std::uint32_t first = tgui_register_class(&record);
  EXPECT_NE(first, 0U);
  EXPECT_EQ(tgui_register_class(&again), 0U);
  const std::uint32_t second = tgui_register_class(&other);
  EXPECT_NE(second, 0U);
  EXPECT_NE(second, first);
  EXPECT_EQ(tgui_unregister_class("uNIQUE", tgui_main_module()), 1);
  EXPECT_EQ(tgui_unregister_class("uNIQUE", nullptr), 0);
  EXPECT_EQ(tgui_unregister_class("uNIQUE", module), 1);
  tgui_module_destroy(module);
}

TEST(Classes, OnlyAsciiLettersFold) {
  tgui_class small = class_named("\xE5");  // windows-1252: the small and the capital a with a ring
  tgui_class capital = class_named("\xC5");
  EXPECT_NE(tgui_register_class(&small), 0U);
  EXPECT_NE(tgui_register_class(&capital), 0U);
  EXPECT_EQ(tgui_unregister_class("\xE5", nullptr), 1);
  EXPECT_EQ(tgui_unregister_class("\xC5", nullptr), 1);
}

TEST(Classes, CanBeDescribed) {
  std::string name = "DESCRIBED";
  tgui_class record = class_named(name.c_str());
  ASSERT_NE(tgui_register_class(&record), 0U);
  name = "changed by the host";
  tgui_class found{};
  EXPECT_EQ(tgui_get_class("described", nullptr, &found), 1);
  EXPECT_EQ(found.size, 0x50U);
  EXPECT_EQ(found.style, 3U);
  EXPECT_EQ(found.procedure, answers_nothing);
  EXPECT_EQ(found.class_extra, 0);
  EXPECT_EQ(found.window_extra, 8);
  EXPECT_EQ(found.module, tgui_main_module());
  EXPECT_EQ(found.cursor, 0x7F00U);
  EXPECT_EQ(found.background, 6U);
  EXPECT_STREQ(found.name, "DESCRIBED");
  EXPECT_EQ(tgui_get_class("DESCRIBED", nullptr, nullptr), 1);
  EXPECT_EQ(tgui_get_class("unknown", nullptr, &found), 0);
  EXPECT_EQ(tgui_get_class(nullptr, nullptr, &found), 0);
  tgui_unregister_class("DESCRIBED", nullptr);
}

TEST(Classes, StayWhileAWindowOfThemLives) {
  tgui_class record = class_named("LIVING");
  ASSERT_NE(tgui_register_class(&record), 0U);
  tgui_window* const window = tgui_create_window("LIVING", "", 0, 0, 0, 10, 10, nullptr, 0, nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(tgui_unregister_class("LIVING", nullptr), 0);
  tgui_destroy_window(window);
  EXPECT_EQ(tgui_unregister_class("LIVING", nullptr), 1);
  EXPECT_EQ(tgui_create_window("LIVING", "", 0, 0, 0, 10, 10, nullptr, 0, nullptr), nullptr);
}

TEST(Classes, OfAnotherModuleServeWhenTheOwnHasNone) {
  tgui_module* const module = tgui_module_create(nullptr);
  tgui_class record = class_named("SHARED", module);
  ASSERT_NE(tgui_register_class(&record), 0U);
  tgui_class found{};
  EXPECT_EQ(tgui_get_class("SHARED", tgui_main_module(), &found), 0);
  tgui_window* const window =
      tgui_create_window("shared", "", 0, 0, 0, 10, 10, nullptr, 0, tgui_main_module());
  EXPECT_NE(window, nullptr);
  tgui_module_destroy(module);
  EXPECT_EQ(tgui_send_message(window, TGUI_WM_PAINT, 0, 0), 0);
  EXPECT_EQ(tgui_create_window("SHARED", "", 0, 0, 0, 10, 10, nullptr, 0, nullptr), nullptr);
  tgui_destroy_window(window);
}

TEST(Classes, ADestroyedModuleRegistersNothing) {
  tgui_module* const module = tgui_module_create("gone");
  tgui_module_destroy(module);
  tgui_module_destroy(module);
  tgui_class record = class_named("GONE", module);
  EXPECT_EQ(tgui_register_class(&record), 0U);
  EXPECT_EQ(tgui_unregister_class("GONE", module), 0);
  EXPECT_EQ(tgui_unregister_class(nullptr, nullptr), 0);
  tgui_module_destroy(tgui_main_module());
  record.module = nullptr;
  EXPECT_NE(tgui_register_class(&record), 0U);
  EXPECT_EQ(tgui_unregister_class("GONE", tgui_main_module()), 1);
}

}  // namespace
