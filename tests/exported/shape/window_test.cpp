// The shape picture's window: its class, painting, and the tools of one paint.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exported/shape/picture_fixture.h"
#include "exported/window_fixture.h"

namespace {

using tavdtest::Recording;
using Strings = std::vector<std::string>;

class Shown : public tavdtest::ShapePicture {
 protected:
  static constexpr char kClass[] = "TAVDSHAPE";
  static constexpr unsigned kClassRecordSize = 0x48;
  static constexpr int kWidth = 1000;
  static constexpr int kHeight = 840;
  static constexpr int kTools = 6;
  static constexpr int kObjects = 6;
  static constexpr int kSetUp = 7;
  static constexpr int kEnd = 1;
  static constexpr auto procedure = &tavdshapepic_picproc;
  static constexpr auto create_tools = &tavdshapepic_create_drawing_tools;
  static constexpr auto destroy_tools = &tavdshapepic_destroy_drawing_tools;
  static constexpr auto draw_bare = &tavdshapepic_draw;

  void SetUp() override {
    ShapePicture::SetUp();
    build();
  }
  static void init_empty() { tavdshapepic_init(tgui_main_module(), 0, nullptr, 0); }
  static void build() { show({103, 160, 300, 110, 45, 6}, 160); }
  static void expect_whole(const Recording& recording) { EXPECT_GT(recording.segments().size(), 4U); }
};

class ShapeWindow : public tavdtest::PaintedWindow<Shown> {
 protected:
  // "viewport-org" and "viewport-ext" of a paint into a client area.
  Strings viewport(int width, int height) {
    open(width, height);
    paint();
    Strings all = painting().lines("viewport-org");
    const Strings extents = painting().lines("viewport-ext");
    all.insert(all.end(), extents.begin(), extents.end());
    return all;
  }
};

}  // namespace

namespace tavdtest {
INSTANTIATE_TYPED_TEST_SUITE_P(ShapePicture, PaintedWindow, Shown);
}

