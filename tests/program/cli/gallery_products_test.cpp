// The gallery of a database: its page, its drawings, its sheet, and how the folder is written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/database.h"
#include "support/program.h"

namespace {

namespace fs = std::filesystem;
using clitest::expect_user_error;
using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using tavdtest::Record;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr int kCode = 1562;
constexpr int kShapeData = 1110;

std::vector<std::string> names_in(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::ranges::sort(names);
  return names;
}

std::string quoted(const char* attribute, const std::string& html, std::size_t number) {
  const std::regex pattern(std::string(attribute) + "=\"([^\"]*)\"");
  auto it = std::sregex_iterator(html.begin(), html.end(), pattern);
  std::advance(it, number);
  return (*it)[1];
}

struct GalleryProducts : testing::Test {
  // ASD "A/B*1" with flow and throw data; ASD "a/b*1" with flow data; DMP "BARE" with a shape alone; a class
  // and an id of awkward characters without any data; and a record that is no product.
  GalleryProducts() {
    Record("ASD", "A/B*1")
        .header(110, 160, 0, 100, 1000, 10, 500)
        .floats(1651, {100, 50})
        .floats(1659, {100, 1})
        .text(kCode, "Slash <&> \"one\"")
        .save(database.handle());
    Record("ASD", "a/b*1")
        .header(110, 160, 0, 100, 1000, 10, 500)
        .floats(1651, {100, 50})
        .save(database.handle());
    Record("DMP", "BARE").words(kShapeData, {101, 160, 425, 290, 65}).save(database.handle());
    Record(".<&", "..").text(kCode, "Nothing").save(database.handle());
    Record("TVM", "MODEL").text(kCode, "Model").save(database.handle());
  }

  std::string out() const { return folder.file("out"); }
  std::string in_out(const std::string& name) const { return out() + "/" + name; }
  Outcome draw() const { return run_program({"gallery", database.path(), "-o", out()}); }
  std::string page() const { return read_file(in_out("index.html")); }

  tavdtest::Database database;
  Folder folder;
};

TEST_F(GalleryProducts, DrawsWhatEachProductHas) {
  const Outcome outcome = draw();
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            in_out("index.html") + ": 4 products, 2 flow diagrams, 1 throw diagrams, 1 pictures\n");
  EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
}

TEST_F(GalleryProducts, NamesOfFilesAreSafeAndDifferEvenWithoutCase) {
  ASSERT_EQ(draw().exit_code, 0);
  const std::vector<std::string> names = names_in(out());
  EXPECT_EQ(names.size(), 5U);
  EXPECT_THAT(names, Contains("ASD-A_2FB_2A1-throw.svg"));
  EXPECT_THAT(names, Contains("DMP-BARE-picture.svg"));
  std::set<std::string> lower;
  for (std::string name : names) {
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_."),
              std::string::npos)
        << name;
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    EXPECT_TRUE(lower.insert(name).second) << name;
  }
}

TEST_F(GalleryProducts, PageShowsEveryFileWithAnAlternativeText) {
  ASSERT_EQ(draw().exit_code, 0);
  const std::string html = page();
  static const std::regex kImage("<img src=\"([^\"]+)\"[^>]* alt=\"([^\"]+)\"");
  std::set<std::string> shown = {"index.html"};
  for (auto it = std::sregex_iterator(html.begin(), html.end(), kImage); it != std::sregex_iterator(); ++it) {
    shown.insert((*it)[1]);
    EXPECT_THAT((*it)[2].str(), HasSubstr("class ")) << (*it)[1];
  }
  const std::vector<std::string> names = names_in(out());
  EXPECT_EQ(shown, std::set<std::string>(names.begin(), names.end()));
}

