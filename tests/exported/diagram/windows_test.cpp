// A host's dialog from end to end: both diagrams' windows beside a list box of sizes and a combo box of
// values.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "exported/diagram/throwdiagram_fixture.h"
#include "support/database.h"
#include "support/dialog.h"
#include "support/painted.h"
#include "tavd/L2dg.h"
#include "tavd/tavdg.h"

namespace {

using tavdtest::Database;
using tavdtest::factor_row;
using tavdtest::kCombo;
using tavdtest::kList;
using tavdtest::Record;
using tavdtest::Recording;
using tavdtest::Text;
using tavdtest::throw_row;
using Strings = std::vector<std::string>;

// A window of a class of the library's in the dialog, and what it paints.
class Pane : public tavdtest::Painted {
 public:
  Pane(const char* class_name, const tavdtest::Dialog& dialog)
      : Painted(class_name, 600, 450, dialog.window()) {}

  // What a paint shows: its texts, the chart's title first, and its lines.
  Strings texts() {
    Strings all;
    for (const Text& text : paint().texts()) {
      all.push_back(text.text);
    }
    return all;
  }
  std::string title() {
    const Strings all = texts();
    return all.empty() ? "" : all.front();
  }
  Strings lines() { return paint().lines("line"); }
};

// The titles of the axes stand behind that of the chart.
Strings axis_titles(const Strings& texts) {
  return texts.size() < 3 ? Strings{} : Strings{texts[1], texts[2]};
}

// At how many places two lists of the same length differ; more than there are if they have other lengths.
std::size_t differences(const Strings& a, const Strings& b) {
  if (a.size() != b.size()) {
    return a.size() + b.size();
  }
  std::size_t count = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    count += a[i] != b[i] ? 1 : 0;
  }
  return count;
}

class Windows : public testing::Test {
 protected:
  void SetUp() override {
    tavdg_reset_parameters();
    L2dg_reset_parameters();
    Record("TST", "ABC-*").words(1150, {1}).save(database_.handle());
    add_size("ABC-100", 1);
    add_size("ABC-200", 2);
    family_ = tavbfindrec(database_.handle(), "TST", "ABC-*", 0);
    ASSERT_NE(nullptr, family_);
    ASSERT_EQ(0, tavdg_init(tgui_main_module(), database_.handle(), family_, kList, 300, 30));
    ASSERT_EQ(0, L2dg_init(tgui_main_module(), database_.handle(), family_, kList, 300, 0, 0));
    objects_ = tgui_object_count();
    flow_ = std::make_unique<Pane>("TAVDDGR", dialog_);
    throws_ = std::make_unique<Pane>("TAVDDGRL02", dialog_);
    ASSERT_NE(nullptr, flow_->window());
    ASSERT_NE(nullptr, throws_->window());
  }
  void TearDown() override {
    EXPECT_EQ(objects_, tgui_object_count());
    tavdg_release();
    L2dg_release();
    tavdg_reset_parameters();
    L2dg_reset_parameters();
    tavbreleaserec(family_);
  }

  // A resistance of 20 Pa at 400 l/s, with value 45 of 100 Pa. A throw at 100 l/s of 2 m (value 0) or 1.5 m
  // (value 45) for each of `times`.
  void add_size(const char* id, float times) {
    ParEntry closed = factor_row("45", 1);
    closed.dk = 0.0005F;
    Record size("TST", id);
    size.text(1501, id)
        .header(110, 0, 0, 100, 1000, 10, 100)
        .floats(1651, {400, 20})
        .text(1514, "G")
        .rows<ParEntry>(1661, {factor_row("0", 1), closed})
        .rows<ParL2Point>(1660, {throw_row("0", 1000, 9.5F * times), throw_row("0", 100, 2 * times),
                                 throw_row("45", 1000, 4 * times), throw_row("45", 100, 1.5F * times)})
        .save(database_.handle());
  }

  void fill_sizes() const {
    tavdg_fillsizeLB(dialog_.window());
    L2dg_fillsizeLB(dialog_.window());
  }
  void pick_size(int row) const {
    dialog_.select(kList, row);
    tavdg_update_from_list(dialog_.window());
    L2dg_update_from_list(dialog_.window());
  }
  void pick_value(int row) const {
    dialog_.select(kCombo, row);
    tavdg_update_parameter_combo(dialog_.window(), kCombo);
    L2dg_update_parameter_combo(dialog_.window(), kCombo);
  }

