// What the benchmarks of the service have in common: its jobs, and two jobs timed in turn.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "plain_sqlite.h"

namespace bench {

// Any failure ends the program with a message: there is nothing to measure then.
[[noreturn]] void give_up(const std::string& what);

// An open database of the service.
class Service {
 public:
  explicit Service(const std::string& path, std::int32_t mode = 0);
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  std::int16_t handle() const { return handle_; }

 private:
  std::int16_t handle_;
};

struct Comparison {
  std::string name;
  std::string detail;
  int rounds;                   // runs of each, in turn, so that what else the machine does hits both alike
  double calls;                 // that one run makes
  std::function<void()> first;  // what is measured
  std::function<void()> other;  // what it is measured beside
  double most = 0;              // times the other; 0 asks for nothing
};

// Prints a line of a table. A figure that is above what is wanted counts as missed.
void compare(const Comparison& job);
void miss();
// The program's exit code: 1 if anything was missed.
int end_of_comparisons();

// Ids as they are handed to the service, and which of them comes next.
struct Keys {
  std::vector<std::string> keys;
  std::size_t at = 0;
  const std::string& next() { return keys[at++ % keys.size()]; }
};
Keys some_keys(const std::vector<PackedRow>& rows, std::size_t count);

// The whole products among the rows, which have twenty attributes and more.
std::vector<PackedRow> products(std::vector<PackedRow> rows);

// The first twenty attributes of a record.
std::vector<std::int16_t> attributes_of(std::int16_t db, const std::string& key);
void find_and_read(std::int16_t db, const std::string& key, const std::vector<std::int16_t>& attributes);

// Walks a class and answers how many records it has.
std::int64_t walk(std::int16_t db, const char* class_id);

}  // namespace bench
