// Watches every test of a program: what it took from the service it must have given back at its end.
#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

using Counter = long (*)();

class OpenHandleCheck : public testing::EmptyTestEventListener {
 public:
  explicit OpenHandleCheck(Counter open_handles) : open_handles_(open_handles) {}

 private:
  void OnTestStart(const testing::TestInfo&) override { before_ = open_handles_(); }
  void OnTestEnd(const testing::TestInfo&) override {
    EXPECT_EQ(open_handles_() - before_, 0)
        << "records, attribute blocks and ahm blocks that were not released";
  }

  Counter open_handles_;
  long before_ = 0;
};

// Only the service in memory has this function.
[[maybe_unused]] const bool watching = [] {
  const auto open_handles = reinterpret_cast<Counter>(dlsym(RTLD_DEFAULT, "memory_service_open_handles"));
  if (open_handles == nullptr) return false;
  testing::UnitTest::GetInstance()->listeners().Append(new OpenHandleCheck(open_handles));
  return true;
}();

}  // namespace
