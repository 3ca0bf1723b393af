#include "base/parallel.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace tavdhost {
namespace {

class Numbers {
 public:
  Numbers(std::size_t count, const std::function<void(std::size_t)>& work) : end_(count), work_(work) {}

  // What each thread does.
  void work() {
    for (std::size_t number; take(number);) {
      try {
        work_(number);
      } catch (...) {
        fail(number);
      }
    }
  }

  void rethrow() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  bool take(std::size_t& number) {
    const std::lock_guard lock(mutex_);
    if (next_ >= end_) return false;
    number = next_++;
    return true;
  }
  void fail(std::size_t number) {
    const std::lock_guard lock(mutex_);
    if (failure_ && number > failed_) return;
    failure_ = std::current_exception();
    failed_ = number;
    end_ = 0;
  }

  std::mutex mutex_;
  std::size_t next_ = 0;
  std::size_t end_;
  std::exception_ptr failure_;
  std::size_t failed_ = 0;
  const std::function<void(std::size_t)>& work_;
};

// All threads but the one that is there. Where the system gives no more, those that it has given do the work.
std::vector<std::jthread> start(std::size_t threads, Numbers& numbers) {
  std::vector<std::jthread> others;
  try {
    for (std::size_t i = 1; i < threads; ++i) others.emplace_back([&numbers] { numbers.work(); });
  } catch (const std::system_error&) {
  }
  return others;
}

}  // namespace

unsigned threads_of_machine() {
  return std::max(std::thread::hardware_concurrency(), 1U);
}

void for_each_number(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work) {
  Numbers numbers(count, work);
  {
    const std::vector<std::jthread> others = start(std::min<std::size_t>(threads, count), numbers);
    numbers.work();
  }
  numbers.rethrow();
}

}  // namespace tavdhost
