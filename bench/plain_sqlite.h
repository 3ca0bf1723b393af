// What the service is measured beside: SQLite called directly, with prepared statements, on the same tables.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// A packed row as the service stores it.
struct PackedRow {
  std::string key;   // class id and object id, 33 bytes
  std::string body;  // all attributes
};

// Any failure ends the program with a message: there is nothing to measure then.
class PlainDatabase {
 public:
  explicit PlainDatabase(const std::string& path);
  ~PlainDatabase();
  PlainDatabase(const PlainDatabase&) = delete;
  PlainDatabase& operator=(const PlainDatabase&) = delete;

  // Bytes of the body under `key`; the row is fetched and not copied.
  int find(std::string_view key);
  // Bytes of the bodies of a class, with one statement that is stepped along.
  std::int64_t walk(std::string_view class_id);
  // The same with a statement of its own for every record, which lets other processes in between.
  std::int64_t walk_step_by_step(std::string_view class_id);

  // Up to `most` rows of a class in order.
  std::vector<PackedRow> rows(std::string_view class_id, std::size_t most);
  std::int64_t count(std::string_view class_id);

 private:
  sqlite3_stmt* prepare(const char* sql);
  void bind(sqlite3_stmt* statement, int parameter, std::string_view bytes);

  sqlite3* connection_ = nullptr;
  sqlite3_stmt* find_ = nullptr;
  sqlite3_stmt* walk_ = nullptr;
  sqlite3_stmt* after_ = nullptr;
};

// The bare loop of insertions: a new file with the service's tables and its settings for what must be on the
// disk, all rows in one transaction.
void insert_rows(const std::string& path, const std::vector<PackedRow>& rows);

}  // namespace bench
