// A locale whose numbers have a decimal comma, for the length of a test: Windows has names of its own for
// them.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>

namespace tavdtest {

class DecimalCommaLocale {
 public:
  DecimalCommaLocale() {
    EXPECT_NE(std::setlocale(LC_ALL, "German_Germany.1252"), nullptr);
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  }
  ~DecimalCommaLocale() { std::setlocale(LC_ALL, "C"); }
  DecimalCommaLocale(const DecimalCommaLocale&) = delete;
  DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;
};

}  // namespace tavdtest
