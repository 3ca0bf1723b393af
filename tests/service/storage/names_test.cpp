// Long names and paths of databases, and the drafts under which new ones are made.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>

#include "foreign.h"
#include "system_calls.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

constexpr std::size_t kLongestName = 247;  // that leaves room for "-journal"

class Names : public Foreign {
 protected:
  // Makes it, saves, reads as another process would, saves a group: everything that needs a name beside its
  // own.
  void expect_works(const std::string& path) {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kCreate);
    ASSERT_GT(db, 0) << path.size() << ": " << tavdsrv_lasterror();
    Record("ASD", "A").text(1503, "a").save(db);
    ASSERT_STREQ(tavdsrv_lasterror(), "");
    ASSERT_EQ(tavdsrv_begin(db), 0);
    Record("ASD", "B").text(1503, "b").save(db);
    ASSERT_EQ(tavdsrv_commit(db), 0) << tavdsrv_lasterror();
    tavdsrv_closedatabase(db);
    const std::int16_t again = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
    ASSERT_GT(again, 0) << path.size() << ": " << tavdsrv_lasterror();
    EXPECT_EQ(stored_text(again, "ASD", "B", 1503), "b");
    tavdsrv_closedatabase(again);
  }

  // A path of that many bytes, in folders that are made.
  std::string path_of_length(std::size_t length) {
    std::string path = folder.path().string();
    while (length - path.size() > 210) {
      path += "/" + std::string(199, 'f');
      fs::create_directory(path);
    }
    return path + "/" + std::string(length - path.size() - 1, 'n');
  }
};

class Drafts : public Foreign {
 protected:
  // What a killed maker leaves.
  fs::path leave(const std::string& name) {
    const fs::path path = folder / name;
    write_file(path, "half");
    write_file(path.string() + "-journal", "half");
    return path;
  }
  void make(const char* name) {
    const std::int16_t db = tavbopendatabase(nullptr, (folder / name).c_str(), kCreate);
    EXPECT_GT(db, 0) << tavdsrv_lasterror();
    tavdsrv_closedatabase(db);
  }
  std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const auto& [name, contents] : folder.snapshot()) all.push_back(name);
    return all;
  }
};

ssize_t die_at_write(int, const void*, std::size_t, off_t) {
  raise(SIGKILL);
  return -1;
}

ssize_t refuse_write(int, const void*, std::size_t, off_t) {
  errno = ENOSPC;
  return -1;
}

}  // namespace

TEST_F(Names, NameThatLeavesRoomForItsJournalWorks) {
  for (const std::size_t length : {200, 232, 233, 246, 247}) expect_works(folder / std::string(length, 'n'));
}

TEST_F(Names, LongerNamesAreRefusedWithTheLimit) {
  for (const std::size_t length : {kLongestName + 1, std::size_t{NAME_MAX}, std::size_t{NAME_MAX} + 1}) {
    const std::string path = folder / std::string(length, 'n');
    EXPECT_EQ(tavbopendatabase(nullptr, path.c_str(), kCreate), -1);
    EXPECT_EQ(
        tavdsrv_lasterror(),
        path + ": a database's file name may have at most 247 bytes, this one has " + std::to_string(length));
  }
  EXPECT_TRUE(folder.snapshot().empty());
}

TEST_F(Names, DatabaseThatWasGivenALongerNameIsRead) {
  const fs::path path = folder / std::string(NAME_MAX, 'n');
  fs::rename(make_database(), path);
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
  EXPECT_EQ(found(db, "ASD", "PIPE-7", kExact), "ASD:PIPE-7");
  tavdsrv_closedatabase(db);
}

TEST_F(Names, PathsOfAllLengthsWork) {
  for (const std::size_t length : {480, 490, 500, 512, 513, 700, 2000, 4094, 4095}) {
    expect_works(path_of_length(length));
  }
}

TEST_F(Names, LongerPathsAreRefusedWithTheLimit) {
  std::string path = path_of_length(4095);
  path += "n";
  for (const std::int32_t mode : {kOpenExisting, kCreate}) {
    EXPECT_EQ(tavbopendatabase(nullptr, path.c_str(), mode), -1);
    EXPECT_EQ(tavdsrv_lasterror(), path + ": a path may have at most 4095 bytes, this one has 4096");
  }
}

