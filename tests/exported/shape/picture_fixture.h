// The one shape picture of the process, of products made for the test, drawn on a recording.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "exported/shape/drawing.h"
#include "support/database.h"
#include "support/recording.h"
#include "tavd/tavdshapepic.h"
#include "tavdgui/tavdgui.h"

namespace tavdtest {

class ShapePicture : public ::testing::Test {
 protected:
  void SetUp() override { tavdshapepic_init(tgui_main_module(), 0, nullptr, 0); }
  void TearDown() override {
    tavdshapepic_destroy_drawing_tools();
    tavdshapepic_release();
  }

  // A product with this shape, and a connection if `b` is not 0.
  static void show(const std::vector<std::int16_t>& shape, std::int16_t b = 0, std::int16_t h = 0) {
    Record product("TST", "PRODUCT");
    product.rows(1110, shape).text(1501, "CODE");
    if (b != 0) {
      product.header(100, b, h, 10, 100, 10, 100);
    }
    tavdshapepic_initdata(product.rec());
  }

  Recording& draw() {
    recording_.clear();
    tavdshapepic_create_drawing_tools();
    tavdshapepic_draw(recording_.surface());
    tavdshapepic_destroy_drawing_tools();
    return recording_;
  }
  Drawing drawing() { return read_drawing(draw().lines()); }

  Recording recording_;
};

}  // namespace tavdtest
