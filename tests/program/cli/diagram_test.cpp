#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "samples.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr double kPointsPerMillimetre = 72 / 25.4;

// A whole number of four bytes, the highest first.
std::uint32_t big_endian(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
  return value;
}

std::size_t count_of(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// Width and height of the one page of a PDF, mm.
std::pair<double, double> page_of(const std::string& pdf) {
  EXPECT_THAT(pdf, StartsWith("%PDF-"));
  EXPECT_EQ(count_of(pdf, "/MediaBox"), 1u);
  double width = 0;
  double height = 0;
  std::sscanf(pdf.c_str() + pdf.find("/MediaBox"), "/MediaBox [ 0 0 %lf %lf ]", &width, &height);
  return {width / kPointsPerMillimetre, height / kPointsPerMillimetre};
}

// The texts of an SVG, in the order in which they are drawn.
std::vector<std::string> texts_of(const std::string& svg) {
  std::vector<std::string> texts;
  for (std::size_t at = svg.find("<text "); at != std::string::npos; at = svg.find("<text ", at + 1)) {
    const std::size_t begin = svg.find('>', at) + 1;
    texts.push_back(svg.substr(begin, svg.find('<', begin) - begin));
  }
  return texts;
}

struct Diagram : testing::Test {
  Diagram() { clitest::add_samples(database); }

  std::vector<std::string> command(const std::vector<std::string>& product, const std::string& output,
                                   const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all{"diagram", database.path()};
    all.insert(all.end(), product.begin(), product.end());
    all.insert(all.end(), {"-o", output});
    all.insert(all.end(), options.begin(), options.end());
    return all;
  }

  // Draws into a file of the folder, quietly, and returns the file's bytes.
  std::string draw(const std::vector<std::string>& product, const std::string& name,
                   const std::vector<std::string>& options = {}) const {
    const Outcome outcome = run_program(command(product, folder.file(name), options));
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "");
    return read_file(folder.file(name));
  }

  std::string record(const std::vector<std::string>& product,
                     const std::vector<std::string>& options = {}) const {
    return draw(product, "recording.txt", options);
  }

  // Refused, with nothing left in the folder.
  std::string fail(const std::vector<std::string>& product, const std::vector<std::string>& options,
                   const std::string& name = "x.png") const {
    std::string error = expect_user_error(command(product, folder.file(name), options));
    EXPECT_THAT(folder.names(), IsEmpty());
    return error;
  }

  const std::vector<std::string> damper{"ASD", "DAMPER-200"};
  tavdtest::Database database;
  Folder folder;
};

