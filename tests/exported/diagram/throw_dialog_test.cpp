// The list box of sizes and the combo box of values, in a dialog of libtavdgui.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "exported/diagram/throwdiagram_fixture.h"
#include "support/dialog.h"
#include "support/painted.h"

namespace {

using tavdtest::factor_row;
using tavdtest::kCombo;
using tavdtest::kList;
using tavdtest::Record;
using tavdtest::throw_row;
using Strings = std::vector<std::string>;

class ThrowDialog : public tavdtest::ThrowDiagram {
 protected:
  void SetUp() override {
    ThrowDiagram::SetUp();
    pane_ = std::make_unique<tavdtest::Painted>("TAVDDGRL02", 640, 480);
    ASSERT_NE(nullptr, pane_->window());
  }
  void TearDown() override {
    tgui_destroy_window(pane_->window());
    ThrowDiagram::TearDown();
    tavbreleaserec(main_);
  }

  void add_size(const char* id, const char* code) {
    Record size("TST", id);
    terminal(size).text(1501, code).save(db());
  }
  // A family of three sizes, bound to the list box.
  void bind_family() {
    Record("TST", "ABC-*").words(1150, {1}).save(db());
    add_size("ABC-100", "ABC 100");
    add_size("ABC-200", "ABC 200");
    add_size("ABC-300", "ABC 300");
    main_ = tavbfindrec(db(), "TST", "ABC-*", 0);
    ASSERT_NE(nullptr, main_);
    ASSERT_EQ(0, L2dg_init(tgui_main_module(), db(), main_, kList, 300, 0, 0));
    L2dg_fillsizeLB(dialog_.window());
  }
  // Whether the window shows a diagram.
  bool is_painted() { return !pane_->paint().text().empty(); }
  void build_throws(const std::vector<ParL2Point>& rows) {
    Record product("TST", "PRODUCT");
    ASSERT_EQ(0, L2dg_initdiagramdata(limits(product).rows(1660, rows).rec()));
  }
  int fill_combo() { return L2dg_fill_parameter_combo(dialog_.window(), kCombo, 12345); }
  void update_combo() { L2dg_update_parameter_combo(dialog_.window(), kCombo); }

