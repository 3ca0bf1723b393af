// Where pictures go: the file stays what it was but for its contents, or nothing changes at all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <future>
#include <sstream>
#include <string>

#include "tavdgui/tavdcairo.h"

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::int32_t append(void* bytes, const void* more, std::size_t length) {
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(more), length);
  return 0;
}

std::int32_t refuse(void*, const void*, std::size_t) {
  return 1;
}

class PictureFile : public testing::Test {
 protected:
  PictureFile() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~PictureFile() override { fs::remove_all(folder_); }

  fs::path path(const std::string& name) const { return folder_ / name; }
  void write(const std::string& name) const { std::ofstream(path(name)) << "old"; }

  // An empty picture; returns the reason if it could not be written.
  static std::string draw(const fs::path& file) {
    std::array<char, 300> reason{};
    tgui_surface* surface = tgui_cairo_svg(file.c_str(), 100, 100);
    const bool good = tgui_cairo_finish(surface, reason.data(), reason.size()) == 0;
    EXPECT_EQ(good, reason[0] == '\0');
    return reason.data();
  }

  fs::path folder_ = fs::temp_directory_path() / ("tavd-picture-file-" + std::to_string(getpid()));
};

TEST_F(PictureFile, FollowsNoLinkBesideItAndDestroysNoFile) {
  write("keep.txt");
  fs::create_symlink("keep.txt", path("z.svg.part"));
  EXPECT_EQ(draw(path("z.svg")), "");
  EXPECT_EQ(contents(path("keep.txt")), "old");
  EXPECT_TRUE(fs::is_symlink(path("z.svg.part")));
}

TEST_F(PictureFile, KeepsLinksAndPermissions) {
  write("real");
  ASSERT_EQ(chmod(path("real").c_str(), 0604), 0);
  fs::create_symlink("real", path("z.svg"));
  EXPECT_EQ(draw(path("z.svg")), "");
  EXPECT_TRUE(fs::is_symlink(path("z.svg")));
  EXPECT_THAT(contents(path("real")), StartsWith("<?xml"));
  EXPECT_EQ(fs::status(path("real")).permissions(), fs::perms{0604});
}

TEST_F(PictureFile, IsWrittenIntoAPipe) {
  ASSERT_EQ(mkfifo(path("z.svg").c_str(), 0600), 0);
  std::future<std::string> read = std::async(std::launch::async, [&] { return contents(path("z.svg")); });
  EXPECT_EQ(draw(path("z.svg")), "");
  EXPECT_THAT(read.get(), EndsWith("</svg>\n"));
  EXPECT_TRUE(fs::is_fifo(path("z.svg")));
}

TEST_F(PictureFile, OfSeveralProcessesIsWhole) {
  EXPECT_EQ(draw(path("expected.svg")), "");
  std::array<pid_t, 8> children{};
  for (pid_t& child : children) {
    child = fork();
    if (child == 0) _exit(draw(path("z.svg")).empty() ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(contents(path("z.svg")), contents(path("expected.svg")));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 2);
}

TEST_F(PictureFile, ThatCannotBeWrittenIsToldWithTheReason) {
  EXPECT_THAT(draw(path("none/z.svg")), HasSubstr("No such file or directory"));
  fs::create_directory(path("z.svg"));
  EXPECT_THAT(draw(path("z.svg")), HasSubstr("Is a directory"));
  fs::create_symlink("loop", path("loop"));
  EXPECT_THAT(draw(path("loop")), HasSubstr("Too many levels of symbolic links"));
  EXPECT_TRUE(fs::is_empty(path("z.svg")));
}

TEST_F(PictureFile, GivesItsBytesToTheHost) {
  EXPECT_EQ(draw(path("expected.svg")), "");
  std::string bytes;
  tgui_surface* surface = tgui_cairo_svg("", 100, 100);
  EXPECT_EQ(tgui_cairo_finish_into(surface, append, &bytes, nullptr, 0), 0);
  EXPECT_EQ(bytes, contents(path("expected.svg")));
  std::array<char, 100> reason{};
  surface = tgui_cairo_svg(path("z.svg").c_str(), 100, 100);
  EXPECT_EQ(tgui_cairo_finish_into(surface, refuse, nullptr, reason.data(), reason.size()), -1);
  EXPECT_STREQ(reason.data(), "the bytes were not taken");
  EXPECT_EQ(tgui_cairo_finish_into(tgui_cairo_svg("", 9, 9), nullptr, nullptr, nullptr, 0), -1);
  EXPECT_FALSE(fs::exists(path("z.svg")));
}

}  // namespace
