#include "service/sqlite/opening.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "codepage/system.h"
#include "drafts/drafts.h"
#include "service/lasterror.h"

namespace tavdsrv {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kApplicationId = 0x54415644;  // "TAVD"
constexpr std::uint32_t kLayout = 1;

// The decisions behind these statements stand in docs/decisions/001-storage.md.
constexpr const char* kCreate =
    "PRAGMA page_size=4096;"
    "PRAGMA journal_mode=DELETE;"
    "PRAGMA synchronous=EXTRA;"
    "BEGIN;"
    "PRAGMA application_id=0x54415644;"
    "PRAGMA user_version=1;"
    "CREATE TABLE record(id INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, body BLOB NOT NULL);"
    "CREATE TABLE ahm(id INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, block BLOB NOT NULL);"
    "COMMIT;";
constexpr const char* kSettings =
    "PRAGMA trusted_schema=OFF;"
    "PRAGMA cell_size_check=ON;"
    "PRAGMA mmap_size=0;"
    "PRAGMA cache_size=-8192;"
    "PRAGMA temp_store=MEMORY;"
    "PRAGMA journal_mode=DELETE;"
    "PRAGMA synchronous=EXTRA;";

// What the statements above leave in the schema, and all that may stand there: a table that is declared in
// any other way could compute what is read from it, an index of its own what is saved.
struct Declared {
  std::string_view type;
  std::string_view name;
  std::string_view table;
  std::optional<std::string_view> sql;  // none where the table's own declaration makes it
};
constexpr std::array kDeclared = std::to_array<Declared>({
    {"table", "record", "record",
     "CREATE TABLE record(id INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, body BLOB NOT NULL)"},
    {"index", "sqlite_autoindex_record_1", "record", std::nullopt},
    {"table", "ahm", "ahm",
     "CREATE TABLE ahm(id INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, block BLOB NOT NULL)"},
    {"index", "sqlite_autoindex_ahm_1", "ahm", std::nullopt},
});

struct Limit {
  int which;
  int value;
};
// Of what the service reads and writes, it needs no more.
constexpr int kRestOfRow = 100;  // id, key and the lengths of all three
constexpr std::array kLimits = std::to_array<Limit>({
    {SQLITE_LIMIT_LENGTH, kMostBytes + kRestOfRow},
    {SQLITE_LIMIT_SQL_LENGTH, 1000},
    {SQLITE_LIMIT_COLUMN, 10},
    {SQLITE_LIMIT_EXPR_DEPTH, 10},
    {SQLITE_LIMIT_COMPOUND_SELECT, 2},
    {SQLITE_LIMIT_VDBE_OP, 1000},
    {SQLITE_LIMIT_ATTACHED, 0},
    {SQLITE_LIMIT_TRIGGER_DEPTH, 1},
    {SQLITE_LIMIT_WORKER_THREADS, 0},
});

[[noreturn]] void fail(const fs::path& path, const std::error_code& problem);
Place place_of(const fs::path& path, const fs::path& file);
void check_name(const fs::path& path, const fs::path& file, const std::error_code& problem);
void create_file(const fs::path& path, const fs::path& file);
void check_header(const Connection& connection);
void limit(const Connection& connection);
void check_contents(const Connection& connection);
void check_tables(const Connection& connection);
void check_length(const Connection& connection);

}  // namespace

Connection open_product_database(const fs::path& path, bool create) {
  if (path.empty()) throw Failure("no file name given");
  const fs::path file = fs::absolute(path);
  std::error_code problem;
  fs::file_status status = fs::status(file, problem);
  check_name(path, file, problem);
  if (status.type() == fs::file_type::not_found) {
    if (!create) throw Failure(utf8(path) + ": no such file");
    create_file(path, file);
    status = fs::status(file, problem);
  }
  if (status.type() == fs::file_type::none) fail(path, problem);
  if (status.type() != fs::file_type::regular) throw Failure(utf8(path) + ": not a file");

  const Place place = place_of(path, file);
  Connection connection(place, place.file(), file);
  check_header(connection);
  connection.wait_for_others(Connection::Patience::kForCommit);
  limit(connection);
  connection.run(kSettings);
  check_contents(connection);
  sqlite3_progress_handler(connection.get(), 0, nullptr, nullptr);
  return connection;
}

