// Schedules of duties, a line each, as a spreadsheet saves them: read line by line, so that memory does not
// grow with them.
#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/source.h"
#include "import/csv.h"
#include "select/request.h"

namespace tavdhost {

// The lines of a table one after the other; what stands between quotes may hold line ends.
class TableLines {
 public:
  TableLines(std::istream& in, std::string name) : in_(in), name_(std::move(name)) {}

  // The next one that is not empty; nothing at the end. Throws UserError if it cannot be read, or for one
  // that is too long to be one.
  std::optional<Source> next();

 private:
  std::istream& in_;
  std::string name_;
  std::size_t line_ = 1;  // of what comes next
};

// What is wrong in a schedule: the first few places, and how many there are.
class ScheduleFaults {
 public:
  void add(const Faults& of_a_line);
  bool empty() const { return lines_ == 0; }
  std::size_t lines() const { return lines_; }  // with faults
  std::string listing() const;

 private:
  std::size_t lines_ = 0;
  std::vector<std::string> shown_;
};

// A line of a schedule.
struct ScheduledDuty {
  std::vector<std::string> own;  // what the schedule tells of it beside the duty, and the number of its line
  Request request;
};

// The columns of a schedule.
class Schedule {
 public:
  // Reads the heading. `usual` is what a line asks for that does not say otherwise. Throws UserError that
  // lists all that is wrong with the heading.
  Schedule(const Source& heading, const Request& usual);

  // The names of `own`.
  const std::vector<std::string>& own_names() const { return own_names_; }

  // A line; nothing where anything is wrong, which goes into `faults`.
  std::optional<ScheduledDuty> read(const Source& line, Faults& faults);

 private:
  struct Column {
    Take take = nullptr;  // null: a text of the line's own, or a column without a heading
    bool is_own = false;
    bool is_number = false;  // may have a decimal comma
    std::string name;        // for messages
    std::string before;      // what the cell's text gets in front of it
    std::string behind;      // and behind it, such as its unit
  };

  Column column_of(const CsvCell& cell, std::string& fault) const;
  bool has_its_cells(const Source& line, const CsvRow& row, Faults& faults) const;
  bool take_cell(const Source& line, const Column& column, const CsvCell& cell, Request& request,
                 Faults& faults);
  std::string number_of(const std::string& text);

  Request usual_;
  char separator_;
  char decimal_ = '\0';  // the sign that the schedule's numbers have; none seen yet
  std::vector<Column> columns_;
  std::vector<std::string> own_names_;
};

// "room, terminal, qv, dp, ...", for messages and the help.
std::string schedule_columns();

}  // namespace tavdhost
