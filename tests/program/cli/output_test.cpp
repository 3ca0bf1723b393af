// Where -o leads: files of every kind, links, devices, standard output, and a disk that takes no more.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "support/program.h"

namespace {

namespace fs = std::filesystem;
using clitest::expect_user_error;
using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Strings = std::vector<std::string>;

void write(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

mode_t mode_of(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode;
}

struct Output : testing::Test {
  static void SetUpTestSuite() {
    own = std::make_unique<Folder>();
    database = own->file("catalogue.tavdb");
    ASSERT_EQ(run_program({"db", "build", catalogue, "-o", database}).exit_code, 0);
  }
  static void TearDownTestSuite() { own.reset(); }

  static Strings dump_to(const std::string& path) { return {"db", "dump", database, "-o", path}; }
  static Strings draw_to(const std::string& path) {
    return {"diagram", database, "DMP", "QZDA-160", "-o", path};
  }
  static Strings build_to(const std::string& path) { return {"db", "build", catalogue, "-o", path}; }

  static void expect_success(const Strings& arguments) {
    const Outcome outcome = run_program(arguments);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
  }

  static inline std::unique_ptr<Folder> own;
  static inline std::string database;
  static inline const std::string catalogue = std::string(TAVD_SOURCE_DIR) + "/catalogue";
  Folder folder;
  std::string target = folder.file("target.svg");
};

// ---- Devices, pipes, standard output ---------------------------------------

TEST_F(Output, APipeIsWrittenIntoAndStays) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  const std::string plain = folder.file("plain");
  for (const auto& command : {dump_to, draw_to}) {
    std::future<std::string> read = std::async(std::launch::async, [&] { return read_file(target); });
    expect_success(command(target));
    EXPECT_TRUE(S_ISFIFO(mode_of(target)));
    expect_success(command(plain + ".svg"));
    EXPECT_EQ(read.get(), read_file(plain + ".svg"));
  }
  EXPECT_THAT(folder.names(), testing::ElementsAre("plain.svg", "target.svg"));
}

// Devices of the tests' own: what goes wrong here must not cost the machine its /dev/null.
bool make_device(const std::string& path, unsigned int minor_number) {
  constexpr unsigned int kMemory = 1;  // major number of null, full and their like
  return mknod(path.c_str(), S_IFCHR | 0600, makedev(kMemory, minor_number)) == 0;
}

TEST_F(Output, ADeviceIsWrittenIntoAndStays) {
  if (!make_device(target, 3)) GTEST_SKIP() << "no device can be made here: " << std::strerror(errno);
  expect_success(dump_to(target));
  expect_success(draw_to(target));
  EXPECT_TRUE(S_ISCHR(mode_of(target)));
}

TEST_F(Output, AFullDeviceIsToldWithTheReason) {
  if (!make_device(target, 7)) GTEST_SKIP() << "no device can be made here: " << std::strerror(errno);
  for (const auto& command : {dump_to, draw_to}) {
    EXPECT_EQ(expect_user_error(command(target)),
              "tavd: cannot write \"" + target + "\": No space left on device\n");
    EXPECT_TRUE(S_ISCHR(mode_of(target)));
  }
}

TEST_F(Output, ADatabaseGoesIntoFilesOnly) {
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  EXPECT_THAT(expect_user_error(build_to(target)), HasSubstr("is a pipe or a device"));
  EXPECT_THAT(expect_user_error({"db", "synth", target, "--records", "9"}),
              HasSubstr("is a pipe or a device"));
  EXPECT_THAT(expect_user_error({"copy", database, "DMP", "QZDA-160", target}), HasSubstr(target));
  EXPECT_TRUE(S_ISFIFO(mode_of(target)));
  EXPECT_THAT(expect_user_error(build_to("-")), HasSubstr("standard output"));
  EXPECT_THAT(expect_user_error(build_to("/dev/stdout")), HasSubstr("standard output"));
  EXPECT_THAT(expect_user_error({"gallery", database, "-o", "-"}), HasSubstr("a gallery is a folder"));
}

TEST_F(Output, StandardOutputIsADashOrItsSystemName) {
  const std::string dump = run_program({"db", "dump", database}).out;
  EXPECT_THAT(dump, StartsWith("[\n"));
  expect_success(draw_to(target));
  for (const char* name : {"-", "/dev/stdout", "/dev/fd/1"}) {
    EXPECT_EQ(run_program(dump_to(name)).out, dump) << name;
    Strings draw = draw_to(name);
    draw.insert(draw.end(), {"--format", "svg"});
    const Outcome drawn = run_program(draw);
    EXPECT_EQ(drawn.out, read_file(target)) << drawn.err;
  }
}

TEST_F(Output, TheFormatOfAPictureIsAskedForWhereNoNameTellsIt) {
  EXPECT_EQ(
      expect_user_error(draw_to("-")),
      "tavd: cannot tell what to write to standard output, expected --format with png, svg, pdf or txt\n");
  Strings gif = draw_to("-");
  gif.insert(gif.end(), {"--format", "gif"});
  EXPECT_EQ(expect_user_error(gif), "tavd: --format is \"gif\", expected png, svg, pdf or txt\n");
  Strings pdf = draw_to(target);
  pdf.insert(pdf.end(), {"--format", "PDF"});
  expect_success(pdf);
  EXPECT_THAT(read_file(target), StartsWith("%PDF-"));
}

// ---- Files -----------------------------------------------------------------

TEST_F(Output, OtherFilesBesideTheTargetAreLeftAlone) {
  write(folder.file("keep.txt"), "keep");
  fs::create_symlink("keep.txt", target + ".part");
  write(folder.file("target.json.part"), "mine");
  expect_success(draw_to(target));
  expect_success(dump_to(folder.file("target.json")));
  EXPECT_EQ(read_file(folder.file("keep.txt")), "keep");
  EXPECT_TRUE(fs::is_symlink(target + ".part"));
  EXPECT_EQ(read_file(folder.file("target.json.part")), "mine");
}

TEST_F(Output, ALinkStaysAndItsFileIsReplaced) {
  fs::create_directory(folder.file("deep"));
  write(folder.file("deep/real"), "old");
  fs::create_symlink("deep/real", folder.file("first"));
  fs::create_symlink(folder.file("first"), target);
  for (const auto& command : {draw_to, dump_to, build_to}) {
    write(folder.file("deep/real"), "old");
    expect_success(command(target));
    EXPECT_TRUE(fs::is_symlink(target));
    EXPECT_TRUE(fs::is_symlink(folder.file("first")));
    EXPECT_NE(read_file(folder.file("deep/real")), "old");
  }
}

TEST_F(Output, ALinkToNothingYetGetsItsFile) {
  fs::create_symlink("later", target);
  expect_success(draw_to(target));
  EXPECT_TRUE(fs::is_symlink(target));
  EXPECT_THAT(read_file(folder.file("later")), HasSubstr("<svg "));
}

TEST_F(Output, PermissionsStay) {
  for (const auto& command : {draw_to, dump_to, build_to}) {
    write(target, "old");
    ASSERT_EQ(chmod(target.c_str(), 0604), 0);
    expect_success(command(target));
    EXPECT_EQ(mode_of(target) & 07777, 0604u);
  }
}

TEST_F(Output, OtherNamesOfTheFileKeepItsFormerContents) {
  write(target, "old");
  fs::create_hard_link(target, folder.file("other"));
  expect_success(draw_to(target));
  EXPECT_EQ(read_file(folder.file("other")), "old");
  EXPECT_THAT(read_file(target), HasSubstr("<svg "));
}

TEST_F(Output, WritersOfOneTargetAllEndWithAWholeFile) {
  expect_success(dump_to(folder.file("expected")));
  std::vector<int> running;
  for (int i = 0; i < 8; ++i) running.push_back(clitest::start_program(dump_to(target)));
  for (const int process : running) EXPECT_EQ(clitest::end_of_program(process), 0);
  EXPECT_EQ(read_file(target), read_file(folder.file("expected")));
  EXPECT_THAT(folder.names(), testing::ElementsAre("expected", "target.svg"));
}

TEST_F(Output, PicturesAndTextsOf255ByteNamesAnd4095BytePathsWork) {
  const std::string longest(251, 'n');
  expect_success(draw_to(folder.file(longest + ".svg")));
  expect_success(dump_to(folder.file(longest + ".jsn")));
  // A path of 4095 bytes, by folders that are made one in the other.
  const fs::path start = fs::current_path();
  std::string path = folder.file("");
  fs::current_path(path);
  while (path.size() < 4095 - 210) {
    const std::string name(199, 'd');
    fs::create_directory(name);
    fs::current_path(name);
    path += name + '/';
  }
  fs::current_path(start);
  path += std::string(4095 - path.size() - 4, 'f') + ".svg";
  ASSERT_EQ(path.size(), 4095u);
  expect_success(draw_to(path));
  expect_success(dump_to(path));
}

// ---- No more room ----------------------------------------------------------

TEST_F(Output, ALimitOnTheSizeOfFilesIsTheReasonThatIsTold) {
  write(target, "old");
  for (const auto& command : {dump_to, draw_to}) {
    const Outcome outcome = clitest::run_program_within(4096, command(target));
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_EQ(outcome.err, "tavd: cannot write \"" + target + "\": File too large\n");
  }
  const Outcome outcome = clitest::run_program_within(4096, {"db", "dump", database});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.err, "tavd: cannot write to standard output: File too large\n");
  EXPECT_EQ(read_file(target), "old");
  EXPECT_THAT(folder.names(), testing::ElementsAre("target.svg"));
}

TEST_F(Output, MessagesNameTheTargetAndNoDraft) {
  for (const Strings& command : {dump_to(target), draw_to(target), build_to(target),
                                 Strings{"db", "synth", target, "--records", "1000"},
                                 Strings{"copy", database, "DMP", "QZDA-160", target},
                                 Strings{"gallery", database, "-o", folder.file("gallery")}}) {
    const Outcome outcome = clitest::run_program_within(4096, command);
    EXPECT_EQ(outcome.exit_code, 2) << command[1];
    EXPECT_THAT(outcome.err, HasSubstr(folder.file(""))) << command[1];
    EXPECT_THAT(outcome.err, Not(HasSubstr("tavd-new"))) << command[1];
  }
  EXPECT_THAT(folder.names(), testing::IsEmpty());
}

}  // namespace