namespace {

[[noreturn]] void fail(const fs::path& path, const std::error_code& problem) {
  throw Failure(utf8(path) + ": " + codepage::utf8_of(problem.message()));
}

Place place_of(const fs::path& path, const fs::path& file) try {
  return Place(file);
} catch (const std::system_error& problem) {
  fail(path, problem.code());
}

// The system says that a path is too long, but not how long it may be.
void check_name(const fs::path& path, const fs::path& file, const std::error_code& problem) {
  const std::size_t longest = kLongestName - std::strlen(kJournal);
  const auto expect = [&](const char* what, std::size_t most, std::size_t length) {
    if (length <= most) return;
    const char* unit = sizeof(fs::path::value_type) == 1 ? " bytes" : " characters";
    throw Failure(utf8(path) + ": " + what + " may have at most " + std::to_string(most) + unit +
                  ", this one has " + std::to_string(length));
  };
  if (problem == std::errc::filename_too_long) expect("a path", kLongestPath, file.native().size());
  // What is there can be read, though nothing can be saved: there is no name for the journal.
  if (problem) expect("a database's file name", longest, file.filename().native().size());
}

// Makes the database under a name of its own and then gives it the one that is asked for, so that nobody ever
// sees half of it. Another process that makes it at the same time may win: then its file is the one.
void create_file(const fs::path& path, const fs::path& file) {
  constexpr int kMostTries = 100;
  const Place place = place_of(path, file);
  for (int tries = 1;; ++tries) {
    drafts::NewFile draft(place.file());
    if (draft.path().empty()) throw Failure(utf8(path) + ": " + draft.reason());
    Connection(place, draft.path(), file).run(kCreate);
    if (draft.add() != drafts::Added::kFailed) return;
    // Just before it gets its name nobody owns a draft, and a process that makes the same file may clear it.
    std::error_code problem;
    if (tries == kMostTries || fs::exists(draft.path(), problem)) {
      throw Failure(utf8(path) + ": " + draft.reason());
    }
  }
}

std::uint32_t big_endian(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
         static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

// Looks at the file's first bytes before SQLite reads the file as a database: that might roll back a journal
// which lies beside a file that is not ours.
void check_header(const Connection& connection) {
  constexpr std::size_t kHeaderSize = 100;
  constexpr char kMagic[] = "SQLite format 3";
  constexpr std::size_t kWriteVersion = 18, kReadVersion = 19, kUserVersion = 60, kApplication = 68;
  constexpr unsigned char kRollbackJournal = 1;

  sqlite3_file* file = connection.file();
  std::array<unsigned char, kHeaderSize> header{};
  const int code = file->pMethods->xRead(file, header.data(), static_cast<int>(kHeaderSize), 0);
  if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) {
    throw Failure(connection.path() + ": " + sqlite3_errstr(code));
  }
  if (code != SQLITE_OK || std::memcmp(header.data(), kMagic, sizeof kMagic) != 0 ||
      big_endian(&header[kApplication]) != kApplicationId) {
    throw Failure(connection.path() + ": not a product database");
  }
  const std::uint32_t layout = big_endian(&header[kUserVersion]);
  if (layout != kLayout) {
    throw Failure(connection.path() + ": layout " + std::to_string(layout) + ", this service reads layout " +
                  std::to_string(kLayout));
  }
  if (header[kWriteVersion] != kRollbackJournal || header[kReadVersion] != kRollbackJournal) {
    throw Failure(connection.path() + ": not in rollback journal mode");
  }
}

// What a file that someone else has made must not do with us.
void limit(const Connection& connection) {
  for (const int hazard : {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW}) {
    sqlite3_db_config(connection.get(), hazard, 0, nullptr);
  }
  sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  for (const auto [which, value] : kLimits) sqlite3_limit(connection.get(), which, value);
  // A schema without end would be read without end. All that opening does takes some hundred steps.
  constexpr int kMostSteps = 20'000;
  sqlite3_progress_handler(
      connection.get(), kMostSteps, [](void*) { return 1; }, nullptr);
}

// All of it happens in one reading transaction, during which no other process changes the file.
void check_contents(const Connection& connection) {
  connection.run("BEGIN");
  check_tables(connection);
  check_length(connection);
  connection.run("COMMIT");
}

// Expects our tables, declared as we declare them, and nothing beside them.
void check_tables(const Connection& connection) {
  Statement declared("SELECT type, name, tbl_name, sql FROM sqlite_schema ORDER BY rowid");
  Query query(connection, declared);
  const auto next = std::find_if(kDeclared.begin(), kDeclared.end(), [&](const Declared& each) {
    return !query.step() || query.text(0) != each.type || query.text(1) != each.name ||
           query.text(2) != each.table || query.text(3) != each.sql;
  });
  if (next != kDeclared.end() || query.step()) {
    throw Failure(connection.path() + ": " + kOtherTables);
  }
}

// Expects the file to be as long as it says. SQLite misses a last page that is not whole.
void check_length(const Connection& connection) {
  Statement stated("SELECT page_count * page_size FROM pragma_page_count, pragma_page_size");
  const std::int64_t expected = Query(connection, stated).number();
  sqlite3_int64 size = 0;
  sqlite3_file* file = connection.file();
  const int code = file->pMethods->xFileSize(file, &size);
  if (code != SQLITE_OK || size < expected) {
    throw Failure(connection.path() + ": cut off, " + std::to_string(size) + " of " +
                  std::to_string(expected) + " bytes");
  }
}

}  // namespace

}  // namespace tavdsrv
