// Throw tables and limits that no product has: the diagram is drawn within its bounds or not at all.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

#include "exported/diagram/throwdiagram_fixture.h"

namespace {

using tavdtest::factor_row;
using tavdtest::Record;
using tavdtest::Segment;
using tavdtest::throw_row;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

constexpr float kHostile[] = {kNaN, kInfinity, -kInfinity, 0, -1, 1e-45F, 1e-8F, 0.3F, 150, 2e7F, 3e38F};

class ThrowHostile : public tavdtest::ThrowDiagram {
 protected:
  // The chart is whole, and what is drawn into it stays inside.
  void expect_bounded(const std::string& what) {
    SCOPED_TRACE(what);
    const int objects = tgui_object_count();
    const tavdtest::Recording& drawn = draw();
    EXPECT_EQ(objects, tgui_object_count());
    const std::vector<Segment> lines = drawn.segments();
    ASSERT_LE(4U, lines.size());
    EXPECT_GT(5000U, drawn.lines().size());  // ticks over some 80 decades at the most
    const Segment top = lines[0];
    const Segment bottom = lines[2];
    const Segment throw_line_drawn = throw_line();
    if (throw_line_drawn != Segment{}) {
      expect_inside(throw_line_drawn, {top[0], top[1], bottom[0], bottom[1]});
    }
    for (const Segment& s : recording_->figures("ellipse")) {
      const int x = (s[0] + s[2]) / 2;
      const int y = (s[1] + s[3]) / 2;
      expect_inside({x, y, x, y}, {top[0], top[1], bottom[0], bottom[1]});
    }
  }
  static void expect_inside(const Segment& s, const Segment& plot) {
    for (const std::size_t end : {std::size_t{0}, std::size_t{2}}) {
      EXPECT_LE(plot[0], s[end]);
      EXPECT_GE(plot[2], s[end]);
      EXPECT_LE(plot[1], s[end + 1]);
      EXPECT_GE(plot[3], s[end + 1]);
    }
  }
};

TEST_F(ThrowHostile, OneRow) {
  for (const float qv : kHostile) {
    for (const float L2 : kHostile) {
      Record product("TST", "PRODUCT");
      limits(product).rows<QvL2Point>(1659, {{qv, L2}});
      ASSERT_EQ(0, init(db(), product.rec(), 300));
      expect_bounded(std::to_string(qv) + ' ' + std::to_string(L2));
    }
  }
}

TEST_F(ThrowHostile, TwoRowsInEitherTable) {
  std::mt19937 random(4711);  // NOLINT(bugprone-random-generator-seed,cert-msc32-c,cert-msc51-cpp)
  std::uniform_int_distribution<std::size_t> any(0, std::size(kHostile) - 1);
  for (int i = 0; i < 500; ++i) {
    const float v[4] = {kHostile[any(random)], kHostile[any(random)], kHostile[any(random)],
                        kHostile[any(random)]};
    std::string what;
    for (const float value : v) {
      what += std::to_string(value) + ' ';
    }
    Record product("TST", "PRODUCT");
    limits(product).rows<QvL2Point>(1659, {{v[0], v[1]}, {v[2], v[3]}});
    ASSERT_EQ(0, init(db(), product.rec(), 300));
    expect_bounded(what);
    Record by_value("TST", "BY-VALUE");
    limits(by_value).rows<ParL2Point>(
        1660, {throw_row("10", v[0], v[1]), throw_row("10", 200, 2), throw_row("20", v[2], v[3])});
    for (const char* value : {"", "10", "15", "20"}) {
      L2dg_set_parameter("G", value);
      ASSERT_EQ(0, init(db(), by_value.rec(), 300));
      expect_bounded(what + "by value " + value);
    }
  }
}

TEST_F(ThrowHostile, Limits) {
  for (const float qvmin : kHostile) {
    for (const float qvmax : kHostile) {
      for (const float dpmin : kHostile) {
        for (const float dpmax : kHostile) {
          Record product("TST", "PRODUCT");
          product.header(110, 0, 0, qvmin, qvmax, dpmin, dpmax)
              .rows<QvL2Point>(1659, {{100, 1}, {200, 1.5F}});
          const bool rise = qvmin > 0 && dpmin > 0 && qvmax > qvmin && dpmax > dpmin;
          ASSERT_EQ(rise ? 0 : -1, init(db(), product.rec(), 150))
              << qvmin << ' ' << qvmax << ' ' << dpmin << ' ' << dpmax;
          // The pressures have no part in the drawing.
          if (rise && dpmin == 0.3F && dpmax == 150) {
            expect_bounded(std::to_string(qvmin) + ' ' + std::to_string(qvmax));
          }
        }
      }
    }
  }
}

TEST_F(ThrowHostile, Factors) {
  for (const float factor : kHostile) {
    Record product("TST", "PRODUCT");
    terminal(product).text(1514, "A").rows<ParEntry>(1661, {factor_row("1", factor)});
    L2dg_set_parameter("A", "1");
    ASSERT_EQ(0, init(db(), product.rec(), 300));
    expect_bounded(std::to_string(factor));
  }
}

TEST_F(ThrowHostile, OperatingPoints) {
  Record product("TST", "PRODUCT");
  Record flowless("TST", "FLOWLESS");
  terminal(product);
  limits(flowless).rows<QvL2Point>(1659, {{0, 5}});  // no line: the throw given counts
  for (const float qv : kHostile) {
    for (const float L2 : kHostile) {
      for (const tavb_rec rec : {product.rec(), flowless.rec()}) {
        ASSERT_EQ(0, init(db(), rec, qv, L2));
        expect_bounded(std::to_string(qv) + ' ' + std::to_string(L2));
        const bool inside = qv >= 100 && qv <= 1000;
        EXPECT_EQ(inside, !curves("ellipse").empty() || curves("line").size() > 1 ||
                              (rec == flowless.rec() && curves("line").size() == 1));
      }
    }
  }
}

TEST_F(ThrowHostile, FlowThatItsUnitTakesToZeroHasNoMark) {
  Record product("TST", "PRODUCT");
  product.header(110, 0, 0, 1e-45F, 1000, 10, 100).rows<QvL2Point>(1659, {{0, 5}});  // the throw given counts
  ASSERT_EQ(0, init(db(), product.rec(), 1e-45F, 0.75F, L2DG_FLOW_M3_S));
  expect_bounded("1e-45 l/s in m3/s");
  EXPECT_TRUE(recording_->figures("ellipse").empty());
  ASSERT_EQ(0, init(db(), product.rec(), 1e-45F, 0.75F, L2DG_FLOW_L_S));
  expect_bounded("1e-45 l/s");
  EXPECT_FALSE(recording_->figures("ellipse").empty());
}

TEST_F(ThrowHostile, TablesLongerThanTheRecord) {
  Record product("TST", "PRODUCT");
  std::vector<QvL2Point> rows(100, QvL2Point{200, 2});
  rows[0] = {100, 1};
  limits(product).rows(1659, rows);
  ASSERT_EQ(0, init(db(), product.rec(), 300));
  expect_bounded("100 rows");
  Record by_value("TST", "BY-VALUE");
  std::vector<ParL2Point> values(100, throw_row("abcdefgh", 200, 2));
  limits(by_value).rows(1660, values);
  ASSERT_EQ(0, init(db(), by_value.rec(), 300));
  expect_bounded("100 values");
}

TEST_F(ThrowHostile, Sizes) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, init(db(), terminal_by_value(product).rec(), 300));
  L2dg_set_parameter("G", "20");
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  const int cases[][4] = {{0, 0, kMost, kMost},
                          {kLeast, kLeast, kMost, kMost},
                          {kMost, kMost, kLeast, kLeast},
                          {kLeast, 0, 0, kMost},
                          {0, 0, 49, 49},
                          {-32768, -32768, 32767, 32767}};
  for (const auto& c : cases) {
    const int objects = tgui_object_count();
    L2dg_resize(c[0], c[1], c[2], c[3]);
    EXPECT_LE(4U, draw().segments().size());
    EXPECT_EQ(objects, tgui_object_count());
  }
}

TEST_F(ThrowHostile, NumbersThatNoControlHas) {
  Record product("TST", "PRODUCT");
  terminal(product);
  for (const int id : {std::numeric_limits<int>::min(), -1, 70000, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(0, L2dg_init(tgui_main_module(), db(), product.rec(), id, 0, 0, 0));
    L2dg_fillsizeLB(nullptr);
    L2dg_update_from_list(nullptr);
    EXPECT_EQ("", draw().text());
    L2dg_setcurveresolution(id);
  }
}

}  // namespace
