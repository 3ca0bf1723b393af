#include "base/gwarray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "base/gwmem.h"
#include "error_reports.h"

namespace {

using tavdtest::ErrorReports;

constexpr std::int32_t kItemSize = 4;
constexpr std::int32_t kNonsense = 0x5A5A5A5A;

class Array {
 public:
  explicit Array(std::int32_t itemsize = kItemSize) { tavd::gwarray_init(&array_, itemsize); }
  Array(std::initializer_list<std::int32_t> items) : Array() {
    for (const std::int32_t item : items) EXPECT_EQ(tavd::gwarray_append(&array_, &item), 0);
  }
  ~Array() { tavd::gwarray_release(&array_); }
  Array(const Array&) = delete;
  Array& operator=(const Array&) = delete;

  gwarray* operator&() { return &array_; }  // NOLINT(google-runtime-operator): stands for the record
  gwarray* operator->() { return &array_; }

  std::vector<std::int32_t> items() {
    std::vector<std::int32_t> all;
    for (std::int32_t i = 0; i < array_.count; ++i) {
      std::int32_t item = kNonsense;
      EXPECT_EQ(tavd::gwarray_get(&array_, i, &item), 0);
      all.push_back(item);
    }
    return all;
  }

 private:
  gwarray array_{};
};

using Items = std::vector<std::int32_t>;

// Makes the next growth fail: the array claims as many items as 32 bits can size. The block is kept, since an
// array that cannot grow loses it.
class Full {
 public:
  explicit Full(gwarray* array) : block_(array->data) {
    array->count = std::numeric_limits<std::int32_t>::max() / array->itemsize;
  }
  ~Full() { tavd::gwGfree(block_); }
  Full(const Full&) = delete;
  Full& operator=(const Full&) = delete;

 private:
  void* block_;
};

void expect_reports(const ErrorReports& reports, const char* allocator, const char* function) {
  ASSERT_EQ(reports.all.size(), 2U);
  EXPECT_EQ(reports.all[0].code, -2);
  EXPECT_EQ(reports.all[0].text, allocator);
  EXPECT_EQ(reports.all[1].code, -2);
  EXPECT_EQ(reports.all[1].text, function);
}

TEST(GrowableArray, IsEmptyWithItsItemSizeAfterInit) {
  gwarray array;
  std::memset(&array, 0xAA, sizeof array);
  tavd::gwarray_init(&array, 12);
  EXPECT_EQ(array.data, nullptr);
  EXPECT_EQ(array.count, 0);
  EXPECT_EQ(array.itemsize, 12);
}

TEST(GrowableArray, AppendKeepsTheOrder) {
  Array array{1, 2, 3};
  EXPECT_EQ(array.items(), (Items{1, 2, 3}));
}

TEST(GrowableArray, GetAtTheCountAndBelowZeroFailsAndZeroesTheItem) {
  Array array{1, 2, 3};
  for (const std::int32_t index : {3, -1, 1000, std::numeric_limits<std::int32_t>::min()}) {
    std::int32_t item = kNonsense;
    EXPECT_EQ(tavd::gwarray_get(&array, index, &item), -1) << index;
    EXPECT_EQ(item, 0) << index;
  }
}

TEST(GrowableArray, GetZeroesExactlyOneItem) {
  Array array;
  std::int32_t around[3] = {kNonsense, kNonsense, kNonsense};
  EXPECT_EQ(tavd::gwarray_get(&array, 0, &around[1]), -1);
  EXPECT_EQ(around[0], kNonsense);
  EXPECT_EQ(around[1], 0);
  EXPECT_EQ(around[2], kNonsense);
}

TEST(GrowableArray, InsertBeyondTheEndAppends) {
  Array array{1, 2, 3};
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_insert(&array, array->count + 5, &item), 0);
  EXPECT_EQ(array.items(), (Items{1, 2, 3, 9}));
}

TEST(GrowableArray, InsertAtTheEndAppends) {
  Array array{1, 2, 3};
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_insert(&array, 3, &item), 0);
  EXPECT_EQ(array.items(), (Items{1, 2, 3, 9}));
}

TEST(GrowableArray, InsertAtZeroMovesAllItems) {
  Array array{1, 2, 3};
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_insert(&array, 0, &item), 0);
  EXPECT_EQ(array.items(), (Items{9, 1, 2, 3}));
}

