// What the checks of tables have in common: rows of a record's tables, and what is asked of their numbers.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "check/check.h"

namespace tavdhost {

// Rows are copied: they stand unaligned in the record.
template <typename Row, std::size_t N>
std::vector<Row> rows_of(const Row (&table)[N], int count) {
  const auto most = static_cast<std::size_t>(std::clamp<int>(count, 0, N));
  std::vector<Row> rows(most);
  if (most > 0) std::memcpy(rows.data(), table, most * sizeof(Row));
  return rows;
}

// Pa/(l/s)^2, or Pa/(m/s)^2 where flows are velocities.
inline double resistance_of(float qv, float dp) {
  return double{dp} / (double{qv} * double{qv});
}

// The number in three significant digits, however small it is.
inline std::string resistance_text(double resistance) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, resistance, std::chars_format::general, 3).ptr;
  return {text, end};
}

class RowFindings {
 public:
  explicit RowFindings(Findings& findings) : findings_(findings) {}

  // `row` counts from 1; 0: the table as a whole.
  void add(std::int16_t attribute, std::size_t row, const std::string& expected, const std::string& found) {
    findings_.add(attribute, row, expected, found);
  }
  // Each value above the one before it.
  bool rises(std::int16_t attribute, std::size_t row, const char* what, float before, float value) {
    if (value > before) return true;
    add(attribute, row, std::string(what) + " above " + shortest(before) + " of the row before",
        shortest(value));
    return false;
  }
  bool positive(std::int16_t attribute, std::size_t row, const char* what, float value) {
    if (value > 0) return true;
    add(attribute, row, std::string(what) + " above 0", shortest(value));
    return false;
  }
  void not_negative(std::int16_t attribute, std::size_t row, const char* what, float value) {
    if (value < 0) add(attribute, row, std::string(what) + " of 0 or more", shortest(value));
  }

 private:
  Findings& findings_;
};

}  // namespace tavdhost
