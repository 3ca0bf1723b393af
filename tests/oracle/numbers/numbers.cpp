// The numbers of the calculation core, bit for bit, so that two builds can be compared (compare.cpp):
//   numbers make RECORDS [NUMBER]   writes random records and points, for both builds to read; 40 records of
//   each
//                                   kind unless told
//   numbers run DATABASE RECORDS OUT [math]
//                                   all products of the database over a grid of flows, pressures and
//                                   parameter values, then the random records; "math": the C library's
//                                   functions as well
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "calls.h"
#include "oracle/reference/records.h"
#include "tavd/tavca.h"
#include "tavd/tavdsrv.h"

namespace {

using numbers::Calls;

constexpr int kFlows = 13;     // of the grid, from below the lowest flow to above the highest
constexpr int kPressures = 9;  // likewise
constexpr int kPositions = 7;
constexpr int kRecordsPerKind = 40;
constexpr int kPointsPerRecord = 25;
constexpr std::size_t kValueSize = 16;

// One random record with a point, as it stands in the file.
struct Case {
  FlowData fd;
  reference::Point at;
  char value[kValueSize];
};

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File open(const char* name, const char* mode) {
  File file(std::fopen(name, mode));
  if (file == nullptr) std::fprintf(stderr, "numbers: %s cannot be opened\n", name);
  return file;
}

int make(const char* name, int records_per_kind) {
  const File out = open(name, "wb");
  if (out == nullptr) return 1;
  constexpr reference::Shape kShapes[] = {reference::Shape::sorted, reference::Shape::full,
                                          reference::Shape::shuffled};
  constexpr std::int16_t kKinds[] = {10, 11, 12, 13, 20, 22, 30, 40};
  for (const std::int16_t kind : kKinds) {
    for (int number = 0; number < records_per_kind; ++number) {
      reference::Random random(static_cast<std::uint64_t>(kind) * 1'000'000 +
                               static_cast<std::uint64_t>(number));
      const auto product = random_product(random, kind, kShapes[number % std::ssize(kShapes)]);
      for (int i = 0; i < kPointsPerRecord; ++i) {
        Case record{};
        record.fd = product.fd;
        record.at = random_point(random, product.fd, false);
        const char* value = product.values[static_cast<std::size_t>(i) % product.values.size()];
        std::strncpy(record.value, value, kValueSize - 1);
        std::fwrite(&record, sizeof record, 1, out.get());
      }
    }
  }
  return 0;
}

// `steps` values evenly from a fifth below `lowest` to a fifth above `highest`. Plain arithmetic: the same
// everywhere.
std::vector<float> grid(float lowest, float highest, int steps) {
  const float from = lowest - lowest / 5.0F;
  const float to = highest + highest / 5.0F;
  std::vector<float> values;
  values.reserve(static_cast<std::size_t>(steps));
  for (int i = 0; i < steps; ++i) {
    values.push_back(from + (to - from) * static_cast<float>(i) / static_cast<float>(steps - 1));
  }
  return values;
}

void all_points(Calls& calls, const FlowData& fd) {
  const DuctSize duct{static_cast<std::int16_t>(fd.h > 0 ? 1 : 0), fd.b, fd.h};
  calls.record(fd);
  for (const float qv : grid(fd.qvmin, fd.qvmax, kFlows)) {
    calls.flow(fd, qv);
    calls.size(duct, qv);
    for (const float dp : grid(fd.dpmin, fd.dpmax, kPressures)) calls.point(fd, qv, dp, duct);
    const int rows = std::clamp<int>(fd.ndamper, 0, TAVD_DAMPER_ROWS);
    if (rows > 0) {
      for (const float pos : grid(fd.damper[0].pos, fd.damper[rows - 1].pos, kPositions)) {
        calls.position(fd, qv, pos);
      }
    }
    calls.throw_length(fd, qv, "");
    for (int row = 0; row < std::clamp<int>(fd.nparL2, 0, TAVD_PARL2_ROWS); ++row) {
      calls.throw_length(fd, qv, std::string(fd.parL2[row].value, sizeof fd.parL2[row].value).c_str());
    }
  }
}

// The record as it is loaded, and with every value of every parameter.
void all_parameters(Calls& calls, const FlowData& loaded, const std::string& name) {
  calls.of_product(name);
  all_points(calls, loaded);
  for (int block = 0; block < std::clamp<int>(loaded.npar, 0, 2); ++block) {
    const ParTable& table = loaded.par[block];
    for (int row = 0; row < std::clamp<int>(table.count, 0, TAVD_PARAMETER_ROWS); ++row) {
      const std::string value(table.table[row].value,
                              strnlen(table.table[row].value, sizeof table.table[row].value));
      FlowData fd = loaded;
      tavca_param_setvalue(&fd, table.name, value.c_str());
      calls.of_product(name + ' ' + table.name + '=' + value);
      all_points(calls, fd);
    }
  }
}

int catalogue(Calls& calls, std::int16_t db) {
  int products = 0;
  tavb_rec rec = tavbfindrec(db, "", "", 1);
  while (rec != nullptr) {
    FlowData fd{};
    if (tavca_load_flowdata(db, rec, &fd) == 0) {
      all_parameters(calls, fd, std::string(fd.szclass, strnlen(fd.szclass, 3)) + ' ' + fd.szobjID);
      ++products;
    }
    tavb_rec next = tavbnextrec(db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  return products;
}

int random_records(Calls& calls, std::FILE* records) {
  int cases = 0;
  auto record = std::make_unique<Case>();
  while (std::fread(record.get(), sizeof *record, 1, records) == 1) {
    const reference::Point at = record->at;
    calls.of_product("random " + std::to_string(cases / kPointsPerRecord));
    if (cases++ % kPointsPerRecord == 0) calls.record(record->fd);
    calls.flow(record->fd, at.qv);
    calls.point(record->fd, at.qv, at.dp, at.duct);
    calls.position(record->fd, at.qv, at.pos);
    calls.throw_length(record->fd, at.qv, record->value);
    calls.size(at.duct, at.qv);
  }
  return cases;
}

int run(const char* database, const char* records_name, const char* out_name, bool math) {
  const File records = open(records_name, "rb");
  const File out = open(out_name, "wb");
  if (records == nullptr || out == nullptr) return 1;
  const std::int16_t db = tavbopendatabase(nullptr, database, 0);
  if (db < 0) {
    std::fprintf(stderr, "numbers: %s\n", tavdsrv_lasterror());
    return 1;
  }
  Calls calls(out.get());
  const int products = catalogue(calls, db);
  const int cases = random_records(calls, records.get());
  if (math) numbers::math_functions(out.get());
  tavdsrv_closedatabase(db);
  std::printf("%d products with flow data, %d random points\n", products, cases);
  return products > 0 && cases > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if ((argc == 3 || argc == 4) && arguments[0] == "make") {
    return make(argv[2], argc == 4 ? std::atoi(argv[3]) : kRecordsPerKind);
  }
  if ((argc == 5 || (argc == 6 && arguments[4] == "math")) && arguments[0] == "run") {
    return run(argv[2], argv[3], argv[4], argc == 6);
  }
  std::fputs("usage: numbers make RECORDS [NUMBER]\n       numbers run DATABASE RECORDS OUT [math]\n",
             stderr);
  return 2;
}
