// The catalogue's sources compiled into a database.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/entry.h"
#include "catalogue/source.h"
#include "product/database.h"

namespace tavdhost {

// Where the records of a build stand in its sources.
class Places {
 public:
  struct Product {
    const Source* source;
    const Json::Value* value;
  };
  struct At {
    const Source* source;
    Source::Place place;
  };

  // False if there is a record of that key already.
  bool add(const RecordKey& key, const Product& product) {
    return products_.try_emplace(std::pair(key.class_id, key.object_id), product).second;
  }
  const Product& product(const RecordKey& key) const { return products_.at({key.class_id, key.object_id}); }

  // The place of an attribute's row, from 1, of the attribute, or of the record, as far down as it is
  // written; nothing for a record that no source has.
  std::optional<At> find(const RecordKey& key, std::optional<std::int16_t> attribute, std::size_t row) const;

 private:
  std::map<std::pair<std::string, std::string>, Product> products_;  // by class and object id
};

// A database that is built and has not yet taken its name.
struct BuiltDatabase {
  const Database& database;
  const Places& places;
  const Faults& remarks;  // on the sources themselves, all of them named in order
  std::size_t records;
};

// Looks at what was built; if it throws, the target is left as it is.
using Inspect = std::function<void(const BuiltDatabase&)>;

// Compiles the sources into a database at `target`, which is replaced as a whole, or left as it is: then
// UserError has file, line and reason of everything that is wrong.
void build_database(const std::vector<std::string>& sources, const std::string& target,
                    const Inspect& inspect);

// What to report of faults for which the target is left as it is: how many of `what`, and the listing.
UserError refused(const Faults& faults, const char* what, const std::string& target);

}  // namespace tavdhost
