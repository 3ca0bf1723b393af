#include "service/database.h"

#include <cstring>

#include "service/attributes.h"
#include "service/lasterror.h"
#include "service/opening.h"
#include "service/vfs.h"
#include "tavd/attributes.h"

namespace tavdsrv {

namespace {

const Key& file_header_key() {
  static const Key key = make_key(TAVD_FILEHEADER_CLASS, TAVD_FILEHEADER_ID);
  return key;
}

}  // namespace

class Database::Changing {
 public:
  explicit Changing(const Connection& connection) : connection_(connection) {
    connection.wait_for_others(Connection::Patience::kForGroup);
    take_uncertain_removal();
  }
  ~Changing() { connection_.wait_for_others(Connection::Patience::kForCommit); }
  // To be called when all went well.
  void done() const {
    if (!take_uncertain_removal()) return;
    const std::string text =
        connection_.path() +
        ": stored, but its folder could not be synchronized: a loss of power may bring back "
        "what was stored before";
    set_last_warning(text.c_str());
  }
  Changing(const Changing&) = delete;
  Changing& operator=(const Changing&) = delete;

 private:
  const Connection& connection_;
};

Database::Database(const std::filesystem::path& path, bool create)
    : connection_(open_product_database(path, create)),
      find_("SELECT key, body FROM record WHERE key = ?1"),
      find_at_or_after_("SELECT key, body FROM record WHERE key >= ?1 ORDER BY key LIMIT 1"),
      find_after_("SELECT key, body FROM record WHERE key > ?1 ORDER BY key"),
      save_(
          "INSERT INTO record(key, body) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET body = excluded.body"),
      remove_("DELETE FROM record WHERE key = ?1"),
      find_ahm_("SELECT block FROM ahm WHERE key = ?1"),
      save_ahm_(
          "INSERT INTO ahm(key, block) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET block = excluded.block"),
      remove_ahm_("DELETE FROM ahm WHERE key = ?1"),
      savepoint_("SAVEPOINT one"),
      release_("RELEASE one") {}

std::unique_ptr<Record> Database::find(const Key& key) {
  const std::lock_guard lock(mutex_);
  Query query(connection_, find_);
  const auto row = read(query.bind(1, key));
  return row.has_value() && row->key == key ? std::make_unique<Record>(row->key, row->body) : nullptr;
}

std::unique_ptr<Record> Database::find_at_or_after(const Key& key) {
  const std::lock_guard lock(mutex_);
  Query query(connection_, find_at_or_after_);
  const auto row = read(query.bind(1, key));
  return row.has_value() && row->key >= key ? std::make_unique<Record>(row->key, row->body) : nullptr;
}

std::unique_ptr<Record> Database::find_after(const Key& key) {
  const std::lock_guard lock(mutex_);
  if (auto record = ahead_.take_after(key, connection_)) return record;
  Query query(connection_, find_after_);
  const auto row = read(query.bind(1, key));
  // In a damaged file the order may lie; a walk that went back would never end.
  if (!row.has_value() || row->key <= key) return nullptr;
  auto record = std::make_unique<Record>(row->key, row->body);
  read_ahead(query, record->key(), ahead_.step(key, record->key()));
  return record;
}

void Database::save(const Record& record) {
  change(record.key(), [&] { execute(save_, record.key(), record.packed()); });
}

void Database::save(const Record& record, Bytes ahm) {
  change_together(record.key(), [&] {
    execute(save_, record.key(), record.packed());
    if (ahm.empty()) {
      execute(remove_ahm_, record.key());
    } else {
      execute(save_ahm_, record.key(), ahm);
    }
  });
}

void Database::remove(const Key& key) {
  change_together(key, [&] {
    execute(remove_, key);
    execute(remove_ahm_, key);
  });
}

void Database::begin() {
  const std::lock_guard lock(mutex_);
  if (in_batch_) throw Failure(connection_.path() + ": a group of changes is open already");
  const Changing changing(connection_);
  connection_.begin_group();
  in_batch_ = true;
}

void Database::commit() {
  const std::lock_guard lock(mutex_);
  if (!in_batch_) throw Failure(connection_.path() + ": no group of changes is open");
  try {
    if (!batch_failure_.empty()) refuse_for_batch();
    const Changing changing(connection_);
    connection_.commit_group();
    changing.done();
  } catch (...) {
    end_batch();
    throw;
  }
  in_batch_ = false;
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
    const auto value = header->find(TAVD_ATT_USES_UTF8);
    if (value.has_value() && value->size() >= sizeof flag) std::memcpy(&flag, value->data(), sizeof flag);
  }
  encoding_ = Encoding{flag == 1, data_version()};
  return encoding_->utf8;
}

// The next record of a query, if there is one.
std::optional<Database::Row> Database::read(Query& query) {
  if (!query.step()) return std::nullopt;
  const Bytes stored_key = query.blob(0);
  if (stored_key.size() != kKeyLength) throw Failure(connection_.path() + ": a record's key is damaged");
  Row row{{}, query.blob(1)};
  std::memcpy(row.key.bytes.data(), stored_key.data(), kKeyLength);
  return row;
}

// Goes on with a walk's query after its record `last`.
void Database::read_ahead(Query& query, Key last, std::size_t wanted) {
  try {
    for (; wanted > 0; --wanted) {
      const auto row = read(query);
      if (!row.has_value() || row->key <= last) return;
      last = row->key;
      if (!ahead_.keep(row->key, row->body, connection_)) return;
    }
  } catch (const Failure&) {
    // The walk fails when it gets there.
  }
}

// Makes a change that is one statement, which SQLite carries out whole or not at all: inside a group of
// changes, or durable at once.
template <typename Change>
void Database::change(const Key& key, Change&& change) {
  const std::lock_guard lock(mutex_);
  // SQLite may have rolled the whole group back; what came now would be durable on its own.
  if (!batch_failure_.empty()) refuse_for_batch();
  if (key == file_header_key()) encoding_.reset();
  ahead_.forget();
  const Changing changing(connection_);
  try {
    change();
    changing.done();
  } catch (const std::exception& problem) {
    if (in_batch_) batch_failure_ = problem.what();
    throw;
  }
}

// The same for several statements. A savepoint costs a copy of every page that they change: single statements
// do without one.
template <typename Change>
void Database::change_together(const Key& key, Change&& statements) {
  change(key, [&] {
    Query(connection_, savepoint_).step();
    try {
      statements();
      Query(connection_, release_).step();
    } catch (...) {
      // Where SQLite has rolled back by itself these have nothing to do. The first failure is reported.
      sqlite3_exec(connection_.get(), "ROLLBACK TO one; RELEASE one", nullptr, nullptr, nullptr);
      throw;
    }
  });
}

void Database::execute(Statement& statement, const Key& key) {
  Query(connection_, statement).bind(1, key).step();
}

void Database::execute(Statement& statement, const Key& key, Bytes bytes) {
  if (bytes.size() > kMostBytes) {
    throw Failure(connection_.path() + ": " + std::to_string(bytes.size()) +
                  " bytes for one record, at most " + std::to_string(kMostBytes) + " can be stored");
  }
  Query(connection_, statement).bind(1, key).bind(2, bytes).step();
}

void Database::end_batch() {
  connection_.roll_back_group();
  in_batch_ = false;
  batch_failure_.clear();
  ahead_.forget();
  encoding_.reset();
}

void Database::refuse_for_batch() const {
  throw Failure(batch_failure_ + "; the group's changes are dropped");
}

unsigned Database::data_version() const {
  unsigned version = 0;
  sqlite3_file_control(connection_.get(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
  return version;
}

}  // namespace tavdsrv