TEST_F(Names, KilledGroupBehindALongPathIsUndone) {
  const std::string path = path_of_length(3000);
  expect_works(path);
  const pid_t child = fork();
  if (child == 0) {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
    tavdsrv_begin(db);
    for (int i = 0; i < 500; ++i)
      Record("AAA", std::to_string(i).c_str()).text(1503, std::string(30000, 'n')).save(db);
    raise(SIGKILL);
  }
  waitpid(child, nullptr, 0);
  ASSERT_TRUE(fs::exists(fs::path(path).parent_path() / (fs::path(path).filename().string() + "-journal")));
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
  EXPECT_EQ(found(db, "", "", kAtOrAfter), "ASD:A");
  tavdsrv_closedatabase(db);
}

TEST_F(Names, LinkToADatabaseStaysOne) {
  const fs::path path = make_database();
  fs::create_directory(folder / "sub");
  const fs::path link = folder.path() / "sub" / "link";
  fs::create_symlink("../good.tavdb", link);
  expect_works(link);
  EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(Names, LinkThatPointsNowhereGetsItsDatabase) {
  fs::create_directory(folder / "sub");
  const fs::path link = folder.path() / "sub" / "link";
  fs::create_symlink("../new.tavdb", link);
  expect_works(link);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_TRUE(fs::is_regular_file(folder / "new.tavdb"));
}

TEST_F(Drafts, FailureDoesNotTellTheDraftsName) {
  const SystemCall fault("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(refuse_write));
  const std::string path = folder / "new.tavdb";
  EXPECT_EQ(tavbopendatabase(nullptr, path.c_str(), kCreate), -1);
  EXPECT_EQ(tavdsrv_lasterror(), path + ": database or disk is full");
  EXPECT_TRUE(names().empty());
}

TEST_F(Drafts, KilledMakersLeaveNothingOnceTheDatabaseIsMade) {
  for (int i = 0; i < 3; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      const SystemCall fault("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(die_at_write));
      tavbopendatabase(nullptr, (folder / "new.tavdb").c_str(), kCreate);
      _exit(0);
    }
    waitpid(child, nullptr, 0);
  }
  ASSERT_FALSE(names().empty()) << "the makers were not killed in the middle";
  make("new.tavdb");
  EXPECT_THAT(names(), testing::ElementsAre("new.tavdb"));
}

TEST_F(Drafts, OfOtherFilesAndOtherNamesStay) {
  leave(".other.tavdb.0123456789abcdef.tavd-new");
  leave(".new.tavdb.0123456789abcdeg.tavd-new");
  leave(".new.tavdb.0123456789abcdef.tavd-newer");
  leave("new.tavdb.0123456789abcdef.tavd-new");
  fs::create_directories(folder / ".new.tavdb.1123456789abcdef.tavd-new" / "folder");
  write_file(folder / "kept", "kept");
  fs::create_symlink("kept", folder / ".new.tavdb.2123456789abcdef.tavd-new");
  const std::size_t before = names().size();
  leave(".new.tavdb.0123456789abcdef.tavd-new");
  make("new.tavdb");
  EXPECT_EQ(names().size(), before + 1);
  EXPECT_EQ(read_file(folder / "kept"), "kept");
}

TEST_F(Drafts, FolderThatAKilledProgramHasLeftIsCleared) {
  const fs::path draft = folder / ".new.tavdb.0123456789abcdef.tavd-new";
  fs::create_directory(draft);
  write_file(draft / "new.tavdb", "half");
  make("new.tavdb");
  EXPECT_THAT(names(), testing::ElementsAre("new.tavdb"));
}

TEST_F(Drafts, OfALivingMakerStays) {
  const fs::path draft = leave(".new.tavdb.0123456789abcdef.tavd-new");
  const int owner = open(draft.c_str(), O_RDONLY);
  ASSERT_EQ(flock(owner, LOCK_EX), 0);
  make("new.tavdb");
  EXPECT_EQ(names().size(), 3U);
  close(owner);
  fs::remove(folder / "new.tavdb");
  make("new.tavdb");
  EXPECT_THAT(names(), testing::ElementsAre("new.tavdb"));
}

TEST_F(Drafts, LongNamesAreCutBetweenLetters) {
  // The 40th byte is the first of an "ä".
  const std::string name = std::string(39, 'n') + "\xC3\xA4\xC3\xA4.tavdb";
  leave("." + std::string(39, 'n') + ".0123456789abcdef.tavd-new");
  make(name.c_str());
  EXPECT_THAT(names(), testing::ElementsAre(name));
}
