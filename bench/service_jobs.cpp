#include "service_jobs.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "tavd/tavdsrv.h"

namespace bench {

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

constexpr std::size_t kClassBytes = 3;
constexpr std::int32_t kAttributesRead = 20;

int missed = 0;

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double time_of(const std::function<void()>& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return Microseconds(std::chrono::steady_clock::now() - start).count();
}

tavb_rec find(std::int16_t db, const std::string& key) {
  tavb_rec rec = tavbfindrec(db, key.c_str(), key.c_str() + kClassBytes, TAVB_FIND_EXACT);
  if (rec == nullptr) give_up("not found");
  return rec;
}

}  // namespace

void give_up(const std::string& what) {
  std::fprintf(stderr, "bench: %s %s\n", what.c_str(), tavdsrv_lasterror());
  std::exit(2);
}

Service::Service(const std::string& path, std::int32_t mode)
    : handle_(tavbopendatabase(nullptr, path.c_str(), mode)) {
  if (handle_ < 0) give_up("cannot open");
}

Service::~Service() {
  tavdsrv_closedatabase(handle_);
}

void compare(const Comparison& job) {
  std::fprintf(stderr, "%s, %s\n", job.name.c_str(), job.detail.c_str());
  job.first();
  job.other();
  std::vector<double> first, other, ratio;
  for (int i = 0; i < job.rounds; ++i) {
    first.push_back(time_of(job.first) / job.calls);
    other.push_back(time_of(job.other) / job.calls);
    ratio.push_back(first.back() / other.back());
  }
  std::string wanted = " ";
  if (job.most > 0) {
    char text[64];
    std::snprintf(text, sizeof text, " at most %.2f times ", job.most);
    wanted = text;
    if (median(ratio) > job.most) {
      wanted += "**missed** ";
      ++missed;
    }
  }
  std::printf("| %s | %s | %.2f | %.2f | %.2f |%s|\n", job.name.c_str(), job.detail.c_str(), median(first),
              median(other), median(ratio), wanted.c_str());
  std::fflush(stdout);
}

void miss() {
  ++missed;
}

int end_of_comparisons() {
  if (missed != 0) std::fprintf(stderr, "%d figures of the service miss what they want\n", missed);
  return missed == 0 ? 0 : 1;
}

Keys some_keys(const std::vector<PackedRow>& rows, std::size_t count) {
  Keys chosen;
  std::mt19937 random(1);
  for (std::size_t i = 0; i < count; ++i) chosen.keys.push_back(rows[random() % rows.size()].key);
  return chosen;
}

std::vector<PackedRow> products(std::vector<PackedRow> rows) {
  std::erase_if(rows, [](const PackedRow& row) { return row.body.size() < 600; });
  return rows;
}

std::vector<std::int16_t> attributes_of(std::int16_t db, const std::string& key) {
  tavb_rec rec = find(db, key);
  std::vector<std::int16_t> numbers;
  for (std::int32_t i = 0; i < kAttributesRead; ++i) {
    std::int16_t number = 0;
    if (tavdsrv_attributeat(rec, i, &number, nullptr, nullptr) != 0) give_up("too few attributes");
    numbers.push_back(number);
  }
  tavbreleaserec(rec);
  return numbers;
}

void find_and_read(std::int16_t db, const std::string& key, const std::vector<std::int16_t>& attributes) {
  tavb_rec rec = find(db, key);
  char buffer[512];
  for (const std::int16_t attribute : attributes) {
    std::int16_t count = 0;
    tavbcopyatt(db, rec, attribute, &count, buffer, sizeof buffer);
  }
  tavbreleaserec(rec);
}

std::int64_t walk(std::int16_t db, const char* class_id) {
  std::int64_t records = 0;
  tavb_rec rec = tavbfindrec(db, class_id, "", TAVB_FIND_FROM);
  while (rec != nullptr) {
    char found[8];
    tavbgetID(db, rec, found, nullptr);
    const bool inside = std::strncmp(found, class_id, kClassBytes) == 0;
    tavb_rec next = inside ? tavbnextrec(db, rec) : nullptr;
    tavbreleaserec(rec);
    rec = next;
    if (inside) ++records;
  }
  return records;
}

}  // namespace bench
