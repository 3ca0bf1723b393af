// The records of one run, stored in a database in memory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/record_bytes.h"
#include "tavd/tavb.h"

namespace fuzz {

// Attributes in front of the first record belong to "FZZ", "PRODUCT".
class Records {
 public:
  // Takes all that is left of the input.
  explicit Records(Input& input);
  // Traps if record handles or blocks are out that were not out before.
  ~Records();
  Records(const Records&) = delete;
  Records& operator=(const Records&) = delete;

  std::int16_t db() const { return db_; }
  tavb_rec product() const { return records_.front(); }  // the first
  const std::vector<tavb_rec>& all() const { return records_; }
  static std::string class_id(tavb_rec rec);
  static std::string object_id(tavb_rec rec);

 private:
  void begin(const std::string& class_id, const std::string& object_id);

  std::int16_t db_;
  long handles_before_;
  std::vector<tavb_rec> records_;
};

}  // namespace fuzz
