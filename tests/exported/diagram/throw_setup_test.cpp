// Setting up and building the throw length diagram.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exported/diagram/throwdiagram_fixture.h"

namespace {

using tavdtest::factor_row;
using tavdtest::Record;
using tavdtest::throw_row;
using Strings = std::vector<std::string>;

constexpr int kList = 7;

class ThrowSetup : public tavdtest::ThrowDiagram {
 protected:
  bool is_drawn() { return !draw().text().empty(); }

  Record product_{"TST", "PRODUCT"};
};

TEST_F(ThrowSetup, InitWithAProductAndNoListBuildsAtOnce) {
  terminal(product_).text(1501, "CODE-1");
  EXPECT_EQ(0, init(db(), product_.rec(), 0));
  EXPECT_EQ("CODE-1", title());
}

TEST_F(ThrowSetup, InitWithAListWaitsForTheList) {
  terminal(product_);
  EXPECT_EQ(0, L2dg_init(tgui_main_module(), db(), product_.rec(), kList, 0, 0, 0));
  EXPECT_FALSE(is_drawn());
}

TEST_F(ThrowSetup, InitWithoutAProductBuildsNothing) {
  EXPECT_EQ(0, init(db(), nullptr, 0));
  EXPECT_EQ(0, L2dg_init(tgui_main_module(), db(), nullptr, kList, 0, 0, 0));
  EXPECT_FALSE(is_drawn());
}

TEST_F(ThrowSetup, InitTellsThatTheProductCannotBeDrawn) {
  limits(product_);
  EXPECT_EQ(-1, init(db(), product_.rec(), 0));
  EXPECT_FALSE(is_drawn());
}

TEST_F(ThrowSetup, InitEmptyLeavesTheProductToTheBuild) {
  L2dg_init_empty(nullptr, db());
  EXPECT_FALSE(is_drawn());
  EXPECT_EQ(0, L2dg_initdiagramdata(terminal(product_).rec()));
  EXPECT_TRUE(is_drawn());
}

TEST_F(ThrowSetup, BuildingWithoutARecordTakesTheFormerDiagramAway) {
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal(product_).rec()));
  EXPECT_EQ(-1, L2dg_initdiagramdata(nullptr));
  EXPECT_FALSE(is_drawn());
}

TEST_F(ThrowSetup, ReleasingTakesTheDiagramAwayAndMayBeRepeated) {
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal(product_).rec()));
  L2dg_release();
  EXPECT_FALSE(is_drawn());
  L2dg_release();
}

TEST_F(ThrowSetup, InitOverALivingDiagramStartsAfresh) {
  ASSERT_EQ(0, init(db(), terminal(product_).rec(), 300, 0, 3));
  L2dg_set_title("Mine");
  L2dg_init_empty(tgui_main_module(), db());
  EXPECT_FALSE(is_drawn());
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ("qv [l/s]", titles()[1]);
  EXPECT_NE("Mine", title());
  EXPECT_TRUE(curves("ellipse").empty());
}

TEST_F(ThrowSetup, EachFlowUnitHasItsTitleAndFactor) {
  terminal(product_);
  const struct {
    std::int16_t unit;
    const char* title;
    const char* last;  // 1000 l/s, or the last of 1, 2, 3, 5 and 10 below it
  } units[] = {{0, "qv [l/s]", "1000"},      {1, "qv [l/h]", "3000000"}, {2, "qv [m3/s]", "1.0"},
               {3, "qv [m3/h]", "3000"},     {4, "qv [cfm]", "2000"},    {5, "qv [m3/h/m]", "3000"},
               {6, "qv [l/s/m]", "1000"},    {7, "qv [l/s]", "1000"},    {-1, "qv [l/s]", "1000"},
               {-32768, "qv [l/s]", "1000"}, {32767, "qv [l/s]", "1000"}};
  for (const auto& u : units) {
    ASSERT_EQ(0, init(db(), product_.rec(), 300, 0, u.unit)) << u.unit;
    EXPECT_EQ(u.title, titles()[1]) << u.unit;
    EXPECT_EQ(u.last, x_labels().back()) << u.unit;
  }
}

