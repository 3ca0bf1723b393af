#include "base/progress.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/platform.h"

namespace tavdhost {
namespace {

constexpr std::chrono::milliseconds kQuietTime{300};  // work that is done by then shows nothing
constexpr std::chrono::milliseconds kInterval{100};
constexpr std::size_t kBarWidth = 30;

}  // namespace

Progress::Progress(std::string what, std::size_t total)
    : what_(std::move(what)),
      total_(total),
      on_terminal_(can_wipe_lines(Stream::kErrors)),
      next_(Clock::now() + kQuietTime) {}

Progress::~Progress() {
  if (!drawn_) return;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
}

void Progress::step(std::size_t steps) {
  done_ += steps;
  if (!on_terminal_ || Clock::now() < next_) return;
  draw();
  next_ = Clock::now() + kInterval;
}

void Progress::draw() {
  drawn_ = true;
  if (total_ == 0) {
    std::fprintf(stderr, "\r%s %zu\x1b[K", what_.c_str(), done_);
  } else {
    const std::size_t filled = std::min(done_, total_) * kBarWidth / total_;
    const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, '.');
    std::fprintf(stderr, "\r%s [%s] %zu of %zu\x1b[K", what_.c_str(), bar.c_str(), done_, total_);
  }
  std::fflush(stderr);
}

}  // namespace tavdhost
