#include "plain_sqlite.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

// As the service has them.
constexpr const char* kCache = "PRAGMA cache_size=-8192";
constexpr const char* kNewFile =
    "PRAGMA journal_mode=DELETE;"
    "PRAGMA synchronous=EXTRA;"
    "CREATE TABLE record(id INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, body BLOB NOT NULL);"
    "BEGIN";

void check(sqlite3* connection, bool good) {
  if (good) return;
  std::fprintf(stderr, "plain SQLite: %s\n", sqlite3_errmsg(connection));
  std::exit(2);
}

void run(sqlite3* connection, const char* sql) {
  check(connection, sqlite3_exec(connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
}

std::string_view column(sqlite3_stmt* statement, int index) {
  const auto* data = static_cast<const char*>(sqlite3_column_blob(statement, index));
  return {data, static_cast<std::size_t>(sqlite3_column_bytes(statement, index))};
}

// The first key behind a class.
std::string end_of(std::string_view class_id) {
  std::string end(class_id);
  ++end.back();
  return end;
}

}  // namespace

PlainDatabase::PlainDatabase(const std::string& path) {
  check(connection_, sqlite3_open_v2(path.c_str(), &connection_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                     nullptr) == SQLITE_OK);
  run(connection_, kCache);
  find_ = prepare("SELECT key, body FROM record WHERE key = ?1");
  walk_ = prepare("SELECT key, body FROM record WHERE key >= ?1 AND key < ?2 ORDER BY key");
  after_ = prepare("SELECT key, body FROM record WHERE key > ?1 ORDER BY key LIMIT 1");
}

PlainDatabase::~PlainDatabase() {
  for (sqlite3_stmt* statement : {find_, walk_, after_}) sqlite3_finalize(statement);
  sqlite3_close(connection_);
}

int PlainDatabase::find(std::string_view key) {
  bind(find_, 1, key);
  check(connection_, sqlite3_step(find_) == SQLITE_ROW);
  const auto length = static_cast<int>(column(find_, 1).size());
  sqlite3_reset(find_);
  return length;
}

std::int64_t PlainDatabase::walk(std::string_view class_id) {
  std::int64_t bytes = 0;
  const std::string end = end_of(class_id);
  bind(walk_, 1, class_id);
  bind(walk_, 2, end);
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(walk_)) == SQLITE_ROW) {
    bytes += static_cast<std::int64_t>(column(walk_, 0).size() + column(walk_, 1).size());
  }
  check(connection_, code == SQLITE_DONE);
  sqlite3_reset(walk_);
  return bytes;
}

std::int64_t PlainDatabase::walk_step_by_step(std::string_view class_id) {
  std::int64_t bytes = 0;
  std::string key(class_id);
  for (;;) {
    bind(after_, 1, key);
    const int code = sqlite3_step(after_);
    check(connection_, code == SQLITE_ROW || code == SQLITE_DONE);
    const bool inside = code == SQLITE_ROW && column(after_, 0).substr(0, class_id.size()) == class_id;
    if (inside) {
      key = column(after_, 0);
      bytes += static_cast<std::int64_t>(key.size() + column(after_, 1).size());
    }
    sqlite3_reset(after_);
    if (!inside) return bytes;
  }
}

std::vector<PackedRow> PlainDatabase::rows(std::string_view class_id, std::size_t most) {
  std::vector<PackedRow> found;
  const std::string end = end_of(class_id);
  bind(walk_, 1, class_id);
  bind(walk_, 2, end);
  while (found.size() < most && sqlite3_step(walk_) == SQLITE_ROW) {
    found.push_back({std::string(column(walk_, 0)), std::string(column(walk_, 1))});
  }
  sqlite3_reset(walk_);
  return found;
}

std::int64_t PlainDatabase::count(std::string_view class_id) {
  sqlite3_stmt* statement = prepare("SELECT count(*) FROM record WHERE key >= ?1 AND key < ?2");
  const std::string end = end_of(class_id);
  bind(statement, 1, class_id);
  bind(statement, 2, end);
  check(connection_, sqlite3_step(statement) == SQLITE_ROW);
  const std::int64_t records = sqlite3_column_int64(statement, 0);
  sqlite3_finalize(statement);
  return records;
}

sqlite3_stmt* PlainDatabase::prepare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  check(connection_, sqlite3_prepare_v3(connection_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement,
                                        nullptr) == SQLITE_OK);
  return statement;
}

void PlainDatabase::bind(sqlite3_stmt* statement, int parameter, std::string_view bytes) {
  check(connection_, sqlite3_bind_blob(statement, parameter, bytes.data(), static_cast<int>(bytes.size()),
                                       SQLITE_STATIC) == SQLITE_OK);
}

void insert_rows(const std::string& path, const std::vector<PackedRow>& rows) {
  sqlite3* connection = nullptr;
  check(connection, sqlite3_open(path.c_str(), &connection) == SQLITE_OK);
  run(connection, kCache);
  run(connection, kNewFile);
  sqlite3_stmt* insert = nullptr;
  check(connection, sqlite3_prepare_v2(connection, "INSERT INTO record(key, body) VALUES(?1, ?2)", -1,
                                       &insert, nullptr) == SQLITE_OK);
  for (const PackedRow& row : rows) {
    sqlite3_bind_blob(insert, 1, row.key.data(), static_cast<int>(row.key.size()), SQLITE_STATIC);
    sqlite3_bind_blob(insert, 2, row.body.data(), static_cast<int>(row.body.size()), SQLITE_STATIC);
    check(connection, sqlite3_step(insert) == SQLITE_DONE);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  run(connection, "COMMIT");
  check(connection, sqlite3_close(connection) == SQLITE_OK);
}

}  // namespace bench
