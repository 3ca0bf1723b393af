// Selection: blocks of duties, each asked of one product after the other; threads take blocks.
#include <algorithm>
#include <atomic>
#include <exception>
#include <new>
#include <numeric>
#include <thread>

#include "many/arrays.h"
#include "many/select/conditions.h"

namespace tavd {
namespace {

// A product that fits, and what it is ranked by.
struct Found {
  float key;
  bool has_key;
  std::uint32_t product, variant;
};

// Whether `a` comes before `b`. Products are numbered by class and id, variants in the order of the choices.
bool is_better(const Found& a, const Found& b) {
  if (a.has_key != b.has_key) return a.has_key;
  if (a.has_key && a.key != b.key) return a.key < b.key;
  return a.product != b.product ? a.product < b.product : a.variant < b.variant;
}

// The best of what is added, as many as are wanted.
class Best {
 public:
  explicit Best(std::size_t wanted) : wanted_(wanted) {}

  void add(const Found& found) {
    ++count_;
    if (heap_.size() == wanted_) {
      if (!is_better(found, heap_.front())) return;
      std::pop_heap(heap_.begin(), heap_.end(), is_better);
      heap_.back() = found;
    } else {
      heap_.push_back(found);
    }
    std::push_heap(heap_.begin(), heap_.end(), is_better);
  }

  std::size_t count() const { return count_; }
  const std::vector<Found>& sorted() {
    std::sort_heap(heap_.begin(), heap_.end(), is_better);
    return heap_;
  }

 private:
  std::size_t wanted_;
  std::size_t count_ = 0;
  std::vector<Found> heap_;
};

// What a call is to answer, and where.
struct Work {
  const tavdn_catalogue& catalogue;
  const tavdn_duty* duties;
  std::size_t room;
  tavdn_hit* hits;
  tavdn_fitting* fitting;
  unsigned char* reasons;
};

// Duties with the same parameter values and room damping, by rising flow.
class Block {
 public:
  Block(const Work& work, const std::uint32_t* first, std::size_t count) : work_(work), places_(first) {
    duties_.reserve(count);
    best_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      const tavdn_duty& asked = work.duties[first[i]];
      flows_.push_back(duties_.emplace_back(work.catalogue, asked).flow());
      best_.emplace_back(static_cast<std::size_t>(asked.wanted));
    }
    set_ = static_cast<std::size_t>(duties_.front().asked.values);
  }

  void select() {
    for (std::size_t i = 0; i < work_.catalogue.products.size(); ++i) ask(i);
    for (std::size_t i = 0; i < duties_.size(); ++i) write(i);
  }

 private:
  // Of whom nobody wants to know why not, only duties within its flow limits are looked at.
  void ask(std::size_t index) {
    const Candidate& candidate = work_.catalogue.products[index];
    const bool by_flow = candidate.fd().isvelocity == 0 && work_.reasons == nullptr;
    const float low = candidate.fd().qvmin;
    const float high = candidate.fd().qvmax;
    const auto begin = flows_.begin();
    auto from = begin;
    auto to = flows_.end();
    if (by_flow) {
      from = std::partition_point(begin, to, [low](float qv) { return !(qv >= low); });
      to = std::partition_point(from, to, [high](float qv) { return qv <= high; });
      if (from == to) return;
    }
    reasons_.clear(duties_.size());
    asked_.count = 0;
    for (auto i = static_cast<std::size_t>(from - begin); i < static_cast<std::size_t>(to - begin); ++i) {
      const float qv = duties_[i].flow_of(candidate);
      const int reason = why_not_asked(duties_[i], candidate, qv);
      if (reason == TAVDN_WHY_FITS) {
        asked_.add(i, qv, duties_[i].asked.dp);
      } else {
        reasons_.tell(static_cast<std::uint32_t>(i), reason);
      }
    }
    if (asked_.count != 0) try_choices(index, candidate);
    if (work_.reasons != nullptr) tell_reasons(index);
  }

