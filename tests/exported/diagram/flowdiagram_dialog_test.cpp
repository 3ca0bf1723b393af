// The list box of sizes and the combo box of parameter values, in a dialog of libtavdgui.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"
#include "support/dialog.h"

namespace {

using tavdtest::Record;
using tavdtest::Text;
using Strings = std::vector<std::string>;

using tavdtest::kCombo;
using tavdtest::kList;

class FlowDiagramDialog : public tavdtest::FlowDiagram {
 protected:
  void SetUp() override {
    FlowDiagram::SetUp();
    dialog_ = host_.window();
  }
  void TearDown() override {
    FlowDiagram::TearDown();
    tavbreleaserec(main_);
  }

  intptr_t send(int id, unsigned message, uintptr_t wparam = 0, intptr_t lparam = 0) {
    return host_.send(id, message, wparam, lparam);
  }
  Strings rows(int id) { return host_.rows(id); }

  void add_size(const char* id, const char* code) {
    Record size("TST", id);
    limits(size, 130).text(1501, code).save(db());
  }
  // A family of three sizes, bound to the list box.
  void bind_family() {
    Record("TST", "ABC-*").words(1150, {1}).save(db());
    add_size("ABC-100", "ABC 100");
    add_size("ABC-200", "ABC 200");
    add_size("ABC-300", "ABC 300");
    main_ = tavbfindrec(db(), "TST", "ABC-*", 0);
    ASSERT_NE(nullptr, main_);
    ASSERT_EQ(0, tavdg_init(tgui_main_module(), db(), main_, kList, 0, 0));
    tavdg_fillsizeLB(dialog_);
  }
  std::string title() {
    const std::vector<Text> texts = draw().texts();
    return texts.empty() ? "" : texts.front().text;
  }

  std::string curve_start() {
    const Strings moves = curves("move");
    return moves.empty() ? "none" : moves.front();
  }

  // A product with one or two parameter tables, all with rows of these values.
  void build_parameters(const char* names, const std::vector<ParEntry>& table) {
    Record product("TST", "PRODUCT");
    resistance(product).text(1514, names).rows(1661, table).rows(1662, table);
    ASSERT_EQ(0, tavdg_initdiagramdata(product.rec()));
  }