TEST_F(GalleryProducts, PageHasALanguageHeadingsByClassAndNoScript) {
  ASSERT_EQ(draw().exit_code, 0);
  const std::string html = page();
  EXPECT_THAT(html, HasSubstr("<html lang=\"en\">"));
  EXPECT_THAT(html, HasSubstr("Class ASD</h2>"));
  EXPECT_THAT(html, HasSubstr("Class .&lt;&amp;</h2>"));
  EXPECT_THAT(html, HasSubstr("<h3>Slash &lt;&amp;&gt; &quot;one&quot;</h3>"));
  EXPECT_THAT(html, HasSubstr("<h3>a/b*1</h3>"));  // without a code its id
  EXPECT_THAT(html, Not(HasSubstr("<script")));
  EXPECT_THAT(html, Not(HasSubstr("http")));
  EXPECT_THAT(html, Not(HasSubstr("Model")));
  EXPECT_THAT(html, HasSubstr("No picture"));
  EXPECT_THAT(html, HasSubstr("No throw diagram"));
  EXPECT_EQ("#" + quoted("<h2 id", html, 0), quoted("<li><a href", html, 0));
}

TEST_F(GalleryProducts, DrawingsTellWhatTheyShow) {
  ASSERT_EQ(draw().exit_code, 0);
  const std::string flow = read_file(in_out("ASD-A_2FB_2A1-flow.svg"));
  EXPECT_THAT(flow,
              HasSubstr("<title id=\"title\">Slash &lt;&amp;&gt; &quot;one&quot;: flow diagram</title>"));
  EXPECT_THAT(flow,
              HasSubstr("class ASD, id A/B*1: fixed resistance, size 160 mm, 100 - 1000 l/s, 10 - 500 Pa"));
  EXPECT_LT(flow.find("<g id=\"axes\"><title>Axes</title>"),
            flow.find("<g id=\"curves\"><title>Curves</title>"));
  EXPECT_NE(flow.find("<g id=\"curves\">"), std::string::npos);
  const std::string throws = read_file(in_out("ASD-A_2FB_2A1-throw.svg"));
  EXPECT_THAT(throws, HasSubstr("<g id=\"throw-length\"><title>Throw length</title>"));
  EXPECT_THAT(read_file(in_out("DMP-BARE-picture.svg")), HasSubstr("BARE: dimensions</title>"));
}

TEST_F(GalleryProducts, SecondRunGivesTheSameBytesAndLeavesOtherFiles) {
  ASSERT_EQ(draw().exit_code, 0);
  const std::vector<std::string> names = names_in(out());
  std::vector<std::string> first;
  for (const std::string& name : names) {
    first.push_back(read_file(in_out(name)));
    EXPECT_FALSE(first.back().empty());
  }
  std::ofstream(in_out("notes.txt")) << "kept";
  std::ofstream(in_out(names[0])) << "replaced";
  ASSERT_EQ(draw().exit_code, 0);
  for (std::size_t i = 0; i < names.size(); ++i)
    EXPECT_TRUE(read_file(in_out(names[i])) == first[i]) << names[i];
  EXPECT_EQ(read_file(in_out("notes.txt")), "kept");
  EXPECT_EQ(names_in(out()).size(), names.size() + 1);
}

TEST_F(GalleryProducts, AnyNumberOfThreadsMakesTheSameFilesAndTellsTheSame) {
  const std::string many = folder.file("many.tavdb");
  ASSERT_EQ(run_program({"db", "synth", many, "--records", "60"}).exit_code, 0);
  const auto draw_on = [&](const std::string& threads) {
    const std::string to = folder.file(threads);
    const Outcome outcome = run_program({"gallery", many, "-o", to, "--threads", threads});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(to + "/index.html: 59 products, "));
    return outcome.out.substr(to.size());
  };
  const std::string told = draw_on("1");
  const std::vector<std::string> names = names_in(folder.file("1"));
  EXPECT_GT(names.size(), 100U);
  for (const char* threads : {"2", "16"}) {
    EXPECT_EQ(draw_on(threads), told);
    ASSERT_EQ(names_in(folder.file(threads)), names);
    for (const std::string& name : names) {
      EXPECT_TRUE(read_file(folder.file("1/" + name)) == read_file(folder.file(threads + ("/" + name))))
          << threads << ' ' << name;
    }
  }
}

