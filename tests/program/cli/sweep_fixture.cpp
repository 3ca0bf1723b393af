#include "sweep_fixture.h"

#include <charconv>

#include "tavd/tavca.h"

namespace clitest {

std::vector<std::string> split_cells(const std::string& line) {
  std::vector<std::string> cells(1);
  for (const char c : line) {
    if (c == ',') {
      cells.emplace_back();
    } else {
      cells.back() += c;
    }
  }
  return cells;
}

float to_float(const std::string& text) {
  float value = -999;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  EXPECT_TRUE(error == std::errc() && end == text.data() + text.size()) << "\"" << text << "\"";
  return value;
}

Table::Table(const std::string& text) {
  for (const std::string& line : lines_of(text)) {
    if (header.empty()) {
      header = split_cells(line);
    } else {
      rows.push_back(split_cells(line));
      EXPECT_EQ(rows.back().size(), header.size()) << line;
    }
  }
}

const std::string& Table::cell(std::size_t row, const std::string& name) const {
  static const std::string none = "no such cell";
  for (std::size_t column = 0; column < header.size(); ++column) {
    if (header[column] == name && row < rows.size()) return rows[row].at(column);
  }
  ADD_FAILURE() << none << ": " << name;
  return none;
}

Floats Table::column(const std::string& name) const {
  Floats values;
  for (std::size_t row = 0; row < rows.size(); ++row) values.push_back(number(row, name));
  return values;
}

std::vector<std::string> Sweep::command(std::vector<std::string> options, const char* form) const {
  options.insert(options.begin(), {"sweep", database.path()});
  options.emplace_back(form);
  return options;
}

std::string Sweep::run(const std::vector<std::string>& options, const char* form) const {
  const Outcome outcome = run_program(command(options, form));
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  return outcome.out;
}

std::string Sweep::header(const std::vector<std::string>& options) const {
  return lines_of(run(options, "--csv")).at(0);
}

std::string Sweep::fail(const std::vector<std::string>& options) const {
  return expect_user_error(command(options, "--csv"));
}

FlowData Sweep::load(const char* class_id, const char* object_id) const {
  FlowData flow;
  const tavb_rec rec = tavbfindrec(database.handle(), class_id, object_id, 0);
  EXPECT_EQ(tavca_load_flowdata(database.handle(), rec, &flow), 0);
  tavbreleaserec(rec);
  return flow;
}

}  // namespace clitest
