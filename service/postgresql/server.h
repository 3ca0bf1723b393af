// libpq with C++ manners: a connection and its statements, where a failed step throws.
#pragma once

#include <libpq-fe.h>

#include <array>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "service/record.h"

namespace tavdsrv::postgresql {

// The answer of a statement; what it shows is valid as long as it is.
class Result {
 public:
  explicit Result(PGresult* result) : result_(result) {}

  PGresult* get() const { return result_.get(); }
  int rows() const { return PQntuples(get()); }
  bool is_null(int row, int column) const { return PQgetisnull(get(), row, column) != 0; }
  Bytes bytes(int row, int column) const;
  std::string text(int row, int column) const { return PQgetvalue(get(), row, column); }

 private:
  struct Clear {
    void operator()(PGresult* result) const { PQclear(result); }
  };
  std::unique_ptr<PGresult, Clear> result_;
};

// A statement that is prepared once in each connection. Arguments and results are binary.
struct Statement {
  const char* name;
  const char* sql;
};

// A connection to the server, made anew after it was lost.
class Server {
 public:
  // Connects. `shown` is what messages call the database. Throws Failure.
  Server(std::string name, std::string shown);

  const std::string& shown() const { return shown_; }

  // Whether there is a connection. Only `run` and `prepared` find out that one is lost: then they throw.
  bool connected() const { return connection_ != nullptr; }
  // Connects again. Throws Failure.
  void connect();

  // One or more statements without arguments; text in the answer, which is that of the last one.
  Result run(const char* sql);
  Result prepared(const Statement& statement, std::span<const Bytes> arguments);

  // Whether the server follows another one, and so cannot tell all that is being done there.
  bool is_standby() const { return standby_; }

  [[noreturn]] void fail(const std::string& reason) const;

 private:
  struct Finish {
    void operator()(PGconn* connection) const { PQfinish(connection); }
  };
  void set_up();
  void prepare(const Statement& statement);
  Result checked(PGresult* answer);

  std::string name_, shown_;
  std::unique_ptr<PGconn, Finish> connection_;
  std::set<std::string_view> prepared_;  // names of statements that this connection has
  bool standby_ = false;
};

}  // namespace tavdsrv::postgresql
