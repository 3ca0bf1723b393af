#include "check/check.h"

#include "base/progress.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace tavdhost {

std::vector<Finding> check_database(const Database& database, std::size_t& records) {
  Findings findings;
  TextCodec codec(database.handle());
  LinkCheck links(database);
  Progress progress("Checking", 0);
  records = 0;
  Record record = database.first();
  check_service();
  while (record) {
    findings.about(database.key(record));
    const Entry entry = stored_entry(database, record);
    FlowData flow;
    DuctSize size;
    tavca_load_flowdata(database.handle(), record.get(), &flow);
    tavdf_load_ductsize(database.handle(), record.get(), &size);
    check_values(codec, entry, findings);
    check_tables(entry, flow, findings);
    check_templates(codec, entry, size, findings);
    links.check(record, entry, findings);
    ++records;
    progress.step();
    record = database.next(record);
    check_service();
  }
  links.finish(findings);
  return findings.take();
}

}  // namespace tavdhost
