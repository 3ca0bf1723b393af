// The service on a server of PostgreSQL, beside libpq called directly for the same rows over the same socket.
// Prints its part of docs/performance.md.
//
//   bench_server NAME      of a database of `tavd db synth`, as libpq takes it
#include <libpq-fe.h>

#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

#include "service_jobs.h"

namespace bench {

namespace {

constexpr const char* kClass = "DMP";
constexpr double kMost = 1.5;  // times what libpq takes
constexpr int kBinary = 1;

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

class PlainConnection {
 public:
  explicit PlainConnection(const char* name) : connection_(PQconnectdb(name), PQfinish) {
    run("BEGIN");
    check(PQprepare(get(), "find", "SELECT key, body FROM tavd.record WHERE key = $1", 0, nullptr));
    run("COMMIT");
  }

  // Bytes of the body under `key`.
  int find(std::string_view key) {
    const char* value = key.data();
    const int length = static_cast<int>(key.size());
    const Result found = check(PQexecPrepared(get(), "find", 1, &value, &length, &kBinary, kBinary));
    if (PQntuples(found.get()) != 1) give_up("plain libpq finds nothing");
    return PQgetlength(found.get(), 0, 1);
  }

  // Rows of a class, by a cursor of the server that gives so many at a time: the usual way with flat memory.
  std::int64_t walk(int at_a_time) {
    run("BEGIN");
    run((std::string("DECLARE walk BINARY CURSOR FOR ") + kRowsOfClass).c_str());
    const std::string fetch = "FETCH " + std::to_string(at_a_time) + " FROM walk";
    std::int64_t rows = 0;
    for (int got = at_a_time; got == at_a_time; rows += got) got = PQntuples(run(fetch.c_str()).get());
    run("COMMIT");
    return rows;
  }

  std::vector<PackedRow> rows() {
    const Result all =
        check(PQexecParams(get(), kRowsOfClass, 0, nullptr, nullptr, nullptr, nullptr, kBinary));
    const auto bytes = [&all](int row, int column) {
      return std::string(PQgetvalue(all.get(), row, column),
                         static_cast<std::size_t>(PQgetlength(all.get(), row, column)));
    };
    std::vector<PackedRow> found;
    for (int row = 0; row < PQntuples(all.get()); ++row) found.push_back({bytes(row, 0), bytes(row, 1)});
    return found;
  }

 private:
  static constexpr const char* kRowsOfClass =
      "SELECT key, body FROM tavd.record WHERE key >= 'DMP' AND key < 'DMQ' ORDER BY key";

  PGconn* get() { return connection_.get(); }
  Result run(const char* sql) { return check(PQexec(get(), sql)); }
  Result check(PGresult* answer) {
    const ExecStatusType status = PQresultStatus(answer);
    if (status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK) return {answer, PQclear};
    std::fprintf(stderr, "plain libpq: %s\n", PQerrorMessage(get()));
    std::exit(2);
  }

  std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

void compare_finding(const Service& service, PlainConnection& plain, const std::vector<PackedRow>& rows) {
  const std::vector<std::int16_t> attributes = attributes_of(service.handle(), rows[0].key);
  for (const auto& [detail, many] :
       {std::pair("any of all", rows.size()), std::pair("one of 200", std::size_t{200})}) {
    constexpr int kFinds = 100;
    const std::size_t some = std::min(many, rows.size());
    Keys keys = some_keys({rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(some)}, 5'000);
    Keys same = keys;
    compare({"find a record, read 20 attributes", detail, 51, kFinds,
             [&] {
               for (int i = 0; i < kFinds; ++i) find_and_read(service.handle(), keys.next(), attributes);
             },
             [&] {
               for (int i = 0; i < kFinds; ++i) plain.find(same.next());
             },
             kMost});
  }
}

void compare_walking(const Service& service, PlainConnection& plain, std::int64_t records) {
  const auto walked = [&](std::int64_t met) {
    if (met != records) give_up("walked another number of records");
  };
  const auto calls = static_cast<double>(records);
  for (const auto& [rows, most] : {std::pair(100, kMost), std::pair(1000, 0.0), std::pair(1, 0.0)}) {
    compare({"walk over a class, read the ids", "beside a cursor, rows at a time: " + std::to_string(rows), 5,
             calls, [&] { walked(walk(service.handle(), kClass)); }, [&] { walked(plain.walk(rows)); },
             most});
  }
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  if (argc != 2) {
    std::fprintf(stderr, "usage: bench_server NAME\n");
    return 2;
  }
  const Service service(argv[1]);
  PlainConnection plain(argv[1]);
  const std::vector<PackedRow> rows = plain.rows();
  std::printf(
      "\n## The service on a server\n\nA database of `tavd db synth` on PostgreSQL, over a socket on the "
      "same processor. Each task\n"
      "beside libpq called directly; medians of runs in turn.\n\n"
      "| Task | | Service, us a record | libpq, us a record | Times as long | Wanted |\n"
      "|---|---|---:|---:|---:|---|\n");
  compare_finding(service, plain, products(rows));
  compare_walking(service, plain, static_cast<std::int64_t>(rows.size()));
  return end_of_comparisons();
}