TEST_F(ThrowSetup, UnitOfTheAxisMovesNeitherLineNorMark) {
  terminal(product_);
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  const Strings in_l_s = curves();
  ASSERT_EQ(0, init(db(), product_.rec(), 300, 0, 6));
  EXPECT_EQ(in_l_s, curves());
}

TEST_F(ThrowSetup, ThrowAxisIsAlwaysTitledInMetres) {
  ASSERT_EQ(0, init(db(), terminal(product_).rec(), 300, 0, 3));
  EXPECT_EQ("L02 [m]", titles()[2]);
}

TEST_F(ThrowSetup, VelocityProductsKeepTheTitleOfTheUnit) {
  for (const std::int16_t kind : {std::int16_t{111}, std::int16_t{122}}) {
    Record velocity("TST", "VELOCITY");
    velocity.header(kind, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, 1}});
    ASSERT_EQ(0, init(db(), velocity.rec(), 300, 0, 3));
    EXPECT_EQ("qv [m3/h]", titles()[1]);
  }
}

TEST_F(ThrowSetup, FlowAxisIsTheProductsOwnLimits) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 300));
  EXPECT_EQ((Strings{"100", "200", "300", "500", "1000"}), x_labels());
  EXPECT_EQ((tavdtest::Segment{1553, 1562, 9000, 1562}), recording_->segments()[0]);
  EXPECT_EQ((tavdtest::Segment{9000, 8045, 1553, 8045}), recording_->segments()[2]);
}

// 2.5 m at 50 l/s and 20 m at 400 l/s by the first row alone, so 2 m to 21 m.
TEST_F(ThrowSetup, ThrowAxisGoesByTheFirstRowAlone) {
  product_.header(110, 0, 0, 50, 400, 10, 100).rows<QvL2Point>(1659, {{100, 5}, {200, 8}});
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ((Strings{"2", "3", "5", "10", "10", "20"}), y_labels());
}

TEST_F(ThrowSetup, ThrowAxisByValueGoesFromTheLastValueToTheFirst) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 300));
  EXPECT_EQ((Strings{"1", "2", "3", "5", "10"}), y_labels());
}

TEST_F(ThrowSetup, TableByValueGoesBeforeTheTableForAll) {
  terminal_by_value(product_).rows<QvL2Point>(1659, {{100, 50}});
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ((Strings{"1", "2", "3", "5", "10"}), y_labels());
}

TEST_F(ThrowSetup, LowestThrowUnderAMetreStartsTheAxisAtAHalf) {
  limits(product_).rows<QvL2Point>(1659, {{100, 0.3F}});
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  // From 0.5 m: 0.5 is the first label, and the labels have the decimals that it needs.
  EXPECT_EQ("0.5", y_labels().front());
}

// The first value gives 1 m at the most, the last one 200 m at the least: the upper end is raised to 201 m.
TEST_F(ThrowSetup, ThrowAxisRisesWhateverTheTableSays) {
  limits(product_).rows<ParL2Point>(1660, {throw_row("1", 1000, 1), throw_row("2", 100, 200)});
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ((Strings{"200"}), y_labels());
}

TEST_F(ThrowSetup, FactorOfAChosenValueMovesTheThrowAxis) {
  terminal(product_).text(1514, "A").rows<ParEntry>(1661, {factor_row("1", 1), factor_row("2", 5)});
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ("1", y_labels().front());
  L2dg_set_parameter("A", "2");
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ("5", y_labels().front());
  EXPECT_EQ("50", y_labels().back());
}

TEST_F(ThrowSetup, TitleChangesAtTheNextBuild) {
  terminal(product_).text(1501, "CODE-1");
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  L2dg_set_title("Mine");
  EXPECT_EQ("CODE-1", title());
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ("Mine", title());
  L2dg_set_title("");
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ("CODE-1", title());
}

