// Loading a product, beside the service's own time for the same reads of attributes.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "oracle/reference/records.h"
#include "table.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"
#include "tavd/tavdsrv.h"

namespace bench {

namespace {

constexpr double kBeyondService = 5000.0;  // ns, wanted of a load
constexpr const char* kNames = "VALVE,LEN";

// An open record with every attribute that a load of its kind reads, and the rooms that the load reads into.
class Stored {
 public:
  explicit Stored(std::int16_t kind) : rec_(tavdsrv_newrec("TVX", "BENCH")) {
    reference::Random random(1);
    const FlowData fd = random_product(random, kind, reference::Shape::full).fd;
    struct Header {
      std::int16_t kind, b, h;
      float limits[4];
    } __attribute__((packed))
    header = {static_cast<std::int16_t>(kind + 100), 400, 200, {fd.qvmin, fd.qvmax, fd.dpmin, fd.dpmax}};
    put(1650, &header, sizeof header);
    switch (kind) {
      case 10:
        put(1651, &fd.qvref, 8);
        break;
      case 12:
        put(1657, fd.qvdppoints, sizeof fd.qvdppoints);
        break;
      case 20:
        put(1652, fd.damper, sizeof fd.damper);
        break;
      case 40:
        put(1658, header.limits, sizeof header.limits);
        put(1666, fd.fancurve, sizeof fd.fancurve);
        break;
      default:
        break;
    }
    put(1653, fd.lwpoints, sizeof fd.lwpoints);
    put(1655, fd.dlwpoints, sizeof fd.dlwpoints);
    put(1670, fd.intpair, sizeof fd.intpair);
    put(1671, fd.floatpair, sizeof fd.floatpair);
    put(1302, &fd.lwsizecoef, sizeof fd.lwsizecoef);
    put(1659, fd.qvL2, sizeof fd.qvL2);
    put(1660, fd.parL2, sizeof fd.parL2);
    put(1661, fd.par[0].table, sizeof fd.par[0].table);
    put(1662, fd.par[1].table, sizeof fd.par[1].table);
    put(1514, kNames, std::strlen(kNames));
  }
  ~Stored() { tavbreleaserec(rec_); }
  Stored(const Stored&) = delete;
  Stored& operator=(const Stored&) = delete;

  void load() {
    benchmark::DoNotOptimize(tavca_load_flowdata(0, rec_, &loaded_));
    benchmark::ClobberMemory();
  }
  void read_only() {
    for (const Read& read : reads_) {
      std::int16_t count = 0;
      benchmark::DoNotOptimize(tavbcopyatt(0, rec_, read.attribute, &count, room_, read.bytes));
    }
    benchmark::ClobberMemory();
  }

 private:
  struct Read {
    std::int16_t attribute;
    std::int16_t bytes;
  };

  void put(int attribute, const void* data, std::size_t bytes) {
    tavbinsertatt(0, &rec_, static_cast<std::int16_t>(attribute), data, static_cast<std::int16_t>(bytes));
    reads_.push_back({static_cast<std::int16_t>(attribute), static_cast<std::int16_t>(bytes)});
  }

  tavb_rec rec_;
  std::vector<Read> reads_;
  FlowData loaded_{};
  char room_[2400] = {};
};

}  // namespace

void add_loads(std::vector<Job>& jobs) {
  for (const std::int16_t kind : std::initializer_list<std::int16_t>{10, 12, 20, 30, 40}) {
    const auto stored = std::make_shared<Stored>(kind);
    jobs.push_back(
        {"tavca_load_flowdata", "kind " + std::to_string(kind), 1, [stored] { stored->load(); },
         [stored] { stored->read_only(); }, Wanted{.beyond = kBeyondService},
         "\n## Loading\n\nThe yardstick is the service's own time for reading the same attributes, from an\n"
         "open record with every attribute at its full length.\n\n"
         "| Function | Product | Library, ns | Service alone, ns | Times as fast | Allocations | Wanted |\n"
         "|---|---|---:|---:|---:|---:|---|\n"});
  }
}

}  // namespace bench
