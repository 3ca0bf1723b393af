// More points than 31 bits count, without the memory for them: the flows are pages of zeros but for the last,
// and the results lie in one chunk of memory that is mapped over and over, but for the last as well.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>

#include "support/products.h"
#include "tavd/tavdn.h"

namespace {

constexpr std::size_t kChunk = std::size_t{16} << 20;  // bytes
constexpr std::size_t kPoints = (std::size_t{1} << 31) + kChunk / sizeof(float);
constexpr std::size_t kBytes = kPoints * sizeof(float);
constexpr std::size_t kLast = kChunk / sizeof(float);  // points of the last chunk

// Address space that is not backed by memory before it is written to.
class Space {
 public:
  Space()
      : start_(mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1,
                    0)) {}
  ~Space() {
    if (there()) munmap(start_, kBytes);
  }
  Space(const Space&) = delete;
  Space& operator=(const Space&) = delete;

  bool there() const { return start_ != MAP_FAILED; }
  float* floats() const { return static_cast<float*>(start_); }

  // All chunks but the last become one.
  bool fold() const {
    const int file = memfd_create("chunk", 0);
    bool mapped = file >= 0 && ftruncate(file, kChunk) == 0;
    for (std::size_t at = 0; mapped && at + kChunk < kBytes; at += kChunk) {
      void* const place = static_cast<char*>(start_) + at;
      mapped = mmap(place, kChunk, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) != MAP_FAILED;
    }
    if (file >= 0) close(file);
    return mapped;
  }

 private:
  void* start_;
};

TEST(ManyPointsAtOnce, MoreThan31BitsCount) {
  const char* const points = std::getenv("TAVD_COMPARE_POINTS");
  if (points == nullptr || std::atol(points) < 1'000'000)
    GTEST_SKIP() << "TAVD_COMPARE_POINTS is below a million";
  const Space qv;
  const Space pressures;
  if (!qv.there() || !pressures.there() || !pressures.fold())
    GTEST_SKIP() << "no address space for 2^31 points";
  float* const last_qv = qv.floats() + (kPoints - kLast);
  for (std::size_t i = 0; i < kLast; i += kLast / 64) last_qv[i] = static_cast<float>(i % 1000);
  last_qv[kLast - 1] = 200;

  const FlowData fd = tavdtest::resistance_product(100, 50);
  tavdn_product* product = nullptr;
  ASSERT_EQ(tavdn_prepare(&fd, nullptr, &product), 0);
  tavdn_results out{};
  out.size = sizeof out;
  out.dp_min = pressures.floats();
  ASSERT_EQ(tavdn_calculate(product, kPoints, qv.floats(), nullptr, 4.0F, &out), 0);
  tavdn_release(product);

  const float* const last = pressures.floats() + (kPoints - kLast);
  for (std::size_t i = 0; i < kLast; ++i) {
    ASSERT_EQ(last[i], tavca_dptotmin(&fd, last_qv[i])) << i;
  }
  EXPECT_EQ(last[kLast - 1], 200.0F);
}

}  // namespace