namespace {

// Unlike the flow diagram's, which each module gets.
TEST_F(ShapeWindow, ClassIsRegisteredOnceInTheProcess) {
  tgui_module* module = tgui_module_create("other");
  tavdshapepic_init(module, 0, nullptr, 0);
  tgui_class c{};
  EXPECT_EQ(0, tgui_get_class("TAVDSHAPE", module, &c));
  EXPECT_EQ(1, tgui_get_class("TAVDSHAPE", tgui_main_module(), &c));
  tgui_module_destroy(module);
}

TEST_F(ShapeWindow, ClientHeightOf840GivesAWidthOf500) {
  EXPECT_EQ((Strings{"viewport-org 250 0", "viewport-ext 500 840"}), viewport(1000, 840));
}

TEST_F(ShapeWindow, ClientHeightOf420GivesAWidthOf250) {
  EXPECT_EQ((Strings{"viewport-org 375 0", "viewport-ext 250 420"}), viewport(1000, 420));
}

TEST_F(ShapeWindow, WidthIsRounded) {
  // 421 / 1.68 = 250.6; 419 / 1.68 = 249.4; half of the odd width is cut.
  EXPECT_EQ((Strings{"viewport-org 375 0", "viewport-ext 251 421"}), viewport(1000, 421));
  EXPECT_EQ((Strings{"viewport-org 376 0", "viewport-ext 249 419"}), viewport(1000, 419));
}

TEST_F(ShapeWindow, NarrowWindowCutsThePictureAtBothSides) {
  EXPECT_EQ((Strings{"viewport-org -200 0", "viewport-ext 500 840"}), viewport(100, 840));
}

TEST_F(ShapeWindow, PaintSetsUpThePlaneAndDraws) {
  EXPECT_EQ(0, paint());
  const Strings painted = painting().lines();
  ASSERT_GT(painted.size(), std::size_t{kSetUp});
  EXPECT_EQ((Strings{"save 1", "map anisotropic", "window-org 0 0", "window-ext 500 840",
                     "viewport-org 250 0", "viewport-ext 500 840", "background transparent"}),
            Strings(painted.begin(), painted.begin() + kSetUp));
  const Strings drawn = draw().lines();
  EXPECT_EQ(drawn, drawn_by_paint());
}

TEST_F(ShapeWindow, PaintIsOfTheRectangleThatIsSet) {
  tavdshapepic_resize(0, 0, 250, 420);
  paint();
  const Strings drawn = draw().lines();
  EXPECT_EQ(drawn, drawn_by_paint());
}

TEST_F(ShapeWindow, PaintLeavesTheSurfaceAsItWas) {
  tgui_state before{};
  tgui_surface_state(painting().surface(), &before);
  paint();
  tgui_state after{};
  tgui_surface_state(painting().surface(), &after);
  EXPECT_EQ(before.pen, after.pen);
  EXPECT_EQ(before.font, after.font);
  EXPECT_EQ(before.text_align, after.text_align);
  EXPECT_EQ(before.map_mode, after.map_mode);
  EXPECT_EQ(before.background_mode, after.background_mode);
  EXPECT_EQ(before.viewport_org[0], after.viewport_org[0]);
}

TEST_F(ShapeWindow, WithoutAnAreaIsHarmless) {
  const int objects = tgui_object_count();
  for (const auto& [width, height] : {std::pair{0, 0}, std::pair{0, 840}, std::pair{500, 0}}) {
    open(width, height);
    EXPECT_EQ(0, paint());
    EXPECT_EQ(objects, tgui_object_count());
  }
}

TEST_F(ShapeWindow, ProcedureWithoutAWindowIsHarmless) {
  EXPECT_EQ(0, tavdshapepic_picproc(nullptr, TGUI_WM_PAINT, 0, 0));
  EXPECT_EQ(0, tavdshapepic_picproc(nullptr, TGUI_WM_SIZE, 0, 0));
}

// ---- The tools ----

bool has_start(const Strings& lines, const std::string& start) {
  for (const std::string& line : lines) {
    if (line.starts_with(start)) {
      return true;
    }
  }
  return false;
}

TEST_F(ShapeWindow, ToolsFollowTheRectangle) {
  const struct {
    int width, height;
    const char* thick;
    const char* text;
    const char* title;
  } cases[] = {{500, 840, "width=3 ", "height=-30 ", "height=-40 "},
               {1499, 2100, "width=9 ", "height=-75 ", "height=-100 "},
               {150, 839, "width=1 ", "height=-29 ", "height=-39 "}};
  for (const auto& c : cases) {
    tavdshapepic_resize(100, 50, 100 + c.width, 50 + c.height);
    const Strings selected = draw().lines("select");
    EXPECT_TRUE(has_start(selected, std::string("select pen solid ") + c.thick + "colour=#000000"))
        << c.width;
    EXPECT_TRUE(has_start(selected, "select pen solid width=1 colour=#000000")) << c.width;
    EXPECT_TRUE(has_start(selected, std::string("select font ") + c.text + "weight=400")) << c.height;
    EXPECT_TRUE(has_start(selected, std::string("select font ") + c.title + "weight=700")) << c.height;
  }
}

TEST_F(ShapeWindow, FontsOfARectangleTooHighAreHeldAtTheHighest) {
  tavdshapepic_resize(0, 0, 500, 2000000000);
  const Strings selected = draw().lines("select font");
  ASSERT_FALSE(selected.empty());
  EXPECT_TRUE(selected.front().starts_with("select font height=-32767 ")) << selected.front();
}

TEST_F(ShapeWindow, DrawingSelectsBackFontAndPen) {
  tgui_object* const pen = tgui_create_pen(TGUI_PEN_SOLID, 7, 0);
  tgui_select(recording_.surface(), pen);
  draw();
  tgui_state state{};
  tgui_surface_state(recording_.surface(), &state);
  EXPECT_EQ(pen, state.pen);
  EXPECT_EQ(tgui_stock_object(TGUI_SYSTEM_FONT), state.font);
  tgui_select(recording_.surface(), tgui_stock_object(TGUI_BLACK_PEN));
  tgui_delete_object(pen);
}

TEST_F(ShapeWindow, DrawingWithoutToolsUsesWhatIsSelected) {
  recording_.clear();
  tavdshapepic_draw(recording_.surface());
  EXPECT_GT(recording_.segments().size(), 20U);
  EXPECT_TRUE(recording_.lines("select").empty());
}

}  // namespace
