#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/decimal_comma.h"
#include "support/products.h"

namespace {

using tavdtest::add_parameter;
using tavdtest::damper_product;
using tavdtest::entry;
using tavdtest::kNonsense;
using tavdtest::product;

// Values 100, 200, 300 that add 0, 0.001 and 0.004 Pa/(l/s)^2.
FlowData three_values() {
  FlowData fd = product(30);
  add_parameter(fd, "SPEED", {entry("100", 0.0F), entry("200", 0.001F), entry("300", 0.004F)});
  return fd;
}

struct Number {
  int code;
  float value;
};

Number number_of(const char* text) {
  Number number{99, kNonsense};
  number.code = tavca_param_valuetoreal(text, &number.value);
  return number;
}

TEST(ParameterNumber, IsAPlainUnsignedDecimal) {
  const struct {
    const char* text;
    float value;
  } cases[] = {{"12", 12.0F}, {"12.5", 12.5F}, {".5", 0.5F},          {"5.", 5.0F},       {"  7 ", 7.0F},
               {"0", 0.0F},   {"0.1", 0.1F},   {"123456", 123456.0F}, {"1.2345", 1.2345F}};
  for (const auto& c : cases) {
    const Number number = number_of(c.text);
    EXPECT_EQ(number.code, 0) << c.text;
    EXPECT_EQ(number.value, c.value) << c.text;
  }
}

TEST(ParameterNumber, IsNoTextWithASignAnExponentOrAnythingElse) {
  for (const char* text :
       {"", " ", ".", "-1", "+1", "1e3", "1 2", "1.2.3", "A", "\"5\"", "0x10", "inf", "nan"}) {
    const Number number = number_of(text);
    EXPECT_EQ(number.code, -1) << text;
    EXPECT_EQ(number.value, 0.0F) << text;
  }
  EXPECT_EQ(number_of(nullptr).code, -1);
  EXPECT_EQ(tavca_param_valuetoreal("5", nullptr), 0);
}

TEST(ParameterNumber, EndsAfterSixCharacters) {
  EXPECT_EQ(number_of("1234567").value, 123456.0F);
  EXPECT_EQ(number_of("12    x").value, 12.0F);
  EXPECT_EQ(number_of("     7").code, 0);
  EXPECT_EQ(number_of("      7").code, -1);
}

TEST(ParameterNumber, ReadsAPointInEveryLocale) {
  const tavdtest::DecimalCommaLocale locale;
  const Number number = number_of("1.5");
  EXPECT_EQ(number.value, 1.5F);
}

TEST(ParameterCompare, OfTwoNumbersGoesByTheirSize) {
  EXPECT_EQ(tavca_param_valuecmp("9", "10"), -1);
  EXPECT_EQ(tavca_param_valuecmp("10", "9"), 1);
  EXPECT_EQ(tavca_param_valuecmp("10", " 10.0"), 0);
}

TEST(ParameterCompare, OfTextsIgnoresCaseQuotesAndTrailingBlanks) {
  EXPECT_EQ(tavca_param_valuecmp("\"A\"", "a"), 0);
  EXPECT_EQ(tavca_param_valuecmp("a  ", "A"), 0);
  EXPECT_EQ(tavca_param_valuecmp("\"a", "A\""), 0);
  EXPECT_EQ(tavca_param_valuecmp("B", "a"), 1);
  EXPECT_EQ(tavca_param_valuecmp("a", "B"), -1);
  EXPECT_EQ(tavca_param_valuecmp("abcdefX", "ABCDEFY"), 0);
}

TEST(ParameterCompare, OfANumberAndALabelIsThatOfTexts) {
  EXPECT_EQ(tavca_param_valuecmp("9", "-1"), 1);
  EXPECT_EQ(tavca_param_valuecmp("5", "\"5\""), 0);
}

TEST(ParameterCompare, ReadsOneFieldWithoutTerminatorOnly) {
  const char fields[12] = {'A', 'B', 'C', 'D', 'E', 'F', 'g', 'h', 'i', 'j', 'k', 'l'};
  EXPECT_EQ(tavca_param_valuecmp(fields, "abcdef"), 0);
}

TEST(ParameterChoice, BetweenTwoRowsTakesThePartOfTheWay) {
  FlowData fd = three_values();
  EXPECT_EQ(tavca_param_setvalue(&fd, "SPEED", "250"), 0);
  EXPECT_EQ(+fd.par[0].idx1, 1);
  EXPECT_EQ(+fd.par[0].idx2, 2);
  EXPECT_EQ(+fd.par[0].frac, 0.5F);
  EXPECT_STREQ(fd.par[0].value, "250");
  fd.dpmin = 10.0F;
  const float k = 0.001F + 0.5F * (0.004F - 0.001F);
  EXPECT_FLOAT_EQ(k, 0.0025F);
  EXPECT_EQ(tavca_dptotmin(&fd, 100.0F), 10.0F + k * 100.0F * 100.0F);
  EXPECT_FLOAT_EQ(tavca_dptotmin(&fd, 100.0F), 35.0F);
}

TEST(ParameterChoice, OutsideTheTableIsHeldAtItsEnds) {
  FlowData fd = three_values();
  EXPECT_EQ(tavca_param_setvalue(&fd, "SPEED", "50"), 0);
  EXPECT_EQ(+fd.par[0].idx1, 0);
  EXPECT_EQ(+fd.par[0].idx2, 0);
  EXPECT_EQ(+fd.par[0].frac, 0.0F);
  EXPECT_EQ(tavca_param_setvalue(&fd, "SPEED", "999"), 0);
  EXPECT_EQ(+fd.par[0].idx1, 2);
  EXPECT_EQ(+fd.par[0].idx2, 2);
  EXPECT_EQ(+fd.par[0].frac, 0.0F);
  EXPECT_EQ(tavca_dptotmin(&fd, 100.0F), 0.004F * 100.0F * 100.0F);
}

TEST(ParameterChoice, AtARowGivesThatRowExactly) {
  FlowData fd = three_values();
  const float terms[3] = {0.0F, 0.001F, 0.004F};
  const char* values[3] = {"100", "200", "300"};
  for (int row = 0; row < 3; ++row) {
    tavca_param_setvalue(&fd, "SPEED", values[row]);
    EXPECT_EQ(tavca_dptotmin(&fd, 100.0F), terms[row] * 100.0F * 100.0F) << values[row];
  }
}

TEST(ParameterChoice, FindsALabelWithoutRegardToQuotesAndCase) {
  FlowData fd = product(30);
  add_parameter(fd, "P", {entry("100", 0.0F), entry("\"A\"", 0.01F)});
  EXPECT_EQ(tavca_param_setvalue(&fd, "P", "a"), 0);
  EXPECT_EQ(+fd.par[0].idx1, 1);
  EXPECT_EQ(+fd.par[0].idx2, 1);
  EXPECT_EQ(+fd.par[0].frac, 0.0F);
}

TEST(ParameterChoice, OfAnotherProductsNameLeavesTheRecordUnchanged) {
  FlowData fd = three_values();
  tavca_param_setvalue(&fd, "SPEED", "250");
  const FlowData before = fd;
  EXPECT_EQ(tavca_param_setvalue(&fd, "SIZE", "100"), -1);
  EXPECT_EQ(std::memcmp(&fd, &before, sizeof fd), 0);
  EXPECT_EQ(tavca_param_setvalue(&fd, nullptr, "100"), -1);
  EXPECT_EQ(tavca_param_setvalue(nullptr, "SPEED", "100"), -1);
  EXPECT_EQ(std::memcmp(&fd, &before, sizeof fd), 0);
}

TEST(ParameterChoice, ComparesNamesWithoutRegardToCaseAndTrailingBlanks) {
  FlowData fd = three_values();
  EXPECT_EQ(tavca_param_setvalue(&fd, "speed ", "200"), 0);
  EXPECT_STREQ(fd.par[0].value, "200");
}

TEST(ParameterChoice, NeverMeetsANameOfMoreThanSixCharacters) {
  FlowData fd = product(30);
  add_parameter(fd, "DIAMETER", {entry("1", 0.01F)});
  EXPECT_EQ(tavca_param_setvalue(&fd, "DIAMETER", "1"), -1);
}

TEST(ParameterChoice, OfTheSecondNameNeedsTwoUsableParameters) {
  FlowData fd = product(30);
  add_parameter(fd, "A", {entry("1", 0.01F)});
  add_parameter(fd, "B", {entry("1", 0.02F)});
  EXPECT_EQ(tavca_param_setvalue(&fd, "B", "1"), 0);
  fd.npar = 1;
  EXPECT_EQ(tavca_param_setvalue(&fd, "B", "1"), -1);
  fd.npar = 0;
  EXPECT_EQ(tavca_param_setvalue(&fd, "A", "1"), -1);
}

TEST(ParameterChoice, OfAnUnknownLabelFallsBackToTheFirstRow) {
  FlowData fd = product(30);
  add_parameter(fd, "P", {entry("X", 0.03F), entry("Y", 0.01F)});
  tavca_param_setvalue(&fd, "P", "Y");
  EXPECT_EQ(tavca_param_setvalue(&fd, "P", "Z"), 0);
  EXPECT_EQ(+fd.par[0].idx1, 0);
  EXPECT_EQ(+fd.par[0].idx2, 0);
  EXPECT_EQ(tavca_dptotmin(&fd, 10.0F), 0.03F * 10.0F * 10.0F);
}

TEST(ParameterChoice, IsCutAtSixCharacters) {
  FlowData fd = product(30);
  add_parameter(fd, "P", {entry("ABCDEF", 0.01F)});
  EXPECT_EQ(tavca_param_setvalue(&fd, "P", "ABCDEFGHIJKLMNOPQ"), 0);
  EXPECT_STREQ(fd.par[0].value, "ABCDEF");
}

TEST(ParameterChoice, LeavesNothingOfALongerOneInTheRecord) {
  FlowData once = three_values();
  FlowData twice = three_values();
  std::memset(once.par[0].value, 0x5A, sizeof once.par[0].value);
  std::memset(twice.par[0].value, 0x5A, sizeof twice.par[0].value);
  tavca_param_setvalue(&twice, "SPEED", "ABCDEF");
  for (const char* value : {"20", "2", ""}) {
    EXPECT_EQ(tavca_param_setvalue(&once, "SPEED", value), 0);
    EXPECT_EQ(tavca_param_setvalue(&twice, "SPEED", value), 0);
    EXPECT_EQ(std::memcmp(&once, &twice, sizeof once), 0) << value;
    const char* stored = twice.par[0].value;
    EXPECT_EQ(std::string(stored, 7), std::string(value) + std::string(7 - std::strlen(value), '\0'));
    EXPECT_EQ(std::string(stored + 7, 3), "ZZZ") << "nothing is written behind the seventh byte";
  }
}

TEST(ParameterChoice, IsTakenBackByAnEmptyValue) {
  FlowData fd = three_values();
  tavca_param_setvalue(&fd, "SPEED", "300");
  for (const char* value : {"", "   ", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(tavca_param_setvalue(&fd, "SPEED", value), 0);
    EXPECT_EQ(tavca_dptotmin(&fd, 100.0F), 0.0F);
    tavca_param_setvalue(&fd, "SPEED", "300");
  }
}

TEST(ParameterChoice, MayComeFromTheRecordItself) {
  FlowData fd = three_values();
  EXPECT_EQ(tavca_param_setvalue(&fd, fd.par[0].name, fd.par[0].table[1].value), 0);
  EXPECT_EQ(tavca_param_setvalue(&fd, fd.par[0].name, fd.par[0].value), 0);
  EXPECT_STREQ(fd.par[0].value, "200");
  EXPECT_EQ(+fd.par[0].idx2, 1);
}

TEST(ParameterChoice, InATableThatDoesNotRiseFallsBackToTheFirstRow) {
  FlowData fd = product(30);
  add_parameter(fd, "P",
                {entry("100", 0.01F), entry("300", 0.02F), entry("200", 0.03F), entry("400", 0.04F)});
  tavca_param_setvalue(&fd, "P", "350");
  EXPECT_EQ(+fd.par[0].idx1, 0);
  EXPECT_EQ(+fd.par[0].idx2, 0);
  EXPECT_EQ(+fd.par[0].frac, 0.0F);
  tavca_param_setvalue(&fd, "P", "150");  // found before the table falls
  EXPECT_EQ(+fd.par[0].idx2, 1);
  EXPECT_EQ(+fd.par[0].frac, 0.25F);
}

TEST(ParameterTerms, OfTwoParametersAddInPressure) {
  FlowData fd = product(30);
  fd.dpmin = 5.0F;
  add_parameter(fd, "A", {entry("1", 0.01F)});
  add_parameter(fd, "B", {entry("1", 0.02F)});
  tavca_param_setvalue(&fd, "A", "1");
  tavca_param_setvalue(&fd, "B", "1");
  EXPECT_EQ(tavca_dptotmin(&fd, 10.0F), 5.0F + (0.01F + 0.02F) * 10.0F * 10.0F);
}

TEST(ParameterTerms, OfTwoParametersMultiplyInThrow) {
  FlowData fd = product(30);
  const QvL2Point point = {100.0F, 8.0F};
  fd.qvL2[0] = point;
  fd.nqvL2 = 1;
  add_parameter(fd, "A", {entry("1", 0.0F, 0, 0, 0.5F)});
  add_parameter(fd, "B", {entry("1", 0.0F, 0, 0, 0.25F)});
  tavca_param_setvalue(&fd, "A", "1");
  EXPECT_FLOAT_EQ(tavca_L2_isothermal(&fd, 100.0F, ""), 4.0F);
  tavca_param_setvalue(&fd, "B", "1");
  EXPECT_FLOAT_EQ(tavca_L2_isothermal(&fd, 100.0F, ""), 1.0F);
}

TEST(ParameterTerms, StayInsideTheTableWhateverTheRecordClaims) {
  FlowData fd = three_values();
  tavca_param_setvalue(&fd, "SPEED", "250");
  fd.par[0].idx1 = -32768;
  fd.par[0].idx2 = 32767;
  fd.par[0].table[TAVD_PARAMETER_ROWS - 1] = entry("", 0.5F);
  EXPECT_EQ(tavca_dptotmin(&fd, 1.0F), 0.0F + 0.5F * (0.5F - 0.0F));
  fd.npar = 32767;
  EXPECT_EQ(tavca_dptotmin(&fd, 1.0F), 0.25F);
  fd.npar = -1;
  EXPECT_EQ(tavca_dptotmin(&fd, 1.0F), 0.0F);
}

TEST(ParameterChoice, StaysInsideATableThatClaimsTooManyRows) {
  FlowData fd = three_values();
  for (int row = 3; row < TAVD_PARAMETER_ROWS; ++row) fd.par[0].table[row] = entry("500", 0.0F);
  fd.par[0].count = 32767;
  EXPECT_EQ(tavca_param_setvalue(&fd, "SPEED", "900"), 0);
  EXPECT_LT(+fd.par[0].idx2, TAVD_PARAMETER_ROWS);
  fd.par[0].count = -5;
  EXPECT_EQ(tavca_param_setvalue(&fd, "SPEED", "200"), 0);
  EXPECT_EQ(+fd.par[0].idx2, 0);
}

TEST(ParameterChoice, ReadsANameWithoutTerminatorInsideItsField) {
  FlowData fd = three_values();
  std::memset(fd.par[0].name, 'N', sizeof fd.par[0].name);
  EXPECT_EQ(tavca_param_setvalue(&fd, "NNNNNN", "200"), -1);
}

}  // namespace