TEST_F(ThrowSetup, LongTextsAreCutAndNullIsEmpty) {
  terminal(product_).text(1501, "CODE-1");
  L2dg_set_damperpos_label(std::string(500, 'd').c_str());
  L2dg_set_title(std::string(500, 't').c_str());
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ(std::string(79, 't'), title());
  L2dg_set_title(nullptr);
  L2dg_set_damperpos_label(nullptr);
  L2dg_set_parameter(nullptr, nullptr);
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ("CODE-1", title());
}

TEST_F(ThrowSetup, PositionLabelIsNeverDrawn) {
  L2dg_set_damperpos_label("pos");
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal_by_value(product_).rec()));
  for (const std::string& text : titles()) {
    EXPECT_EQ(std::string::npos, text.find("pos"));
  }
}

TEST_F(ThrowSetup, ResolutionChangesNothing) {
  ASSERT_EQ(0, init(db(), terminal(product_).rec(), 300));
  const std::string before = draw().text();
  L2dg_setcurveresolution(9);
  EXPECT_EQ(before, draw().text());
}

TEST_F(ThrowSetup, ProductWithoutAThrowTableIsNoDiagramAndNoFailure) {
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal(product_).rec()));
  Record other("TST", "OTHER");
  EXPECT_EQ(-1, L2dg_initdiagramdata(limits(other).rec()));
  EXPECT_FALSE(is_drawn());
}

TEST_F(ThrowSetup, ProductWithoutFlowDataIsNoDiagram) {
  EXPECT_EQ(-1, L2dg_initdiagramdata(product_.rows<QvL2Point>(1659, {{100, 1}}).rec()));
  EXPECT_FALSE(is_drawn());
}

TEST_F(ThrowSetup, LimitsThatDoNotRiseFromAboveZeroAreNoDiagram) {
  const float cases[][4] = {
      {0, 1000, 10, 100}, {-1, 1000, 10, 100},  {1000, 1000, 10, 100}, {1000, 100, 10, 100},
      {100, 1000, 0, 10}, {100, 1000, -1, 100}, {100, 1000, 100, 100}, {100, 1000, 100, 10},
  };
  for (const auto& c : cases) {
    Record bad("TST", "BAD");
    bad.header(110, 0, 0, c[0], c[1], c[2], c[3]).rows<QvL2Point>(1659, {{100, 1}});
    EXPECT_EQ(-1, L2dg_initdiagramdata(bad.rec())) << c[0] << ' ' << c[1] << ' ' << c[2] << ' ' << c[3];
    EXPECT_FALSE(is_drawn());
  }
}

TEST_F(ThrowSetup, FanFromZeroIsNoDiagramEither) {
  product_.header(140, 0, 0, 0, 1000, 0, 100).rows<QvL2Point>(1659, {{100, 1}});
  EXPECT_EQ(-1, L2dg_initdiagramdata(product_.rec()));
}

TEST_F(ThrowSetup, RememberedChoicesOutliveInit) {
  terminal(product_).text(1514, "A").rows<ParEntry>(1661, {factor_row("1", 1), factor_row("2", 5)});
  L2dg_set_parameter("A", "2");
  L2dg_set_parameter("G", "20");
  L2dg_init_empty(tgui_main_module(), db());
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ("5", y_labels().front());
  Record by_value("TST", "BY-VALUE");
  ASSERT_EQ(0, init(db(), terminal_by_value(by_value).rec(), 300));
  EXPECT_EQ("20", titles().back());
}

TEST_F(ThrowSetup, ThirdParameterNameReplacesTheSecond) {
  terminal(product_)
      .text(1514, "A,B")
      .rows<ParEntry>(1661, {factor_row("1", 1), factor_row("2", 5)})
      .rows<ParEntry>(1662, {factor_row("1", 1), factor_row("2", 20)});
  L2dg_set_parameter("a", "2");
  L2dg_set_parameter("b", "2");
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ("100", y_labels().front());
  L2dg_set_parameter("C", "2");
  ASSERT_EQ(0, L2dg_initdiagramdata(product_.rec()));
  EXPECT_EQ("5", y_labels().front());
}

}  // namespace
