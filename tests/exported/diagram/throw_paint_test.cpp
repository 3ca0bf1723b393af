// The throw length diagram's window: its class, painting, and the tools of one paint.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "exported/diagram/throwdiagram_fixture.h"
#include "exported/window_fixture.h"
#include "tavd/tavdg.h"

namespace {

using tavdtest::Record;
using Strings = std::vector<std::string>;

constexpr char kClass[] = "TAVDDGRL02";

class Shown : public tavdtest::ThrowDiagram {
 protected:
  static constexpr auto& kClass = ::kClass;
  static constexpr unsigned kClassRecordSize = 0x48;
  static constexpr int kWidth = 640;
  static constexpr int kHeight = 480;
  static constexpr int kTools = 4;
  static constexpr int kObjects = 10;  // the tools, and six of the chart
  static constexpr int kSetUp = 5;
  static constexpr int kEnd = 0;
  static constexpr auto procedure = &L2dg_diagram_proc;
  static constexpr auto create_tools = &L2dg_create_drawing_tools;
  static constexpr auto destroy_tools = &L2dg_destroy_drawing_tools;
  static constexpr auto draw_bare = &L2dg_draw_diagram;

  void init_empty() const { L2dg_init_empty(tgui_main_module(), db()); }
  void build() {
    Record product("TST", "PRODUCT");
    terminal_by_value(product).text(1501, "CODE");
    L2dg_set_parameter("G", "20");
    ASSERT_EQ(0, init(db(), product.rec(), 300));
  }
  static void expect_whole(const tavdtest::Recording& recording) {
    EXPECT_EQ(3U, recording.lines("ellipse").size());
  }
};

using ThrowPaint = tavdtest::PaintedWindow<Shown>;

}  // namespace

namespace tavdtest {
INSTANTIATE_TYPED_TEST_SUITE_P(ThrowDiagram, PaintedWindow, Shown);
}