  tavdtest::Dialog host_;
  tgui_window* dialog_ = nullptr;
  tavb_rec main_ = nullptr;
};

TEST_F(FlowDiagramDialog, ListBoxIsFilledWithTheFamilyAndItsFirstRowSelected) {
  send(kList, TGUI_LB_ADDSTRING, 0, reinterpret_cast<intptr_t>("left over"));
  bind_family();
  EXPECT_EQ((Strings{"ABC 100", "ABC 200", "ABC 300"}), rows(kList));
  EXPECT_EQ(0, send(kList, TGUI_LB_GETCURSEL));
  EXPECT_EQ("", title());  // the first build waits for the list
}

TEST_F(FlowDiagramDialog, SelectedSizeIsBuilt) {
  bind_family();
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("ABC 100", title());
  send(kList, TGUI_LB_SETCURSEL, 2);
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("ABC 300", title());
}

TEST_F(FlowDiagramDialog, WithoutASelectionTheDiagramStays) {
  bind_family();
  tavdg_update_from_list(dialog_);
  send(kList, TGUI_LB_SETCURSEL, static_cast<uintptr_t>(-1));
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("ABC 100", title());
}

TEST_F(FlowDiagramDialog, SizeThatIsGoneFromTheDatabaseLeavesTheDiagram) {
  bind_family();
  tavdg_update_from_list(dialog_);
  tavbdeleterec(db(), "TST", "ABC-200");
  send(kList, TGUI_LB_SETCURSEL, 1);
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("ABC 100", title());
}

TEST_F(FlowDiagramDialog, SelectingAGoodSizeAfterABadOneShowsIt) {
  bind_family();
  Record("TST", "ABC-200").text(1501, "ABC 200").save(db());  // no flow data any more
  send(kList, TGUI_LB_SETCURSEL, 1);
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("", title());
  send(kList, TGUI_LB_SETCURSEL, 0);
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("ABC 100", title());
}

TEST_F(FlowDiagramDialog, EmptyFamilyEmptiesTheListAndSelectsNothing) {
  Record("TST", "LONE").words(1150, {-1}).save(db());
  main_ = tavbfindrec(db(), "TST", "LONE", 0);
  ASSERT_EQ(0, tavdg_init(tgui_main_module(), db(), main_, kList, 0, 0));
  send(kList, TGUI_LB_ADDSTRING, 0, reinterpret_cast<intptr_t>("left over"));
  tavdg_fillsizeLB(dialog_);
  EXPECT_TRUE(rows(kList).empty());
  EXPECT_EQ(-1, send(kList, TGUI_LB_GETCURSEL));
  tavdg_update_from_list(dialog_);
  EXPECT_EQ("", title());
}

TEST_F(FlowDiagramDialog, WithoutAProductThereIsNoFamily) {
  send(kList, TGUI_LB_ADDSTRING, 0, reinterpret_cast<intptr_t>("kept"));
  tavdg_fillsizeLB(dialog_);
  EXPECT_EQ((Strings{"kept"}), rows(kList));
}

ParEntry entry(const char (&value)[7], float dk) {
  ParEntry e{};
  std::copy(value, value + 6, e.value);
  e.dk = dk;
  return e;
}

TEST_F(FlowDiagramDialog, ComboBoxListsTheValuesWithoutQuotesAndBlanks) {
  build_parameters("A,B", {entry("\"ab\"  ", 0), entry("c     ", 0), entry("longer", 0)});
  send(kCombo, TGUI_CB_ADDSTRING, 0, reinterpret_cast<intptr_t>("left over"));
  EXPECT_EQ(3, tavdg_fill_parameter_combo(dialog_, kCombo));
  EXPECT_EQ((Strings{"ab", "c", "longer"}), rows(kCombo));
}

TEST_F(FlowDiagramDialog, SecondParameterIsListedIfOnlyThatHasAName) {
  build_parameters(",B", {entry("10    ", 0), entry("20    ", 0)});
  EXPECT_EQ(2, tavdg_fill_parameter_combo(dialog_, kCombo));
}

TEST_F(FlowDiagramDialog, ProductWithoutParametersEmptiesTheComboBox) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product).rec()));
  send(kCombo, TGUI_CB_ADDSTRING, 0, reinterpret_cast<intptr_t>("left over"));
  EXPECT_EQ(0, tavdg_fill_parameter_combo(dialog_, kCombo));
  EXPECT_TRUE(rows(kCombo).empty());
}

TEST_F(FlowDiagramDialog, FillingTheComboBoxForgetsTheRememberedChoices) {
  tavdg_set_parameter("A", "2");
  build_parameters("A,B", {entry("1     ", 0), entry("2     ", 0.03F)});
  EXPECT_EQ("move 1955 6093", curve_start());
  tavdg_fill_parameter_combo(dialog_, kCombo);
  build_parameters("A,B", {entry("1     ", 0), entry("2     ", 0.03F)});
  EXPECT_EQ("move 1955 8045", curve_start());
}

TEST_F(FlowDiagramDialog, SelectedValueShowsAtTheNextPaintWithoutABuild) {
  build_parameters("A,B", {entry("1     ", 0), entry("2     ", 0.03F)});
  tavdg_fill_parameter_combo(dialog_, kCombo);
  tavdg_update_parameter_combo(dialog_, kCombo);  // nothing is selected
  EXPECT_EQ("move 1955 8045", curve_start());
  send(kCombo, TGUI_CB_SETCURSEL, 1);
  tavdg_update_parameter_combo(dialog_, kCombo);
  EXPECT_EQ("move 1955 6093", curve_start());
}

TEST_F(FlowDiagramDialog, NullDialogAndUnknownControlsAreHarmless) {
  bind_family();
  tavdg_fillsizeLB(nullptr);
  tavdg_update_from_list(nullptr);
  EXPECT_EQ(0, tavdg_fill_parameter_combo(nullptr, 5));
  tavdg_update_parameter_combo(dialog_, 999);
  EXPECT_EQ("", title());
}

}  // namespace
