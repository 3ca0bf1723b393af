// How the product-database service bears size, beside SQLite called directly on the same rows. Prints its
// part of docs/performance.md.
//
//   bench_service SMALL MIDDLE LARGE      databases of `tavd db synth`
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "plain_sqlite.h"
#include "service_jobs.h"
#include "tavd/tavdsrv.h"
#include "tavd/tavfm.h"

namespace bench {

namespace {

// The most that the service may take, times what it is measured beside.
constexpr double kMostOfFind = 1.5;
constexpr double kMostOfWalk = 1.5;
constexpr double kMostOfBuild = 2.0;
constexpr double kSame = 1.25;  // two times that are to be the same, on a machine that does other things too

constexpr const char* kClass = "DMP";
constexpr std::size_t kClassBytes = 3;

void compare_finding(const std::string& path) {
  const Service service(path);
  PlainDatabase plain(path);
  const std::vector<PackedRow> rows = products(plain.rows(kClass, 1'000'000));
  const std::vector<std::int16_t> attributes = attributes_of(service.handle(), rows[0].key);
  for (const auto& [detail, many] :
       {std::pair("any of all", rows.size()), std::pair("one of 200", std::size_t{200})}) {
    constexpr int kFinds = 1000;
    Keys keys = some_keys({rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(many)}, 50'000);
    Keys same = keys;
    compare({"find a record, read 20 attributes", detail, 101, kFinds,
             [&] {
               for (int i = 0; i < kFinds; ++i) find_and_read(service.handle(), keys.next(), attributes);
             },
             [&] {
               for (int i = 0; i < kFinds; ++i) plain.find(same.next());
             },
             kMostOfFind});
  }
}

void compare_walking(const std::string& path) {
  const Service service(path);
  PlainDatabase plain(path);
  const std::int64_t records = plain.count(kClass);
  const auto walked = [&] {
    if (walk(service.handle(), kClass) != records) give_up("walked another number of records");
  };
  const std::string detail = std::to_string(records) + " records";
  const auto calls = static_cast<double>(records);
  compare({"walk over a class, read the ids", detail, 7, calls, walked, [&] { plain.walk(kClass); },
           kMostOfWalk});
  compare({"the same, beside a statement for every record", detail, 5, calls, walked,
           [&] { plain.walk_step_by_step(kClass); }});
}

struct Attribute {
  std::int16_t number;
  std::string value;
};

struct Product {
  std::string key;
  std::vector<Attribute> attributes;
};

std::vector<Product> read_products(const std::string& path, const std::vector<PackedRow>& rows) {
  const Service service(path);
  std::vector<Product> products;
  for (const PackedRow& row : rows) {
    tavb_rec rec =
        tavbfindrec(service.handle(), row.key.c_str(), row.key.c_str() + kClassBytes, TAVB_FIND_EXACT);
    if (rec == nullptr) give_up("not found");
    Product& product = products.emplace_back(Product{row.key, {}});
    for (std::int32_t i = 0; i < tavdsrv_attributecount(rec); ++i) {
      std::int16_t number = 0;
      const void* data = nullptr;
      std::int32_t length = 0;
      tavdsrv_attributeat(rec, i, &number, &data, &length);
      product.attributes.push_back(
          {number, std::string(static_cast<const char*>(data), static_cast<std::size_t>(length))});
    }
    tavbreleaserec(rec);
  }
  return products;
}

void build(const std::string& path, const std::vector<Product>& products) {
  const Service service(path, 1);
  if (tavdsrv_begin(service.handle()) != 0) give_up("cannot begin");
  for (const auto& [key, attributes] : products) {
    tavb_rec rec = tavdsrv_newrec(key.c_str(), key.c_str() + kClassBytes);
    for (const Attribute& attribute : attributes) {
      tavbinsertatt(service.handle(), &rec, attribute.number, attribute.value.data(),
                    static_cast<std::int16_t>(attribute.value.size()));
    }
    tavbsaverec(service.handle(), rec);
    tavbreleaserec(rec);
  }
  if (tavdsrv_commit(service.handle()) != 0) give_up("cannot commit");
}

void compare_building(const std::string& path) {
  std::vector<PackedRow> rows;
  {
    PlainDatabase plain(path);
    for (const char* class_id : {"AEX", "ASD", "CCB", "DMP", "FAN"}) {
      const auto some = plain.rows(class_id, 20'000);
      rows.insert(rows.end(), some.begin(), some.end());
    }
  }
  const std::vector<Product> products = read_products(path, rows);
  const std::string target = path + ".built";
  const auto afresh = [&](const auto& make) {
    std::filesystem::remove(target);
    make();
  };
  compare({"build a database", std::to_string(rows.size()) + " records", 5, static_cast<double>(rows.size()),
           [&] { afresh([&] { build(target, products); }); },
           [&] { afresh([&] { insert_rows(target, rows); }); }, kMostOfBuild});
  std::filesystem::remove(target);
}

void compare_opening(const std::string& small, const std::string& large) {
  constexpr int kTimes = 50;
  const auto open_often = [](const std::string& path) {
    for (int i = 0; i < kTimes; ++i) const Service service(path);
  };
  compare({"open and close the database", "", 51, kTimes, [&] { open_often(large); },
           [&] { open_often(small); }, kSame});
}

// The family of 40 sizes that every class begins with.
void compare_families(const std::string& small, const std::string& large) {
  const Service few(small), many(large);
  FamilyList list;
  tavfm_init(&list);
  const auto read = [&](std::int16_t db) {
    if (tavfm_read(&list, db, kClass, "Q0000000-*                    ") != 40) give_up("no family of 40");
  };
  compare(
      {"list a family of 40", "", 51, 1, [&] { read(many.handle()); }, [&] { read(few.handle()); }, kSame});
  tavfm_release(&list);
}

// Peak of this process's resident memory, MB.
double peak_memory() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "VmHWM:" && status >> kilobytes) return kilobytes / 1024;
  }
  give_up("no memory figures in /proc");
}

// Peak of a process that opens the database, walks all of it and finds 20 000 records all over it.
double memory_at_work(const std::string& path) {
  int ends[2];
  if (pipe(ends) != 0) give_up("no pipe");
  const pid_t child = fork();
  if (child == 0) {
    const Service service(path);
    for (const char* class_id : {"000", "AEX", "ASD", "CCB", "DMP", "FAN", "TVM"}) {
      walk(service.handle(), class_id);
    }
    for (int i = 0; i < 20'000; ++i) {
      char id[32];
      std::snprintf(id, sizeof id, "Q%07d", i * 7 % 20'000);
      tavbreleaserec(tavbfindrec(service.handle(), kClass, id, TAVB_FIND_FROM));
    }
    const double peak = peak_memory();
    _exit(write(ends[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
  }
  close(ends[1]);
  double peak = 0;
  if (read(ends[0], &peak, sizeof peak) != sizeof peak) give_up("no answer about memory");
  waitpid(child, nullptr, 0);
  close(ends[0]);
  return peak;
}

void print_memory(const std::vector<std::string>& paths, const std::vector<double>& megabytes) {
  std::printf(
      "\nPeak of the resident memory of a process that opens a database, walks all of it and finds\n20 000 "
      "records "
      "all over it. It keeps 8 MB of a file at most.\n\n| File, MB | Memory, MB | Wanted "
      "|\n|---:|---:|---|\n");
  constexpr double kNoise = 2;  // MB
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const bool last = i + 1 == paths.size();
    const bool grows = last && megabytes[i] > megabytes[i - 1] + kNoise;
    std::printf("| %.1f | %.1f |%s|\n", static_cast<double>(std::filesystem::file_size(paths[i])) / (1 << 20),
                megabytes[i],
                grows  ? " no more than the middle one **missed** "
                : last ? " no more than the middle one "
                       : " ");
    if (grows) miss();
  }
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  if (argc != 4) {
    std::fprintf(stderr, "usage: bench_service SMALL MIDDLE LARGE\n");
    return 2;
  }
  const std::string small = argv[1], middle = argv[2], large = argv[3];
  // First of all: the processes that are measured begin with the memory of this one.
  const std::vector<std::string> all = {small, middle, large};
  std::vector<double> memory;
  memory.reserve(all.size());
  for (const std::string& path : all) memory.push_back(memory_at_work(path));
  std::printf(
      "\n## The service\n\nDatabases of `tavd db synth`. Each task beside SQLite called directly with "
      "prepared\nstatements that fetch, or insert, the same packed rows; medians of runs in turn.\n\n"
      "| Task | | Service, us a record | SQLite, us a record | Times as long | Wanted |\n"
      "|---|---|---:|---:|---:|---|\n");
  compare_finding(large);
  compare_walking(large);
  compare_building(large);
  std::printf(
      "\nWhat must not depend on the size: the same task in the largest and in the smallest database.\n\n"
      "| Task | | Largest, us | Smallest, us | Times as long | Wanted |\n|---|---|---:|---:|---:|---|\n");
  compare_opening(small, large);
  compare_families(small, large);
  print_memory(all, memory);
  return end_of_comparisons();
}
