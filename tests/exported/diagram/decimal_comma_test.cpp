// A host that has set a locale with a decimal comma finds it in the numbers along the axes; all else is drawn
// as ever.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "exported/diagram/flowdiagram_fixture.h"
#include "exported/diagram/throwdiagram_fixture.h"
#include "support/decimal_comma.h"

namespace {

using tavdtest::DecimalCommaLocale;
using tavdtest::Record;
using tavdtest::Recording;

std::string with_points(std::string drawing) {
  std::replace(drawing.begin(), drawing.end(), ',', '.');
  return drawing;
}

class FlowDiagramInDecimalComma : public tavdtest::FlowDiagram {
 protected:
  // A damper whose pressures need decimals.
  std::string drawn() {
    tavdg_set_yunit(1);  // kPa
    Record product("TST", "PRODUCT");
    limits(product, 120).rows<DamperPoint>(1652, {{1.25F, 100, 1000}, {1.5F, 100, 300}}).text(1501, "CODE");
    EXPECT_EQ(0, tavdg_initdiagramdata(product.rec()));
    tavdg_set_operation_point(300, 1000);
    return draw().text();
  }
};

TEST_F(FlowDiagramInDecimalComma, ChangesTheNumbersOnTheAxesAlone) {
  const std::string expected = drawn();
  EXPECT_NE(expected.find("\"0.5\""), std::string::npos);
  const DecimalCommaLocale locale;
  const std::string found = drawn();
  EXPECT_NE(found.find("\"0,5\""), std::string::npos);
  EXPECT_EQ(with_points(found), with_points(expected));
}

class ThrowDiagramInDecimalComma : public tavdtest::ThrowDiagram {
 protected:
  static std::string drawn() {
    Record product("TST", "PRODUCT");
    product.header(110, 0, 0, 1, 10, 10, 100).rows<QvL2Point>(1659, {{1, 0.5F}});
    EXPECT_EQ(0, L2dg_initdiagramdata(product.rec()));
    Recording recording;
    L2dg_create_drawing_tools();
    L2dg_draw_diagram(recording.surface());
    L2dg_destroy_drawing_tools();
    return recording.text();
  }
};

TEST_F(ThrowDiagramInDecimalComma, ChangesTheNumbersOnTheAxesAlone) {
  const std::string expected = drawn();
  EXPECT_NE(expected.find("\"0.5\""), std::string::npos);
  const DecimalCommaLocale locale;
  const std::string found = drawn();
  EXPECT_NE(found.find("\"0,5\""), std::string::npos);
  EXPECT_EQ(with_points(found), with_points(expected));
}

}  // namespace
