#include "gui/cairo/thread_number.h"

#include <atomic>
#include <bit>
#include <cstdint>

namespace tavdcairo {

namespace {

// A bit for each number that a thread has. Nothing of it is destroyed, so that threads may end after the
// library's own objects.
constinit std::atomic<std::uint64_t> taken = 0;

class ThreadNumber {
 public:
  ThreadNumber() {
    std::uint64_t before = taken;
    do {
      value_ = std::countr_one(before);
    } while (value_ < kShared && !taken.compare_exchange_weak(before, before | bit()));
  }
  ~ThreadNumber() {
    if (value_ < kShared) taken &= ~bit();
  }
  ThreadNumber(const ThreadNumber&) = delete;
  ThreadNumber& operator=(const ThreadNumber&) = delete;

  int value() const { return value_; }

 private:
  static constexpr int kShared = kThreadNumbers - 1;

  std::uint64_t bit() const { return std::uint64_t{1} << value_; }

  int value_;
};

}  // namespace

int thread_number() {
  static thread_local const ThreadNumber number;
  return number.value();
}

}  // namespace tavdcairo
