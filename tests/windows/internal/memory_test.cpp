// Blocks of global memory, and what happens when the system has none.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "base/gwarray.h"
#include "base/gwmem.h"
#include "imports.h"

namespace {

using tavdtest::Redirected;

std::vector<std::string> reports;

void note(std::int32_t code, const char* text) {
  reports.push_back(std::to_string(code) + ' ' + text);
}

HGLOBAL WINAPI refuse(UINT, SIZE_T) {
  return nullptr;
}
HGLOBAL WINAPI refuse_again(HGLOBAL, SIZE_T, UINT) {
  return nullptr;
}

class GlobalMemory : public testing::Test {
 protected:
  GlobalMemory() {
    reports.clear();
    tavd::gwSetErrorHook(note);
  }
  ~GlobalMemory() override { tavd::gwSetErrorHook(nullptr); }
};

TEST_F(GlobalMemory, BlockIsMoveableAndLocked) {
  void* block = tavd::gwGmalloc(100, 1);
  HGLOBAL handle = GlobalHandle(block);
  ASSERT_NE(handle, nullptr);
  EXPECT_NE(static_cast<void*>(handle), block) << "fixed memory is its own handle";
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 1U);
  EXPECT_GE(GlobalSize(handle), 100U);
  tavd::gwGfree(block);
}

TEST_F(GlobalMemory, GrownBlockKeepsItsBytesAndStaysLocked) {
  void* block = tavd::gwGmalloc(16, 1);
  std::memcpy(block, "fifteen letters", 16);
  for (const std::int32_t size : {64, 4'000, 1'000'000, 64}) {
    block = tavd::gwGrealloc(block, size, 1);
    ASSERT_NE(block, nullptr) << size;
    EXPECT_STREQ(static_cast<const char*>(block), "fifteen letters");
    EXPECT_EQ(GlobalFlags(GlobalHandle(block)) & GMEM_LOCKCOUNT, 1U);
  }
  tavd::gwGfree(block);
}

TEST_F(GlobalMemory, NoMemoryIsReported) {
  const Redirected alloc(GetModuleHandleA(nullptr), "GlobalAlloc", reinterpret_cast<void*>(&refuse));
  ASSERT_NE(alloc.original(), nullptr);
  EXPECT_EQ(tavd::gwGmalloc(100, 9001), nullptr);
  EXPECT_EQ(reports, std::vector<std::string>{"-2 gwGmalloc() out of memory (9001)"});
}

TEST_F(GlobalMemory, BlockThatCannotGrowIsReportedAndStaysUnlocked) {
  void* block = tavd::gwGmalloc(100, 1);
  HGLOBAL handle = GlobalHandle(block);
  {
    const Redirected realloc(GetModuleHandleA(nullptr), "GlobalReAlloc",
                             reinterpret_cast<void*>(&refuse_again));
    ASSERT_NE(realloc.original(), nullptr);
    EXPECT_EQ(tavd::gwGrealloc(block, 200, 17), nullptr);
  }
  EXPECT_EQ(reports, std::vector<std::string>{"-2 gwGrealloc() out of memory (17)"});
  EXPECT_EQ(GlobalFlags(handle) & GMEM_LOCKCOUNT, 0U);
  EXPECT_EQ(GlobalFree(handle), nullptr);
}

TEST_F(GlobalMemory, ArrayThatCannotGrowIsEmptyAndUsable) {
  gwarray array;
  tavd::gwarray_init(&array, 4);
  const std::int32_t item = 7;
  ASSERT_EQ(tavd::gwarray_append(&array, &item), 0);
  HGLOBAL lost = GlobalHandle(array.data);
  {
    const Redirected realloc(GetModuleHandleA(nullptr), "GlobalReAlloc",
                             reinterpret_cast<void*>(&refuse_again));
    EXPECT_EQ(tavd::gwarray_append(&array, &item), -2);
  }
  EXPECT_EQ(reports.size(), 2U);
  EXPECT_EQ(reports.back(), "-2 gwarray_append() out of memory");
  EXPECT_EQ(array.count, 0);
  EXPECT_EQ(array.data, nullptr);
  EXPECT_EQ(tavd::gwarray_append(&array, &item), 0);
  EXPECT_EQ(array.count, 1);
  tavd::gwarray_release(&array);
  GlobalFree(lost);
}

TEST_F(GlobalMemory, AddressThatIsNoBlockIsLeftAlone) {
  int stack = 0;
  EXPECT_EQ(tavd::gwGrealloc(&stack, 8, 1), nullptr);
  EXPECT_EQ(tavd::gwGfree(&stack), 0);
  EXPECT_TRUE(reports.empty());
}

}  // namespace
