// The dimensioned sketch of a product as a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "samples.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using Strings = std::vector<std::string>;

struct Picture : testing::Test {
  Picture() {
    clitest::add_samples(database);
    tavdtest::Record("TST", "BOX")
        .words(1110, {102, 345, 215, 375, 205, 95, 85, 376})
        .header(110, 125, 0, 20, 200, 10, 500)
        .text(1501, "Caf\xE9 box")
        .save(database.handle());
    tavdtest::Record("TST", "SHORT").words(1110, {103, 250, 595}).text(1501, "Short").save(database.handle());
    tavdtest::Record("TST", "UNKNOWN").words(1110, {108, 250}).text(1501, "Unknown").save(database.handle());
  }

  Strings command(const std::string& id, const std::string& output, const Strings& options = {}) const {
    Strings all{"picture", database.path(), "TST", id, "-o", output};
    all.insert(all.end(), options.begin(), options.end());
    return all;
  }

  // Draws into a file of the folder, quietly, and returns the file's bytes.
  std::string draw(const std::string& id, const std::string& name, const Strings& options = {}) const {
    const Outcome outcome = run_program(command(id, folder.file(name), options));
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "");
    return read_file(folder.file(name));
  }
  std::string record(const std::string& id, const Strings& options = {}) const {
    return draw(id, "recording.txt", options);
  }

  // Refused, with nothing left in the folder.
  std::string fail(const std::string& id, const Strings& options, const std::string& name = "x.png") const {
    std::string error = expect_user_error(command(id, folder.file(name), options));
    EXPECT_THAT(folder.names(), IsEmpty());
    return error;
  }

  tavdtest::Database database;
  Folder folder;
};

// A whole number of four bytes, the highest first.
std::uint32_t big_endian(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
  return value;
}

