// Selection for a whole schedule.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "product/shown_units.h"
#include "select/catalogue.h"
#include "select/hits.h"
#include "select/schedule.h"

namespace tavdhost {

// What is read of a schedule, and how.
struct ScheduleReading {
  std::string schedule;
  bool skip_bad;       // lines that are not as expected are left out; otherwise nothing counts
  bool explain;        // a duty that nothing fits is told with what hinders the products
  int threads;         // 0: as many as the machine has processors
  std::string target;  // that is written, which must not be what is read; "-" for standard output
};

// A duty of a schedule with what it was answered: good while it is told.
struct AnsweredDuty {
  const std::vector<std::string>& own;  // what its line tells beside the duty, and the line's number
  const tavdn_catalogue* catalogue;
  const tavdn_duty& duty;
  const Selected& selected;
  std::string why_not;  // of a duty that nothing fits, where that is asked for
};

// Who is told of a schedule: the names of `own`, once, and each duty in the order of the schedule.
struct ScheduleListener {
  std::function<void(const std::vector<std::string>& own_names)> heading;
  std::function<void(const AnsweredDuty& answered)> answer;
};

struct ScheduleCounts {
  std::size_t duties = 0, without = 0;  // those that nothing fits
  ScheduleFaults faults;                // of lines that were left out
};

// Reads a schedule and asks for its duties, some at a time. `usual` is what a line asks for that does not say
// otherwise. Throws UserError for what is wrong, behind the last duty if it is in the lines.
ScheduleCounts answer_schedule(SelectCatalogue& catalogue, const Request& usual,
                               const ScheduleReading& reading, const ScheduleListener& listener);

// Says on standard error which lines were left out.
void tell_left_out(const ScheduleCounts& counts, const std::string& schedule);
// "6 duties, 1 without a product that fits".
std::string counts_text(const ScheduleCounts& counts);

struct BatchSettings {
  std::string schedule, target;  // "-" is standard output
  ShownUnits units;
  bool skip_bad;  // lines that are not as expected are left out; otherwise nothing is written
  bool explain;   // a duty that nothing fits tells why
  int threads;    // 0: as many as the machine has processors
};

// Reads the schedule and writes a line for each duty and rank, some at a time, so that memory does not grow
// with it. `usual` is what a line asks for that does not say otherwise. Throws UserError for what is wrong.
void select_for_schedule(SelectCatalogue& catalogue, const Request& usual, const BatchSettings& settings);

}  // namespace tavdhost
