// Product databases and records as the commands use them: handles release themselves, errors are in words.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/errors.h"
#include "shared/records.h"

namespace tavdhost {

// Whose product codes and whose language the texts are taken in. Empty: the defaults of the product.
struct TextChoice {
  std::string market;    // market area code such as "FIN", in any case
  std::string language;  // number (1512), code ("GBR"), two letters ("en") or English name ("English")
};

using hosts::Record;
using hosts::RecordKey;

// Whether a database of this name is on a server; any other name is a file's.
bool is_on_server(const std::string& name);

// A database's name as messages are to show it: without passwords.
std::string shown_name(const std::string& name);

// An open database, closed at the end.
class Database {
 public:
  enum class Open {
    kExisting,  // the file must be there
    kCreate     // an empty database is made if the file is not there
  };

  // Starts the library with these texts and opens the file, or the database on a server. Throws UserError if
  // it is missing or no product database, or if there is no such market or language. Warnings name `shown`
  // where that is not empty: a database that is still a draft of another file.
  explicit Database(const std::string& path, Open open = Open::kExisting, const TextChoice& texts = {},
                    std::string shown = {});
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  std::int16_t handle() const { return handle_; }
  const std::string& path() const { return path_; }  // as messages show it
  // A text of the service in which the file bears the name that the user knows.
  std::string named_as_shown(const std::string& text) const;

  // Exactly this record; empty if there is none. Blanks behind the object id do not count.
  Record find(std::string_view class_id, std::string_view object_id) const;
  // The first record of all, and the one after `record`; empty at the end.
  Record first() const;
  Record next(const Record& record) const;
  RecordKey key(const Record& record) const;
  // The classes that the database holds, in record order.
  std::vector<std::string> classes() const;

  // The record that the user named. Throws UserError that names class, id and file, and ids that come near.
  Record product(std::string_view class_id, std::string_view object_id) const;
  // What to report about a class that the database does not hold.
  UserError unknown_class(std::string_view class_id) const;

 private:
  std::vector<std::string> near_ids(std::string_view class_id, std::string_view object_id) const;
  std::string path_;
  std::string shown_;
  std::int16_t handle_;
};

// Changes of a database that are stored together, by commit(), or not at all.
class Transaction {
 public:
  // Throws UserError if the database cannot be written.
  explicit Transaction(const Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  // Throws UserError with the reason if anything could not be stored; then nothing is. What is uncertain
  // about changes that are stored stands on standard error afterwards.
  void commit();

 private:
  const Database& database_;
  bool open_ = false;
};

// Throws UserError with the reason if the last call of the service failed.
void check_service();

}  // namespace tavdhost
