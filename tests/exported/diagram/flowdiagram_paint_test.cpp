// The flow diagram's window: its class, painting, and the tools of one paint.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"
#include "exported/window_fixture.h"

namespace {

using tavdtest::Record;
using tavdtest::Recording;
using Strings = std::vector<std::string>;

class Shown : public tavdtest::FlowDiagram {
 protected:
  static constexpr char kClass[] = "TAVDDGR";
  static constexpr unsigned kClassRecordSize = 0x50;
  static constexpr int kWidth = 640;
  static constexpr int kHeight = 480;
  static constexpr int kTools = 6;
  static constexpr int kObjects = 12;  // the tools, and six of the chart
  static constexpr int kSetUp = 5;
  static constexpr int kEnd = 0;
  static constexpr auto procedure = &tavdg_diagram_proc;
  static constexpr auto create_tools = &tavdg_create_drawing_tools;
  static constexpr auto destroy_tools = &tavdg_destroy_drawing_tools;
  static constexpr auto draw_bare = &tavdg_draw_diagram;

  void init_empty() const { tavdg_init_empty(tgui_main_module(), db()); }
  void build() {
    Record product("TST", "PRODUCT");
    limits(product, 120).rows<DamperPoint>(1652, {{1, 100, 1000}, {1.5F, 100, 300}}).text(1501, "CODE");
    ASSERT_EQ(0, tavdg_initdiagramdata(product.rec()));
    tavdg_set_operation_point(300, 1000);
    tavdg_set_qvlimits(200, 500);
  }
  static void expect_whole(const Recording& recording) { EXPECT_GT(recording.segments().size(), 4U); }
};

using FlowDiagramPaint = tavdtest::PaintedWindow<Shown>;

}  // namespace

namespace tavdtest {
INSTANTIATE_TYPED_TEST_SUITE_P(FlowDiagram, PaintedWindow, Shown);
}

namespace {

TEST_F(FlowDiagramPaint, EachModuleGetsTheClassOnce) {
  tgui_module* module = tgui_module_create("other");
  tgui_class c{};
  EXPECT_EQ(0, tgui_get_class("TAVDDGR", module, &c));
  tavdg_init_empty(module, db());
  EXPECT_EQ(1, tgui_get_class("TAVDDGR", module, &c));
  // A module that is noted is not asked again, even if its class is gone.
  ASSERT_EQ(1, tgui_unregister_class("TAVDDGR", module));
  tavdg_init_empty(module, db());
  EXPECT_EQ(0, tgui_get_class("TAVDDGR", module, &c));
}

// More modules than are noted: the class of one that is not is registered at each start.
[[noreturn]] void start_with_many_modules() {
  tgui_module* modules[12];
  bool registered = true;
  for (tgui_module*& module : modules) {
    module = tgui_module_create("one of many");
    tavdg_init_empty(module, -1);
    registered = registered && tgui_get_class("TAVDDGR", module, nullptr) == 1;
  }
  const bool taken_away = tgui_unregister_class("TAVDDGR", modules[11]) == 1;
  tavdg_init_empty(modules[11], -1);
  registered = registered && tgui_get_class("TAVDDGR", modules[11], nullptr) == 1;
  tavdg_release();
  for (tgui_module* module : modules) tgui_module_destroy(module);
  std::exit(registered && taken_away ? 0 : 1);
}

TEST(FlowDiagramModulesDeathTest, BeyondTheNotedOnesEachGetsTheClass) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(start_with_many_modules(), testing::ExitedWithCode(0), "");
}

TEST_F(FlowDiagramPaint, StretchesTenThousandUnitsOverTheClientArea) {
  build();
  EXPECT_EQ(0, paint());
  const Strings all = painting().lines();
  ASSERT_GT(all.size(), 6U);
  EXPECT_EQ((Strings{"map anisotropic", "window-org 0 0", "window-ext 10000 10000", "viewport-ext 640 480",
                     "background transparent", "select pen solid width=10 colour=#000000"}),
            Strings(all.begin(), all.begin() + 6));
}

TEST_F(FlowDiagramPaint, WithoutADiagramNothingIsDrawn) {
  paint();
  EXPECT_EQ("", painting().text());
}

TEST_F(FlowDiagramPaint, FailedBuildKeepsTheWindowBlank) {
  build();
  Record bad("TST", "BAD");
  ASSERT_EQ(-1, tavdg_initdiagramdata(bad.rec()));
  paint();
  EXPECT_EQ("", painting().text());
}

TEST_F(FlowDiagramPaint, DrawingWithoutToolsUsesWhatIsSelected) {
  build();
  recording_.clear();
  tavdg_draw_diagram(recording_.surface());
  EXPECT_EQ(3U, recording_.lines("ellipse").size());
}

TEST_F(FlowDiagramPaint, ToolsFollowTheHeightOfTheDrawing) {
  build();
  const struct {
    int height;
    const char* curve;  // the damper's pen, half of the full width
    const char* limit;
    const char* font;
  } cases[] = {{2500, "width=2", "width=10", "height=-100 "},
               {999, "width=1", "width=2", "height=-39 "},
               {100, "width=1", "width=2", "height=-5 "}};
  for (const auto& c : cases) {
    tavdg_resize(0, 0, 1000, c.height);
    bool curve = false;
    bool limit = false;
    bool font = false;
    for (const std::string& line : curves("select")) {
      curve = curve || line == std::string("select pen solid ") + c.curve + " colour=#808080";
      limit = limit || line == std::string("select pen solid ") + c.limit + " colour=#FF0000";
      font = font || line.starts_with(std::string("select font ") + c.font);
    }
    EXPECT_TRUE(curve && limit && font) << c.height << ' ' << curve << limit << font;
  }
}

TEST_F(FlowDiagramPaint, CirclesFollowTheWidthOfTheDrawing) {
  build();
  tavdg_resize(0, 0, 5030, 4000);
  std::vector<int> diameters;
  for (const tavdtest::Segment& s : draw().figures("ellipse")) {
    diameters.push_back(s[2] - s[0]);
  }
  EXPECT_EQ((std::vector<int>{200, 100, 50}), diameters);
}

}  // namespace
