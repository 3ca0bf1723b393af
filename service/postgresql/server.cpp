#include "service/postgresql/server.h"

#include <new>
#include <utility>

#include "service/lasterror.h"

namespace tavdsrv::postgresql {

namespace {

constexpr int kOldest = 130000;  // the oldest version of the server, as libpq tells it
constexpr int kBinary = 1;
constexpr std::size_t kMostArguments = 3;

// Names of tables and functions mean those of the service and of the system alone, whoever has made others.
// Reading goes by the tables' keys also while the server knows nothing of their sizes yet. A saver waits so
// long for the end of another's group.
constexpr const char* kSettings =
    "SET search_path = '';"
    "SET row_security = off;"
    "SET lock_timeout = '5s';"
    "SET default_transaction_isolation = 'read committed';"
    "SET enable_seqscan = off;"
    "SET enable_bitmapscan = off;"
    "SET plan_cache_mode = force_generic_plan;"
    "SET jit = off;"
    // What a save has returned from is on disk, whatever was set for the role or the database.
    "SELECT set_config('synchronous_commit', 'on', false) "
    "WHERE current_setting('synchronous_commit') = 'off';"
    "SELECT pg_is_in_recovery()";

// libpq's reasons have several lines, the service's one.
std::string in_one_line(std::string_view text) {
  std::string line;
  for (const char c : text) {
    const bool blank = c == '\n' || c == '\t' || c == ' ';
    if (!blank) {
      line += c;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  if (line.ends_with(' ')) line.pop_back();
  return line;
}

struct FreeOptions {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

// Throws where libpq cannot read the name; its own words would quote it, and with it a password.
void check_name(const std::string& name, const std::string& shown) {
  const std::unique_ptr<PQconninfoOption, FreeOptions> options(PQconninfoParse(name.c_str(), nullptr));
  if (options != nullptr) return;
  throw Failure(shown +
                ": no name of a database on a server, expected postgresql://USER@HOST/DATABASE or host=HOST "
                "dbname=DATABASE");
}

}  // namespace

Bytes Result::bytes(int row, int column) const {
  const auto* data = reinterpret_cast<const unsigned char*>(PQgetvalue(get(), row, column));
  return {data, static_cast<std::size_t>(PQgetlength(get(), row, column))};
}

Server::Server(std::string name, std::string shown) : name_(std::move(name)), shown_(std::move(shown)) {
  check_name(name_, shown_);
  connect();
}

void Server::connect() {
  // What stands in front of the name holds where that says nothing else, what stands behind it in any case.
  constexpr std::array kWords = {"connect_timeout", "fallback_application_name", "dbname", "client_encoding",
                                 static_cast<const char*>(nullptr)};
  const std::array values = {"10", "tavd", name_.c_str(), "UTF8", static_cast<const char*>(nullptr)};
  constexpr int kNameHasWords = 1;
  prepared_.clear();
  connection_.reset(PQconnectdbParams(kWords.data(), values.data(), kNameHasWords));
  if (connection_ == nullptr) throw std::bad_alloc();
  try {
    if (PQstatus(connection_.get()) != CONNECTION_OK) fail(in_one_line(PQerrorMessage(connection_.get())));
    set_up();
  } catch (...) {
    connection_.reset();
    throw;
  }
}

void Server::set_up() {
  PQsetNoticeProcessor(
      connection_.get(), [](void*, const char*) {}, nullptr);
  const int version = PQserverVersion(connection_.get());
  if (version < kOldest) {
    fail("the server has version " + std::to_string(version / 10000) + " of PostgreSQL, expected " +
         std::to_string(kOldest / 10000) + " or later");
  }
  standby_ = run(kSettings).text(0, 0) == "t";
}

Result Server::run(const char* sql) {
  return checked(PQexec(connection_.get(), sql));
}

Result Server::prepared(const Statement& statement, std::span<const Bytes> arguments) {
  prepare(statement);
  std::array<const char*, kMostArguments> values{};
  std::array<int, kMostArguments> lengths{};
  std::array<int, kMostArguments> formats{};
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    // A null address would be a null value, not an empty one.
    values[i] = arguments[i].empty() ? "" : reinterpret_cast<const char*>(arguments[i].data());
    lengths[i] = static_cast<int>(arguments[i].size());
    formats[i] = kBinary;
  }
  return checked(PQexecPrepared(connection_.get(), statement.name, static_cast<int>(arguments.size()),
                                values.data(), lengths.data(), formats.data(), kBinary));
}

void Server::prepare(const Statement& statement) {
  if (prepared_.contains(statement.name)) return;
  checked(PQprepare(connection_.get(), statement.name, statement.sql, 0, nullptr));
  prepared_.insert(statement.name);
}

// The answer, if the statement was carried out. A connection that is found to be lost is given up.
Result Server::checked(PGresult* answer) {
  Result result(answer);
  const ExecStatusType status = PQresultStatus(answer);
  if (status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK) return result;
  const char* primary = PQresultErrorField(answer, PG_DIAG_MESSAGE_PRIMARY);
  const std::string reason = in_one_line(primary != nullptr ? primary : PQerrorMessage(connection_.get()));
  if (PQstatus(connection_.get()) == CONNECTION_OK) fail(reason);
  connection_.reset();
  fail("the connection to the server was lost: " + reason);
}

void Server::fail(const std::string& reason) const {
  throw Failure(shown_ + ": " + reason);
}

}  // namespace tavdsrv::postgresql
