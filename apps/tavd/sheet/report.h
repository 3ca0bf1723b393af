// Documents: a data sheet of a product at a duty, and a schedule with the sheets of its products. The forms
// that there are, and how pages are made, is the platform's.
#pragma once

#include <json/value.h>

#include <string>

#include "select/batch.h"
#include "sheet/subject.h"

namespace tavdhost {

struct ReportTarget {
  std::string path;    // "-" is standard output
  std::string format;  // an ending without its dot; empty: the path's own
};

// Throws UserError where this platform makes no such document: before anything is read or drawn.
void check_report(const ReportTarget& target, bool is_schedule);

// One page: PDF, SVG or PNG.
void write_sheet(const SheetSubject& subject, const SheetForm& form, const ReportTarget& target);

// The curves of the sheet's charts as numbers.
Json::Value sheet_curves(const SheetSubject& subject, const SheetForm& form);

// A PDF: the schedule, and a sheet for each product and operating point in it.
void write_schedule(SelectCatalogue& catalogue, const Request& usual, const ScheduleReading& reading,
                    const SheetForm& form, const ReportTarget& target);

}  // namespace tavdhost
