// An open product database: finding, walking, saving and deleting records.
#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "service/connection.h"
#include "service/readahead.h"
#include "service/record.h"

namespace tavdsrv {

class Database {
 public:
  // Throws Failure; see open_product_database.
  Database(const std::filesystem::path& path, bool create);

  // Each of these locks the database for itself and throws Failure.
  std::unique_ptr<Record> find(const Key& key);
  std::unique_ptr<Record> find_at_or_after(const Key& key);
  std::unique_ptr<Record> find_after(const Key& key);
  void save(const Record& record);
  void save(const Record& record, Bytes ahm);  // an empty block removes the one that is stored
  void remove(const Key& key);

  // Hands the record's ahm block to `take`, which sees no bytes if there is none.
  template <typename Take>
  auto ahm(const Key& key, Take&& take) {
    const std::lock_guard lock(mutex_);
    Query query(connection_, find_ahm_);
    return take(query.bind(1, key).step() ? query.blob(0) : Bytes());
  }

  void begin();
  // Both end the group of changes, also when they fail.
  void commit();
  void rollback();

  // Whether the database says that its texts are UTF-8.
  bool uses_utf8();

 private:
  // A record as it is stored; the body is valid until the query's next step.
  struct Row {
    Key key;
    Bytes body;
  };
  std::optional<Row> read(Query& query);
  void read_ahead(Query& query, Key last, std::size_t wanted);
  // Calls wait for others as those that change something do.
  class Changing;
  template <typename Change>
  void change(const Key& key, Change&& change);
  template <typename Change>
  void change_together(const Key& key, Change&& statements);
  void execute(Statement& statement, const Key& key);
  void execute(Statement& statement, const Key& key, Bytes bytes);
  void end_batch();
  [[noreturn]] void refuse_for_batch() const;
  unsigned data_version() const;

  std::mutex mutex_;
  Connection connection_;
  Statement find_, find_at_or_after_, find_after_, save_, remove_, find_ahm_, save_ahm_, remove_ahm_;
  Statement savepoint_, release_;
  ReadAhead ahead_;
  bool in_batch_ = false;
  std::string batch_failure_;  // why the group's first change that failed did so; empty while none has

  // usesUTF8 as it stood at a state of the file; asked again when the file has changed since.
  struct Encoding {
    bool utf8;
    unsigned data_version;
  };
  std::optional<Encoding> encoding_;
};

}  // namespace tavdsrv
