#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>
#include <system_error>

#include "files.h"

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

bool same_file(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

Place::Place(const fs::path& file) {
  fs::path target = file;
  for (int i = 0; i < kMostLinks && fs::is_symlink(target); ++i) {
    target = target.parent_path() / fs::read_symlink(target);
  }
  name_ = target.filename();
  folder_ = fs::canonical(target.parent_path());
  if (folder_.native().size() <= kLongestFolder) return;
  auto folder = std::make_shared<Descriptor>(open(folder_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (folder->number() < 0) fail();
  folder_ = "/proc/self/fd/" + std::to_string(folder->number());
  open_folder_ = folder;
}

// Owned is what is locked. Between making it and locking it somebody may have taken it for one that is not.
std::shared_ptr<void> make_owned(const fs::path& file) {
  constexpr mode_t kPermissions = 0644;  // as SQLite makes databases
  const auto made =
      std::make_shared<Descriptor>(open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kPermissions));
  if (made->number() < 0) {
    if (errno == EEXIST) return nullptr;
    fail();
  }
  struct stat ours {};
  struct stat named {};
  const bool owned = flock(made->number(), LOCK_EX | LOCK_NB) == 0 && fstat(made->number(), &ours) == 0 &&
                     lstat(file.c_str(), &named) == 0 && same_file(ours, named);
  return owned ? made : nullptr;
}

void remove_unowned(const fs::path& file) noexcept try {
  const Descriptor found(open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (found.number() < 0 || fstat(found.number(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (flock(found.number(), LOCK_EX | LOCK_NB) != 0) return;
  unlink((file.native() + kJournal).c_str());
  unlink(file.c_str());
} catch (...) {
  // Without memory for a name it stays.
}

}  // namespace tavdsrv
