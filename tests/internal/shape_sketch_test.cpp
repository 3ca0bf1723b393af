// Sketches that no product of the catalogue has, yet a row of a table may.
#include "shape/sketch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shape/processpicture.h"
#include "support/recording.h"
#include "tavd/tavdshapepic.h"

namespace tavd {
namespace {

using Strings = std::vector<std::string>;

class ShapeSketch : public ::testing::Test {
 protected:
  // Origin 0, 0 and scale 1, so that drawing units are device units.
  void SetUp() override {
    tavdshapepic_init(tgui_main_module(), 0, nullptr, 0);
    shp.pic_origin_y = 0;
    tavdshapepic_create_drawing_tools();
  }
  void TearDown() override {
    tavdshapepic_destroy_drawing_tools();
    tavdshapepic_release();
  }

  Strings pens(const Sketch& sketch) {
    recording_.clear();
    draw_sketch({shp, recording_.surface()}, sketch);
    return recording_.lines("select pen");
  }
  Strings lines(const Sketch& sketch) {
    recording_.clear();
    draw_sketch({shp, recording_.surface()}, sketch);
    return recording_.lines("line");
  }

  tavdtest::Recording recording_;
};

TEST_F(ShapeSketch, TakesTheDottedPenForHiddenEdgesAlone) {
  const Figure edges[] = {line({10, 10}, {50, 10})};
  const Strings without = pens({.outline = edges});
  EXPECT_EQ(without.size(), 2U) << "thick and thin";
  const Strings with = pens({.hidden = edges});
  ASSERT_EQ(with.size(), 3U);
  EXPECT_EQ(with[0], without[0]);
  EXPECT_EQ(with[1].find("select pen dot"), 0U) << with[1];
  EXPECT_EQ(with[2], without[1]);
}

TEST_F(ShapeSketch, DimensionCloseToItsObjectHasNoExtensions) {
  shp.nvalues = 2;
  shp.values[1] = 100;
  const Dimension far[] = {across(Measure(1), {100, 100}, {200, 100}, 150)};
  const Dimension close[] = {across(Measure(1), {100, 100}, {200, 100}, 100)};
  EXPECT_EQ(lines({.dimensions = far}).size(), lines({.dimensions = close}).size() + 2);
  const Dimension far_down[] = {down(Measure(1), {100, 100}, {100, 200}, 150)};
  const Dimension close_down[] = {down(Measure(1), {100, 100}, {100, 200}, 100)};
  EXPECT_EQ(lines({.dimensions = far_down}).size(), lines({.dimensions = close_down}).size() + 2);
}

}  // namespace
}  // namespace tavd
