#include "service/sqlite/connection.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "service/lasterror.h"
#include "service/sqlite/vfs.h"

namespace tavdsrv {

namespace {

// SQLite's own way of waiting sleeps up to 100 ms at a time: beside a process that saves without a pause a
// reader hardly ever wakes while the file is free, and waits for seconds.
constexpr std::chrono::microseconds kShortestSleep{100};
constexpr std::chrono::microseconds kLongestSleep{500};
constexpr int kSleepsForGroup = 9'000;     // five seconds and what the scheduler adds
constexpr int kSleepsForCommit = 110'000;  // a minute

constexpr int kPrimaryCode = 0xFF;  // of an extended result code

// Called again and again while another process has the file: zero gives up.
template <int kMostSleeps>
int wait_a_little(void*, int times) {
  if (times >= kMostSleeps) return 0;
  std::this_thread::sleep_for(std::min(kLongestSleep, kShortestSleep * (times + 1)));
  return 1;
}

}  // namespace

Connection::Connection(const Place& place, const std::filesystem::path& file,
                       const std::filesystem::path& shown)
    : place_(place), path_(utf8(shown)) {
  // A connection is only used under the lock of its database, so SQLite needs none of its own.
  constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(utf8(file).c_str(), &opened, kFlags, vfs_name());
  connection_.reset(opened);
  if (code != SQLITE_OK) fail(code);
  sqlite3_extended_result_codes(opened, 1);
}

void Connection::run(const char* sql) const {
  const int code = sqlite3_exec(get(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code);
}

void Connection::wait_for_others(Patience patience) const {
  const bool long_wait = patience == Patience::kForCommit;
  sqlite3_busy_handler(get(), long_wait ? wait_a_little<kSleepsForCommit> : wait_a_little<kSleepsForGroup>,
                       nullptr);
}

void Connection::begin_group() const {
  run("BEGIN IMMEDIATE");
  const int code = hold_back(file());
  if (code == SQLITE_OK) return;
  roll_back_group();
  throw Failure(path_ + ": " + sqlite3_errstr(code));
}

void Connection::commit_group() const {
  const int code = let_through(file(), wait_a_little<kSleepsForGroup>);
  if (code != SQLITE_OK) throw Failure(path_ + ": " + sqlite3_errstr(code));
  run("COMMIT");
}

void Connection::roll_back_group() const noexcept {
  drop_held_back(file());
  sqlite3_exec(get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

sqlite3_file* Connection::file() const {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (file == nullptr || file->pMethods == nullptr) throw Failure(path_ + ": cannot be read");
  return file;
}

std::optional<std::string> Connection::change_counter() const {
  constexpr sqlite3_int64 kPlace = 24;  // in the file's header
  std::string counter(sizeof(std::uint32_t), '\0');
  sqlite3_file* const opened = file();
  if (opened->pMethods->xRead(opened, counter.data(), static_cast<int>(counter.size()), kPlace) !=
      SQLITE_OK) {
    return std::nullopt;
  }
  return counter;
}

void Connection::fail(int code, const char* what) const {
  const char* reason = connection_ != nullptr ? sqlite3_errmsg(get()) : sqlite3_errstr(code);
  // Only opening sets a bound to the steps of a statement, and only a schema without end comes to it.
  if ((code & kPrimaryCode) == SQLITE_INTERRUPT) reason = kOtherTables;
  throw Failure(path_ + ": " + what + reason);
}

void Statement::prepare(const Connection& connection) {
  if (statement_ != nullptr) return;
  sqlite3_stmt* prepared = nullptr;
  const int code =
      sqlite3_prepare_v3(connection.get(), sql_, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  if (code != SQLITE_OK) connection.fail(code);
  statement_.reset(prepared);
}

Query::Query(const Connection& connection, Statement& statement) : connection_(connection) {
  statement.prepare(connection);
  statement_ = statement.statement_.get();
}

Query::~Query() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

Query& Query::bind(int parameter, const Key& key) {
  check(sqlite3_bind_blob(statement_, parameter, key.bytes.data(), static_cast<int>(kKeyLength),
                          SQLITE_STATIC));
  return *this;
}

Query& Query::bind(int parameter, Bytes bytes) {
  // A null address would bind NULL, not an empty blob.
  const void* data = bytes.empty() ? "" : static_cast<const void*>(bytes.data());
  check(sqlite3_bind_blob64(statement_, parameter, data, bytes.size(), SQLITE_STATIC));
  return *this;
}

bool Query::step() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) connection_.fail(code);
  return false;
}

Bytes Query::blob(int column) const {
  const auto* data = static_cast<const unsigned char*>(sqlite3_column_blob(statement_, column));
  const int length = sqlite3_column_bytes(statement_, column);
  return data != nullptr ? Bytes(data, static_cast<std::size_t>(length)) : Bytes();
}

std::optional<std::string_view> Query::text(int column) const {
  if (sqlite3_column_type(statement_, column) == SQLITE_NULL) return std::nullopt;
  const Bytes bytes = blob(column);
  return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::int64_t Query::number() {
  return step() ? sqlite3_column_int64(statement_, 0) : 0;
}

void Query::check(int code) const {
  if (code != SQLITE_OK) connection_.fail(code);
}

}  // namespace tavdsrv
