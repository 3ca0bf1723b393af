// `tavd sweep` on the sample products, and what it wrote, taken apart.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "samples.h"
#include "support/program.h"
#include "tavd/flowdata.h"

namespace clitest {

using Floats = std::vector<float>;

std::vector<std::string> split_cells(const std::string& line);

// The text as a number; a failed check if it is none.
float to_float(const std::string& text);

// What a sweep wrote as CSV; every line has as many cells as the header.
struct Table {
  std::vector<std::string> header;
  std::vector<std::vector<std::string>> rows;

  explicit Table(const std::string& text);
  const std::string& cell(std::size_t row, const std::string& name) const;
  float number(std::size_t row, const std::string& name) const { return to_float(cell(row, name)); }
  Floats column(const std::string& name) const;
};

struct Sweep : testing::Test {
  Sweep() { add_samples(database); }

  std::vector<std::string> command(std::vector<std::string> options, const char* form) const;
  // Standard output of a sweep that succeeds.
  std::string run(const std::vector<std::string>& options, const char* form) const;
  Table csv(const std::vector<std::string>& options) const { return Table(run(options, "--csv")); }
  std::string header(const std::vector<std::string>& options) const;
  // The error of a sweep that does not.
  std::string fail(const std::vector<std::string>& options) const;
  FlowData load(const char* class_id, const char* object_id) const;

  tavdtest::Database database;
};

}  // namespace clitest