TEST_F(Picture, PngHasItsOwnSizeOrTheOneAskedFor) {
  const std::string own = draw("BOX", "own.png");
  ASSERT_THAT(own, StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_EQ(500U, big_endian(own, 16));
  EXPECT_EQ(840U, big_endian(own, 20));
  const std::string asked = draw("BOX", "asked.png", {"--size", "64x300"});
  EXPECT_EQ(64U, big_endian(asked, 16));
  EXPECT_EQ(300U, big_endian(asked, 20));
}

TEST_F(Picture, SvgHasTitleAndMeasuresAsText) {
  const std::string svg = draw("BOX", "x.svg");
  EXPECT_THAT(svg, HasSubstr("<svg "));
  for (const char* text :
       {">Caf\xC3\xA9 box<", ">345<", ">215<", ">375<", ">205<", ">95<", ">85<", ">376<", ">125<"}) {
    EXPECT_THAT(svg, HasSubstr(text));
  }
}

TEST_F(Picture, PdfIsOne) {
  EXPECT_THAT(draw("BOX", "x.pdf"), StartsWith("%PDF-"));
}

TEST_F(Picture, TextListsTheDrawingInThePlaneOfThePicture) {
  const std::string recording = record("BOX");
  EXPECT_THAT(recording, HasSubstr("window-ext 500 840\n"));
  EXPECT_THAT(recording, HasSubstr("viewport-ext 500 840\n"));
  EXPECT_THAT(recording, HasSubstr("background transparent\n"));
  EXPECT_THAT(recording, HasSubstr("text 250 2 \"Caf\xC3\xA9 box\"\n"));
  EXPECT_THAT(recording, HasSubstr("\"345\"\n"));
}

TEST_F(Picture, KeepsItsProportionsInTheMiddle) {
  // 500 / 840 of 420 is 250, which leaves 375 at each side.
  const std::string recording = record("BOX", {"--size", "1000x420"});
  EXPECT_THAT(recording, HasSubstr("viewport-org 375 0\n"));
  EXPECT_THAT(recording, HasSubstr("viewport-ext 250 420\n"));
}

TEST_F(Picture, MissingMeasuresAreTwoSigns) {
  const std::string recording = record("SHORT");
  EXPECT_THAT(recording, HasSubstr("\"250\"\n"));
  EXPECT_THAT(recording, HasSubstr("\"##\"\n"));
}

TEST_F(Picture, ShapeWithoutASketchHasItsTitleOnly) {
  const std::string recording = record("UNKNOWN");
  EXPECT_THAT(recording, HasSubstr("\"Unknown\"\n"));
  EXPECT_THAT(recording, Not(HasSubstr("\nline ")));
}

TEST_F(Picture, TitleTakesThePlaceOfTheProductCode) {
  const std::string recording = record("BOX", {"--title",
                                               "\xC3\x96"
                                               "ppen 1"});
  EXPECT_THAT(recording, HasSubstr("\"\xC3\x96"
                                   "ppen 1\"\n"));
  EXPECT_THAT(recording, Not(HasSubstr("box")));
  EXPECT_THAT(record("BOX"), HasSubstr("box"));  // it is not saved
}

TEST_F(Picture, MarketChoosesTheProductCode) {
  tavdtest::Record("TST", "MARKET")
      .words(1110, {140, 250})
      .text(clitest::kCode, "Heater")
      .text(clitest::kCodeFinland, "L\xE4mmitin")
      .save(database.handle());
  EXPECT_THAT(record("MARKET"), HasSubstr("\"Heater\"\n"));
  EXPECT_THAT(record("MARKET", {"--market", "FIN"}), HasSubstr("\"L\xC3\xA4mmitin\"\n"));
}

TEST_F(Picture, ProductWithoutAShapeIsRefused) {
  tavdtest::Record("TST", "BARE").text(1501, "Bare").save(database.handle());
  EXPECT_THAT(fail("BARE", {}), HasSubstr("TST BARE has no shape to draw, expected attribute shapedata\n"));
}

TEST_F(Picture, UnknownProductNamesTheOnesNearIt) {
  EXPECT_THAT(fail("BOXES", {}), HasSubstr("near it: BOX"));
}

TEST_F(Picture, UnknownDatabaseIsRefused) {
  const std::string error =
      expect_user_error({"picture", folder.file("none.tavdb"), "TST", "BOX", "-o", folder.file("x.png")});
  EXPECT_THAT(error, HasSubstr("none.tavdb"));
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(Picture, UnknownEndingIsRefused) {
  for (const char* name : {"x.gif", "x", "png"}) {
    EXPECT_THAT(fail("BOX", {}, name), HasSubstr(".png, .svg, .pdf or .txt")) << name;
  }
}

TEST_F(Picture, BadSizesAreRefused) {
  for (const char* size : {"big", "500", "500x", "x840", "63x840", "500x16385", "500x840x3", "-500x840"}) {
    EXPECT_THAT(fail("BOX", {"--size=" + std::string(size)}), HasSubstr("--size is ")) << size;
  }
}

TEST_F(Picture, TitleOf80CharactersIsRefused) {
  EXPECT_THAT(fail("BOX", {"--title", std::string(80, 'x')}), HasSubstr("--title is 80 characters long"));
  EXPECT_THAT(record("BOX", {"--title", std::string(79, 'x')}),
              HasSubstr("\"" + std::string(79, 'x') + "\""));
}

TEST_F(Picture, MissingArgumentsAreRefused) {
  EXPECT_THAT(expect_user_error({"picture", database.path(), "TST", "BOX"}), HasSubstr("--output"));
  EXPECT_THAT(expect_user_error({"picture", database.path(), "TST", "-o", folder.file("x.png")}),
              HasSubstr("ID"));
}

TEST_F(Picture, MissingFolderIsToldWithTheReason) {
  for (const char* name : {"none/x.png", "none/x.svg", "none/x.pdf", "none/x.txt"}) {
    const std::string error = fail("BOX", {}, name);
    EXPECT_THAT(error, HasSubstr("cannot write \"" + folder.file(name) + "\": ")) << name;
    EXPECT_THAT(error, HasSubstr("No such file or directory")) << name;
  }
}

TEST_F(Picture, FolderInThePlaceOfTheFileStaysAsItIs) {
  std::filesystem::create_directory(folder.file("x.png"));
  EXPECT_THAT(expect_user_error(command("BOX", folder.file("x.png"))), HasSubstr("cannot write"));
  EXPECT_THAT(folder.names(), ElementsAre("x.png"));
}

}  // namespace