  void try_choices(std::size_t index, const Candidate& candidate) {
    std::fill_n(is_found_.begin(), duties_.size(), false);
    const Choices choices = candidate.of_set[set_];
    for (std::uint32_t i = 0; i < choices.count; ++i) {
      const std::uint32_t variant = candidate.choices[choices.first + i];
      points_.take(asked_);
      judge(*candidate.variants[variant], candidate, duties_.data(), points_, reasons_);
      for (std::size_t point = 0; point < points_.count; ++point) {
        const Found found{points_.key[point], points_.has_key[point], static_cast<std::uint32_t>(index), i};
        const std::uint32_t duty = points_.duty[point];
        if (is_found_[duty] && !is_better(found, found_[duty])) continue;
        is_found_[duty] = true;
        found_[duty] = found;
      }
    }
    for (std::size_t i = 0; i < asked_.count; ++i) {
      const std::uint32_t duty = asked_.duty[i];
      if (!is_found_[duty]) continue;
      reasons_.of[duty] = TAVDN_WHY_FITS;
      best_[duty].add(found_[duty]);
    }
  }

  void tell_reasons(std::size_t index) const {
    for (std::size_t i = 0; i < duties_.size(); ++i) {
      work_.reasons[places_[i] * work_.catalogue.products.size() + index] = reasons_.of[i];
    }
  }

  void write(std::size_t i) {
    const std::size_t place = places_[i];
    tavdn_hit* hit = work_.hits + place * work_.room;
    const std::vector<Found>& best = best_[i].sorted();
    work_.fitting[place] = {best_[i].count(), static_cast<std::int32_t>(best.size())};
    for (const Found& found : best) {
      const Candidate& candidate = work_.catalogue.products[found.product];
      const std::uint32_t variant = candidate.choices[candidate.of_set[set_].first + found.variant];
      *hit = {};
      hit->product = found.product;
      hit->variant = static_cast<std::int32_t>(variant);
      fill_hit(*candidate.variants[variant], candidate, duties_[i], *hit);
      ++hit;
    }
  }

  const Work& work_;
  const std::uint32_t* places_;  // of the duties in the call
  std::vector<Duty> duties_;
  std::vector<float> flows_;  // l/s
  std::vector<Best> best_;
  std::size_t set_;
  Points asked_, points_;
  Reasons reasons_;
  std::array<bool, kDutiesAtOnce> is_found_;
  std::array<Found, kDutiesAtOnce> found_;
};

struct Span {
  std::size_t first, count;
};

bool go_together(const tavdn_duty& a, const tavdn_duty& b) {
  return a.values == b.values && a.roomdamp == b.roomdamp;
}

// The order in which duties are asked, so that those of a block go together and their flows rise.
std::vector<std::uint32_t> order_of(std::size_t n, const Work& work) {
  std::vector<std::uint32_t> order(n);
  std::iota(order.begin(), order.end(), 0U);
  std::vector<float> flows(n);
  for (std::size_t i = 0; i < n; ++i) flows[i] = static_cast<float>(litres_per_second(work.duties[i]));
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    const tavdn_duty& one = work.duties[a];
    const tavdn_duty& other = work.duties[b];
    if (one.values != other.values) return one.values < other.values;
    if (one.roomdamp != other.roomdamp) return one.roomdamp < other.roomdamp;
    return flows[a] != flows[b] ? flows[a] < flows[b] : a < b;
  });
  return order;
}

std::vector<Span> blocks_of(const std::vector<std::uint32_t>& order, const Work& work, std::size_t threads) {
  const std::size_t share = (order.size() + threads - 1) / threads;
  const std::size_t most = std::clamp<std::size_t>(share, 1, kDutiesAtOnce);
  std::vector<Span> blocks;
  for (std::size_t i = 0; i < order.size(); ++i) {
    const bool goes_on = !blocks.empty() && blocks.back().count < most &&
                         go_together(work.duties[order[i]], work.duties[order[i - 1]]);
    if (!goes_on) blocks.push_back({i, 0});
    ++blocks.back().count;
  }
  return blocks;
}

