#include "base/gwfile.h"
#include "support/narrow_path.h"
#include "support/wide.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

class ExistingFile : public testing::Test {
 protected:
  ExistingFile()
      : path_(std::filesystem::temp_directory_path() / "gwfile " += tavdtest::letters_of_narrow_names()) {
    std::ofstream(path_) << "x";
  }
  ~ExistingFile() override { std::filesystem::remove(path_); }
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

TEST_F(ExistingFile, IsFoundByItsNarrowPath) {
  EXPECT_TRUE(tavd::gwfile_exists(tavdtest::narrow_name(path()).c_str()));
}

TEST_F(ExistingFile, IsFoundByItsWidePath) {
  EXPECT_TRUE(tavd::gwfile_existsw(path().string<tavd_wchar>().c_str()));
}

TEST_F(ExistingFile, IsNotFoundAfterItWasRemoved) {
  std::filesystem::remove(path());
  EXPECT_FALSE(tavd::gwfile_exists(tavdtest::narrow_name(path()).c_str()));
  EXPECT_FALSE(tavd::gwfile_existsw(path().string<tavd_wchar>().c_str()));
}

TEST(MissingFile, NullAndEmptyPathsDoNotExist) {
  EXPECT_FALSE(tavd::gwfile_exists(nullptr));
  EXPECT_FALSE(tavd::gwfile_existsw(nullptr));
  EXPECT_FALSE(tavd::gwfile_exists(""));
  EXPECT_FALSE(tavd::gwfile_existsw(WIDE("")));
}

TEST(MissingFile, EndlessPathDoesNotExist) {
  // Cut at any length this would name the root.
  EXPECT_FALSE(tavd::gwfile_existsw(tavdtest::Wide(100'000, WIDE('/')).c_str()));
}

}  // namespace
