#include "database.h"

#include <cstring>

#include "attributes.h"
#include "lasterror.h"
#include "opening.h"

namespace tavdsrv {

namespace {

const Key& file_header_key() {
  static const Key key = make_key("000", "FILEHEADER");
  return key;
}

}  // namespace

Database::Database(const std::filesystem::path& path, bool create)
    : connection_(open_product_database(path, create)),
      find_("SELECT key, body FROM record WHERE key = ?1"),
      find_at_or_after_("SELECT key, body FROM record WHERE key >= ?1 ORDER BY key LIMIT 1"),
      find_after_("SELECT key, body FROM record WHERE key > ?1 ORDER BY key LIMIT 1"),
      save_(
          "INSERT INTO record(key, body) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET body = excluded.body"),
      remove_("DELETE FROM record WHERE key = ?1"),
      find_ahm_("SELECT block FROM ahm WHERE key = ?1"),
      save_ahm_(
          "INSERT INTO ahm(key, block) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET block = excluded.block"),
      remove_ahm_("DELETE FROM ahm WHERE key = ?1") {}

std::unique_ptr<Record> Database::find(const Key& key) {
  const std::lock_guard lock(mutex_);
  auto record = read(find_, key);
  return record != nullptr && record->key() == key ? std::move(record) : nullptr;
}

std::unique_ptr<Record> Database::find_at_or_after(const Key& key) {
  const std::lock_guard lock(mutex_);
  auto record = read(find_at_or_after_, key);
  return record != nullptr && record->key() >= key ? std::move(record) : nullptr;
}

std::unique_ptr<Record> Database::find_after(const Key& key) {
  const std::lock_guard lock(mutex_);
  auto record = read(find_after_, key);
  // In a damaged file the order may lie; a walk that went back would never end.
  return record != nullptr && record->key() > key ? std::move(record) : nullptr;
}

void Database::save(const Record& record) {
  change(record.key(), [&] { execute(save_, record.key(), record.packed()); });
}

void Database::save(const Record& record, Bytes ahm) {
  change(record.key(), [&] {
    execute(save_, record.key(), record.packed());
    if (ahm.empty()) {
      execute(remove_ahm_, record.key());
    } else {
      execute(save_ahm_, record.key(), ahm);
    }
  });
}

void Database::remove(const Key& key) {
  change(key, [&] {
    execute(remove_, key);
    execute(remove_ahm_, key);
  });
}

void Database::begin() {
  const std::lock_guard lock(mutex_);
  if (in_batch_) throw Failure(connection_.path() + ": a group of changes is open already");
  connection_.run("BEGIN IMMEDIATE");
  in_batch_ = true;
  batch_failed_ = false;
}

void Database::commit() {
  const std::lock_guard lock(mutex_);
  if (!in_batch_) throw Failure(connection_.path() + ": no group of changes is open");
  try {
    if (batch_failed_)
      throw Failure(connection_.path() + ": a change of this group failed, so all are dropped");
    connection_.run("COMMIT");
  } catch (...) {
    end_batch();
    throw;
  }
  in_batch_ = false;
  batch_failed_ = false;
}

void Database::rollback() {
  const std::lock_guard lock(mutex_);
  if (!in_batch_) throw Failure(connection_.path() + ": no group of changes is open");
  end_batch();
}

bool Database::uses_utf8() {
  {
    const std::lock_guard lock(mutex_);
    if (encoding_.has_value() && encoding_->data_version == data_version()) return encoding_->utf8;
  }
  const auto header = find(file_header_key());
  const std::lock_guard lock(mutex_);
  std::int16_t flag = 0;
  if (header != nullptr) {
    const auto value = header->find(kUsesUtf8);
    if (value.has_value() && value->size() >= sizeof flag) std::memcpy(&flag, value->data(), sizeof flag);
  }
  encoding_ = Encoding{flag == 1, data_version()};
  return encoding_->utf8;
}

std::unique_ptr<Record> Database::read(Statement& statement, const Key& key) {
  Query query(connection_, statement);
  if (!query.bind(1, key).step()) return nullptr;
  const Bytes stored_key = query.blob(0);
  if (stored_key.size() != kKeyLength) throw Failure(connection_.path() + ": a record's key is damaged");
  Key found;
  std::memcpy(found.bytes.data(), stored_key.data(), kKeyLength);
  return std::make_unique<Record>(found, query.blob(1));
}

// Makes one change whole or not at all, inside a group of changes or durable at once.
template <typename Change>
void Database::change(const Key& key, Change&& change) {
  const std::lock_guard lock(mutex_);
  // SQLite may have rolled the whole group back; what came now would be durable on its own.
  if (batch_failed_) throw Failure(connection_.path() + ": an earlier change of this group failed");
  if (key == file_header_key()) encoding_.reset();
  connection_.run("SAVEPOINT one");
  try {
    change();
    connection_.run("RELEASE one");
  } catch (...) {
    // Where SQLite has rolled back by itself these have nothing to do. The failure to tell is the first one.
    sqlite3_exec(connection_.get(), "ROLLBACK TO one; RELEASE one", nullptr, nullptr, nullptr);
    batch_failed_ = in_batch_;
    throw;
  }
}

void Database::execute(Statement& statement, const Key& key) {
  Query(connection_, statement).bind(1, key).step();
}

void Database::execute(Statement& statement, const Key& key, Bytes bytes) {
  Query(connection_, statement).bind(1, key).bind(2, bytes).step();
}

void Database::end_batch() {
  sqlite3_exec(connection_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  in_batch_ = false;
  batch_failed_ = false;
  encoding_.reset();
}

unsigned Database::data_version() const {
  unsigned version = 0;
  sqlite3_file_control(connection_.get(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
  return version;
}

}  // namespace tavdsrv