std::size_t number_of_threads(int wanted) {
  if (wanted > 0) return static_cast<std::size_t>(wanted);
  return std::max(std::thread::hardware_concurrency(), 1U);
}

// Does `run` on so many threads, this one included; on fewer where the system gives no more.
template <typename Run>
void run_on_threads(std::size_t count, const Run& run) {
  std::vector<std::thread> others;
  others.reserve(count - 1);
  try {
    while (others.size() + 1 < count) others.emplace_back(run);
  } catch (const std::exception&) {
    // No more are to be had: those that there are share the work.
  }
  run();
  for (std::thread& other : others) other.join();
}

int select_all(const Work& work, std::size_t n, int wanted_threads) {
  const std::size_t most_threads = number_of_threads(wanted_threads);
  const std::vector<std::uint32_t> order = order_of(n, work);
  const std::vector<Span> blocks = blocks_of(order, work, most_threads);
  std::atomic<std::size_t> next{0};
  std::atomic<bool> is_out_of_memory{false};
  const auto run = [&]() noexcept {
    try {
      for (std::size_t i = next++; i < blocks.size() && !is_out_of_memory; i = next++) {
        Block(work, &order[blocks[i].first], blocks[i].count).select();
      }
    } catch (const std::bad_alloc&) {
      is_out_of_memory = true;
    }
  };
  run_on_threads(std::min(most_threads, blocks.size()), run);
  return is_out_of_memory ? TAVDN_NO_MEMORY : TAVDN_OK;
}

// Whether n duties, and hits and reasons for them, can lie in memory at all.
bool fit_memory(const tavdn_catalogue& catalogue, std::size_t n, std::size_t room) {
  constexpr std::size_t kMost = PTRDIFF_MAX;
  const std::size_t reasons_and_duty = std::max(sizeof(tavdn_duty), catalogue.products.size());
  if (n > kMost / reasons_and_duty || n > UINT32_MAX) return false;
  return room <= kMost / sizeof(tavdn_hit) / std::max<std::size_t>(n, 1);
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavdn_check_duty(const tavdn_catalogue* catalogue, const tavdn_duty* duty) {
  if (catalogue == nullptr) return TAVDN_BAD_ARGUMENT;
  return check_duty(*catalogue, duty, INT32_MAX);
}

int tavdn_select_many(const tavdn_catalogue* catalogue, size_t n, const tavdn_duty* duties, size_t room,
                      tavdn_hit* hits, tavdn_fitting* fitting, unsigned char* reasons, int threads,
                      size_t* bad) {
  if (catalogue == nullptr || !fit_memory(*catalogue, n, room)) return TAVDN_BAD_ARGUMENT;
  if (n == 0) return TAVDN_OK;
  if (duties == nullptr || hits == nullptr || fitting == nullptr) return TAVDN_BAD_ARGUMENT;
  for (std::size_t i = 0; i < n; ++i) {
    const int code = check_duty(*catalogue, &duties[i], room);
    if (code == TAVDN_OK) continue;
    if (bad != nullptr) *bad = i;
    return code;
  }
  try {
    return select_all({*catalogue, duties, room, hits, fitting, reasons}, n, threads);
  } catch (const std::bad_alloc&) {
    return TAVDN_NO_MEMORY;
  }
}

int tavdn_select(const tavdn_catalogue* catalogue, const tavdn_duty* duty, size_t room, tavdn_hit* hits,
                 tavdn_fitting* fitting, unsigned char* reasons) {
  if (catalogue == nullptr || hits == nullptr || fitting == nullptr) return TAVDN_BAD_ARGUMENT;
  if (duty == nullptr) return TAVDN_DUTY_RECORD;
  return tavdn_select_many(catalogue, 1, duty, room, hits, fitting, reasons, 1, nullptr);
}
