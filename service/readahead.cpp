#include "service/readahead.h"

#include <algorithm>

namespace tavdsrv {

namespace {

constexpr std::size_t kMostAhead = 256 * std::size_t{1024};  // bytes
constexpr std::size_t kPartOfWalk = 4;  // read ahead is at most one record for so many that were met

}  // namespace

std::unique_ptr<Record> ReadAhead::take_after(const Key& key, Store& store) {
  if (next_ == rows_.size() || key != last_ || !still_true(store)) return nullptr;
  const std::size_t begin = next_ == 0 ? 0 : rows_[next_ - 1].end;
  const Row& row = rows_[next_++];
  last_ = row.key;
  ++met_;
  return std::make_unique<Record>(row.key, Bytes(bodies_).subspan(begin, row.end - begin));
}

std::size_t ReadAhead::wanted_after(const Key& key, const Store& store) const {
  const std::size_t met = met_until(key);
  return std::max((met + 1) / kPartOfWalk, met > 0 ? store.least_ahead() : 0);
}

void ReadAhead::step(const Key& from, const Key& to) {
  const std::size_t met = met_until(from) + 1;
  forget();
  last_ = to;
  met_ = met;
}

bool ReadAhead::keep(const Key& key, Bytes body, Store& store) {
  if (rows_.empty()) {
    checked_ = Clock::now();
    state_ = store.state_of_walk();
  }
  if (!state_.has_value() || bodies_.size() + body.size() > kMostAhead) return false;
  bodies_.insert(bodies_.end(), body.begin(), body.end());
  rows_.push_back({key, bodies_.size()});
  return true;
}

bool ReadAhead::still_true(Store& store) {
  const auto now = Clock::now();
  if (now - checked_ < store.trusted()) return true;
  checked_ = now;
  return store.state() == state_;
}

void ReadAhead::forget() {
  rows_.clear();
  bodies_.clear();
  next_ = 0;
  state_.reset();
  last_.reset();
  met_ = 0;
}

}  // namespace tavdsrv