TEST(GrowableArray, InsertInTheMiddleMovesTheLaterItems) {
  Array array{1, 2, 3};
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_insert(&array, 2, &item), 0);
  EXPECT_EQ(array.items(), (Items{1, 2, 9, 3}));
}

TEST(GrowableArray, InsertBelowZeroWritesNothingInFrontOfTheBlock) {
  Array array{1, 2, 3};
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_insert(&array, -4, &item), 0);
  EXPECT_EQ(array.items(), (Items{9, 1, 2, 3}));
}

TEST(GrowableArray, SetWritesInsideAndRefusesOutside) {
  Array array{1, 2, 3};
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_set(&array, 1, &item), 0);
  EXPECT_EQ(tavd::gwarray_set(&array, 3, &item), -1);
  EXPECT_EQ(tavd::gwarray_set(&array, -1, &item), -1);
  EXPECT_EQ(array.items(), (Items{1, 9, 3}));
}

TEST(GrowableArray, RemovingTheLastItemMovesNothing) {
  Array array{1, 2, 3};
  const void* block = array->data;
  EXPECT_EQ(tavd::gwarray_remove(&array, 2), 0);
  EXPECT_EQ(array.items(), (Items{1, 2}));
  EXPECT_EQ(array->data, block);
  // The block is not shrunk: the removed item still stands behind the last one.
  EXPECT_EQ(static_cast<const std::int32_t*>(array->data)[2], 3);
}

TEST(GrowableArray, RemovingTheFirstItemMovesTheOthersDown) {
  Array array{1, 2, 3};
  EXPECT_EQ(tavd::gwarray_remove(&array, 0), 0);
  EXPECT_EQ(array.items(), (Items{2, 3}));
}

TEST(GrowableArray, RemoveOutsideFailsAndChangesNothing) {
  Array array{1, 2, 3};
  EXPECT_EQ(tavd::gwarray_remove(&array, 3), -1);
  EXPECT_EQ(tavd::gwarray_remove(&array, -1), -1);
  EXPECT_EQ(array.items(), (Items{1, 2, 3}));
}

TEST(GrowableArray, AppendingAnEmptyArrayOfAnotherItemSizeIsFine) {
  Array array{1, 2};
  Array other(16);
  EXPECT_EQ(tavd::gwarray_append_array(&array, &other), 0);
  EXPECT_EQ(array.items(), (Items{1, 2}));
}

TEST(GrowableArray, AppendingAnArrayOfAnotherItemSizeFailsAndChangesNothing) {
  Array array{1, 2};
  Array other(2);
  const std::int16_t item = 7;
  ASSERT_EQ(tavd::gwarray_append(&other, &item), 0);
  EXPECT_EQ(tavd::gwarray_append_array(&array, &other), -3);
  EXPECT_EQ(array.items(), (Items{1, 2}));
}

TEST(GrowableArray, AppendingAnArrayAddsItsItems) {
  Array array{1, 2};
  Array other{3, 4, 5};
  EXPECT_EQ(tavd::gwarray_append_array(&array, &other), 0);
  EXPECT_EQ(array.items(), (Items{1, 2, 3, 4, 5}));
  EXPECT_EQ(other.items(), (Items{3, 4, 5}));
}

TEST(GrowableArray, AppendsItself) {
  Array array{1, 2, 3};
  EXPECT_EQ(tavd::gwarray_append_array(&array, &array), 0);
  EXPECT_EQ(array.items(), (Items{1, 2, 3, 1, 2, 3}));
}

TEST(GrowableArray, IsUsableAfterResetWithoutANewInit) {
  Array array{1, 2, 3};
  tavd::gwarray_reset(&array);
  EXPECT_EQ(array->data, nullptr);
  EXPECT_EQ(array->count, 0);
  EXPECT_EQ(array->itemsize, kItemSize);
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_append(&array, &item), 0);
  EXPECT_EQ(array.items(), (Items{9}));
}

TEST(GrowableArray, AfterReleaseAnAppendedItemHasNoBytes) {
  Array array{1, 2, 3};
  tavd::gwarray_release(&array);
  EXPECT_EQ(array->data, nullptr);
  EXPECT_EQ(array->count, 0);
  EXPECT_EQ(array->itemsize, 0);
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_append(&array, &item), 0);
  EXPECT_EQ(tavd::gwarray_append(&array, &item), 0);
  EXPECT_EQ(tavd::gwarray_insert(&array, 0, &item), 0);
  EXPECT_EQ(array->count, 3);
  EXPECT_NE(array->data, nullptr);
  std::int32_t out = kNonsense;
  EXPECT_EQ(tavd::gwarray_get(&array, 0, &out), 0);
  EXPECT_EQ(tavd::gwarray_get(&array, 7, &out), -1);
  EXPECT_EQ(out, kNonsense);
}

