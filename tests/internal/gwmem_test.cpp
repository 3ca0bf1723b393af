#include "base/gwmem.h"

#include <gtest/gtest.h>

#include <cstring>

#include "error_reports.h"

namespace {

using tavdtest::ErrorReports;

TEST(Allocator, FreeingNullAnswersZero) {
  EXPECT_EQ(tavd::gwGfree(nullptr), 0);
}

TEST(Allocator, FreeingABlockAnswersZero) {
  void* block = tavd::gwGmalloc(100, 0);
  ASSERT_NE(block, nullptr);
  std::memset(block, 0xAA, 100);
  EXPECT_EQ(tavd::gwGfree(block), 0);
}

TEST(Allocator, ResizingNullTakesANewBlock) {
  void* block = tavd::gwGrealloc(nullptr, 100, 0);
  ASSERT_NE(block, nullptr);
  std::memset(block, 0xAA, 100);
  tavd::gwGfree(block);
}

TEST(Allocator, ResizingKeepsTheContents) {
  auto* block = static_cast<unsigned char*>(tavd::gwGmalloc(4, 0));
  ASSERT_NE(block, nullptr);
  std::memcpy(block, "abc", 4);
  block = static_cast<unsigned char*>(tavd::gwGrealloc(block, 100'000, 0));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::memcmp(block, "abc", 4), 0);
  block = static_cast<unsigned char*>(tavd::gwGrealloc(block, 2, 0));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::memcmp(block, "ab", 2), 0);
  tavd::gwGfree(block);
}

TEST(Allocator, SizeZeroGivesAValidBlock) {
  ErrorReports reports;
  void* block = tavd::gwGmalloc(0, 0);
  EXPECT_NE(block, nullptr);
  block = tavd::gwGrealloc(block, 0, 0);
  EXPECT_NE(block, nullptr);
  tavd::gwGfree(block);
  EXPECT_TRUE(reports.all.empty());
}

TEST(Allocator, NegativeSizeFailsAndReportsTheTag) {
  ErrorReports reports;
  EXPECT_EQ(tavd::gwGmalloc(-1, 9001), nullptr);
  ASSERT_EQ(reports.all.size(), 1U);
  EXPECT_EQ(reports.all[0].code, -2);
  EXPECT_EQ(reports.all[0].text, "gwGmalloc() out of memory (9001)");
}

TEST(Allocator, FailedResizingReportsTheTagAndLeavesTheOldBlock) {
  ErrorReports reports;
  auto* block = static_cast<char*>(tavd::gwGmalloc(4, 0));
  ASSERT_NE(block, nullptr);
  std::memcpy(block, "abc", 4);
  EXPECT_EQ(tavd::gwGrealloc(block, -1, 7), nullptr);
  ASSERT_EQ(reports.all.size(), 1U);
  EXPECT_EQ(reports.all[0].code, -2);
  EXPECT_EQ(reports.all[0].text, "gwGrealloc() out of memory (7)");
  EXPECT_STREQ(block, "abc");
  tavd::gwGfree(block);
}

TEST(Allocator, FailedResizingOfNullReportsAsANewBlock) {
  ErrorReports reports;
  EXPECT_EQ(tavd::gwGrealloc(nullptr, -1, 5), nullptr);
  ASSERT_EQ(reports.all.size(), 1U);
  EXPECT_EQ(reports.all[0].text, "gwGmalloc() out of memory (5)");
}

TEST(ErrorHook, GetsCodeAndTextAndTheCodeIsTheAnswer) {
  ErrorReports reports;
  EXPECT_EQ(tavd::gwError(-17, "text"), -17);
  ASSERT_EQ(reports.all.size(), 1U);
  EXPECT_EQ(reports.all[0].code, -17);
  EXPECT_EQ(reports.all[0].text, "text");
}

TEST(ErrorHook, WithoutAHookTheCodeIsStillTheAnswer) {
  tavd::gwSetErrorHook(nullptr);
  EXPECT_EQ(tavd::gwError(-17, "text"), -17);
  EXPECT_EQ(tavd::gwGmalloc(-1, 0), nullptr);
}

}  // namespace
