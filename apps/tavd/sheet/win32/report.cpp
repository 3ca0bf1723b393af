// Windows has no documents: their pages are made with Cairo and Pango, which the program is without there.
#include "sheet/report.h"

#include "base/errors.h"

namespace tavdhost {
namespace {

UserError not_here() {
  return UserError(
      "tavd report makes no documents on Windows; tavd diagram, tavd picture and tavd calc --json give what "
      "stands in them");
}

}  // namespace

void check_report(const ReportTarget& /*target*/, bool /*is_schedule*/) {
  throw not_here();
}

void write_sheet(const SheetSubject& /*subject*/, const SheetForm& /*form*/, const ReportTarget& /*target*/) {
  throw not_here();
}

Json::Value sheet_curves(const SheetSubject& /*subject*/, const SheetForm& /*form*/) {
  throw not_here();
}

void write_schedule(SelectCatalogue& /*catalogue*/, const Request& /*usual*/,
                    const ScheduleReading& /*reading*/, const SheetForm& /*form*/,
                    const ReportTarget& /*target*/) {
  throw not_here();
}

}  // namespace tavdhost
