// The window class, painting, and the tools of one paint.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"

namespace {

using tavdtest::Record;
using tavdtest::Recording;
using Strings = std::vector<std::string>;

class FlowDiagramPaint : public tavdtest::FlowDiagram {
 protected:
  void SetUp() override {
    FlowDiagram::SetUp();
    window_ = tgui_create_window("TAVDDGR", "", 0, 0, 0, 640, 480, nullptr, 0, tgui_main_module());
    ASSERT_NE(nullptr, window_);
    tgui_set_surface(window_, recording_.surface());
  }
  void TearDown() override {
    tgui_destroy_window(window_);
    FlowDiagram::TearDown();
  }
  void build() {
    Record product("TST", "PRODUCT");
    limits(product, 120).rows<DamperPoint>(1652, {{1, 100, 1000}, {1.5F, 100, 300}}).text(1501, "CODE");
    ASSERT_EQ(0, tavdg_initdiagramdata(product.rec()));
    tavdg_set_operation_point(300, 1000);
    tavdg_set_qvlimits(200, 500);
  }
  intptr_t paint() {
    recording_.clear();
    return tgui_send_message(window_, TGUI_WM_PAINT, 0, 0);
  }

  tgui_window* window_ = nullptr;
};

TEST_F(FlowDiagramPaint, ClassIsRegisteredAsWindowsWithEightBytesTheArrowAndTheWindowColour) {
  tgui_class c{};
  ASSERT_EQ(1, tgui_get_class("TAVDDGR", tgui_main_module(), &c));
  EXPECT_EQ(0x50U, c.size);
  EXPECT_EQ(3U, c.style);
  EXPECT_EQ(0, c.class_extra);
  EXPECT_EQ(8, c.window_extra);
  EXPECT_EQ(0x7F00U, c.cursor);
  EXPECT_EQ(6U, c.background);
  EXPECT_EQ(&tavdg_diagram_proc, c.procedure);
}

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

TEST_F(FlowDiagramPaint, StretchesTenThousandUnitsOverTheClientArea) {
  build();
  EXPECT_EQ(0, paint());
  const Strings all = recording_.lines();
  ASSERT_GT(all.size(), 6U);
  EXPECT_EQ((Strings{"map anisotropic", "window-org 0 0", "window-ext 10000 10000", "viewport-ext 640 480",
                     "background transparent", "select pen solid width=10 colour=#000000"}),
            Strings(all.begin(), all.begin() + 6));
}

TEST_F(FlowDiagramPaint, DrawsTheSameAsTheHostWould) {
  build();
  paint();
  const Strings painted = recording_.lines();
  const Strings drawn = draw().lines();
  EXPECT_EQ(drawn, Strings(painted.begin() + 5, painted.end()));
}

TEST_F(FlowDiagramPaint, WithoutADiagramNothingIsDrawn) {
  paint();
  EXPECT_EQ("", recording_.text());
}

TEST_F(FlowDiagramPaint, FailedBuildKeepsTheWindowBlank) {
  build();
  Record bad("TST", "BAD");
  ASSERT_EQ(-1, tavdg_initdiagramdata(bad.rec()));
  paint();
  EXPECT_EQ("", recording_.text());
}

TEST_F(FlowDiagramPaint, WindowWithoutASurfaceIsHarmless) {
  build();
  tgui_set_surface(window_, nullptr);
  const int objects = tgui_object_count();
  EXPECT_EQ(0, paint());
  EXPECT_EQ(objects, tgui_object_count());
}

TEST_F(FlowDiagramPaint, OtherMessagesGoToTheSystem) {
  build();
  recording_.clear();
  EXPECT_EQ(tgui_default_procedure(window_, TGUI_WM_SIZE, 0, 0),
            tgui_send_message(window_, TGUI_WM_SIZE, 0, 0));
  EXPECT_EQ("", recording_.text());
}

TEST_F(FlowDiagramPaint, LeavesNoObject) {
  build();
  const int objects = tgui_object_count();
  for (int i = 0; i < 3; ++i) {
    paint();
    EXPECT_EQ(objects, tgui_object_count());
  }
}

TEST_F(FlowDiagramPaint, LeavesNoObjectWhateverCannotBeMade) {
  build();
  const int objects = tgui_object_count();
  // Six tools of the diagram and six objects of the chart.
  for (int first = 0; first < 12; ++first) {
    for (const int failing : {1, 2, 100}) {
      tgui_fail_objects(first, failing);
      paint();
      tgui_fail_objects(0, 0);
      EXPECT_EQ(objects, tgui_object_count()) << first << ' ' << failing;
      EXPECT_GT(recording_.segments().size(), 4U);
      tgui_state state{};
      tgui_surface_state(recording_.surface(), &state);
      EXPECT_EQ(tgui_stock_object(TGUI_BLACK_PEN), state.pen) << first << ' ' << failing;
      EXPECT_EQ(tgui_stock_object(TGUI_SYSTEM_FONT), state.font) << first << ' ' << failing;
    }
  }
}

TEST_F(FlowDiagramPaint, DrawingWithoutToolsUsesWhatIsSelected) {
  build();
  recording_.clear();
  tavdg_draw_diagram(recording_.surface());
  EXPECT_EQ(3U, recording_.lines("ellipse").size());
}

TEST_F(FlowDiagramPaint, ToolsAreSixAndAreNotMadeTwice) {
  const int objects = tgui_object_count();
  tavdg_create_drawing_tools();
  EXPECT_EQ(objects + 6, tgui_object_count());
  tavdg_create_drawing_tools();
  EXPECT_EQ(objects + 6, tgui_object_count());
  tavdg_destroy_drawing_tools();
  EXPECT_EQ(objects, tgui_object_count());
  tavdg_destroy_drawing_tools();
  EXPECT_EQ(objects, tgui_object_count());
}

TEST_F(FlowDiagramPaint, InitDeletesToolsOfAFormerDiagram) {
  const int objects = tgui_object_count();
  tavdg_create_drawing_tools();
  tavdg_init_empty(tgui_main_module(), db());
  EXPECT_EQ(objects, tgui_object_count());
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

TEST_F(FlowDiagramPaint, NullContextIsHarmless) {
  build();
  const int objects = tgui_object_count();
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(nullptr);
  tavdg_destroy_drawing_tools();
  EXPECT_EQ(objects, tgui_object_count());
}

}  // namespace
