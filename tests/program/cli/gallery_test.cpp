// The contact sheet of shapes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/program.h"

namespace {

constexpr double kCellWidth = 405;  // device units of the sheet
constexpr double kCellHeight = 660;

class Gallery : public ::testing::Test {
 protected:
  void SetUp() override {
    const clitest::Outcome outcome =
        clitest::run_program({"gallery", "--shapes", "-o", folder_.file("sheet")});
    ASSERT_EQ(0, outcome.exit_code) << outcome.err;
    svg_ = clitest::read_file(folder_.file("sheet/shapes.svg"));
  }

  clitest::Folder folder_;
  std::string svg_;
};

TEST_F(Gallery, WritesAPngAndAnSvg) {
  EXPECT_EQ(0U, clitest::read_file(folder_.file("sheet/shapes.png")).find("\x89PNG"));
  EXPECT_NE(std::string::npos, svg_.find("<svg "));
}

// Shape 163 is wider than its picture.
TEST_F(Gallery, EachLineStaysInItsCell) {
  int lines = 0;
  for (const std::string& line : clitest::lines_of(svg_)) {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    if (std::sscanf(line.c_str(), "<path d=\"M%lf %lfL%lf %lf", &x1, &y1, &x2, &y2) == 4) {
      ++lines;
      EXPECT_EQ(std::floor(x1 / kCellWidth), std::floor(x2 / kCellWidth)) << line;
      EXPECT_EQ(std::floor(y1 / kCellHeight), std::floor(y2 / kCellHeight)) << line;
    }
  }
  EXPECT_GT(lines, 1000);
}

TEST_F(Gallery, TitlesEachCellWithItsNumber) {
  static const std::regex kTitle(R"(font-weight="700"[^>]*>(\d+)([^<]*)<)");
  std::set<std::string> numbers;
  int titles = 0;
  for (std::sregex_iterator it(svg_.begin(), svg_.end(), kTitle); it != std::sregex_iterator(); ++it) {
    numbers.insert((*it)[1]);
    ++titles;
  }
  for (const char* number : {"101", "107", "130", "151", "163", "164", "165", "170", "183", "192"}) {
    EXPECT_TRUE(numbers.contains(number)) << number;
  }
  EXPECT_GT(titles, static_cast<int>(numbers.size()));  // variants
}

TEST_F(Gallery, TellsNoSizeOfFiveFiguresAndNoMissingOne) {
  static const std::regex kFiveFigures(R"(>-?\d{5,}<|>##<)");
  EXPECT_FALSE(std::regex_search(svg_, kFiveFigures));
}

// Eight columns, with a margin of 15 pixels about each picture.
TEST(GallerySize, IsThatOfEachPicture) {
  const clitest::Folder folder;
  const clitest::Outcome outcome =
      clitest::run_program({"gallery", "--shapes", "-o", folder.file("sheet"), "--size", "100x168"});
  ASSERT_EQ(0, outcome.exit_code) << outcome.err;
  const std::string svg = clitest::read_file(folder.file("sheet/shapes.svg"));
  EXPECT_NE(std::string::npos, svg.find(" width=\"1040\" ")) << svg.substr(0, 300);
}

TEST(GallerySize, OfASheetTooLargeIsRefusedAndNothingIsLeft) {
  const clitest::Folder folder;
  const std::string error =
      clitest::expect_user_error({"gallery", "--shapes", "-o", folder.file("sheet"), "--size", "2019x168"});
  EXPECT_NE(std::string::npos, error.find("makes a sheet of 16392x")) << error;
  clitest::expect_user_error({"gallery", "--shapes", "-o", folder.file("other"), "--size", "63x168"});
  EXPECT_EQ(std::vector<std::string>{}, folder.names());
}

TEST(GalleryFolder, ThatCannotBeMadeIsRefused) {
  const std::string error = clitest::expect_user_error({"gallery", "--shapes", "-o", "/dev/null/sheet"});
  EXPECT_NE(std::string::npos, error.find("cannot make \"/dev/null/sheet\": ")) << error;
}

TEST(GalleryFolder, IsRequired) {
  EXPECT_NE(std::string::npos, clitest::expect_user_error({"gallery", "--shapes"}).find("--output"));
  const clitest::Folder folder;
  EXPECT_NE(std::string::npos,
            clitest::expect_user_error({"gallery", "-o", folder.file("x")}).find("--shapes"));
}

}  // namespace
