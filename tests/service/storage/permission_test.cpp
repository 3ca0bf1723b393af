// Files and folders without permission to write. Root may write everywhere, so the tests become another user.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <functional>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

constexpr uid_t kNobody = 65534;

// Runs `steps` in a child that is no root; true if it returned true there.
bool as_ordinary_user(const std::function<bool()>& steps) {
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && (setegid(kNobody) != 0 || seteuid(kNobody) != 0)) _exit(3);
    _exit(steps() ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

class ReadOnly : public testing::Test {
 protected:
  void SetUp() override {
    fs::permissions(folder.path(), fs::perms::all);
    path = (folder / "db.tavdb").string();
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 1);
    Record("ASD", "A").text(1503, "kept").save(db);
    tavdsrv_closedatabase(db);
    fs::permissions(path, fs::perms::owner_all | fs::perms::group_all | fs::perms::others_all);
    if (geteuid() == 0) {
      ASSERT_EQ(chown(path.c_str(), kNobody, kNobody), 0);
    }
  }

  // Opens, reads, tries to save and to delete, and reads again.
  bool reads_but_does_not_save() {
    return as_ordinary_user([this] {
      const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
      if (db < 0 || stored_text(db, "ASD", "A", 1503) != "kept") return false;
      Record record("ASD", "A");
      record.text(1503, "lost");
      tavbsaverec(db, record.rec());
      const bool save_failed = *tavdsrv_lasterror() != '\0';
      tavbdeleterec(db, "ASD", "A");
      const bool delete_failed = *tavdsrv_lasterror() != '\0';
      return save_failed && delete_failed && stored_text(db, "ASD", "A", 1503) == "kept" &&
             tavdsrv_closedatabase(db) == 0;
    });
  }

  // Opens a group, saves twice and commits; true if each that fails gives the first one's reason.
  bool group_tells_its_first_reason() {
    return as_ordinary_user([this] {
      const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
      if (db < 0 || tavdsrv_begin(db) != 0) return false;
      const std::string first = failed_save(db, "A");
      const std::string second = failed_save(db, "B");
      const bool commit_failed = tavdsrv_commit(db) == -1;
      const std::string last = tavdsrv_lasterror();
      tavdsrv_closedatabase(db);
      return !first.empty() && first.starts_with(path + ": ") && second.starts_with(first) && commit_failed &&
             last == first + "; the group's changes are dropped";
    });
  }
  static std::string failed_save(std::int16_t db, const char* id) {
    Record record("ASD", id);
    record.text(1503, "lost");
    tavbsaverec(db, record.rec());
    return tavdsrv_lasterror();
  }

  Folder folder;
  std::string path;
};

constexpr auto kReadOnlyFile = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr auto kReadOnlyFolder =
    kReadOnlyFile | fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

}  // namespace

TEST_F(ReadOnly, WithAllPermissionsTheSameUserSaves) {
  EXPECT_FALSE(reads_but_does_not_save()) << "the other tests would prove nothing";
}

TEST_F(ReadOnly, FileThatMayNotBeWrittenIsOpenedForReading) {
  fs::permissions(path, kReadOnlyFile);
  const std::string before = read_file(path);
  EXPECT_TRUE(reads_but_does_not_save());
  EXPECT_EQ(read_file(path), before);
}

TEST_F(ReadOnly, FolderThatMayNotBeWrittenIsOpenedForReading) {
  fs::permissions(folder.path(), kReadOnlyFolder);
  const std::string before = read_file(path);
  EXPECT_TRUE(reads_but_does_not_save());
  EXPECT_EQ(read_file(path), before);
}

TEST_F(ReadOnly, GroupOnAFileThatMayNotBeWrittenTellsItsFirstReasonToTheEnd) {
  fs::permissions(path, kReadOnlyFile);
  const std::string before = read_file(path);
  EXPECT_TRUE(group_tells_its_first_reason());
  EXPECT_EQ(read_file(path), before);
}

TEST_F(ReadOnly, GroupInAFolderThatMayNotBeWrittenTellsItsFirstReasonToTheEnd) {
  fs::permissions(folder.path(), kReadOnlyFolder);
  const std::string before = read_file(path);
  EXPECT_TRUE(group_tells_its_first_reason());
  EXPECT_EQ(read_file(path), before);
}

TEST_F(ReadOnly, FileThatMayNotBeReadIsNotOpened) {
  fs::permissions(path, fs::perms::none);
  EXPECT_TRUE(as_ordinary_user([this] {
    return tavbopendatabase(nullptr, path.c_str(), 0) == -1 &&
           tavbopendatabase(nullptr, path.c_str(), 1) == -1 && *tavdsrv_lasterror() != '\0';
  }));
}

TEST_F(ReadOnly, DatabaseIsNotMadeInAFolderThatMayNotBeWritten) {
  fs::permissions(folder.path(), kReadOnlyFolder);
  EXPECT_TRUE(as_ordinary_user([this] {
    return tavbopendatabase(nullptr, (folder / "new.tavdb").c_str(), 1) == -1 && *tavdsrv_lasterror() != '\0';
  }));
  EXPECT_EQ(folder.snapshot().size(), 1U);
}