  Database database_;
  tavb_rec family_ = nullptr;
  int objects_ = 0;
  tavdtest::Dialog dialog_;
  std::unique_ptr<Pane> flow_, throws_;
};

TEST_F(Windows, StayBlankUntilASizeIsChosen) {
  EXPECT_EQ(1, tgui_is_invalid(flow_->window()));
  EXPECT_EQ("", flow_->paint().text());
  EXPECT_EQ("", throws_->paint().text());
  EXPECT_EQ(0, tgui_is_invalid(flow_->window()));
  EXPECT_EQ(0, tgui_is_invalid(throws_->window()));
  fill_sizes();
  EXPECT_EQ((Strings{"ABC-100", "ABC-200"}), dialog_.rows(kList));
  EXPECT_EQ("", flow_->paint().text());
  EXPECT_EQ("", throws_->paint().text());
}

TEST_F(Windows, ShowTheSizeThatIsChosen) {
  fill_sizes();
  pick_size(0);
  EXPECT_EQ("ABC-100", flow_->title());
  EXPECT_EQ("ABC-100", throws_->title());
  const Strings throw_axis_before = throws_->texts();
  pick_size(1);
  EXPECT_EQ("ABC-200", flow_->title());
  EXPECT_EQ("ABC-200", throws_->title());
  EXPECT_NE(throw_axis_before, throws_->texts());
  EXPECT_EQ((Strings{"qv [l/s]", "dpt [Pa]"}), axis_titles(flow_->texts()));
  EXPECT_EQ((Strings{"qv [l/s]", "L02 [m]"}), axis_titles(throws_->texts()));
}

TEST_F(Windows, ShowTheValueThatIsChosenAtTheNextPaint) {
  fill_sizes();
  pick_size(1);
  ASSERT_EQ(2, L2dg_fill_parameter_combo(dialog_.window(), kCombo, 0));
  EXPECT_EQ((Strings{"0", "45"}), dialog_.rows(kCombo));
  const Strings flow_before = flow_->lines();
  const Strings throws_before = throws_->lines();
  const auto labels = [this] {
    const Strings all = throws_->texts();
    return std::count(all.begin(), all.end(), "45");
  };
  EXPECT_EQ(0, labels());
  pick_value(1);
  EXPECT_EQ(1, labels());
  EXPECT_EQ("ABC-200", flow_->title());
  // The grid stays, since nothing was built; one line is another.
  EXPECT_EQ(1U, differences(flow_before, flow_->lines()));
  EXPECT_EQ(1U, differences(throws_before, throws_->lines()));
  pick_value(0);
  EXPECT_EQ(flow_before, flow_->lines());
  EXPECT_EQ(throws_before, throws_->lines());
}

TEST_F(Windows, PaintWhatTheHostWouldDraw) {
  fill_sizes();
  pick_size(0);
  Recording drawn;
  L2dg_create_drawing_tools();
  L2dg_draw_diagram(drawn.surface());
  L2dg_destroy_drawing_tools();
  Strings painted = throws_->paint().lines();
  ASSERT_GT(painted.size(), 5U);
  painted.erase(painted.begin(), painted.begin() + 5);  // the mapping
  EXPECT_EQ(drawn.lines(), painted);
}

TEST_F(Windows, FillTheirClientAreaAtAnySize) {
  fill_sizes();
  pick_size(0);
  for (Pane* pane : {flow_.get(), throws_.get()}) {
    Strings before = pane->paint().lines();
    EXPECT_EQ("viewport-ext 600 450", before.at(3));
    tgui_move_window(pane->window(), 0, 0, 300, 700);
    EXPECT_EQ(1, tgui_is_invalid(pane->window()));
    before[3] = "viewport-ext 300 700";
    EXPECT_EQ(before, pane->paint().lines());
  }
}

TEST_F(Windows, GoWithTheirDialog) {
  fill_sizes();
  pick_size(0);
  const int windows = tgui_window_count();
  {
    const tavdtest::Dialog other;
    Pane flow("TAVDDGR", other);
    Pane throws("TAVDDGRL02", other);
    EXPECT_EQ(windows + 5, tgui_window_count());
    EXPECT_EQ("ABC-100", flow.title());
    EXPECT_EQ("ABC-100", throws.title());
  }
  EXPECT_EQ(windows, tgui_window_count());
  EXPECT_EQ("ABC-100", flow_->title());
}

}  // namespace
