// The numbers by which threads are told apart.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <barrier>
#include <cstddef>
#include <thread>
#include <vector>

#include "gui/cairo/thread_number.h"

namespace {

// What threads are given that live at the same time.
std::vector<int> numbers_at_once(std::size_t threads) {
  std::vector<int> numbers(threads);
  std::barrier all_asked(static_cast<std::ptrdiff_t>(threads));
  std::vector<std::jthread> living;
  for (int& number : numbers) {
    living.emplace_back([&number, &all_asked] {
      number = tavdcairo::thread_number();
      all_asked.arrive_and_wait();
    });
  }
  living.clear();
  return numbers;
}

TEST(ThreadNumbers, TheFirstThreadHasNone) {
  EXPECT_EQ(tavdcairo::thread_number(), 0);
  EXPECT_EQ(tavdcairo::thread_number(), 0) << "it keeps it";
}

TEST(ThreadNumbers, ThreadsAtOnceHaveOthers) {
  EXPECT_EQ(tavdcairo::thread_number(), 0);
  EXPECT_THAT(numbers_at_once(4), testing::UnorderedElementsAre(1, 2, 3, 4));
}

TEST(ThreadNumbers, AThreadThatEndsLeavesItsNumberToTheNext) {
  EXPECT_EQ(tavdcairo::thread_number(), 0);
  for (int round = 0; round < 1000; ++round) EXPECT_EQ(numbers_at_once(1), std::vector{1});
}

TEST(ThreadNumbers, MoreThreadsThanNumbersShareTheLast) {
  EXPECT_EQ(tavdcairo::thread_number(), 0);
  constexpr int kLast = tavdcairo::kThreadNumbers - 1;
  std::vector<int> expected;
  for (int number = 1; number < kLast; ++number) expected.push_back(number);
  expected.insert(expected.end(), 37, kLast);
  EXPECT_THAT(numbers_at_once(expected.size()), testing::UnorderedElementsAreArray(expected));
  EXPECT_EQ(numbers_at_once(1), std::vector{1}) << "all are free again";
}

}  // namespace