  tavdtest::Dialog dialog_;
  std::unique_ptr<tavdtest::Painted> pane_;
  tavb_rec main_ = nullptr;
};

TEST_F(ThrowDialog, ListBoxIsFilledWithTheFamilyAndItsFirstRowSelected) {
  dialog_.add(kList, "left over");
  bind_family();
  EXPECT_EQ((Strings{"ABC 100", "ABC 200", "ABC 300"}), dialog_.rows(kList));
  EXPECT_EQ(0, dialog_.selected(kList));
  EXPECT_EQ("", title());  // the first build waits for the list
}

TEST_F(ThrowDialog, SelectedSizeIsBuilt) {
  bind_family();
  L2dg_update_from_list(dialog_.window());
  EXPECT_EQ("ABC 100", title());
  dialog_.select(kList, 2);
  L2dg_update_from_list(dialog_.window());
  EXPECT_EQ("ABC 300", title());
}

TEST_F(ThrowDialog, WithoutASelectionTheDiagramStays) {
  bind_family();
  L2dg_update_from_list(dialog_.window());
  dialog_.select(kList, -1);
  L2dg_update_from_list(dialog_.window());
  EXPECT_EQ("ABC 100", title());
}

TEST_F(ThrowDialog, SizeThatIsGoneFromTheDatabaseLeavesTheDiagram) {
  bind_family();
  L2dg_update_from_list(dialog_.window());
  tavbdeleterec(db(), "TST", "ABC-200");
  dialog_.select(kList, 1);
  L2dg_update_from_list(dialog_.window());
  EXPECT_EQ("ABC 100", title());
  EXPECT_TRUE(is_painted());
}

TEST_F(ThrowDialog, ProductWhosePressureStartsAtZeroFailsAndBlanksTheWindow) {
  bind_family();
  L2dg_update_from_list(dialog_.window());
  EXPECT_TRUE(is_painted());
  Record bad("TST", "BAD");
  bad.header(110, 0, 0, 100, 1000, 0, 100).rows<QvL2Point>(1659, {{100, 1}});
  EXPECT_EQ(-1, L2dg_initdiagramdata(bad.rec()));
  EXPECT_EQ("", draw().text());
  EXPECT_FALSE(is_painted());
}

TEST_F(ThrowDialog, WindowStaysBlankAfterAFailedBuildUntilTheListBuilds) {
  bind_family();
  Record bad("TST", "BAD");
  bad.header(110, 0, 0, 100, 1000, 0, 100).rows<QvL2Point>(1659, {{100, 1}});
  ASSERT_EQ(-1, L2dg_initdiagramdata(bad.rec()));
  Record good("TST", "GOOD");
  EXPECT_EQ(0, L2dg_initdiagramdata(terminal(good).rec()));
  EXPECT_NE("", draw().text());  // there is a chart
  EXPECT_FALSE(is_painted());
  L2dg_update_from_list(dialog_.window());
  EXPECT_TRUE(is_painted());
}

TEST_F(ThrowDialog, ProductWithoutAThrowTableDoesNotBlankTheNextOne) {
  bind_family();
  Record none("TST", "NONE");
  EXPECT_EQ(-1, L2dg_initdiagramdata(limits(none).rec()));
  EXPECT_FALSE(is_painted());
  Record good("TST", "GOOD");
  EXPECT_EQ(0, L2dg_initdiagramdata(terminal(good).rec()));
  EXPECT_TRUE(is_painted());
}

TEST_F(ThrowDialog, EmptyFamilyEmptiesTheListAndSelectsNothing) {
  Record("TST", "LONE").words(1150, {-1}).save(db());
  main_ = tavbfindrec(db(), "TST", "LONE", 0);
  ASSERT_EQ(0, L2dg_init(tgui_main_module(), db(), main_, kList, 0, 0, 0));
  dialog_.add(kList, "left over");
  L2dg_fillsizeLB(dialog_.window());
  EXPECT_TRUE(dialog_.rows(kList).empty());
  EXPECT_EQ(-1, dialog_.selected(kList));
  L2dg_update_from_list(dialog_.window());
  EXPECT_EQ("", title());
}

TEST_F(ThrowDialog, WithoutAProductThereIsNoFamily) {
  dialog_.add(kList, "kept");
  L2dg_fillsizeLB(dialog_.window());
  EXPECT_EQ((Strings{"kept"}), dialog_.rows(kList));
}

TEST_F(ThrowDialog, ComboBoxListsEachRunOfAValueOnce) {
  build_throws({throw_row("10", 100, 1), throw_row("10", 200, 2), throw_row("20", 100, 1),
                throw_row("20", 200, 2), throw_row("10", 300, 3)});
  dialog_.add(kCombo, "left over");
  EXPECT_EQ(3, fill_combo());
  EXPECT_EQ((Strings{"10", "20", "10"}), dialog_.rows(kCombo));
}

TEST_F(ThrowDialog, ComboBoxListsValuesWithoutQuotesBlanksAndCase) {
  build_throws({throw_row("\"ab\"", 100, 1), throw_row("AB", 200, 2), throw_row("longer", 100, 1),
                throw_row("ab", 200, 2), throw_row("\"aB\"", 200, 2)});
  EXPECT_EQ(3, fill_combo());
  EXPECT_EQ((Strings{"ab", "longer", "ab"}), dialog_.rows(kCombo));
}

TEST_F(ThrowDialog, EmptyFirstValueIsNotListedALaterOneIs) {
  build_throws({throw_row("", 100, 1), throw_row("10", 200, 2), throw_row("\"\"", 100, 1)});
  EXPECT_EQ(2, fill_combo());
  EXPECT_EQ((Strings{"10", ""}), dialog_.rows(kCombo));
}

TEST_F(ThrowDialog, ThrowTableTakesThePlaceOfTheParameters) {
  Record product("TST", "PRODUCT");
  terminal_by_value(product).text(1514, "A").rows<ParEntry>(1661, {factor_row("1", 1), factor_row("2", 1)});
  ASSERT_EQ(0, L2dg_initdiagramdata(product.rec()));
  EXPECT_EQ(2, fill_combo());
  EXPECT_EQ((Strings{"10", "20"}), dialog_.rows(kCombo));
}

TEST_F(ThrowDialog, WithOneLineForAllTheComboBoxListsTheFirstNamedParameter) {
  Record product("TST", "PRODUCT");
  terminal(product)
      .text(1514, ",B")
      .rows<ParEntry>(1661, {factor_row("1", 1)})
      .rows<ParEntry>(1662, {factor_row("\"x\"", 1), factor_row("y", 5)});
  ASSERT_EQ(0, L2dg_initdiagramdata(product.rec()));
  EXPECT_EQ(2, fill_combo());
  EXPECT_EQ((Strings{"x", "y"}), dialog_.rows(kCombo));
}

TEST_F(ThrowDialog, ProductWithoutValuesEmptiesTheComboBox) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal(product).rec()));
  dialog_.add(kCombo, "left over");
  EXPECT_EQ(0, fill_combo());
  EXPECT_TRUE(dialog_.rows(kCombo).empty());
}

