#include "service/sqlite/filestore.h"

#include <cstring>

#include "service/lasterror.h"
#include "service/sqlite/connection.h"
#include "service/sqlite/opening.h"
#include "service/sqlite/vfs.h"

namespace tavdsrv {

namespace {

// Calls wait for others as those that change something do, while there is one of these.
class Changing {
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

class FileStore final : public Store {
 public:
  FileStore(const std::filesystem::path& path, bool create)
      : connection_(open_product_database(path, create)),
        find_("SELECT key, body FROM record WHERE key = ?1"),
        find_at_or_after_("SELECT key, body FROM record WHERE key >= ?1 ORDER BY key LIMIT 1"),
        find_after_("SELECT key, body FROM record WHERE key > ?1 ORDER BY key"),
        save_(
            "INSERT INTO record(key, body) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET body = "
            "excluded.body"),
        remove_("DELETE FROM record WHERE key = ?1"),
        find_ahm_("SELECT block FROM ahm WHERE key = ?1"),
        save_ahm_(
            "INSERT INTO ahm(key, block) VALUES(?1, ?2) ON CONFLICT(key) DO UPDATE SET block = "
            "excluded.block"),
        remove_ahm_("DELETE FROM ahm WHERE key = ?1"),
        savepoint_("SAVEPOINT one"),
        release_("RELEASE one") {}

  const std::string& name() const override { return connection_.path(); }

  void find(const Key& key, const Take& take) override { take_first(find_, key, take); }
  void find_at_or_after(const Key& key, const Take& take) override {
    take_first(find_at_or_after_, key, take);
  }
  void walk(const Key& key, std::size_t ahead, const TakeNext& take) override;
  std::size_t least_ahead() const override { return 0; }
  void ahm(const Key& key, const TakeBlock& take) override;

  void save(const Key& key, Bytes body) override;
  void save(const Key& key, Bytes body, Bytes ahm) override;
  void remove(const Key& key) override;

  void begin() override;
  void commit() override;
  void rollback() noexcept override { connection_.roll_back_group(); }

  std::optional<std::string> state() override { return connection_.change_counter(); }
  // No other process can change the file while the walk's statement is being stepped.
  std::optional<std::string> state_of_walk() override { return connection_.change_counter(); }
  std::chrono::microseconds trusted() const override { return std::chrono::microseconds{20}; }
  unsigned version_read() const override;

 private:
  // A record as it is stored; the body is valid until the query's next step.
  struct Row {
    Key key;
    Bytes body;
  };
  std::optional<Row> read(Query& query);
  void take_first(Statement& statement, const Key& key, const Take& take);
  template <typename Change>
  void change_together(Change&& statements);
  void execute(Statement& statement, const Key& key);
  void execute(Statement& statement, const Key& key, Bytes bytes);

  Connection connection_;
  Statement find_, find_at_or_after_, find_after_, save_, remove_, find_ahm_, save_ahm_, remove_ahm_;
  Statement savepoint_, release_;
};

void FileStore::walk(const Key& key, std::size_t, const TakeNext& take) {
  Query query(connection_, find_after_);
  auto row = read(query.bind(1, key));
  if (!row.has_value() || !take(row->key, row->body)) return;
  try {
    do {
      row = read(query);
    } while (row.has_value() && take(row->key, row->body));
  } catch (const Failure&) {
    // The walk fails when it gets there.
  }
}

void FileStore::ahm(const Key& key, const TakeBlock& take) {
  Query query(connection_, find_ahm_);
  if (query.bind(1, key).step()) take(query.blob(0));
}

// One statement is carried out whole or not at all by SQLite.
void FileStore::save(const Key& key, Bytes body) {
  const Changing changing(connection_);
  execute(save_, key, body);
  changing.done();
}

void FileStore::save(const Key& key, Bytes body, Bytes ahm) {
  change_together([&] {
    execute(save_, key, body);
    if (ahm.empty()) {
      execute(remove_ahm_, key);
    } else {
      execute(save_ahm_, key, ahm);
    }
  });
}

void FileStore::remove(const Key& key) {
  change_together([&] {
    execute(remove_, key);
    execute(remove_ahm_, key);
  });
}

void FileStore::begin() {
  const Changing changing(connection_);
  connection_.begin_group();
}

void FileStore::commit() {
  const Changing changing(connection_);
  connection_.commit_group();
  changing.done();
}

unsigned FileStore::version_read() const {
  unsigned version = 0;
  sqlite3_file_control(connection_.get(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
  return version;
}

// The next record of a query, if there is one.
std::optional<FileStore::Row> FileStore::read(Query& query) {
  if (!query.step()) return std::nullopt;
  const Bytes stored_key = query.blob(0);
  if (stored_key.size() != kKeyLength) throw Failure(connection_.path() + ": a record's key is damaged");
  Row row{{}, query.blob(1)};
  std::memcpy(row.key.bytes.data(), stored_key.data(), kKeyLength);
  return row;
}

void FileStore::take_first(Statement& statement, const Key& key, const Take& take) {
  Query query(connection_, statement);
  if (const auto row = read(query.bind(1, key))) take(row->key, row->body);
}

// Several statements that are done whole or not at all. A savepoint costs a copy of every page that they
// change: single statements do without one.
template <typename Change>
void FileStore::change_together(Change&& statements) {
  const Changing changing(connection_);
  Query(connection_, savepoint_).step();
  try {
    statements();
    Query(connection_, release_).step();
  } catch (...) {
    // Where SQLite has rolled back by itself these have nothing to do. The first failure is reported.
    sqlite3_exec(connection_.get(), "ROLLBACK TO one; RELEASE one", nullptr, nullptr, nullptr);
    throw;
  }
  changing.done();
}

void FileStore::execute(Statement& statement, const Key& key) {
  Query(connection_, statement).bind(1, key).step();
}

void FileStore::execute(Statement& statement, const Key& key, Bytes bytes) {
  Query(connection_, statement).bind(1, key).bind(2, bytes).step();
}

}  // namespace

std::unique_ptr<Store> open_file_store(const std::filesystem::path& path, bool create) {
  return std::make_unique<FileStore>(path, create);
}

}  // namespace tavdsrv
