// What the throw length diagram keeps in its state, and the numbers that a drawing shows only to the pixel.
#include "diagram/processdiagrams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/gwsys.h"
#include "support/database.h"
#include "tavd/L2dg.h"
#include "tavd/tavca.h"
#include "tavdgui/tavdgui.h"

namespace {

using tavd::L2dg;
using tavd::L2dg_choices;
using tavdtest::Database;
using tavdtest::Record;

class ThrowState : public testing::Test {
 protected:
  void SetUp() override { L2dg_reset_parameters(); }
  void TearDown() override {
    L2dg_release();
    L2dg_reset_parameters();
  }
  int init(const Record& product, float qv, float L2 = 0, std::int16_t xunit = 0) const {
    return L2dg_init(tgui_main_module(), database_.handle(), product.rec(), 0, qv, L2, xunit);
  }
  static void expect_axis(float min, float max) {
    ASSERT_NE(nullptr, L2dg.chart);
    EXPECT_EQ(min, L2dg.chart->ymin);
    EXPECT_EQ(max, L2dg.chart->ymax);
  }

  Database database_;
};

TEST_F(ThrowState, InitStoresItsArgumentsAndTheDefaults) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, L2dg_init(nullptr, database_.handle(), product.rec(), 101, 12.5F, 3.5F, 7));
  EXPECT_EQ(product.rec(), L2dg.rec);
  EXPECT_EQ(database_.handle(), L2dg.db);
  EXPECT_STREQ("TST", L2dg.classID);
  EXPECT_EQ(101, L2dg.listid);
  EXPECT_EQ(12.5F, L2dg.qv);
  EXPECT_EQ(3.5F, L2dg.L2);
  EXPECT_EQ(7, L2dg.xunit);
  EXPECT_EQ(1.0F, L2dg.xfactor);
  EXPECT_EQ(0, L2dg.yunit);
  EXPECT_EQ(1.0F, L2dg.yfactor);
  EXPECT_EQ(10000, L2dg.width);
  EXPECT_EQ(10000, L2dg.height);
  EXPECT_EQ(2, L2dg.resolution);
  EXPECT_FALSE(L2dg.failed);
  EXPECT_EQ(nullptr, L2dg.chart);
}

TEST_F(ThrowState, EachUnitHasItsFactor) {
  const float factors[] = {1.0F, 3600.0F, 0.001F, 3.6F, 2.118644F, 3.6F, 1.0F, 1.0F};
  for (std::int16_t unit = 0; unit < 8; ++unit) {
    ASSERT_EQ(0, L2dg_init(nullptr, database_.handle(), nullptr, 0, 0, 0, unit));
    EXPECT_EQ(factors[unit], L2dg.xfactor) << unit;
  }
}

TEST_F(ThrowState, ChartIsLogarithmicOverTheFlowsInTheUnit) {
  Record product("TST", "PRODUCT");
  product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, 1}});
  ASSERT_EQ(0, init(product, 0, 0, 5));
  EXPECT_EQ(3.6F * 100.0F, L2dg.chart->xmin);
  EXPECT_EQ(3.6F * 1000.0F, L2dg.chart->xmax);
  EXPECT_EQ(1, L2dg.chart->xlog);
  EXPECT_EQ(1, L2dg.chart->ylog);
  EXPECT_EQ(0.0F, L2dg.chart->xsteps);
  EXPECT_EQ(1.0F, L2dg.chart->ysteps);
  EXPECT_STREQ("qv [m3/h/m]", L2dg.chart->szX);
  EXPECT_STREQ("L02 [m]", L2dg.chart->szY);
}

TEST_F(ThrowState, TwoRowsGiveARangeByTheFirstAlone) {
  Record product("TST", "PRODUCT");
  product.header(110, 0, 0, 50, 400, 10, 100).rows<QvL2Point>(1659, {{100, 5}, {200, 8}});
  ASSERT_EQ(0, init(product, 0));
  expect_axis(2, 21);
}

