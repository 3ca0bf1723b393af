// What a killed command has left is cleared by the next one that writes the same target, and nothing else is.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/program.h"

namespace {

namespace fs = std::filesystem;
using clitest::Folder;
using clitest::Outcome;
using clitest::run_program;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;
using Strings = std::vector<std::string>;

constexpr const char* kDigits = ".0123456789abcdef.tavd-new";

void write(const std::string& path) {
  std::ofstream(path, std::ios::binary) << "left";
}

struct Leftover : testing::Test {
  static void SetUpTestSuite() {
    own = std::make_unique<Folder>();
    database = own->file("catalogue.tavdb");
    ASSERT_EQ(
        run_program({"db", "build", std::string(TAVD_SOURCE_DIR) + "/catalogue", "-o", database}).exit_code,
        0);
  }
  static void TearDownTestSuite() { own.reset(); }

  // Starts to make a large database at the target, and waits for its draft, whose name it leaves in `draft`.
  int start_synth() {
    const int process =
        clitest::start_program({"db", "synth", folder.file("target"), "--records", "5000000"});
    for (int i = 0; i < 1000 && draft.empty(); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      for (const std::string& name : folder.names()) {
        if (name.starts_with(".target.") && fs::exists(folder.file(name + "/target"))) draft = name;
      }
    }
    EXPECT_FALSE(draft.empty());
    return process;
  }

  Outcome run_quietly(const Strings& arguments) const {
    Outcome outcome = run_program(arguments);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return outcome;
  }

  static inline std::unique_ptr<Folder> own;
  static inline std::string database;
  Folder folder;
  std::string draft;
};

TEST_F(Leftover, TheDraftOfAKilledCommandIsClearedByTheNext) {
  const int process = start_synth();
  clitest::kill_program(process);
  EXPECT_THAT(folder.names(), ElementsAre(draft));
  run_quietly({"db", "synth", folder.file("target"), "--records", "10"});
  EXPECT_THAT(folder.names(), ElementsAre("target"));
}

TEST_F(Leftover, TheDraftOfALivingCommandStays) {
  const int process = start_synth();
  run_quietly({"db", "dump", database, "-o", folder.file("target")});
  run_quietly({"db", "synth", folder.file("target"), "--records", "10"});
  EXPECT_THAT(folder.names(), ElementsAre(draft, "target"));
  EXPECT_TRUE(fs::exists(folder.file(draft + "/target")));
  clitest::kill_program(process);
}

TEST_F(Leftover, DraftsOfFilesAreClearedWithTheirJournals) {
  for (const Strings& command : {Strings{"db", "dump", database, "-o"},
                                 Strings{"diagram", database, "DMP", "QZDA-160", "--format", "png", "-o"},
                                 Strings{"copy", database, "DMP", "QZDA-160"}}) {
    const std::string name = command[0] + ".out";
    write(folder.file('.' + name + kDigits));
    write(folder.file('.' + name + kDigits + "-journal"));
    Strings whole = command;
    whole.push_back(folder.file(name));
    run_quietly(whole);
    EXPECT_THAT(folder.names(), ElementsAre(name));
    // And with the target there.
    write(folder.file('.' + name + kDigits));
    run_quietly(whole);
    EXPECT_THAT(folder.names(), ElementsAre(name));
    fs::remove(folder.file(name));
  }
}

TEST_F(Leftover, WhatIsNoDraftOfTheTargetStays) {
  const Strings others = {".targets.0123456789abcdef.tavd-new",
                          ".target.0123456789ABCDEF.tavd-new",
                          ".target.123456789abcdef.tavd-new",
                          ".target.0123456789abcdef.tavd-new.txt",
                          "target.0123456789abcdef.tavd-new",
                          ".target.0123456789abcdef.tavd-new-journal",
                          ".target0.0123456789abcde.tavd-new",
                          "target.new-12345",
                          "target.part"};
  for (const std::string& name : others) write(folder.file(name));
  write(folder.file("precious"));
  fs::create_symlink("precious", folder.file(".target.0000000000000001.tavd-new"));
  fs::create_directories(folder.file(".target.0000000000000002.tavd-new/folder"));
  run_quietly({"db", "dump", database, "-o", folder.file("target")});
  for (const std::string& name : others) EXPECT_THAT(folder.names(), Contains(name));
  EXPECT_THAT(folder.names(), SizeIs(others.size() + 4));
}

TEST_F(Leftover, ADraftThatIsLockedStays) {
  const std::string locked = folder.file(std::string(".target") + kDigits);
  const int descriptor = open(locked.c_str(), O_CREAT | O_WRONLY, 0600);
  ASSERT_EQ(flock(descriptor, LOCK_EX), 0);
  run_quietly({"db", "dump", database, "-o", folder.file("target")});
  EXPECT_TRUE(fs::exists(locked));
  close(descriptor);
  run_quietly({"db", "dump", database, "-o", folder.file("target")});
  EXPECT_FALSE(fs::exists(locked));
}

TEST_F(Leftover, DraftsOfGalleriesAreCleared) {
  const std::string beside = folder.file(std::string(".sheets") + kDigits);
  fs::create_directory(beside);
  write(beside + "/index.html");
  const Strings command = {"gallery", database, "-o", folder.file("sheets")};
  run_quietly(command);
  EXPECT_THAT(folder.names(), ElementsAre("sheets"));
  const std::size_t count = static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder.file("sheets")), fs::directory_iterator()));
  // Of one that was killed in the folder that is there.
  const int process = clitest::start_program(command);
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  clitest::kill_program(process);
  fs::create_directory(beside);
  run_quietly(command);
  EXPECT_THAT(folder.names(), ElementsAre("sheets"));
  EXPECT_EQ(static_cast<std::size_t>(
                std::distance(fs::directory_iterator(folder.file("sheets")), fs::directory_iterator())),
            count);
}

TEST_F(Leftover, AKilledCopyLeavesTheProductOrNoTarget) {
  const std::string target = folder.file("target");
  for (int i = 0; i < 60; ++i) {
    const int process = clitest::start_program({"copy", database, "DMP", "QZDA-*", target});
    std::this_thread::sleep_for(std::chrono::microseconds(700 * i));
    clitest::kill_program(process);
    if (!fs::exists(target)) continue;
    const Outcome shown = run_program({"show", target, "DMP", "QZDA-160"});
    EXPECT_EQ(shown.exit_code, 0) << "killed after " << 0.7 * i << " ms: " << shown.err;
    fs::remove(target);
    fs::remove(target + "-journal");
  }
  run_quietly({"copy", database, "DMP", "QZDA-*", target});
  EXPECT_THAT(folder.names(), ElementsAre("target"));
}

}  // namespace
