// A disk that is full and a disk that cannot be written: every call answers, what was there stays there. On a
// small file system of its own where mounting one is permitted, and under a limit on the length of files.
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <set>

#include "stress.h"

namespace stress {

namespace {

namespace fs = std::filesystem;

constexpr const char* kClass = "ASD";
constexpr int kKept = 20;
constexpr std::size_t kBytes = 2000;
constexpr std::size_t kLargeBytes = 200'000;
constexpr int kMore = 100'000;  // records that surely do not fit

// A place, and how it comes to have little room for the database, none for another one, and enough again.
struct Disk {
  fs::path folder;
  std::function<void(const fs::path& database)> take_room;
  std::function<void()> take_all_room;
  std::function<void()> give_room;
};

std::string id_of(const char* prefix, int index) {
  return prefix + std::to_string(index);
}

std::set<std::string> names_in(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

bool saves(std::int16_t db, const std::string& id, int generation, std::size_t bytes) {
  return Record(kClass, id, generation, bytes).save(db);
}

void expect_kept(std::int16_t db) {
  for (int i = 0; i < kKept; ++i) {
    expect(stored_generation(db, kClass, id_of("KEPT", i)) == 1, "a record from before is lost or changed");
  }
}

// Saves until the disk is full. Answers how many records were saved.
int fill(std::int16_t db, std::size_t bytes) {
  for (int i = 0; i < kMore; ++i) {
    if (!saves(db, id_of("MORE", i), 1, bytes)) return i;
  }
  throw Failed("the disk does not get full");
}

void expect_more(std::int16_t db, int count) {
  for (int i = 0; i < count; ++i) {
    expect(stored_generation(db, kClass, id_of("MORE", i)) == 1, "a record that was saved is lost");
  }
  expect(stored_generation(db, kClass, id_of("MORE", count)) == kAbsent,
         "a record that was not saved is there");
}

void change_on_full_disk(std::int16_t db) {
  expect(!saves(db, "KEPT0", 2, kLargeBytes), "a large record was saved on a full disk");
  expect_kept(db);

  expect(tavdsrv_begin(db) == 0, "beginning a group on a full disk");
  std::string reason;
  for (int i = 0; i < kKept; ++i) {
    if (!saves(db, id_of("KEPT", i), 3, kLargeBytes) && reason.empty()) reason = tavdsrv_lasterror();
  }
  const bool committed = tavdsrv_commit(db) == 0;
  expect(!committed, "a group that does not fit was committed");
  expect(std::string(tavdsrv_lasterror()).starts_with(reason), "a commit tells not the first reason");
  expect_kept(db);
}

// Deleting takes room for the journal, and may or may not get it: what it says must be true.
void delete_on_full_disk(std::int16_t db) {
  tavbdeleterec(db, kClass, "MORE0");
  const bool deleted = *tavdsrv_lasterror() == '\0';
  const bool there = stored_generation(db, kClass, "MORE0") != kAbsent;
  expect(deleted != there, "deleting says one thing and does another");
  if (deleted) expect(saves(db, "MORE0", 1, kBytes), "a record does not fit in the place of one of its size");
}

void make_on_full_disk(const Scale& scale, const Disk& disk) {
  const auto before = names_in(disk.folder);
  const fs::path made = disk.folder / "new.tavdb";
  expect(tavbopendatabase(nullptr, made.c_str(), 1) == -1, "a database was made on a full disk");
  expect(*tavdsrv_lasterror() != '\0', "nothing tells why a database was not made");
  expect(run_tavd(scale, {"db", "synth", made.string(), "--records", "5000"}) == 2,
         "tavd db synth does not tell that the disk is full");
  if (names_in(disk.folder) != before) throw Failed("half-written files stay behind");
}

int fill_and_change(const Scale& scale, const Disk& disk) {
  const fs::path path = disk.folder / "full.tavdb";
  int count = 0;
  {
    const Opened database(path, 1);
    const std::int16_t db = database.handle();
    for (int i = 0; i < kKept; ++i) expect(saves(db, id_of("KEPT", i), 1, kBytes), "saving with room");
    disk.take_room(path);
    count = fill(db, kBytes);
    expect_kept(db);
    expect_more(db, count);
    change_on_full_disk(db);
    if (count > 0) delete_on_full_disk(db);
    expect_more(db, count);
  }
  expect_sound(path);
  disk.take_all_room();
  make_on_full_disk(scale, disk);
  disk.take_room(path);
  const Opened again(path);
  expect_kept(again.handle());
  expect_more(again.handle(), count);
  disk.give_room();
  expect(saves(again.handle(), "KEPT0", 1, kLargeBytes), "saving after room was made");
  expect_kept(again.handle());
  return count;
}

void set_longest_file(rlim_t bytes) {
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = bytes;
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throw Failed("cannot limit the length of files");
}

// No file may grow beyond a length.
void limited(const Scale& scale) {
  constexpr rlim_t kLittle = 100'000;
  constexpr rlim_t kNothing =
      10'000;  // shorter than an empty database, longer than the messages of a program
  const fs::path folder = scale.folder / "limited";
  fs::create_directory(folder);
  signal(SIGXFSZ, SIG_IGN);
  const Disk disk = {folder,
                     [](const fs::path& database) { set_longest_file(fs::file_size(database) + kLittle); },
                     [] { set_longest_file(kNothing); }, [] { set_longest_file(RLIM_INFINITY); }};
  const int count = fill_and_change(scale, disk);
  std::printf("limit on files: failed after %d records more, lost nothing\n", count);
}

// A file system of 1 MB that only this process sees.
bool mount_small(const fs::path& at) {
  return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("tmpfs", at.c_str(), "tmpfs", 0, "size=1m") == 0;
}

void full(const Scale& scale, const fs::path& folder) {
  const fs::path filler = folder / "filler";
  const auto leave = [&](std::uintmax_t room) {
    fs::remove(filler);
    const std::uintmax_t free = fs::space(folder).available;
    std::ofstream(filler) << std::string(free > room ? free - room : 0, 'x');
  };
  const Disk disk = {folder, [&](const fs::path&) { leave(200'000); }, [&] { leave(0); },
                     [&] { fs::remove(filler); }};
  const int count = fill_and_change(scale, disk);
  std::printf("full file system: failed after %d records more, lost nothing\n", count);
}

// A writer dies in the middle of a large change; then the disk can no longer be written, so nobody can roll
// the change back.
void die_in_a_group(const fs::path& path) {
  const pid_t writer = start([&] {
    const Opened database(path);
    expect(tavdsrv_begin(database.handle()) == 0, "beginning a group");
    for (int i = 0; i < kKept; ++i) saves(database.handle(), id_of("KEPT", i), 2, kBytes);
    for (int i = 0; i < 60; ++i) saves(database.handle(), id_of("MORE", i), 2, kLargeBytes);
    raise(SIGKILL);
  });
  int status = 0;
  waitpid(writer, &status, 0);
  expect(fs::exists(path.string() + "-journal"), "the writer left no journal");
}

void read_only(const Scale& scale, const fs::path& folder) {
  const fs::path path = folder / "kept.tavdb", torn = folder / "torn.tavdb";
  if (mount("tmpfs", folder.c_str(), "tmpfs", MS_REMOUNT, "size=64m") != 0) throw Failed("cannot remount");
  for (const fs::path& each : {path, torn}) {
    const Opened database(each, 1);
    for (int i = 0; i < kKept; ++i) expect(saves(database.handle(), id_of("KEPT", i), 1, kBytes), "saving");
  }
  die_in_a_group(torn);
  if (mount("tmpfs", folder.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "size=64m") != 0) {
    throw Failed("cannot remount for reading");
  }
  {
    const Opened database(path);
    expect(!saves(database.handle(), "KEPT0", 2, kBytes), "saved on a disk that cannot be written");
    tavbdeleterec(database.handle(), kClass, "KEPT1");
    expect(*tavdsrv_lasterror() != '\0', "deleted on a disk that cannot be written");
    expect_kept(database.handle());
  }
  expect_sound(path);
  make_on_full_disk(scale, {folder, {}, {}, {}});
  const std::int16_t db = tavbopendatabase(nullptr, torn.c_str(), 0);
  if (db > 0) expect_kept(db);
  std::printf(
      "file system that cannot be written: reads, refuses to save; a change that nobody can roll back %s\n",
      db > 0 ? "is not seen" : "keeps its file from being opened");
}

void on_small_file_system(const Scale& scale) {
  const fs::path folder = scale.folder / "small";
  fs::create_directory(folder);
  if (!mount_small(folder)) {
    std::printf("mounting is not permitted here: full and read-only file systems are left out\n");
    return;
  }
  full(scale, folder);
  read_only(scale, folder);
}

}  // namespace

void full_disk(const Scale& scale) {
  finish(start([&] { limited(scale); }));
  finish(start([&] { on_small_file_system(scale); }));
}

}  // namespace stress
