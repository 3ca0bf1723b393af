// The same pixels are the same file wherever the writer's memory lies: a compressor whose choices hang on an
// address gives other bytes in one thread of many, seldom.
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "gui/cairo/png.h"

namespace {

// Hashes have 13 bits: among as many neighbouring places each of them comes up.
constexpr int kPlaces = 8192;
constexpr std::size_t kApart = 0x10000;  // bytes: lower bits of the address were never looked at
constexpr std::size_t kStack = (kPlaces + 512) * kApart;

// A line across white paper: nearly all rows are equal, and equal rows leave the compressor most choices.
struct Drawing {
  static constexpr int kSide = 64;
  std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(kSide * kSide, 0xFFFFFF);

  Drawing() {
    for (std::size_t x = 0; x < kSide; ++x) pixels[x * kSide + x] = 0;
  }
  std::string png() const {
    std::string bytes;
    const auto* const data = reinterpret_cast<const unsigned char*>(pixels.data());
    EXPECT_TRUE(tavdcairo::write_png({data, kSide * sizeof(std::uint32_t), kSide, kSide}, bytes));
    return bytes;
  }
};

// Gives back the memory of what was called from the frame of `room`, half a gigabyte in the end.
void forget_below(volatile unsigned char* room) {
  constexpr std::uintptr_t kPage = 0x1000, kInUse = 2 * kPage, kTouched = 4 * kApart;
  const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(room) - kInUse) & ~(kPage - 1);
  madvise(reinterpret_cast<void*>(end - kTouched), kTouched, MADV_DONTNEED);
}

// Calls `work` at `places` places of the stack, kApart from one another; answers how many there were.
int at_each_place(const std::function<void()>& work, int places) {
  volatile unsigned char room[kApart];
  room[0] = 1;  // read after the deeper calls, so that this frame stays below theirs
  work();
  forget_below(room);
  const int deeper = places > 1 ? at_each_place(work, places - 1) : 0;
  return deeper + room[0];
}

// Runs `work` in a thread with a stack of kStack bytes, of which little is in use at once.
void on_deep_stack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
  pthread_t thread;
  const auto run = [](void* called) -> void* {
    (*static_cast<std::function<void()>*>(called))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(Png, HasTheSameBytesWhereverItsWriterStandsInMemory) {
  const Drawing drawing;
  const std::string expected = drawing.png();
  int places = 0, others = 0;
  on_deep_stack([&] {
    const auto write = [&] {
      if (drawing.png() != expected) ++others;
    };
    places = at_each_place(write, kPlaces);
  });
  EXPECT_EQ(places, kPlaces);
  EXPECT_EQ(others, 0);
}

}  // namespace