namespace {

TEST_F(ThrowPaint, SecondModuleDoesNotGetTheClass) {
  tgui_module* module = tgui_module_create("other");
  EXPECT_EQ(0, L2dg_init(module, db(), nullptr, 0, 0, 0, 0));
  L2dg_init_empty(module, db());
  tgui_class c{};
  EXPECT_EQ(0, tgui_get_class(kClass, module, &c));
  tgui_module_destroy(module);
}

TEST_F(ThrowPaint, StretchesTenThousandUnitsOverTheClientArea) {
  build();
  EXPECT_EQ(0, paint());
  const Strings all = painting().lines();
  ASSERT_GT(all.size(), 6U);
  EXPECT_EQ((Strings{"map anisotropic", "window-org 0 0", "window-ext 10000 10000", "viewport-ext 640 480",
                     "background transparent", "select pen solid width=10 colour=#000000"}),
            Strings(all.begin(), all.begin() + 6));
}

TEST_F(ThrowPaint, WithoutADiagramNothingIsDrawn) {
  EXPECT_EQ(tgui_default_procedure(window(), TGUI_WM_PAINT, 0, 0), paint());
  EXPECT_EQ("", painting().text());
}

TEST_F(ThrowPaint, FailedBuildKeepsTheWindowBlank) {
  build();
  Record bad("TST", "BAD");
  bad.header(110, 0, 0, 100, 1000, 100, 100).rows<QvL2Point>(1659, {{100, 1}});
  ASSERT_EQ(-1, L2dg_initdiagramdata(bad.rec()));
  paint();
  EXPECT_EQ("", painting().text());
}

TEST_F(ThrowPaint, InitEndsAFailure) {
  Record bad("TST", "BAD");
  bad.header(110, 0, 0, 100, 1000, 100, 100).rows<QvL2Point>(1659, {{100, 1}});
  ASSERT_EQ(-1, L2dg_initdiagramdata(bad.rec()));
  build();
  paint();
  EXPECT_NE("", painting().text());
}

TEST_F(ThrowPaint, FailedBuildsLeaveNoObject) {
  const int objects = tgui_object_count();
  build();
  paint();
  Record bad("TST", "BAD");
  Record none("TST", "NONE");
  bad.header(110, 0, 0, 100, 1000, 100, 100).rows<QvL2Point>(1659, {{100, 1}});
  EXPECT_EQ(-1, L2dg_initdiagramdata(none.rec()));
  paint();
  EXPECT_EQ(-1, L2dg_initdiagramdata(bad.rec()));
  paint();
  EXPECT_EQ(-1, L2dg_initdiagramdata(nullptr));
  paint();
  EXPECT_EQ(objects, tgui_object_count());
}

TEST_F(ThrowPaint, LineIsDrawnInBlackIfTheRedPenCannotBeMade) {
  build();
  tgui_fail_objects(0, 1);
  paint();
  tgui_fail_objects(0, 0);
  Strings pens;
  for (const std::string& line : painting().lines("select")) {
    if (line.starts_with("select pen solid")) {
      pens.push_back(line);
    }
  }
  EXPECT_EQ((Strings{"select pen solid width=10 colour=#000000", "select pen solid width=10 colour=#000000",
                     "select pen solid width=10 colour=#0000FF", "select pen solid width=10 colour=#000000"}),
            pens);
}

TEST_F(ThrowPaint, InitWithAProductDeletesToolsOfAFormerDiagram) {
  const int objects = tgui_object_count();
  L2dg_create_drawing_tools();
  L2dg_init(tgui_main_module(), db(), nullptr, 0, 0, 0, 0);
  EXPECT_EQ(objects, tgui_object_count());
}

TEST_F(ThrowPaint, ToolsFollowTheHeightOfTheDrawing) {
  build();
  const struct {
    int height;
    const char* line;
    const char* point;  // half of the width
    const char* font;
  } cases[] = {{2500, "width=5", "width=2", "height=-100 "},
               {1000, "width=2", "width=1", "height=-40 "},
               {999, "width=1", "width=1", "height=-39 "},
               {100, "width=1", "width=1", "height=-5 "}};
  for (const auto& c : cases) {
    L2dg_resize(0, 0, 1000, c.height);
    const Strings selected = curves("select");
    ASSERT_EQ(7U, selected.size());
    EXPECT_EQ(0U, selected[1].find(std::string("select font ") + c.font)) << selected[1];
    EXPECT_EQ(std::string("select pen solid ") + c.point + " colour=#000000", selected[2]);
    EXPECT_EQ(std::string("select pen solid ") + c.line + " colour=#FF0000", selected[3]);
    EXPECT_EQ(std::string("select pen solid ") + c.point + " colour=#0000FF", selected[5]);
  }
}

TEST_F(ThrowPaint, LivesBesideTheFlowDiagram) {
  build();
  paint();
  const std::string before = painting().text();
  Record other("TST", "OTHER");
  terminal(other).floats(1651, {100, 50}).text(1501, "OTHER");
  ASSERT_EQ(0, tavdg_init(tgui_main_module(), db(), other.rec(), 0, 300, 50));
  tavdg_set_parameter("G", "10");
  tavdg_resize(0, 0, 500, 500);
  paint();
  EXPECT_EQ(before, painting().text());
  tavdg_reset_parameters();
  tavdg_release();
  paint();
  EXPECT_EQ(before, painting().text());
}

// In a process of its own, where the class was not tried before: something else has its name.
[[noreturn]] void start_with_a_refused_class() {
  int failures = 0;
  {
    const tavdtest::Database database;
    Record product("TST", "PRODUCT");
    product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, 1}}).text(1501, "CODE");
    const tavdtest::Recording surface;
    const auto expect = [&failures](bool holds, const char* what) {
      if (!holds) {
        std::fprintf(stderr, "not so: %s\n", what);
        ++failures;
      }
    };
    tgui_class other{};
    other.size = 0x50;
    other.name = kClass;
    other.procedure = tgui_default_procedure;
    expect(tgui_register_class(&other) != 0, "the name is free");

    expect(L2dg_init(nullptr, database.handle(), product.rec(), 0, 300, 0, 3) == -1, "a refusal is told");
    L2dg_draw_diagram(surface.surface());
    expect(surface.text().empty(), "nothing is built");
    L2dg_release();  // of a diagram that has no family list
    L2dg_create_drawing_tools();
    L2dg_destroy_drawing_tools();

    expect(L2dg_init(nullptr, database.handle(), product.rec(), 0, 300, 0, 3) == 0, "the next init passes");
    L2dg_draw_diagram(surface.surface());
    expect(!surface.text().empty(), "the next init builds");
    tgui_class found{};
    expect(tgui_get_class(kClass, nullptr, &found) == 1 && found.procedure == tgui_default_procedure,
           "the class is not tried again");
    L2dg_release();
  }
  std::exit(failures);
}

TEST(ThrowPaintDeathTest, RefusedClassIsToldOnceAndTheNextInitPasses) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(start_with_a_refused_class(), ::testing::ExitedWithCode(0), "^$");
}

}  // namespace
