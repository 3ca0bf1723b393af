// Tables of separated values, as spreadsheets write them: cells and their places.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/source.h"

namespace tavdhost {

struct CsvCell {
  std::string text;    // without quotes and blanks around it
  std::size_t offset;  // in the source
};

using CsvRow = std::vector<CsvCell>;

// The rows of a table that are not empty; the first is its heading. Cells are parted by semicolons, tabs or
// commas, whichever the heading has, in this order; quotes around a cell hold separators and line ends in it.
// What is wrong goes into `faults`.
std::vector<CsvRow> csv_rows(const Source& source, Faults& faults);

// The same of a part of a table, whose separator is known of its heading.
std::vector<CsvRow> csv_rows(const Source& source, char separator, Faults& faults);
char csv_separator(std::string_view heading);

}  // namespace tavdhost