TEST_F(ThrowState, RangeIsRoundedOutwardAndNeverEmpty) {
  const struct {
    float at_100, min, max;  // m; flows run from 100 to 1000 l/s
  } cases[] = {{0.3F, 0.5F, 4},   {0.04F, 0.5F, 1}, {0.09F, 0.5F, 1}, {0, 0.5F, 1},     {-3, 0.5F, 1},
               {0.99F, 0.5F, 10}, {1, 1, 11},       {1.5F, 1, 16},    {12.7F, 12, 128}, {99, 99, 991}};
  for (const auto& c : cases) {
    Record product("TST", "PRODUCT");
    product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, c.at_100}});
    ASSERT_EQ(0, init(product, 0));
    SCOPED_TRACE(c.at_100);
    expect_axis(c.min, c.max);
  }
}

ParL2Point row(const char (&value)[7], float qv, float throw_length) {
  ParL2Point r{};
  std::copy(value, value + 6, r.value);
  r.qv = qv;
  r.L2 = throw_length;
  return r;
}

TEST_F(ThrowState, RangeByValueRisesByAMetreAtLeast) {
  const struct {
    float first, last;  // m, at 1000 and at 100 l/s
    float min, max;
  } cases[] = {{9.5F, 1.5F, 1, 10},   {1, 200, 200, 201}, {2.5F, 2.5F, 2, 3},
               {0.2F, 0.9F, 0.5F, 1}, {-5, -5, 0.5F, 1},  {-5, 3, 3, 4}};
  for (const auto& c : cases) {
    Record product("TST", "PRODUCT");
    product.header(110, 0, 0, 100, 1000, 10, 100)
        .rows<ParL2Point>(1660, {row("1     ", 1000, c.first), row("2     ", 100, c.last)});
    ASSERT_EQ(0, init(product, 0));
    SCOPED_TRACE(c.first);
    expect_axis(c.min, c.max);
  }
}

TEST_F(ThrowState, NumbersBeyondAnIntegerAreHeldAtItsEnd) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  Record product("TST", "PRODUCT");
  product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, kInfinity}});
  ASSERT_EQ(0, init(product, 0));
  expect_axis(2147483648.0F, 2147483648.0F);
  Record none("TST", "NAN");
  none.header(110, 0, 0, 100, 1000, 10, 100)
      .rows<QvL2Point>(1659, {{100, std::numeric_limits<float>::quiet_NaN()}});
  ASSERT_EQ(0, init(none, 0));
  expect_axis(0.5F, 1);
}

TEST_F(ThrowState, ThrowParameterTakesASlotAndSelectsTheLine) {
  L2dg_set_parameter("g", "30");
  EXPECT_STREQ("g", L2dg_choices.savedpar.slots[0].name);
  EXPECT_STREQ("30", L2dg_choices.savedpar.slots[0].value);
  EXPECT_STREQ("30", L2dg_choices.parL2value);
  L2dg_set_parameter("G", "45");
  EXPECT_STREQ("45", L2dg_choices.savedpar.slots[0].value);
  EXPECT_STREQ("", L2dg_choices.savedpar.slots[1].name);
  EXPECT_STREQ("45", L2dg_choices.parL2value);
  L2dg_reset_parameters();
  EXPECT_STREQ("", L2dg_choices.savedpar.slots[0].name);
  EXPECT_STREQ("", L2dg_choices.savedpar.slots[0].value);
  EXPECT_STREQ("", L2dg_choices.parL2value);
}

TEST_F(ThrowState, OtherParametersDoNotSelectTheLine) {
  L2dg_set_parameter("G", "30");
  L2dg_set_parameter("GG", "45");
  L2dg_set_parameter("", "60");
  EXPECT_STREQ("30", L2dg_choices.parL2value);
}

TEST_F(ThrowState, ChoicesAreCutAtSixCharacters) {
  L2dg_set_parameter("abcdefgh", "12345678");
  EXPECT_STREQ("abcdef", L2dg_choices.savedpar.slots[0].name);
  EXPECT_STREQ("123456", L2dg_choices.savedpar.slots[0].value);
  L2dg_set_parameter("G    ", "1 3 5 7");
  EXPECT_STREQ("G", L2dg_choices.savedpar.slots[1].name);
  EXPECT_STREQ("1 3 5", L2dg_choices.parL2value);
}

