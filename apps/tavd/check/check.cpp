#include "check/check.h"

#include <algorithm>

#include "base/progress.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

// Classes and ids are compared byte for byte.
void check_key(const RecordKey& key, Findings& findings) {
  const bool capitals =
      std::ranges::none_of(key.class_id, [](char letter) { return letter >= 'a' && letter <= 'z'; });
  if (!capitals) {
    findings.add(std::nullopt, 0, "a class in capitals, as it is told apart from others by each letter",
                 in_quotes(key.class_id));
  }
  if (key.object_id.starts_with(' ')) {
    findings.add(std::nullopt, 0, "an id without blanks in front", in_quotes(key.object_id));
  }
}

}  // namespace

std::string text_of(const Finding& finding) {
  std::string line = printable(finding.record.class_id) + ' ' + printable(finding.record.object_id) + ": ";
  if (finding.attribute) {
    const std::string name = attribute_name(*finding.attribute);
    const std::string number = std::to_string(*finding.attribute);
    line += name == number ? number : name + " (" + number + ')';
    if (finding.row != 0) line += " row " + std::to_string(finding.row);
    line += ": ";
  }
  return line + "expected " + finding.expected + ", found " + finding.found;
}

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
    check_key(database.key(record), findings);
    check_values(codec, entry, findings);
    check_tables(entry, flow, findings);
    check_sound(flow, findings);
    check_units(entry, flow, findings);
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
