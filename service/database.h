// An open product database: finding, walking, saving and deleting records, whatever store they are in.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "service/readahead.h"
#include "service/record.h"
#include "service/store.h"

namespace tavdsrv {

class Database {
 public:
  explicit Database(std::unique_ptr<Store> store) : store_(std::move(store)) {}

  // Each of these locks the database for itself and throws Failure.
  std::unique_ptr<Record> find(const Key& key);
  std::unique_ptr<Record> find_at_or_after(const Key& key);
  std::unique_ptr<Record> find_after(const Key& key);
  void save(const Record& record);
  void save(const Record& record, Bytes ahm);  // an empty block removes the one that is stored
  void remove(const Key& key);

  // Hands the record's ahm block to `take`, if there is one.
  void ahm(const Key& key, const Store::TakeBlock& take);

  void begin();
  // Both end the group of changes, also when they fail.
  void commit();
  void rollback();

  // Whether the database says that its texts are UTF-8.
  bool uses_utf8();

 private:
  template <typename Change>
  void change(const Key& key, Change&& change);
  void check_length(Bytes bytes) const;
  void end_batch();
  [[noreturn]] void refuse_for_batch() const;

  std::mutex mutex_;
  std::unique_ptr<Store> store_;
  ReadAhead ahead_;
  bool in_batch_ = false;
  std::string batch_failure_;  // why the group's first change that failed did so; empty while none has

  // usesUTF8 as it stood when something was read; asked again when what is read shows changes since.
  struct Encoding {
    bool utf8;
    unsigned version_read;
  };
  std::optional<Encoding> encoding_;
};

}  // namespace tavdsrv
