// A locale whose numbers have a decimal comma, for the length of a test.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>

namespace tavdtest {

class DecimalCommaLocale {
 public:
  DecimalCommaLocale() {
    EXPECT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "scripts/setup test makes this locale";
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  }
  ~DecimalCommaLocale() { std::setlocale(LC_ALL, "C"); }
  DecimalCommaLocale(const DecimalCommaLocale&) = delete;
  DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;
};

}  // namespace tavdtest