TEST_F(ThrowState, ResolutionIsCutToAnEvenNumber) {
  for (const int n : {5, 4, 1, 0, -3, std::numeric_limits<int>::min()}) {
    L2dg_setcurveresolution(n);
    EXPECT_EQ(n / 2 * 2, L2dg.resolution);
  }
}

TEST_F(ThrowState, PositionLabelIsKept) {
  L2dg_init_empty(tgui_main_module(), database_.handle());
  L2dg_set_damperpos_label(std::string(60, 'd').c_str());
  EXPECT_EQ(std::string(49, 'd'), L2dg.damperpos_label);
}

TEST_F(ThrowState, FailureStaysUntilTheDiagramIsStartedAnew) {
  Record good("TST", "GOOD");
  good.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, 1}});
  Record bad("TST", "BAD");
  bad.header(110, 0, 0, 100, 1000, 0, 100).rows<QvL2Point>(1659, {{100, 1}});
  Record none("TST", "NONE");
  none.header(110, 0, 0, 100, 1000, 10, 100);
  EXPECT_EQ(-1, init(none, 0));
  EXPECT_FALSE(L2dg.failed);
  EXPECT_EQ(-1, init(bad, 0));
  EXPECT_TRUE(L2dg.failed);
  EXPECT_EQ(0, L2dg_initdiagramdata(good.rec()));
  EXPECT_NE(nullptr, L2dg.chart);
  EXPECT_TRUE(L2dg.failed);
  EXPECT_EQ(-1, L2dg_initdiagramdata(none.rec()));
  EXPECT_EQ(nullptr, L2dg.chart);
  EXPECT_TRUE(L2dg.failed);
  EXPECT_EQ(0, init(good, 0));
  EXPECT_FALSE(L2dg.failed);
}

TEST_F(ThrowState, FlowOfAFailedFitLeavesTheThrowAsItWas) {
  Record product("TST", "PRODUCT");
  product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{1e-8F, 5}});
  ASSERT_EQ(0, init(product, 300, 0.7F));
  L2dg_draw_diagram(nullptr);
  EXPECT_EQ(0.7F, L2dg.L2);
}

// How many floats lie between two positive ones.
std::int32_t floats_apart(float a, float b) {
  std::int32_t bits_a = 0;
  std::int32_t bits_b = 0;
  std::memcpy(&bits_a, &a, sizeof a);
  std::memcpy(&bits_b, &b, sizeof b);
  return std::abs(bits_a - bits_b);
}

class Numbers {
 public:
  float between(float lo, float hi) { return std::uniform_real_distribution<float>(lo, hi)(random_); }

 private:
  std::mt19937 random_{20240521};  // NOLINT(bugprone-random-generator-seed,cert-msc32-c,cert-msc51-cpp)
};

TEST_F(ThrowState, ThrowOfTheOperatingPointIsTheCalculatedOneToOneRounding) {
  Numbers numbers;
  int different = 0;
  for (int i = 0; i < 400; ++i) {
    const float q1 = numbers.between(20, 200);
    const float q2 = q1 * numbers.between(1.2F, 4);
    const float l1 = numbers.between(0.5F, 10);
    const float l2 = l1 * numbers.between(0.8F, 4);
    Record product("TST", "PRODUCT");
    product.header(110, 0, 0, 20, 800, 10, 100).rows<QvL2Point>(1659, {{q1, l1}, {q2, l2}});
    const float qv = numbers.between(20, 800);
    ASSERT_EQ(0, init(product, qv));
    L2dg_draw_diagram(nullptr);
    const std::int32_t apart = floats_apart(tavca_L2_isothermal(&L2dg.flowdata, qv, ""), L2dg.L2);
    EXPECT_LE(apart, 1);
    different += apart != 0 ? 1 : 0;
  }
  EXPECT_GT(different, 0);  // one rounds twice
}

