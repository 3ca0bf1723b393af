// SQLite with C++ manners: a connection and its statements, where a failed step throws.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "service/ids.h"
#include "service/record.h"
#include "service/sqlite/files.h"

namespace tavdsrv {

// Why a file with tables other than ours is no product database.
inline constexpr const char* kOtherTables = "its tables are not those of a product database";

class Connection {
 public:
  // Opens the file without reading it yet. `shown` is what messages call it. Throws Failure.
  Connection(const Place& place, const std::filesystem::path& file, const std::filesystem::path& shown);

  sqlite3* get() const { return connection_.get(); }
  const std::string& path() const { return path_; }  // as messages show it, in UTF-8
  void run(const char* sql) const;

  // How long calls wait for other processes.
  enum class Patience {
    kForCommit,  // a minute: a reader waits for nothing but a commit, which may write for long
    kForGroup,   // five seconds: a saver may wait for the end of another's group, which may be far away
  };
  void wait_for_others(Patience patience) const;

  // A group of changes: what it changes is held back from others until its commit.
  void begin_group() const;
  void commit_group() const;
  void roll_back_group() const noexcept;

  // SQLite's own file object. Throws Failure if there is none. Opening and closing the file a second time
  // instead would drop the locks that this process may hold on it.
  sqlite3_file* file() const;

  // The number in the file's header that every committed change of any process raises, as it stands there
  // now, as its bytes; no lock is taken. Nothing if it cannot be read.
  std::optional<std::string> change_counter() const;

  // Throws the failure `code`, in SQLite's words behind the file's name; `what` is put between if not empty.
  [[noreturn]] void fail(int code, const char* what = "") const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
  };
  Place place_;  // stays while the file is open
  std::string path_;
  std::unique_ptr<sqlite3, Close> connection_;
};

// A prepared statement that is used again and again. Prepared at its first use.
class Statement {
 public:
  explicit Statement(const char* sql) : sql_(sql) {}

  void prepare(const Connection& connection);

 private:
  friend class Query;
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  const char* sql_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

// One use of a statement. It ends with the object, which gives the file's locks back.
class Query {
 public:
  Query(const Connection& connection, Statement& statement);
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  Query& bind(int parameter, const Key& key);
  Query& bind(int parameter, Bytes bytes);  // must outlive the query
  bool step();                              // false at the end
  Bytes blob(int column) const;             // valid until the next step
  // Valid until the next step; nothing where the column is null.
  std::optional<std::string_view> text(int column) const;
  std::int64_t number();  // steps once: the only column of the first row, or 0

 private:
  void check(int code) const;
  const Connection& connection_;
  sqlite3_stmt* statement_;
};

}  // namespace tavdsrv
