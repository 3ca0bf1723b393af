// Drafts by descriptors of folders, so that a long path is no longer for its draft, and by flock(): a lock of
// that kind is the open file's own, ends with the process, and does not meet those that SQLite sets.
#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <system_error>
#include <utility>
#include <vector>

#include "drafts/drafts.h"
#include "drafts/naming.h"

namespace drafts {

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;   // as the kernel follows
constexpr int kMostNames = 100;  // tried before giving up
constexpr mode_t kPermissions = 0777;
constexpr mode_t kGroupPermissions = 0070;
constexpr const char* kJournal = "-journal";  // what SQLite may have left beside a database

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_ = -1;
};

std::string error_text(int error) {
  return std::strerror(error);
}

// Where a target lies, after its links.
struct Place {
  int folder() const { return folder_descriptor ? folder_descriptor.get() : AT_FDCWD; }

  Descriptor folder_descriptor;
  fs::path folder_path;
  std::string name;
  bool is_open_file = false;  // /dev/stdout and the like: the name of what a process has open
  std::string reason;         // why there is no such place; empty: there is
};

bool is_of_processes(int folder) {
  struct statfs system {};
  return fstatfs(folder, &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

// Goes into the folder that a path names and keeps its last name.
bool enter(Place& place, const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
  place.name = slash == std::string::npos ? path : path.substr(slash + 1);
  if (!folder.empty() || !place.folder_descriptor) {
    const char* const named = folder.empty() ? "." : folder.c_str();
    Descriptor entered(openat(place.folder(), named, O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!entered) place.reason = error_text(errno);
    place.folder_descriptor = std::move(entered);
    place.folder_path /= folder;
  }
  if (place.reason.empty() && (place.name.empty() || place.name == "." || place.name == "..")) {
    place.reason = error_text(EISDIR);
  }
  return place.reason.empty();
}

Place locate(const fs::path& target) {
  Place place;
  std::string path = target.native();
  for (int links = 0; links <= kMostLinks && enter(place, path); ++links) {
    std::array<char, PATH_MAX> text;
    const ssize_t length = readlinkat(place.folder(), place.name.c_str(), text.data(), text.size());
    if (length < 0) {
      const bool may_be_a_target = errno == EINVAL || errno == ENOENT;
      if (!may_be_a_target) place.reason = error_text(errno);
      return place;
    }
    // The text of such a link need not be a path.
    place.is_open_file = is_of_processes(place.folder());
    if (place.is_open_file) return place;
    path.assign(text.data(), static_cast<std::size_t>(length));
  }
  if (place.reason.empty()) place.reason = error_text(ELOOP);
  return place;
}

enum class Kind { kNew, kFile, kStream, kOther };

// What stands at a place; kOther with the reason why nothing can be written there.
Kind kind_of(Place& place, struct stat& status) {
  const int flags = place.is_open_file ? 0 : AT_SYMLINK_NOFOLLOW;
  if (fstatat(place.folder(), place.name.c_str(), &status, flags) != 0) {
    if (errno == ENOENT && !place.is_open_file) return Kind::kNew;
    place.reason = error_text(errno);
    return Kind::kOther;
  }
  if (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)) return Kind::kStream;
  if (S_ISREG(status.st_mode)) return place.is_open_file ? Kind::kStream : Kind::kFile;
  place.reason = S_ISDIR(status.st_mode)   ? error_text(EISDIR)
                 : S_ISBLK(status.st_mode) ? "it is a block device, expected a file"
                                           : "it is a socket, expected a file";
  return Kind::kOther;
}

std::uint64_t random_number() {
  std::uint64_t number = 0;
  if (getrandom(&number, sizeof number, 0) == sizeof number) return number;
  timespec now{};  // enough: a name that is taken is tried again
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<std::uint64_t>(getpid()) << 32 ^ static_cast<std::uint64_t>(now.tv_nsec);
}

bool is_still_named(int descriptor, int folder, const std::string& name) {
  struct stat open {};
  struct stat named {};
  return fstat(descriptor, &open) == 0 && fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// Takes a new draft for this process. False if another has found it before it was locked, and clears it.
// Where the file system has no locks nobody gets one, and nothing is cleared.
bool own(int descriptor, int folder, const std::string& name) {
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  return is_still_named(descriptor, folder, name);
}

// ---- Clearing --------------------------------------------------------------

// Names in a folder; none if it cannot be read.
std::vector<std::string> names_in(int folder) {
  std::vector<std::string> names;
  const int readable = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* const listing = readable >= 0 ? fdopendir(readable) : nullptr;
  if (listing == nullptr) {
    if (readable >= 0) ::close(readable);
    return names;
  }
  while (const dirent* entry = readdir(listing)) names.emplace_back(entry->d_name);
  closedir(listing);
  return names;
}

void remove_file(int folder, const std::string& name) {
  struct stat status {};
  const bool is_file =
      fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode);
  if (is_file) unlinkat(folder, name.c_str(), 0);
}

// The files in it and the folder itself; if it holds anything else it stays.
void remove_folder(int descriptor, int parent, const std::string& name) {
  for (const std::string& file : names_in(descriptor)) remove_file(descriptor, file);
  unlinkat(parent, name.c_str(), AT_REMOVEDIR);
}

// Removes a draft unless somebody owns it.
void clear_draft(int folder, const std::string& name) {
  struct stat status {};
  if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return;
  if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) return;
  const Descriptor draft(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!draft || flock(draft.get(), LOCK_EX | LOCK_NB) != 0) return;
  if (!is_still_named(draft.get(), folder, name)) return;
  if (S_ISDIR(status.st_mode)) {
    remove_folder(draft.get(), folder, name);
    return;
  }
  remove_file(folder, name + kJournal);  // first: without its database it would never be found again
  unlinkat(folder, name.c_str(), 0);
}

void clear_drafts(const Place& place) {
  for (const std::string& name : names_in(place.folder())) {
    if (is_draft_of(name, place.name)) clear_draft(place.folder(), name);
  }
}

// ---- Taking the target's place ---------------------------------------------

// Has a file take over owner and permissions of the one that it replaces. Where the group cannot be kept, its
// permissions are not given to another.
bool take_over(int folder, const std::string& name, const struct stat& former) {
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  struct stat own {};
  if (fstatat(folder, name.c_str(), &own, AT_SYMLINK_NOFOLLOW) != 0) return false;
  const auto give = [&](uid_t owner) {
    return fchownat(folder, name.c_str(), owner, former.st_gid, AT_SYMLINK_NOFOLLOW) == 0;
  };
  const bool is_same = own.st_uid == former.st_uid && own.st_gid == former.st_gid;
  const bool group_kept = is_same || give(former.st_uid) || own.st_gid == former.st_gid || give(kSameOwner);
  const mode_t permissions = former.st_mode & kPermissions;
  return fchmodat(folder, name.c_str(), group_kept ? permissions : permissions & ~kGroupPermissions, 0) == 0;
}

// Moves a file onto the place, which it may find empty or as a file.
bool put(int folder, const std::string& name, Place& place) {
  struct stat former {};
  const Kind kind = kind_of(place, former);
  if (kind == Kind::kOther) return false;
  if (kind == Kind::kStream) {
    place.reason = "it is a pipe or a device, expected a file";
    return false;
  }
  const bool good = (kind == Kind::kNew || take_over(folder, name, former)) &&
                    renameat(folder, name.c_str(), place.folder(), place.name.c_str()) == 0;
  if (!good) place.reason = error_text(errno);
  return good;
}

bool is_taken(const Place& place) {
  return faccessat(place.folder(), place.name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

// Moves a file to the place if nothing is there. Not every file system knows how to rename so, and some of
// those have no hard links either: there a file that comes to be at this very moment is replaced.
Added put_unless_taken(int folder, const std::string& name, Place& place) {
  const char* const from = name.c_str();
  const char* const to = place.name.c_str();
  bool done = renameat2(folder, from, place.folder(), to, RENAME_NOREPLACE) == 0;
  if (!done && (errno == EINVAL || errno == ENOSYS)) {
    done = linkat(folder, from, place.folder(), to, 0) == 0;
    if (done) unlinkat(folder, from, 0);
  }
  if (!done && (errno == EPERM || errno == EOPNOTSUPP) && !is_taken(place)) {
    done = renameat(folder, from, place.folder(), to) == 0;
  }
  const int error = errno;
  if (done) return Added::kDone;
  if (is_taken(place)) return Added::kTaken;
  place.reason = error_text(error);
  return Added::kFailed;
}

// ---- Making ----------------------------------------------------------------

struct Draft {
  Descriptor descriptor;
  std::string name;
};

// Makes a file, or with O_DIRECTORY among the flags a folder, that this process owns. None, and the reason,
// if that fails.
Draft make_draft(Place& place, int flags, mode_t mode) {
  const bool is_folder = (flags & O_DIRECTORY) != 0;
  const int folder = place.folder();
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name = draft_name(place.name, random_number());
    if (is_folder && mkdirat(folder, name.c_str(), mode) != 0) {
      if (errno == EEXIST) continue;
      break;
    }
    const int how = flags | O_NOFOLLOW | O_CLOEXEC | (is_folder ? 0 : O_CREAT | O_EXCL);
    Descriptor made(openat(folder, name.c_str(), how, mode));
    // Another process may clear it before it is locked.
    const bool may_try_again = made || errno == EEXIST || (is_folder && errno == ENOENT);
    if (!may_try_again) break;
    if (made && own(made.get(), folder, name)) return {std::move(made), name};
    errno = EEXIST;
  }
  place.reason = error_text(errno);
  return {};
}

}  // namespace

// ---- A file ----------------------------------------------------------------

class File::Writing {
 public:
  explicit Writing(const fs::path& target);
  ~Writing();
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

  bool write(std::string_view bytes);
  bool finish();
  const std::string& reason() const { return place_.reason; }

 private:
  void open_stream();
  bool failed(int error);
  Descriptor& descriptor() { return draft_.descriptor ? draft_.descriptor : stream_; }

  Place place_;
  Descriptor stream_;
  Draft draft_;  // without a name where there is none
};

File::Writing::Writing(const fs::path& target) : place_(locate(target)) {
  if (!place_.reason.empty()) return;
  struct stat status {};
  switch (kind_of(place_, status)) {
    case Kind::kNew:
    case Kind::kFile: {
      if (!lies_in_draft(target)) clear_drafts(place_);
      constexpr mode_t kOwnersOnly = 0600;  // until it is known who may read it
      constexpr mode_t kEveryones = 0666;   // as far as the process's mask lets
      draft_ = make_draft(place_, O_WRONLY, status.st_mode != 0 ? kOwnersOnly : kEveryones);
      break;
    }
    case Kind::kStream:
      open_stream();
      break;
    case Kind::kOther:
      break;
  }
}

void File::Writing::open_stream() {
  constexpr int kFlags = O_WRONLY | O_NOCTTY | O_TRUNC | O_CLOEXEC;  // truncates files only
  stream_ = Descriptor(openat(place_.folder(), place_.name.c_str(), kFlags));
  if (!stream_) failed(errno);
}

File::Writing::~Writing() {
  if (!draft_.name.empty()) unlinkat(place_.folder(), draft_.name.c_str(), 0);
}

bool File::Writing::failed(int error) {
  if (place_.reason.empty()) place_.reason = error_text(error);
  return false;
}

bool File::Writing::write(std::string_view bytes) {
  while (place_.reason.empty() && !bytes.empty()) {
    const ssize_t written = ::write(descriptor().get(), bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return failed(errno);
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return place_.reason.empty();
}

// The lock is held until the draft has its name. Some file systems report only at the end that a file could
// not be stored: a second descriptor keeps the lock over that.
bool File::Writing::finish() {
  if (!place_.reason.empty()) return false;
  const Descriptor lock(fcntl(descriptor().get(), F_DUPFD_CLOEXEC, 0));
  if (!descriptor().close()) return failed(errno);
  if (draft_.name.empty()) return true;
  if (!put(place_.folder(), draft_.name, place_)) return false;
  draft_.name.clear();
  return true;
}

File::File(const fs::path& target) : writing_(std::make_unique<Writing>(target)) {}
File::~File() = default;
bool File::write(std::string_view bytes) {
  return writing_->write(bytes);
}
bool File::finish() {
  return writing_->finish();
}
const std::string& File::reason() const {
  return writing_->reason();
}

// ---- A folder --------------------------------------------------------------

class Folder::Holding {
 public:
  Holding(const fs::path& target, Use use);
  ~Holding();
  Holding(const Holding&) = delete;
  Holding& operator=(const Holding&) = delete;

  const fs::path& path() const { return path_; }
  bool finish();
  const std::string& reason() const { return place_.reason; }

 private:
  void find_path();

  Place place_;
  Draft draft_;  // without a name where there is none
  fs::path path_;
};

Folder::Holding::Holding(const fs::path& target, Use use) : place_(locate(target)) {
  if (!place_.reason.empty()) return;
  clear_drafts(place_);
  constexpr mode_t kOwnersOnly = 0700;
  draft_ = make_draft(place_, O_RDONLY | O_DIRECTORY, use == Use::kPrivate ? kOwnersOnly : kPermissions);
  if (place_.reason.empty()) find_path();
}

// The names of the files in it come behind the path.
void Folder::Holding::find_path() {
  constexpr std::size_t kMostBytes = PATH_MAX - 1;
  path_ = place_.folder_path / draft_.name;
  std::error_code problem;
  if (fs::absolute(path_, problem).native().size() + 1 + NAME_MAX <= kMostBytes) return;
  path_ = "/proc/self/fd/" + std::to_string(draft_.descriptor.get());
}

Folder::Holding::~Holding() {
  if (!draft_.name.empty()) remove_folder(draft_.descriptor.get(), place_.folder(), draft_.name);
}

bool Folder::Holding::finish() {
  if (!place_.reason.empty()) return false;
  if (renameat(place_.folder(), draft_.name.c_str(), place_.folder(), place_.name.c_str()) != 0) {
    place_.reason = error_text(errno);
    return false;
  }
  draft_.name.clear();
  return true;
}

Folder::Folder(const fs::path& target, Use use) : holding_(std::make_unique<Holding>(target, use)) {}
Folder::~Folder() = default;
const fs::path& Folder::path() const {
  return holding_->path();
}
bool Folder::finish() {
  return holding_->finish();
}
const std::string& Folder::reason() const {
  return holding_->reason();
}

// ---- A file for others -----------------------------------------------------

class NewFile::Holding {
 public:
  explicit Holding(const fs::path& target);
  ~Holding();
  Holding(const Holding&) = delete;
  Holding& operator=(const Holding&) = delete;

  const fs::path& path() const { return path_; }
  Added add();
  const std::string& reason() const { return place_.reason; }

 private:
  Place place_;
  Draft draft_;  // without a name where there is none
  fs::path path_;
};

NewFile::Holding::Holding(const fs::path& target) : place_(locate(target)) {
  if (!place_.reason.empty()) return;
  if (!lies_in_draft(target)) clear_drafts(place_);
  constexpr mode_t kDatabases = 0644;  // as SQLite makes them
  draft_ = make_draft(place_, O_RDWR, kDatabases);
  if (place_.reason.empty()) path_ = place_.folder_path / draft_.name;
}

NewFile::Holding::~Holding() {
  if (draft_.name.empty()) return;
  remove_file(place_.folder(), draft_.name + kJournal);
  unlinkat(place_.folder(), draft_.name.c_str(), 0);
}

// Closed first: closing it later would drop the locks of another thread that finds the file under its new
// name and begins to work.
Added NewFile::Holding::add() {
  if (!place_.reason.empty()) return Added::kFailed;
  draft_.descriptor.close();
  const Added added = put_unless_taken(place_.folder(), draft_.name, place_);
  if (added == Added::kDone) draft_.name.clear();
  return added;
}

NewFile::NewFile(const fs::path& target) : holding_(std::make_unique<Holding>(target)) {}
NewFile::~NewFile() = default;
const fs::path& NewFile::path() const {
  return holding_->path();
}
Added NewFile::add() {
  return holding_->add();
}
const std::string& NewFile::reason() const {
  return holding_->reason();
}

// ---- Files that are there --------------------------------------------------

bool replace(const fs::path& file, const fs::path& target, std::string& reason) {
  Place place = locate(target);
  const bool good = place.reason.empty() && put(AT_FDCWD, file.native(), place);
  reason = place.reason;
  return good;
}

Added add(const fs::path& file, const fs::path& target, std::string& reason) {
  Place place = locate(target);
  const Added added =
      place.reason.empty() ? put_unless_taken(AT_FDCWD, file.native(), place) : Added::kFailed;
  reason = place.reason;
  return added;
}

void clear(const fs::path& target) {
  const Place place = locate(target);
  if (place.reason.empty() && !place.is_open_file) clear_drafts(place);
}

fs::path unused_name(const fs::path& target) {
  return target.parent_path() / draft_name(target.filename().native(), random_number());
}

}  // namespace drafts
