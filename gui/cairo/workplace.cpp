#include "gui/cairo/workplace.h"

#include <sched.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

namespace tavdcairo {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kProcessors = 256;            // those of larger machines share
constexpr std::size_t kMostKept = 4 << 20;          // bytes: a processor's cached memory is hardly more
constexpr std::chrono::milliseconds kPatience{10};  // since the other picture began; one takes half of one
constexpr int kMostYields = 100;                    // more threads than that seldom share a processor

// What is known of a processor. The first two are hints: read and written each by itself, they may tell of
// two different pictures. Processors do not share a line of their caches.
struct alignas(64) Processor {
  std::atomic<const char*> thread = nullptr;  // whose picture is in progress; null: none
  std::atomic<Clock::rep> begun = 0;          // when that began
  std::atomic<PixelMemory*> kept = nullptr;   // owned

  ~Processor() { delete kept.exchange(nullptr); }
};

std::array<Processor, kProcessors> processors;

thread_local char this_thread;  // its address tells threads apart

std::size_t this_processor() {
  return static_cast<unsigned>(sched_getcpu()) % kProcessors;
}

bool another_is_drawing(const Processor& processor) {
  const char* const thread = processor.thread.load(std::memory_order_relaxed);
  if (thread == nullptr || thread == &this_thread) {
    return false;
  }
  const Clock::time_point begun{Clock::duration(processor.begun.load(std::memory_order_relaxed))};
  return Clock::now() - begun < kPatience;
}

// The processor that the thread is on once it has yielded there, which may be another one after each yield.
std::size_t yield_to_others() {
  std::size_t processor = this_processor();
  for (int i = 0; i < kMostYields && another_is_drawing(processors[processor]); ++i) {
    std::this_thread::yield();
    processor = this_processor();
  }
  return processor;
}

// What is kept at the processor, if it is of that size, or new memory.
std::unique_ptr<PixelMemory> take_memory(Processor& processor, std::size_t size) {
  std::unique_ptr<PixelMemory> memory(processor.kept.exchange(nullptr, std::memory_order_acq_rel));
  if (memory != nullptr && memory->size == size) {
    return memory;
  }
  memory.reset();  // before there is other memory
  return std::make_unique<PixelMemory>(
      PixelMemory{std::make_unique_for_overwrite<unsigned char[]>(size), size});
}

void keep_memory(Processor& processor, std::unique_ptr<PixelMemory> memory) {
  if (memory->size <= kMostKept) {
    memory.reset(processor.kept.exchange(memory.release(), std::memory_order_acq_rel));
  }
}

}  // namespace

Workplace::Turn::Turn() : processor(yield_to_others()), thread(&this_thread) {
  Processor& own = processors[processor];
  own.thread.store(thread, std::memory_order_relaxed);
  own.begun.store(Clock::now().time_since_epoch().count(), std::memory_order_relaxed);
}

Workplace::Turn::~Turn() {
  processors[processor].thread.compare_exchange_strong(thread, nullptr, std::memory_order_relaxed);
}

Workplace::Workplace(std::size_t size) : memory_(take_memory(processors[turn_.processor], size)) {}

Workplace::~Workplace() {
  keep_memory(processors[turn_.processor], std::move(memory_));
}

}  // namespace tavdcairo