TEST_F(ThrowState, ThrowOfASelectedValueIsTheCalculatedOneToOneRounding) {
  Numbers numbers;
  for (int i = 0; i < 400; ++i) {
    const float l1 = numbers.between(0.5F, 10);
    Record product("TST", "PRODUCT");
    ParEntry halved{};
    std::memcpy(halved.value, "1     ", 6);
    halved.factor = 0.5F;  // exact
    product.header(110, 0, 0, 20, 800, 10, 100)
        .rows<ParL2Point>(1660, {row("0     ", 100, l1 * 2), row("0     ", 300, l1 * 5),
                                 row("45    ", 100, l1), row("45    ", 300, l1 * 4)})
        .text(1514, "A")
        .rows<ParEntry>(1661, {halved});
    L2dg_set_parameter("A", "1");
    const std::string value = std::to_string(numbers.between(0, 45)).substr(0, 4);
    L2dg_set_parameter("G", value.c_str());
    const float qv = numbers.between(20, 800);
    ASSERT_EQ(0, init(product, qv));
    L2dg_draw_diagram(nullptr);
    EXPECT_GT(L2dg.L2, 0);
    EXPECT_LE(floats_apart(tavca_L2_isothermal(&L2dg.flowdata, qv, value.c_str()), L2dg.L2), 1) << value;
  }
}

// In a process of its own, where the class was not tried before.
[[noreturn]] void start_with_a_refused_class() {
  tgui_class other{};
  other.size = 0x48;
  other.name = "TAVDDGRL02";
  other.procedure = tgui_default_procedure;
  tgui_register_class(&other);
  bool as_told = false;
  {
    const Database database;
    const Record product("TST", "PRODUCT");
    as_told = L2dg_init(nullptr, database.handle(), product.rec(), 7, 300, 5, 3) == -1 &&
              L2dg.rec == nullptr && L2dg.db == 0 && L2dg.listid == 0 && L2dg.qv == 0 && L2dg.L2 == 0 &&
              L2dg.width == 0 && L2dg.xunit == 0 && L2dg.classID[0] == 0 &&
              L2dg.familylist.members.itemsize == 0;
  }
  std::exit(as_told ? 0 : 1);
}

TEST(ThrowStateDeathTest, RefusedClassLeavesTheStateEmpty) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(start_with_a_refused_class(), testing::ExitedWithCode(0), "");
}

// A host that goes on after the refusal: sizes, units and the list were never set.
[[noreturn]] void go_on_after_a_refusal() {
  tgui_class other{};
  other.size = 0x48;
  other.name = "TAVDDGRL02";
  other.procedure = tgui_default_procedure;
  tgui_register_class(&other);
  bool drawn = false;
  {
    const Database database;
    Record product("TST", "PRODUCT");
    product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, 1}});
    L2dg_init(nullptr, database.handle(), product.rec(), 0, 300, 5, 3);
    L2dg_fillsizeLB(nullptr);
    L2dg_update_from_list(nullptr);
    L2dg_initdiagramdata(product.rec());
    tgui_surface* surface = tgui_recording_create(100, 100);
    L2dg_create_drawing_tools();
    L2dg_draw_diagram(surface);
    drawn = tgui_recording_count(surface) > 0;
    L2dg_destroy_drawing_tools();
    L2dg_release();
    tgui_surface_destroy(surface);
  }
  std::exit(drawn && tgui_object_count() == 0 ? 0 : 1);
}

TEST(ThrowStateDeathTest, GoingOnAfterARefusalIsHarmless) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(go_on_after_a_refusal(), testing::ExitedWithCode(0), "");
}

// The module of an embedder stands in for a null one in one of the two inits.
[[noreturn]] void start_with_a_stored_module(bool with_product_call) {
  tgui_module* embedder = tgui_module_create("embedder");
  tavd::gwInit(embedder);
  if (with_product_call) {
    L2dg_init(nullptr, 0, nullptr, 0, 0, 0, 0);
  } else {
    L2dg_init_empty(nullptr, 0);
  }
  const bool at_embedder = tgui_get_class("TAVDDGRL02", embedder, nullptr) == 1;
  const bool at_main = tgui_get_class("TAVDDGRL02", nullptr, nullptr) == 1;
  tavd::gwExit();
  tgui_module_destroy(embedder);
  std::exit(at_embedder == !with_product_call && at_main == with_product_call ? 0 : 1);
}

TEST(ThrowStateDeathTest, StoredModuleStandsInForANullOneInInitEmptyOnly) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(start_with_a_stored_module(false), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(start_with_a_stored_module(true), testing::ExitedWithCode(0), "");
}

}  // namespace
