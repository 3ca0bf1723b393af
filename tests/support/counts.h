// Counts the assertions that a program of tests executes. Goes in front of every source of tests, behind
// GoogleTest's own headers: tests/precompiled.cmake.
#pragma once

#include <gtest/gtest.h>

#include <atomic>

namespace tavdtest {

extern std::atomic<long> executed_assertions;

// Where TAVD_TEST_COUNTS names a file, the program appends to it at its end: tests that ran, tests that were
// skipped, assertions, name of the program.
bool report_counts();

namespace {
[[maybe_unused]] const bool counts_are_reported = report_counts();
}

}  // namespace tavdtest

// Every EXPECT_ and ASSERT_ of GoogleTest begins with this, to keep a dangling else away.
#undef GTEST_AMBIGUOUS_ELSE_BLOCKER_
#define GTEST_AMBIGUOUS_ELSE_BLOCKER_           \
  switch (++::tavdtest::executed_assertions, 0) \
  case 0:                                       \
  default:
