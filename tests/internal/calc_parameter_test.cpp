#include <gtest/gtest.h>

#include <cmath>

#include "calc/parameter.h"
#include "support/products.h"

namespace {

using tavdtest::add_parameter;
using tavdtest::add_pressure_term;
using tavdtest::entry;
using tavdtest::kNonsense;
using tavdtest::product;

struct Place {
  bool found = false;
  std::int16_t idx1 = 77;
  std::int16_t idx2 = 77;
  float frac = kNonsense;
};

template <int N>
Place locate(const char* value, const ParEntry (&table)[N], int n = N) {
  Place place;
  place.found = tavd::param_locate(value, table, n, &place.idx1, &place.idx2, &place.frac);
  return place;
}

void expect_place(const Place& place, bool found, int idx1, int idx2, float frac) {
  EXPECT_EQ(place.found, found);
  EXPECT_EQ(place.idx1, idx1);
  EXPECT_EQ(place.idx2, idx2);
  EXPECT_EQ(place.frac, frac);
}

TEST(ParameterPlace, InANumericTable) {
  const ParEntry table[] = {entry("100", 0.0F), entry("200", 0.0F), entry("300", 0.0F)};
  expect_place(locate("250", table), true, 1, 2, 0.5F);
  expect_place(locate("200", table), true, 0, 1, 1.0F);
  expect_place(locate("100", table), true, 0, 0, 0.0F);
  expect_place(locate("300", table), true, 1, 2, 1.0F);
  expect_place(locate("50", table), true, 0, 0, 0.0F);
  expect_place(locate("999", table), true, 2, 2, 0.0F);
  expect_place(locate("110", table), true, 0, 1, (110.0F - 100.0F) / (200.0F - 100.0F));
}

TEST(ParameterPlace, OfALabelInANumericTableIsNone) {
  const ParEntry table[] = {entry("100", 0.0F), entry("200", 0.0F)};
  expect_place(locate("-1", table), false, 0, 0, 0.0F);
}

TEST(ParameterPlace, OfANumberInATableWithALabelIsFoundAsText) {
  const ParEntry table[] = {entry("100", 0.0F), entry("200", 0.0F), entry("MAX", 0.0F)};
  expect_place(locate("200.0", table), true, 1, 1, 0.0F);
  expect_place(locate("150", table), false, 0, 0, 0.0F);
  expect_place(locate("max", table), true, 2, 2, 0.0F);
}

TEST(ParameterPlace, InATableThatDoesNotRiseIsNone) {
  const ParEntry table[] = {entry("100", 0.0F), entry("100", 0.0F), entry("300", 0.0F)};
  expect_place(locate("200", table), false, 0, 0, 0.0F);
}

TEST(ParameterPlace, InAnEmptyTableIsNone) {
  const ParEntry table[] = {entry("100", 0.0F)};
  expect_place(locate("100", table, 0), false, 0, 0, 0.0F);
}

TEST(StripQuotes, TakesEachEndOnItsOwn) {
  const struct {
    const char* before;
    const char* after;
    bool removed;
  } cases[] = {{"\"", "", true},   {"\"\"", "", true},      {"\"A\"", "A", true},
               {"\"A", "A", true}, {"A\"", "A", true},      {"A", "A", false},
               {"", "", false},    {"A\"B", "A\"B", false}, {"\"\"A", "\"A", true}};
  for (const auto& c : cases) {
    char text[8];
    std::strcpy(text, c.before);
    EXPECT_EQ(tavd::strip_quotes(text), c.removed) << c.before;
    EXPECT_STREQ(text, c.after) << c.before;
  }
}

TEST(AddPressureTerm, OfTheBlendedRows) {
  FlowData fd = product(10);
  add_parameter(fd, "P", {entry("100", 0.0F), entry("200", 0.001F), entry("300", 0.004F)});
  tavca_param_setvalue(&fd, "P", "250");
  float dp = 7.0F;
  tavd::param_add_dp(&fd, 100.0F, &dp);
  EXPECT_FLOAT_EQ(dp, 32.0F);
}

TEST(RemovePressureTerm, LargerThanTheDemandLeavesTheSmallestPressure) {
  FlowData fd = product(10);
  add_pressure_term(fd, 0.01F);
  float dp = 60.0F;
  tavd::param_remove_dp(&fd, 100.0F, &dp);
  EXPECT_EQ(dp, 1e-5F);
}

TEST(RemovePressureTerm, BelowAThousandthOfAPascalIsIgnored) {
  FlowData fd = product(10);
  add_pressure_term(fd, 0.0005F);
  float dp = 0.25F;
  tavd::param_remove_dp(&fd, 1.0F, &dp);
  EXPECT_EQ(dp, 0.25F);
}

TEST(RemovePressureTerm, FromNearlyNothingDoesNothing) {
  FlowData fd = product(10);
  add_pressure_term(fd, 0.01F);
  float dp = 9e-6F;
  tavd::param_remove_dp(&fd, 100.0F, &dp);
  EXPECT_EQ(dp, 9e-6F);
}

TEST(RemovePressureTerm, ThatTurnsTheDemandNegativeIsIgnored) {
  FlowData fd = product(10);
  add_pressure_term(fd, -0.01F);
  float dp = 50.0F;  // 50 - 100 Pa is not above 1e-5 Pa
  tavd::param_remove_dp(&fd, 100.0F, &dp);
  EXPECT_EQ(dp, 50.0F);
  dp = 150.0F;
  tavd::param_remove_dp(&fd, 100.0F, &dp);
  EXPECT_FLOAT_EQ(dp, 250.0F);
}

TEST(SoundTerms, AddUpAndBlendAsIntegers) {
  FlowData fd = product(10);
  add_parameter(fd, "A", {entry("1", 0.0F, -3, 5), entry("2", 0.0F, 4, -2)});
  add_parameter(fd, "B", {entry("1", 0.0F, 10, 20)});
  tavca_param_setvalue(&fd, "A", "1.5");
  tavca_param_setvalue(&fd, "B", "1");
  float lw[8] = {};
  float dlw[8] = {};
  tavd::param_add_lw(&fd, lw);
  tavd::param_add_dlw(&fd, dlw);
  for (int band = 0; band < 8; ++band) {
    EXPECT_EQ(lw[band], 10.5F);
    EXPECT_EQ(dlw[band], 21.5F);
  }
}

TEST(SoundTerms, OfExtremeRowsDoNotOverflow) {
  FlowData fd = product(10);
  add_parameter(fd, "A", {entry("1", 0.0F, -32768), entry("2", 0.0F, 32767)});
  tavca_param_setvalue(&fd, "A", "2");
  float lw[8] = {};
  tavd::param_add_lw(&fd, lw);
  EXPECT_EQ(lw[0], 32767.0F);
}

TEST(ThrowFactors, TooSmallCountAsOne) {
  FlowData fd = product(10);
  add_parameter(
      fd, "A",
      {entry("1", 0.0F, 0, 0, 9e-6F), entry("2", 0.0F, 0, 0, -9e-6F), entry("3", 0.0F, 0, 0, -2.0F)});
  float x = 3.0F;
  tavca_param_setvalue(&fd, "A", "1");
  tavd::param_apply_factor(&fd, &x);
  EXPECT_EQ(x, 3.0F);
  tavca_param_setvalue(&fd, "A", "2");
  tavd::param_apply_factor(&fd, &x);
  EXPECT_EQ(x, 3.0F);
  tavca_param_setvalue(&fd, "A", "3");
  tavd::param_apply_factor(&fd, &x);
  EXPECT_EQ(x, -6.0F);
}

TEST(Terms, OfASecondParameterAloneApply) {
  FlowData fd = product(10);
  add_parameter(fd, "A", {entry("1", 1.0F)});
  add_parameter(fd, "B", {entry("1", 0.02F)});
  tavca_param_setvalue(&fd, "B", "1");
  float dp = 0.0F;
  tavd::param_add_dp(&fd, 10.0F, &dp);
  EXPECT_EQ(dp, 0.02F * 10.0F * 10.0F);
}

}  // namespace
