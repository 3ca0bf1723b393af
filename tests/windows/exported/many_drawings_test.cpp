// Drawings of libtavdn on a device context of Windows: GDI deletes no pen and no font that is selected, so
// none of a drawing's own may stay so.
#include <gtest/gtest.h>
#include <windows.h>

#include "tavd/tavdn.h"

namespace {

bool is_stock_object(HGDIOBJ object) {
  for (const int stock : {BLACK_PEN, WHITE_PEN, NULL_PEN, SYSTEM_FONT, DEFAULT_GUI_FONT, ANSI_VAR_FONT}) {
    if (object == GetStockObject(stock)) return true;
  }
  return false;
}

struct ManyDrawings : testing::Test {
  ManyDrawings() {
    FlowData fd{};
    fd.kind = 10;
    fd.nhdd = 1;
    fd.qvmin = 20;
    fd.qvmax = 200;
    fd.dpmin = 10;
    fd.dpmax = 500;
    fd.nref = 1;
    fd.nqvL2 = 2;
    fd.qvL2[0] = {50, 2};
    fd.qvL2[1] = {100, 4};
    EXPECT_EQ(tavdn_prepare(&fd, nullptr, &product), TAVDN_OK);
  }
  ~ManyDrawings() override {
    tavdn_release(product);
    DeleteDC(context);
  }

  void expect_nothing_of_its_own_selected() const {
    EXPECT_TRUE(is_stock_object(GetCurrentObject(context, OBJ_PEN)));
    EXPECT_TRUE(is_stock_object(GetCurrentObject(context, OBJ_FONT)));
  }

  tavdn_product* product = nullptr;
  HDC context = CreateCompatibleDC(nullptr);
};

TEST_F(ManyDrawings, OfAFlowDiagramLeaveNothingSelected) {
  EXPECT_EQ(tavdn_draw_flow(product, nullptr, context), TAVDN_OK);
  expect_nothing_of_its_own_selected();
}

TEST_F(ManyDrawings, OfAThrowDiagramLeaveNothingSelected) {
  EXPECT_EQ(tavdn_draw_throw(product, nullptr, context), TAVDN_OK);
  expect_nothing_of_its_own_selected();
}

TEST_F(ManyDrawings, OfASketchLeaveNothingSelected) {
  const tavdn_shape shape = {6, {102, 400, 300, 200, 100, 50}, 0, 0, 0};
  EXPECT_EQ(tavdn_draw_shape(&shape, nullptr, context), TAVDN_OK);
  expect_nothing_of_its_own_selected();
}

}  // namespace