TEST_F(Diagram, PngHasItsSignatureAndTheSizeAskedFor) {
  const std::string png = draw(damper, "x.png", {"--size", "640x480"});
  EXPECT_THAT(png, StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_EQ(big_endian(png, 16), 640u);
  EXPECT_EQ(big_endian(png, 20), 480u);
}

TEST_F(Diagram, PngIs1200By900Unasked) {
  const std::string png = draw(damper, "x.PNG");
  EXPECT_EQ(big_endian(png, 16), 1200u);
  EXPECT_EQ(big_endian(png, 20), 900u);
}

TEST_F(Diagram, SvgHoldsItsTextsAsText) {
  const std::string svg = draw(damper, "x.svg");
  EXPECT_THAT(svg, HasSubstr("<svg"));
  EXPECT_THAT(svg, HasSubstr("Damper 200"));
  EXPECT_THAT(svg, HasSubstr("</svg>"));
}

TEST_F(Diagram, PdfIsAPageOfA4AcrossOrUpright) {
  const auto [width, height] = page_of(draw(damper, "x.pdf"));
  EXPECT_NEAR(width, 297, 0.01);
  EXPECT_NEAR(height, 210, 0.01);
  for (const char* size : {"900x1200", "64x16384", "600x600"}) {
    const auto [w, h] = page_of(draw(damper, "x.pdf", {"--size", size}));
    const bool is_upright = std::string(size) != "600x600";
    EXPECT_NEAR(w, is_upright ? 210 : 297, 0.01) << size;
    EXPECT_NEAR(h, is_upright ? 297 : 210, 0.01) << size;
  }
}

TEST_F(Diagram, SameDrawingGivesTheSameBytes) {
  for (const char* name : {"x.png", "x.svg", "x.pdf", "x.txt"})
    EXPECT_EQ(draw(damper, name), draw(damper, name));
}

TEST_F(Diagram, OverwritesAFormerFileAndLeavesNothingElse) {
  for (const char* name : {"x.png", "x.txt"}) {
    std::ofstream(folder.file(name)) << "former";
    EXPECT_THAT(draw(damper, name), Not(HasSubstr("former")));
  }
  EXPECT_THAT(folder.names(), ElementsAre("x.png", "x.txt"));
}

TEST_F(Diagram, StretchesTheDrawingPlaneOverThePicture) {
  const std::string recording = record(damper, {"--size", "640x480"});
  EXPECT_THAT(recording, HasSubstr("map anisotropic\n"));
  EXPECT_THAT(recording, HasSubstr("window-ext 10000 10000\n"));
  EXPECT_THAT(recording, HasSubstr("viewport-ext 640 480\n"));
  EXPECT_THAT(recording, HasSubstr("background transparent\n"));
}

TEST_F(Diagram, HasTitlesUnitsAndLabels) {
  const std::string recording = record(damper);
  for (const char* text :
       {"\"Damper 200\"", "\"qv [l/s]\"", "\"dpt [Pa]\"", "\"pos 1\"", "\"2\"", "\"3\"", " dB(A)\""}) {
    EXPECT_THAT(recording, HasSubstr(text));
  }
}

TEST_F(Diagram, AxesTakeTheUnitsAskedFor) {
  const std::string recording = record(damper, {"--xunit", "m3/h", "--yunit", "inwc", "--static"});
  EXPECT_THAT(recording, HasSubstr("\"qv [m3/h]\""));
  EXPECT_THAT(recording, HasSubstr("\"dpst [\\\"WC]\""));
  EXPECT_THAT(record(damper, {"--xunit", "CFM", "--yunit", "kPa"}), HasSubstr("\"dpt [kPa]\""));
}

TEST_F(Diagram, VelocityProductsKeepMetresPerSecond) {
  EXPECT_THAT(record({"AEX", "GRILLE-400x200"}, {"--xunit", "cfm"}), HasSubstr("\"v [m/s]\""));
}

TEST_F(Diagram, OperatingPointIsThreeCircles) {
  const std::vector<std::string> fixed{"ASD", "FIXED-100"};
  EXPECT_EQ(count_of(record(fixed), "\nellipse "), 0u);
  EXPECT_EQ(count_of(record(fixed, {"--qv", "50", "--dp", "60"}), "\nellipse "), 3u);
}

TEST_F(Diagram, FlowAloneIsALineFromEdgeToEdge) {
  const std::vector<std::string> fixed{"ASD", "FIXED-100"};
  const std::string recording = record(fixed, {"--qv", "50"});
  EXPECT_EQ(count_of(recording, "\nellipse "), 0u);
  EXPECT_THAT(recording, HasSubstr("select pen solid width=10 colour=#0000FF\n"));
}

// The lines across the bracket's ends point at each other.
TEST_F(Diagram, LimitsAreTwoBracketsOnTheLowerEdge) {
  const std::vector<std::string> fixed{"ASD", "FIXED-100"};
  const std::string bare = record(fixed);
  const std::string marked = record(fixed, {"--limits", "40,80"});
  EXPECT_THAT(bare, Not(HasSubstr("select pen solid width=40 colour=#FF0000\n")));
  EXPECT_THAT(marked, HasSubstr("select pen solid width=40 colour=#FF0000\n"));
  EXPECT_EQ(count_of(marked, "\nline ") - count_of(bare, "\nline "), 4u);
}

TEST_F(Diagram, TitleTakesThePlaceOfTheProductCode) {
  const std::string recording = record(damper, {"--title", "Caf\xC3\xA9 level 2", "--market", "FIN"});
  EXPECT_THAT(recording, HasSubstr("\"Caf\xC3\xA9 level 2\""));
  EXPECT_THAT(recording, Not(HasSubstr("pelti")));
}

TEST_F(Diagram, TitleTakesThePlaceOfTheProductCodeInAUtf8DatabaseToo) {
  tavdtest::Record("000", "FILEHEADER").words(1049, {1}).save(database.handle());
  EXPECT_THAT(record({"ASD", "FIXED-100"}), HasSubstr("textw "));
  EXPECT_THAT(record({"ASD", "FIXED-100"}), HasSubstr("\"\xE5\x9B\xBA\xE5\xAE\x9A 100\""));
  EXPECT_THAT(record(damper, {"--title", "\xE9\xA2\xA8\xE9\x87\x8F"}),
              HasSubstr("\"\xE9\xA2\xA8\xE9\x87\x8F\""));
}

TEST_F(Diagram, TitleIsNotSaved) {
  record(damper, {"--title", "Something else"});
  EXPECT_THAT(record(damper), HasSubstr("\"Damper 200\""));
}

TEST_F(Diagram, TitleLongerThanTheChartTakesIsRefused) {
  EXPECT_THAT(fail(damper, {"--title", std::string(80, 'x')}), HasSubstr("--title is 80 characters long"));
}

TEST_F(Diagram, TitleOf79CharactersIsDrawn) {
  const std::string title(79, 'x');
  EXPECT_THAT(record(damper, {"--title", title}), HasSubstr("\"" + title + "\""));
}

TEST_F(Diagram, TitleTooWideForThePictureIsShortenedInItsMiddle) {
  const std::string title = "Ventilation plant of the third floor, room 3.14, supply air, damper 160";
  const std::string svg = draw(damper, "x.svg", {"--title", title});
  EXPECT_THAT(svg, HasSubstr("<title id=\"title\">" + title + ": flow diagram</title>"));
  const std::string shown = texts_of(svg).at(0);
  EXPECT_THAT(shown, StartsWith("Ventilation plant"));
  EXPECT_THAT(shown, HasSubstr("..."));
  EXPECT_THAT(shown, EndsWith("damper 160"));
  EXPECT_LT(texts_of(draw(damper, "x.svg", {"--title", title, "--size", "600x600"})).at(0).size(),
            shown.size());
  EXPECT_THAT(record(damper, {"--title", title}), HasSubstr("\"" + title + "\""));
}

TEST_F(Diagram, ShortenedTitleLeavesTheMarketsTextsAlone) {
  const std::string title(70, 'W');
  const std::string svg = draw(damper, "x.svg", {"--title", title, "--market", "FIN", "--language", "sv"});
  EXPECT_THAT(svg, HasSubstr("Runt spj\xC3\xA4ll"));
  EXPECT_THAT(texts_of(svg).at(0), HasSubstr("..."));
}

// The library fills an id up to 30 characters, which moves it from the middle.
TEST_F(Diagram, IdStandsAsATitleWithoutBlanksBehindIt) {
  tavdtest::Record("ASD", "NAMELESS").header(110, 100, 0, 20, 200, 10, 500).save(database.handle());
  EXPECT_THAT(record({"ASD", "NAMELESS"}), HasSubstr("\"NAMELESS "));
  EXPECT_EQ(texts_of(draw({"ASD", "NAMELESS"}, "x.svg")).at(0), "NAMELESS");
}

TEST_F(Diagram, ParametersMoveTheCurves) {
  const std::vector<std::string> fixed{"ASD", "FIXED-100"};
  EXPECT_EQ(record(fixed), record(fixed, {"--param", "colour=A"}));
  EXPECT_NE(record(fixed), record(fixed, {"--param", "colour=B"}));
}

TEST_F(Diagram, SeveralParametersAreChosenAtOnce) {
  const std::vector<std::string> fixed{"ASD", "FIXED-100"};
  EXPECT_EQ(record(fixed, {"--param", "colour=B"}), record(fixed, {"--params", "colour=B"}));
}

TEST_F(Diagram, BadParameterListsAreRefused) {
  const std::vector<std::string> fixed{"ASD", "FIXED-100"};
  EXPECT_THAT(fail(fixed, {"--params", "colour=B,blade=200"}), HasSubstr("no parameter \"blade\""));
  EXPECT_THAT(fail(fixed, {"--params", "colour=B,"}), HasSubstr("expected NAME=VALUE"));
}

TEST_F(Diagram, UnitsOfBothAxesCanBeGivenAtOnce) {
  EXPECT_EQ(record(damper, {"--xunit", "m3/h", "--yunit", "kPa"}), record(damper, {"--units", "m3/h,kPa"}));
}

TEST_F(Diagram, BadUnitsOfBothAxesAreRefused) {
  EXPECT_THAT(fail(damper, {"--units", "m3/h"}),
              HasSubstr("--units is \"m3/h\", expected a flow and a pressure"));
  EXPECT_THAT(fail(damper, {"--units", "gal,Pa"}), HasSubstr("--units is \"gal\", expected one of l/s"));
  EXPECT_THAT(fail(damper, {"--units", "l/s,bar"}), HasSubstr("--units is \"bar\", expected one of Pa"));
  EXPECT_THAT(fail(damper, {"--units", "l/s,Pa", "--xunit", "l/s"}), HasSubstr("--xunit"));
}

TEST_F(Diagram, SoundLevelLinesAreThoseAskedFor) {
  const std::string recording = record(damper, {"--lp", "41,47,3"});
  const std::size_t red = recording.rfind("text-colour #FF0000\n");
  ASSERT_NE(red, std::string::npos);
  const std::string lines = recording.substr(red);
  EXPECT_EQ(count_of(lines, "\ntext "), 3u);
  for (const char* text : {"\"41 dB(A)\"", "\"44\"", "\"47\""}) EXPECT_THAT(lines, HasSubstr(text));
}

TEST_F(Diagram, BadSoundLevelsAreRefused) {
  for (const char* lp : {"25", "25,60", "25,60,5,1", "a,b,c", "0,60,5", "25,60,0", "25,60,-5"}) {
    EXPECT_THAT(fail(damper, {"--lp", lp}), HasSubstr("--lp is ")) << lp;
  }
  EXPECT_THAT(fail(damper, {"--lp", "60,25,5"}), HasSubstr("not below the lowest"));
}

TEST_F(Diagram, ALabelsTakeThePlaceOfPositions) {
  const std::string recording = record(damper, {"--a-label", "1=shut", "--a-label", "3=100% \xC3\xB6ppen"});
  EXPECT_THAT(recording, HasSubstr("\"shut\""));
  EXPECT_THAT(recording, HasSubstr("\"2\""));
  EXPECT_THAT(recording, HasSubstr("\"100% \xC3\xB6ppen\""));
  EXPECT_THAT(recording, Not(HasSubstr("\"pos 1\"")));
}

TEST_F(Diagram, ALabelIsDrawnAsItIsWritten) {
  EXPECT_THAT(record(damper, {"--a-label", "2=%d%s%n%%"}), HasSubstr("\"%d%s%n%%\""));
}

// The frame's lower edge ends where the plot does.
TEST_F(Diagram, LongTextsAtTheRightGetRoom) {
  const auto plot_right = [](const std::string& recording) {
    int right = 0;
    std::sscanf(recording.c_str() + recording.find("\nline "), "\nline %*d %*d %d", &right);
    return right;
  };
  const int unasked = plot_right(record(damper));
  EXPECT_GT(unasked, 9000);
  EXPECT_EQ(plot_right(record(damper, {"--a-label", "3=x"})), unasked);
  // Twelve characters of 190 units, less 600 that are there in any case.
  EXPECT_EQ(plot_right(record(damper, {"--a-label", "3=twelve chars"})), unasked - (12 * 190 - 600));
  EXPECT_EQ(plot_right(record(damper, {"--a-label", "3=" + std::string(149, 'x')})), unasked - 4000);
}

TEST_F(Diagram, BadALabelsAreRefused) {
  for (const char* label : {"half", "=half", "a=half", "1 =half", "nan=half"}) {
    EXPECT_THAT(fail(damper, {"--a-label", label}), HasSubstr("--a-label is ")) << label;
  }
  EXPECT_THAT(fail(damper, {"--a-label", "2=\xE9\xA2\xA8"}), HasSubstr("characters of Latin-1"));
  EXPECT_THAT(fail(damper, {"--a-label", "2=" + std::string(150, 'x')}), HasSubstr("150 characters long"));
}

TEST_F(Diagram, ALabelOf149CharactersIsDrawn) {
  const std::string label(149, 'x');
  EXPECT_THAT(record(damper, {"--a-label", "2=" + label}), HasSubstr("\"" + label + "\""));
}

TEST_F(Diagram, MoreALabelsThanTheDiagramKeepsAreRefused) {
  std::vector<std::string> options;
  for (int i = 0; i < 201; ++i) options.insert(options.end(), {"--a-label", std::to_string(i) + "=x"});
  EXPECT_THAT(fail(damper, options), HasSubstr("--a-label is given 201 times"));
}

// The curve and its two limits: at least one segment per half span of two spans, and twenty per limit.
TEST_F(Diagram, FansHaveTheirCurveAndItsLimits) {
  const std::string recording = record({"FAN", "FAN-315"});
  const std::size_t chart_end = recording.find("select stock black-pen");
  ASSERT_NE(chart_end, std::string::npos);
  EXPECT_GT(count_of(recording.substr(chart_end), "\nline "), 20u);
}

TEST_F(Diagram, FansAreDrawnOnLinearAxes) {
  const std::string recording = record({"FAN", "FAN-315"});
  EXPECT_THAT(recording, HasSubstr("\"Fan 315\""));
  // Labels of a linear axis from zero stand in equal steps.
  for (const char* label : {"\"0\"\n", "\"50\"\n", "\"100\"\n", "\"250\"\n", "\"400\"\n", "\"500\"\n"}) {
    EXPECT_THAT(recording, HasSubstr(label));
  }
}

TEST_F(Diagram, MarketChoosesTheProductCode) {
  EXPECT_THAT(record(damper, {"--market", "FIN"}), HasSubstr("\"S\xC3\xA4\xC3\xA4t\xC3\xB6pelti 200\""));
}

TEST_F(Diagram, UnknownEndingIsRefused) {
  EXPECT_THAT(fail(damper, {}, "x.gif"), HasSubstr(".png, .svg, .pdf or .txt"));
  EXPECT_THAT(fail(damper, {}, "x"), HasSubstr(".png, .svg, .pdf or .txt"));
}

TEST_F(Diagram, UnknownUnitsNameTheUnitsThereAre) {
  EXPECT_THAT(fail(damper, {"--xunit", "gal"}),
              HasSubstr("--xunit is \"gal\", expected one of l/s, l/h, m3/s, m3/h, cfm\n"));
  EXPECT_THAT(fail(damper, {"--yunit", "bar"}),
              HasSubstr("--yunit is \"bar\", expected one of Pa, kPa, inWC, inwg\n"));
}

TEST_F(Diagram, BadSizesAreRefused) {
  for (const char* size :
       {"big", "1200", "1200x", "x900", "63x900", "1200x16385", "1200x900x3", "-1200x900"}) {
    EXPECT_THAT(fail(damper, {"--size=" + std::string(size)}), HasSubstr("--size is ")) << size;
  }
}

TEST_F(Diagram, BadLimitsAreRefused) {
  for (const char* limits : {"20", "20;80", "20,", "a,b", "0,80"}) {
    EXPECT_THAT(fail(damper, {"--limits", limits}), HasSubstr("--limits is ")) << limits;
  }
}

TEST_F(Diagram, PressureWithoutAFlowIsRefused) {
  EXPECT_THAT(fail(damper, {"--dp", "60"}), HasSubstr("--qv"));
}

TEST_F(Diagram, UnknownProductLeavesNothing) {
  EXPECT_THAT(fail({"ASD", "DAMPER-201"}, {}), HasSubstr("near it: DAMPER-200"));
}

TEST_F(Diagram, ProductWithoutFlowDataLeavesNothing) {
  EXPECT_THAT(fail({"TVM", "MODEL"}, {}), HasSubstr("TVM MODEL has no flow data to draw"));
}

TEST_F(Diagram, LimitsThatMakeNoAxisAreTold) {
  tavdtest::Record("ASD", "BAD")
      .header(110, 100, 0, 20, 20, 10, 500)
      .floats(1651, {100, 100})
      .save(database.handle());
  EXPECT_THAT(fail({"ASD", "BAD"}, {}),
              HasSubstr("ASD BAD has limits that make no diagram: 20 - 20 l/s, 10 - 500 Pa"));
}

TEST_F(Diagram, MissingFolderIsToldWithTheReason) {
  for (const char* name : {"none/x.png", "none/x.svg", "none/x.pdf", "none/x.txt"}) {
    const std::string error = fail(damper, {}, name);
    EXPECT_THAT(error, HasSubstr("cannot write \"" + folder.file(name) + "\": ")) << name;
    EXPECT_THAT(error, HasSubstr("No such file or directory")) << name;
  }
}

TEST_F(Diagram, FolderInThePlaceOfTheFileStaysAsItIs) {
  for (const char* name : {"x.png", "x.svg", "x.pdf", "x.txt"}) {
    std::filesystem::create_directory(folder.file(name));
    EXPECT_THAT(expect_user_error(command(damper, folder.file(name))), HasSubstr("cannot write")) << name;
    EXPECT_TRUE(std::filesystem::is_directory(folder.file(name)));
  }
  EXPECT_THAT(folder.names(), ElementsAre("x.pdf", "x.png", "x.svg", "x.txt"));
}

}  // namespace