TEST_F(GalleryProducts, ThreadsAreFrom1To256) {
  for (const char* threads : {"0", "257", "-1", "two", "1.5", ""}) {
    EXPECT_THAT(
        expect_user_error({"gallery", database.path(), "-o", out(), std::string("--threads=") + threads}),
        HasSubstr("--threads"));
  }
  EXPECT_FALSE(fs::exists(out()));
}

// Of any number of threads the first picture in the order of the products is the one that is told.
TEST_F(GalleryProducts, PicturesThatCannotBeWrittenAreToldAsOneThreadTellsThem) {
  std::set<std::string> told;
  for (const char* threads : {"1", "2", "16"}) {
    const Outcome outcome =
        clitest::run_program_within(4000, {"gallery", database.path(), "-o", out(), "--threads", threads});
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_FALSE(fs::exists(out()));
    told.insert(outcome.err);
  }
  EXPECT_THAT(told, testing::ElementsAre("tavd: cannot write \"" + in_out("ASD-A_2FB_2A1-flow.svg") +
                                         "\": File too large\n"));
}

TEST_F(GalleryProducts, FileThatCannotBeReplacedLeavesTheFolderAsItWas) {
  fs::create_directories(in_out("index.html"));
  EXPECT_THAT(expect_user_error({"gallery", database.path(), "-o", out()}),
              HasSubstr("index.html\": it is a folder"));
  EXPECT_EQ(names_in(out()), std::vector<std::string>{"index.html"});
}

TEST_F(GalleryProducts, FolderThatIsAFileIsRefused) {
  std::ofstream(out()) << "x";
  EXPECT_THAT(expect_user_error({"gallery", database.path(), "-o", out()}), HasSubstr("expected a folder"));
  EXPECT_EQ(read_file(out()), "x");
  EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
}

TEST_F(GalleryProducts, MissingDatabaseMakesNoFolder) {
  EXPECT_THAT(expect_user_error({"gallery", folder.file("none"), "-o", out()}), HasSubstr("no database"));
  EXPECT_FALSE(fs::exists(out()));
}

TEST_F(GalleryProducts, SheetHasTheKindsAndAThrowDiagram) {
  const Outcome outcome = run_program({"gallery", database.path(), "--sheet", folder.file("sheet.svg")});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.out, folder.file("sheet.svg") + ": 2 diagrams\n");
  const std::string svg = read_file(folder.file("sheet.svg"));
  EXPECT_THAT(svg, HasSubstr("width=\"1440\" height=\"360\""));
  EXPECT_THAT(svg, HasSubstr("(throw length).</desc>"));
  EXPECT_EQ(folder.names(), std::vector<std::string>{"sheet.svg"});
}

TEST_F(GalleryProducts, NothingToDrawAndNowhereToDrawAreRefused) {
  EXPECT_THAT(expect_user_error({"gallery", "-o", out()}), HasSubstr("expected a database or --shapes"));
  EXPECT_THAT(expect_user_error({"gallery", database.path()}), HasSubstr("expected --output"));
  EXPECT_THAT(expect_user_error({"gallery", "--shapes", "--sheet", folder.file("s.png")}),
              HasSubstr("without a database"));
  EXPECT_TRUE(folder.names().empty());
}

TEST(GalleryOfNoProducts, IsAPageThatSaysSo) {
  const tavdtest::Database database;
  const Folder folder;
  ASSERT_EQ(run_program({"gallery", database.path(), "-o", folder.file("out")}).exit_code, 0);
  EXPECT_THAT(read_file(folder.file("out/index.html")), HasSubstr("<p>0 products</p>"));
  EXPECT_THAT(expect_user_error({"gallery", database.path(), "--sheet", folder.file("s.png")}),
              HasSubstr("no products with flow data"));
}

}  // namespace
