// Files that others fill by their path before they get their name.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "drafts/drafts.h"

namespace {

namespace fs = std::filesystem;
using drafts::Added;
using drafts::NewFile;
using testing::ElementsAre;
using testing::IsEmpty;

void write(const fs::path& path, const char* text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class NewFiles : public testing::Test {
 protected:
  NewFiles() {
    std::string name = (fs::temp_directory_path() / "tavd-drafts-XXXXXX").string();
    folder = mkdtemp(name.data());
  }
  ~NewFiles() override { fs::remove_all(folder); }
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(folder)) all.push_back(entry.path().filename());
    std::ranges::sort(all);
    return all;
  }
  fs::path folder;
};

}  // namespace

TEST_F(NewFiles, GetTheNameWithWhatOthersHaveWritten) {
  {
    NewFile file(folder / "new");
    EXPECT_EQ(file.path().parent_path(), folder);
    write(file.path(), "whole");
    EXPECT_FALSE(fs::exists(folder / "new"));
    EXPECT_EQ(file.add(), Added::kDone) << file.reason();
  }
  EXPECT_THAT(names(), ElementsAre("new"));
  EXPECT_EQ(read(folder / "new"), "whole");
  struct stat status {};
  ASSERT_EQ(stat((folder / "new").c_str(), &status), 0);
  const mode_t mask = umask(0);
  umask(mask);
  EXPECT_EQ(status.st_mode & 0777, 0644 & ~mask);
}

TEST_F(NewFiles, GoAwayWithTheirJournalsIfNobodyAddsThem) {
  {
    const NewFile file(folder / "new");
    write(file.path().native() + "-journal", "half");
    EXPECT_EQ(names().size(), 2U);
  }
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(NewFiles, LeaveANameThatIsTakenMeanwhile) {
  {
    NewFile file(folder / "new");
    write(folder / "new", "other");
    EXPECT_EQ(file.add(), Added::kTaken);
    EXPECT_EQ(file.reason(), "");
  }
  EXPECT_THAT(names(), ElementsAre("new"));
  EXPECT_EQ(read(folder / "new"), "other");
}

TEST_F(NewFiles, AreOwnedUntilTheyAreAdded) {
  NewFile file(folder / "new");
  drafts::clear(folder / "new");
  ASSERT_TRUE(fs::exists(file.path()));
  const int other = open(file.path().c_str(), O_RDONLY);
  EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(file.add(), Added::kDone);
  EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  close(other);
}

TEST_F(NewFiles, AreMadeWhereALinkPoints) {
  fs::create_directory(folder / "sub");
  fs::create_symlink("sub/new", folder / "link");
  EXPECT_EQ(NewFile(folder / "link").add(), Added::kDone);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_TRUE(fs::is_regular_file(folder / "sub" / "new"));
}

TEST_F(NewFiles, TellWhyTheyCannotBeMade) {
  NewFile file(folder / "absent" / "new");
  EXPECT_EQ(file.path(), "");
  EXPECT_EQ(file.reason(), "No such file or directory");
  EXPECT_EQ(file.add(), Added::kFailed);
}

TEST_F(NewFiles, FoldersOfLongPathsAreReachedByAShortOne) {
  fs::path target = folder;
  while (target.native().size() < PATH_MAX - 210) {
    target /= std::string(199, 'f');
    fs::create_directory(target);
  }
  target /= std::string(PATH_MAX - 2 - target.native().size(), 'n');
  drafts::Folder draft(target, drafts::Folder::Use::kPrivate);
  ASSERT_EQ(draft.reason(), "");
  const fs::path file = draft.path() / std::string(NAME_MAX, 'i');
  write(file, "whole");
  std::string reason;
  EXPECT_TRUE(drafts::replace(file, target, reason)) << reason;
  EXPECT_EQ(read(target), "whole");
}
