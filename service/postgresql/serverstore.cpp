#include "service/postgresql/serverstore.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <thread>

#include "service/lasterror.h"
#include "service/postgresql/part.h"
#include "service/postgresql/tables.h"

namespace tavdsrv::postgresql {

namespace {

// Keys are bytea, which compares by bytes whatever the database's collation. The third column stands for the
// contents that the statement sees: it tells which transactions are done, and so differs after each commit.
constexpr Statement kFind{"find", "SELECT key, body, pg_current_snapshot() FROM tavd.record WHERE key = $1"};
constexpr Statement kFindAtOrAfter{
    "find_at_or_after",
    "SELECT key, body, pg_current_snapshot() FROM tavd.record WHERE key >= $1 ORDER BY key LIMIT 1"};
constexpr Statement kFindAfter{
    "find_after",
    "SELECT key, body, pg_current_snapshot() FROM tavd.record WHERE key > $1 ORDER BY key LIMIT 1"};
// Long bodies stay where they are until they are asked for.
constexpr Statement kPageAfter{
    "page_after",
    "SELECT key, CASE WHEN octet_length(body) <= 16384 THEN body END, (SELECT pg_current_snapshot())"
    " FROM tavd.record WHERE key > $1 ORDER BY key LIMIT $2::bigint"};
constexpr Statement kState{"state", "SELECT pg_current_snapshot()"};
constexpr Statement kFindAhm{"find_ahm", "SELECT block FROM tavd.ahm WHERE key = $1"};
// One statement each: carried out whole or not at all, in one go to the server. The first table that they
// lock is the same, so that they don't lock each other out.
constexpr Statement kSave{"save",
                          "INSERT INTO tavd.record(key, body) VALUES($1, $2)"
                          " ON CONFLICT (key) DO UPDATE SET body = excluded.body"};
constexpr Statement kSaveWithAhm{"save_with_ahm",
                                 "WITH stored AS (INSERT INTO tavd.record(key, body) VALUES($1, $2)"
                                 " ON CONFLICT (key) DO UPDATE SET body = excluded.body)"
                                 " INSERT INTO tavd.ahm(key, block) VALUES($1, $3)"
                                 " ON CONFLICT (key) DO UPDATE SET block = excluded.block"};
constexpr Statement kSaveWithoutAhm{"save_without_ahm",
                                    "WITH stored AS (INSERT INTO tavd.record(key, body) VALUES($1, $2)"
                                    " ON CONFLICT (key) DO UPDATE SET body = excluded.body)"
                                    " DELETE FROM tavd.ahm WHERE key = $1"};
constexpr Statement kRemove{"remove",
                            "WITH removed AS (DELETE FROM tavd.record WHERE key = $1)"
                            " DELETE FROM tavd.ahm WHERE key = $1"};

constexpr int kKey = 0, kBody = 1, kSnapshot = 2;  // columns of what is read

// A page of a walk: so many rows at most, and about so many bytes.
constexpr std::size_t kMostRows = 512;
constexpr std::size_t kPageBytes = 256 * std::size_t{1024};

Bytes bytes_of(const Key& key) {
  return {reinterpret_cast<const unsigned char*>(key.bytes.data()), kKeyLength};
}

// Numbers cross the wire with their highest byte first.
std::array<unsigned char, 8> big_endian(std::size_t number) {
  std::array<unsigned char, 8> bytes{};
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, number >>= 8) {
    *byte = static_cast<unsigned char>(number & 0xFF);
  }
  return bytes;
}

std::string text_of(Bytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool is_key(const Result& result, int row) {
  return result.bytes(row, kKey).size() == kKeyLength;
}

Key key_of(const Result& result, int row) {
  Key key;
  std::memcpy(key.bytes.data(), result.bytes(row, kKey).data(), kKeyLength);
  return key;
}

}  // namespace

ServerStore::ServerStore(const std::string& name, const std::string& shown, bool create)
    : server_(name, shown) {
  if (check_tables(server_)) return;
  if (!create) server_.fail("holds no product database");
  make_tables(server_);
}

void ServerStore::find(const Key& key, const Take& take) {
  take_first(kFind, key, take);
}

void ServerStore::find_at_or_after(const Key& key, const Take& take) {
  take_first(kFindAtOrAfter, key, take);
}

void ServerStore::walk(const Key& key, std::size_t ahead, const TakeNext& take) {
  // Of a server that follows a master only the first record would be kept.
  if (ahead > 0 && !server_.is_standby() && walk_page(key, rows_ahead(ahead), take)) return;
  take_first(kFindAfter, key, [&](const Key& stored, Bytes body) { take(stored, body); });
}

void ServerStore::ahm(const Key& key, const TakeBlock& take) {
  const Result found = read(kFindAhm, std::array{bytes_of(key)});
  if (found.rows() > 0) take(found.bytes(0, 0));
}

void ServerStore::save(const Key& key, Bytes body) {
  change(kSave, std::array{bytes_of(key), body});
}

void ServerStore::save(const Key& key, Bytes body, Bytes ahm) {
  if (ahm.empty()) {
    change(kSaveWithoutAhm, std::array{bytes_of(key), body});
  } else {
    change(kSaveWithAhm, std::array{bytes_of(key), body, ahm});
  }
}

void ServerStore::remove(const Key& key) {
  change(kRemove, std::array{bytes_of(key)});
}

// Others read on and see what was there before; whoever wants to save waits.
void ServerStore::begin() {
  connect_again();
  try {
    server_.run("BEGIN; LOCK TABLE tavd.record IN SHARE ROW EXCLUSIVE MODE");
    in_group_ = true;
    group_lost_.clear();
  } catch (...) {
    rollback();
    throw;
  }
}

void ServerStore::commit() {
  if (!group_lost_.empty()) throw Failure(group_lost_);
  std::string transaction;
  try {
    const Result own = server_.run("SELECT pg_current_xact_id_if_assigned()");
    if (!own.is_null(0, 0)) transaction = own.text(0, 0);
    if (std::string_view(PQcmdStatus(server_.run("COMMIT").get())) != "COMMIT") {
      server_.fail("the server has rolled the group back");
    }
  } catch (const Failure& failure) {
    if (server_.connected() || transaction.empty()) throw;
    settle_commit(transaction, failure.what());
  }
  in_group_ = false;
}

void ServerStore::rollback() noexcept {
  if (group_lost_.empty()) end_transaction();
  in_group_ = false;
  group_lost_.clear();
}

std::optional<std::string> ServerStore::state() {
  // One that follows a master does not tell all that is being done there.
  if (server_.is_standby()) return std::nullopt;
  return text_of(read(kState, {}).bytes(0, 0));
}

std::optional<std::string> ServerStore::state_of_walk() {
  return last_state_.empty() ? std::nullopt : std::optional(last_state_);
}

// False if the first record is none that a page may have.
bool ServerStore::walk_page(const Key& key, std::size_t ahead, const TakeNext& take) {
  const auto limit = big_endian(1 + ahead);
  const Result page = read(kPageAfter, std::array{bytes_of(key), Bytes(limit)});
  note_state(page);
  std::size_t length = 0;
  int row = 0;
  // Anything wrong behind the first record is told when the walk gets there.
  for (bool more = true; more && row < page.rows() && !page.is_null(row, kBody) && is_key(page, row); ++row) {
    const Bytes body = page.bytes(row, kBody);
    length += body.size();
    more = take(key_of(page, row), body);
  }
  if (row > 0) usual_length_ = length / static_cast<std::size_t>(row);
  return row > 0 || page.rows() == 0;
}

Result ServerStore::read(const Statement& statement, std::span<const Bytes> arguments) {
  connect_again();
  try {
    return server_.prepared(statement, arguments);
  } catch (const Failure& failure) {
    if (in_group_ && group_lost_.empty()) give_up_group(failure.what());
    throw;
  }
}

void ServerStore::change(const Statement& statement, std::span<const Bytes> arguments) {
  if (!group_lost_.empty()) throw Failure(group_lost_);
  read(statement, arguments);
}

void ServerStore::take_first(const Statement& statement, const Key& key, const Take& take) {
  const Result found = read(statement, std::array{bytes_of(key)});
  note_state(found);
  if (found.rows() == 0) return;
  if (!is_key(found, 0)) server_.fail("a record's key is damaged");
  take(key_of(found, 0), found.bytes(0, kBody));
}

// How many records to read ahead of those that are wanted.
std::size_t ServerStore::rows_ahead(std::size_t wanted) const {
  const std::size_t fitting = kPageBytes / std::max<std::size_t>(usual_length_, 1);
  return std::min({wanted, kMostRows, std::max<std::size_t>(fitting, 1)});
}

// After a failure the server does nothing more of the group, not even read.
void ServerStore::give_up_group(const std::string& reason) {
  group_lost_ = reason;
  end_transaction();
}

void ServerStore::end_transaction() noexcept {
  try {
    if (server_.connected()) server_.run("ROLLBACK");
  } catch (...) {
    // The connection is lost, and the server ends the transaction by itself.
  }
}

// Tables may have become others meanwhile.
void ServerStore::connect_again() {
  if (server_.connected()) return;
  server_.connect();
  if (!check_tables(server_)) server_.fail("holds no product database any more");
}

// Where nothing was found, or the server follows a master, nothing tells the state: others may have changed
// what was read before.
void ServerStore::note_state(const Result& result) {
  std::string state;
  if (result.rows() > 0 && !server_.is_standby()) state = text_of(result.bytes(0, kSnapshot));
  if (state.empty() || state != last_state_) ++version_read_;
  last_state_ = std::move(state);
}

// The connection was lost while a group was being committed: the server knows whether it was.
void ServerStore::settle_commit(const std::string& transaction, const std::string& reason) {
  constexpr std::chrono::seconds kPatience{10};  // for a server that starts again
  constexpr std::chrono::milliseconds kPause{100};
  const auto end = std::chrono::steady_clock::now() + kPatience;
  std::string status;
  do {
    status = status_of(transaction);
    if (status == "committed") return;
    if (status == "aborted") break;
    std::this_thread::sleep_for(kPause);
  } while (std::chrono::steady_clock::now() < end);
  group_lost_ = reason;
  if (status == "aborted") throw Failure(reason);
  throw Failure(reason + "; whether the group is stored is not known");
}

std::string ServerStore::status_of(const std::string& transaction) {
  try {
    connect_again();
    return server_.run(("SELECT pg_xact_status('" + transaction + "')").c_str()).text(0, 0);
  } catch (const Failure&) {
    return {};
  }
}

}  // namespace tavdsrv::postgresql

extern "C" __attribute__((visibility("default"))) tavdsrv::Store* tavdsrv_open_postgresql(
    const std::string& name, const std::string& shown, bool create) {
  return new tavdsrv::postgresql::ServerStore(name, shown, create);
}
