// Where a database lies on a Unix: long paths become short ones through an open folder.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>
#include <system_error>

#include "service/sqlite/files.h"

namespace tavdsrv {

const std::size_t kLongestName = NAME_MAX;
const std::size_t kLongestPath = PATH_MAX - 1;

namespace {

namespace fs = std::filesystem;

// SQLite's buffers for a path take 512 bytes, some of them without looking. So much is left for a folder.
constexpr std::size_t kLongestFolder = 512 - NAME_MAX - 2;

constexpr int kMostLinks = 40;  // as the kernel follows

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

[[noreturn]] void fail() {
  throw std::system_error(errno, std::generic_category());
}

}  // namespace

Place::Place(const fs::path& file) {
  fs::path target = file;
  for (int i = 0; i < kMostLinks && fs::is_symlink(target); ++i) {
    target = target.parent_path() / fs::read_symlink(target);
  }
  name_ = target.filename();
  std::error_code problem;
  folder_ = fs::canonical(target.parent_path(), problem);
  if (problem && problem != std::errc::filename_too_long) throw std::system_error(problem);
  if (!problem && folder_.native().size() <= kLongestFolder) return;
  auto folder =
      std::make_shared<Descriptor>(open(target.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (folder->number() < 0) fail();
  folder_ = "/proc/self/fd/" + std::to_string(folder->number());
  open_folder_ = folder;
}

}  // namespace tavdsrv