TEST(GrowableArray, ReleaseOfAZeroRecordIsHarmless) {
  gwarray array{};
  tavd::gwarray_release(&array);
  EXPECT_EQ(array.data, nullptr);
  EXPECT_EQ(array.count, 0);
  EXPECT_EQ(array.itemsize, 0);
}

TEST(GrowableArray, FailedAppendReportsAndLeavesAnEmptyUsableArray) {
  Array array{1, 2, 3};
  ErrorReports reports;
  const Full full(&array);
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_append(&array, &item), -2);
  expect_reports(reports, "gwGrealloc() out of memory (0)", "gwarray_append() out of memory");
  EXPECT_EQ(array->data, nullptr);
  EXPECT_EQ(array->count, 0);
  EXPECT_EQ(tavd::gwarray_append(&array, &item), 0);
  EXPECT_EQ(array.items(), (Items{9}));
}

TEST(GrowableArray, FailedInsertReports) {
  Array array{1, 2, 3};
  ErrorReports reports;
  const Full full(&array);
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_insert(&array, 0, &item), -2);
  expect_reports(reports, "gwGrealloc() out of memory (0)", "gwarray_insert() out of memory");
  EXPECT_EQ(array->data, nullptr);
  EXPECT_EQ(array->count, 0);
}

TEST(GrowableArray, FailedAppendOfAnArrayReports) {
  Array array{1, 2, 3};
  Array other{4, 5};
  ErrorReports reports;
  const Full full(&array);
  EXPECT_EQ(tavd::gwarray_append_array(&array, &other), -2);
  expect_reports(reports, "gwGrealloc() out of memory (0)", "gwarray_append_array() out of memory");
  EXPECT_EQ(array->data, nullptr);
  EXPECT_EQ(array->count, 0);
  EXPECT_EQ(other.items(), (Items{4, 5}));
}

TEST(GrowableArray, ItemsWithoutBytesAreNoMoreThan32BitsCount) {
  gwarray array{};
  array.count = std::numeric_limits<std::int32_t>::max();
  ErrorReports reports;
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_append(&array, &item), -2);
  expect_reports(reports, "gwGmalloc() out of memory (0)", "gwarray_append() out of memory");
  EXPECT_EQ(array.count, 0);
}

TEST(GrowableArray, NegativeItemSizeCannotGrow) {
  gwarray array;
  tavd::gwarray_init(&array, -4);
  ErrorReports reports;
  const std::int32_t item = 9;
  EXPECT_EQ(tavd::gwarray_append(&array, &item), -2);
  expect_reports(reports, "gwGmalloc() out of memory (0)", "gwarray_append() out of memory");
}

TEST(GrowableArray, BehavesLikeAVectorUnderRandomOperations) {
  std::mt19937 random(190);
  Array array;
  Items expected;
  for (int step = 0; step < 3000; ++step) {
    const auto item = static_cast<std::int32_t>(random());
    const auto n = static_cast<std::int32_t>(expected.size());
    const auto index = static_cast<std::int32_t>(random() % static_cast<unsigned>(n + 2));
    const bool inside = index < n;
    switch (random() % 5) {
      case 0:
        ASSERT_EQ(tavd::gwarray_append(&array, &item), 0);
        expected.push_back(item);
        break;
      case 1:
        ASSERT_EQ(tavd::gwarray_insert(&array, index, &item), 0);
        expected.insert(expected.begin() + std::min(index, n), item);
        break;
      case 2:
        ASSERT_EQ(tavd::gwarray_set(&array, index, &item), inside ? 0 : -1);
        if (inside) expected[static_cast<std::size_t>(index)] = item;
        break;
      default:
        ASSERT_EQ(tavd::gwarray_remove(&array, index), inside ? 0 : -1);
        if (inside) expected.erase(expected.begin() + index);
        break;
    }
    ASSERT_EQ(array.items(), expected) << "step " << step;
  }
}

}  // namespace
