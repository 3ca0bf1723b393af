// Commands whose changes the system makes difficult: long names and paths, folders that cannot be
// synchronized.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "support/program.h"

namespace {

namespace fs = std::filesystem;
using clitest::expect_user_error;
using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

// A variable of the programs that are started meanwhile.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) { setenv(name, value, 1); }
  ~Variable() { unsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
};

struct Storing : testing::Test {
  static void SetUpTestSuite() {
    own = std::make_unique<Folder>();
    database = own->file("catalogue.tavdb");
    ASSERT_EQ(run_program({"db", "build", catalogue, "-o", database}).exit_code, 0);
  }
  static void TearDownTestSuite() { own.reset(); }

  // A path of that many bytes in folders that are made, whose last name has so many.
  std::string path_of_length(std::size_t length, std::size_t name) const {
    std::string path = folder.file("long");
    while (path.size() + 200 + 1 + name < length) path += "/" + std::string(199, 'f');
    if (const std::size_t rest = length - path.size() - 1 - name; rest > 1) {
      path += "/" + std::string(rest - 1, 'g');
    }
    fs::create_directories(path);
    return path + "/" + std::string(length - path.size() - 1, 'n');
  }

  // Each command changes the copy of the database, or makes one.
  void expect_done_with_a_warning(const std::vector<std::string>& arguments, const std::string& target) {
    const Variable fault("LD_PRELOAD", TAVD_UNSYNCHRONIZED);
    const Variable order("ASAN_OPTIONS", "verify_asan_link_order=0");
    const Outcome outcome = run_program(arguments);
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.err,
              "tavd: " + target +
                  ": stored, but its folder could not be synchronized: a loss of power may bring back what "
                  "was stored before\n");
  }

  static inline const std::string catalogue = std::string(TAVD_SOURCE_DIR) + "/catalogue";
  static inline std::unique_ptr<Folder> own;
  static inline std::string database;
  Folder folder;
};

TEST_F(Storing, DatabasesAreBuiltAtPathsUpToTheLongest) {
  for (const std::size_t length : {3900, 4020, 4094, 4095}) {
    for (const std::size_t name : {10, 200}) {
      const std::string path = path_of_length(length, name);
      ASSERT_EQ(path.size(), length);
      const Outcome built = run_program({"db", "build", catalogue, "-o", path});
      EXPECT_EQ(built.exit_code, 0) << length << ", " << name << ": " << built.err;
      EXPECT_EQ(read_file(path), read_file(database));
      EXPECT_EQ(run_program({"show", path, "DMP", "QZDA-160"}).exit_code, 0);
      fs::remove_all(folder.file("long"));
    }
  }
}

TEST_F(Storing, LongerPathsAreRefusedWithTheLimit) {
  const std::string path = path_of_length(PATH_MAX, 20);
  const std::string error = expect_user_error({"db", "build", catalogue, "-o", path});
  EXPECT_THAT(error,
              EndsWith("/nnnnnnnnnnnnnnnnnnnn: a path may have at most 4095 bytes, this one has 4096\n"));
  EXPECT_TRUE(fs::is_empty(fs::path(path).parent_path()));
}

TEST_F(Storing, DatabasesAreBuiltWithNamesUpToTheLongest) {
  const std::string path = folder.file(std::string(247, 'n'));
  EXPECT_EQ(run_program({"db", "build", catalogue, "-o", path}).err, "");
  EXPECT_EQ(run_program({"delete", path, "DMP", "QZDA-160", "--yes"}).exit_code, 0) << "saving works";
}

TEST_F(Storing, LongerNamesAreRefusedWithTheLimit) {
  for (const std::size_t length : {248, 255, 256}) {
    const std::string path = folder.file(std::string(length, 'n'));
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"db", "build", catalogue, "-o", path},
          {"db", "synth", path, "--records", "10"},
          {"copy", database, "DMP", "QZDA-160", path}}) {
      EXPECT_THAT(expect_user_error(command),
                  EndsWith(path + ": a database's file name may have at most 247 bytes, this one has " +
                           std::to_string(length) + "\n"));
    }
  }
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(Storing, FolderThatIsNotSynchronizedIsAWarningInOneLine) {
  const std::string copy = folder.file("copy.tavdb");
  fs::copy_file(database, copy);
  expect_done_with_a_warning({"delete", copy, "DMP", "QZDA-160", "--yes"}, copy);
  EXPECT_EQ(run_program({"show", copy, "DMP", "QZDA-160"}).exit_code, 2);
  expect_done_with_a_warning({"copy", database, "DMP", "QZDA-160", copy}, copy);
  const Outcome shown = run_program({"show", copy, "DMP", "QZDA-160"});
  EXPECT_EQ(shown.exit_code, 0);
  EXPECT_EQ(shown.err, "");
}

TEST_F(Storing, WarningOfANewDatabaseNamesIt) {
  const std::string made = folder.file("made.tavdb");
  expect_done_with_a_warning({"db", "build", catalogue, "-o", made}, made);
  EXPECT_EQ(read_file(made), read_file(database));
  expect_done_with_a_warning({"db", "synth", made, "--records", "10"}, made);
  EXPECT_THAT(folder.names(), ElementsAre("made.tavdb"));
}

}  // namespace
