// A schedule of products: a row for each duty with the product that fits best, and which sheets that makes.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "product/database.h"
#include "select/batch.h"
#include "sheet/subject.h"

namespace tavdhost {

// A sheet of its own: a product with its parameters at one operating point. Duties that have the same in all
// of this share it.
struct ScheduledSheet {
  RecordKey key;
  std::vector<std::string> parameters;  // NAME=VALUE
  SheetDuty duty;
  std::string code;  // as lists of pages name it
};

struct ScheduleRow {
  std::vector<std::string> own;      // as the schedule has them, under `own_names`
  std::string flow, pressure;        // of the duty, without units
  std::optional<std::size_t> sheet;  // index; none where nothing fits
  std::string code, description, size, takes, level, throw_length;
};

class ScheduleModel {
 public:
  explicit ScheduleModel(const SheetForm& form) : form_(form) {}

  // Names as a schedule has them ("room", ...), the number of the line last.
  void set_names(const std::vector<std::string>& own_names) { own_names_ = own_names; }
  void add(const AnsweredDuty& answered);

  const std::vector<std::string>& own_names() const { return own_names_; }
  const std::vector<ScheduleRow>& rows() const { return rows_; }
  const std::vector<ScheduledSheet>& sheets() const { return sheets_; }
  std::size_t without() const { return without_; }  // duties that nothing fits

 private:
  // What makes a sheet another one.
  using Same = std::tuple<std::string, std::string, std::vector<std::string>, float, std::optional<float>>;

  void add_hit(const AnsweredDuty& answered, ScheduleRow& row);
  std::size_t sheet_of(ScheduledSheet sheet);

  const SheetForm& form_;
  std::vector<std::string> own_names_;
  std::vector<ScheduleRow> rows_;
  std::vector<ScheduledSheet> sheets_;
  std::map<Same, std::size_t> known_;
  std::size_t without_ = 0;
};

}  // namespace tavdhost
