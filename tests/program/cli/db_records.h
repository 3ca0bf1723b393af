// The records of a database as the service tells them, to compare two databases byte for byte.
#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "tavd/tavdsrv.h"

namespace clitest {

struct StoredRecord {
  std::string key;  // class and padded object id, 33 bytes
  std::map<std::int16_t, std::string> attributes;
  std::string ahm;
  bool operator==(const StoredRecord&) const = default;
};

inline StoredRecord stored_record(std::int16_t db, tavb_rec rec) {
  StoredRecord stored;
  char class_id[8] = {};
  char object_id[32] = {};
  tavbgetID(db, rec, class_id, object_id);
  stored.key = std::string(class_id, 3) + std::string(object_id, 30);
  for (std::int32_t i = 0; i < tavdsrv_attributecount(rec); ++i) {
    std::int16_t number = 0;
    const void* data = nullptr;
    std::int32_t length = -1;
    if (tavdsrv_attributeat(rec, i, &number, &data, &length) != 0) continue;
    stored.attributes[number] = std::string(static_cast<const char*>(data), static_cast<std::size_t>(length));
  }
  std::int32_t length = 0;
  void* block = tavbgetahm(db, rec, &length);
  if (block != nullptr) stored.ahm.assign(static_cast<const char*>(block), static_cast<std::size_t>(length));
  tavbreleaseahm(block);
  return stored;
}

inline std::vector<StoredRecord> stored_records(const std::string& path) {
  std::vector<StoredRecord> records;
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
  if (db < 0) return records;
  const std::string lowest(30, '\x01');
  tavb_rec rec = tavbfindrec(db, lowest.c_str(), lowest.c_str(), 1);
  while (rec != nullptr) {
    records.push_back(stored_record(db, rec));
    tavb_rec next = tavbnextrec(db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  tavdsrv_closedatabase(db);
  return records;
}

}  // namespace clitest