TEST_F(ThrowDialog, FillingTheComboBoxForgetsTheSelectedLine) {
  L2dg_set_parameter("G", "20");
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal_by_value(product).rec()));
  EXPECT_EQ(decade_y(1.5), throw_line()[1]);
  EXPECT_EQ(1U, curves("text").size());
  fill_combo();
  // The line of the first rows, without a label.
  EXPECT_EQ(decade_y(2), throw_line()[1]);
  EXPECT_TRUE(curves("text").empty());
  dialog_.select(kCombo, 1);
  update_combo();
  EXPECT_EQ(decade_y(1.5), throw_line()[1]);
  EXPECT_EQ(1U, curves("text").size());
}

TEST_F(ThrowDialog, WithoutASelectedValueTheLineStays) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal_by_value(product).rec()));
  fill_combo();
  L2dg_set_parameter("G", "20");
  update_combo();
  EXPECT_EQ(decade_y(1.5), throw_line()[1]);
}

TEST_F(ThrowDialog, RowsOfTheHostsOwnAreCutWhereTheFieldEnds) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal_by_value(product).rec()));
  fill_combo();
  dialog_.add(kCombo, ("20    " + std::string(500, 'x')).c_str());
  dialog_.select(kCombo, 2);
  update_combo();
  EXPECT_EQ(decade_y(1.5), throw_line()[1]);
  EXPECT_EQ("20", titles().back());
}

TEST_F(ThrowDialog, SelectedParameterValueMovesTheLineAtTheNextPaint) {
  Record product("TST", "PRODUCT");
  terminal(product).text(1514, "A").rows<ParEntry>(1661, {factor_row("1", 1), factor_row("2", 2)});
  ASSERT_EQ(0, L2dg_initdiagramdata(product.rec()));
  fill_combo();
  update_combo();  // nothing is selected
  EXPECT_EQ(8045, throw_line()[1]);
  dialog_.select(kCombo, 1);
  update_combo();
  // 2 m at the left, in the chart that was made from 1 m to 11 m.
  EXPECT_NEAR(8045 - 6483 * std::log10(2) / std::log10(11), throw_line()[1], 1);
}

TEST_F(ThrowDialog, NullDialogAndUnknownControlsAreHarmless) {
  bind_family();
  L2dg_fillsizeLB(nullptr);
  L2dg_update_from_list(nullptr);
  EXPECT_EQ(0, L2dg_fill_parameter_combo(nullptr, 5, 0));
  L2dg_update_parameter_combo(nullptr, 5);
  L2dg_update_parameter_combo(dialog_.window(), 999);
  EXPECT_EQ("", title());
}

}  // namespace
