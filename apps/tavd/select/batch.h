// Selection for a whole schedule.
#pragma once

#include <string>

#include "product/shown_units.h"
#include "select/catalogue.h"

namespace tavdhost {

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
