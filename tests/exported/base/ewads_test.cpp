#include "tavd/ewads.h"
#include "support/wide.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

namespace {

constexpr std::int16_t kOld = -77;  // what stands in a record before it is written

DuctSize round_duct(int diameter) {
  return {0, static_cast<std::int16_t>(diameter), static_cast<std::int16_t>(diameter)};
}

DuctSize rectangle(int b, int h) {
  return {1, static_cast<std::int16_t>(b), static_cast<std::int16_t>(h)};
}

DuctSize size(int shape, int b, int h) {
  return {static_cast<std::int16_t>(shape), static_cast<std::int16_t>(b), static_cast<std::int16_t>(h)};
}

void expect_size(const DuctSize& ds, int shape, int b, int h) {
  EXPECT_EQ(ds.shape, shape);
  EXPECT_EQ(ds.b, b);
  EXPECT_EQ(ds.h, h);
}

// Readers change their text, and come narrow and wide: both are run on a copy and must agree.
struct Scanned {
  int result;
  DuctSize ds;
  std::string text;  // as it stands in the whole buffer afterwards, terminators shown as "|"
};

template <typename String, typename Scan>
Scanned scan_with(const std::string& text, Scan scan) {
  String buffer(text.begin(), text.end());
  Scanned scanned{12345, {kOld, kOld, kOld}, ""};
  scanned.result = scan(buffer.data(), &scanned.ds);
  for (const auto c : buffer) scanned.text += c == 0 ? '|' : static_cast<char>(c);
  return scanned;
}

Scanned scan(const std::string& text) {
  const Scanned narrow = scan_with<std::string>(text, ewads_sscanf);
  const Scanned wide = scan_with<tavdtest::Wide>(text, ewads_swscanf);
  EXPECT_EQ(narrow.result, wide.result) << text;
  EXPECT_EQ(ewads_equal_size(&narrow.ds, &wide.ds), 1) << text;
  EXPECT_EQ(narrow.text, wide.text);
  return narrow;
}

std::string printed(const DuctSize& ds) {
  std::string narrow(40, '#');
  EXPECT_EQ(ewads_sprintf(&ds, narrow.data()), narrow.data());
  tavdtest::Wide wide(40, WIDE('#'));
  EXPECT_EQ(ewads_swprintf(&ds, wide.data()), wide.data());
  EXPECT_EQ(std::string(wide.begin(), wide.end()), narrow);
  return narrow.c_str();
}

TEST(DuctShape, ShapeTwoIsCircularByNameButHasTheAreaOfARectangle) {
  const DuctSize ds = size(2, 200, 100);
  EXPECT_TRUE(ewads_is_circular(&ds));
  EXPECT_FALSE(ewads_is_rectangular(&ds));
  EXPECT_EQ(ewads_m2(&ds), 0.02F);
}

TEST(DuctShape, OneIsRectangularAndZeroCircular) {
  const DuctSize one = rectangle(200, 100);
  const DuctSize zero = round_duct(200);
  EXPECT_TRUE(ewads_is_rectangular(&one));
  EXPECT_FALSE(ewads_is_circular(&one));
  EXPECT_FALSE(ewads_is_rectangular(&zero));
  EXPECT_TRUE(ewads_is_circular(&zero));
}

TEST(DuctShape, AnyShapeButZeroHasTheDerivedSizesOfARectangle) {
  const DuctSize odd = size(-5, 400, 200);
  const DuctSize same = rectangle(400, 200);
  EXPECT_EQ(ewads_dekv(&odd), ewads_dekv(&same));
  EXPECT_EQ(ewads_dhydr(&odd), ewads_dhydr(&same));
  EXPECT_EQ(ewads_diagonal(&odd), ewads_diagonal(&same));
  EXPECT_EQ(ewads_m2(&odd), ewads_m2(&same));
}

TEST(DuctDerivedSizes, CircleOf200) {
  const DuctSize ds = round_duct(200);
  EXPECT_EQ(ewads_m2(&ds), 0.031415927F);
  EXPECT_EQ(ewads_dekv(&ds), 200.0F);
  EXPECT_EQ(ewads_dhydr(&ds), 200.0F);
  EXPECT_EQ(ewads_diagonal(&ds), 200);
}

TEST(DuctDerivedSizes, RectangleOf400By200) {
  const DuctSize ds = rectangle(400, 200);
  EXPECT_NEAR(ewads_dekv(&ds), 319.15382F, 0.0001F);
  EXPECT_EQ(ewads_dhydr(&ds), 266.666667F);
  EXPECT_EQ(ewads_diagonal(&ds), 447);
  EXPECT_EQ(ewads_m2(&ds), 0.08F);
}

TEST(DuctDerivedSizes, CircleIgnoresItsHeight) {
  const DuctSize ds = size(0, 200, 9999);
  EXPECT_EQ(ewads_m2(&ds), 0.031415927F);
  EXPECT_EQ(ewads_dekv(&ds), 200.0F);
  EXPECT_EQ(ewads_dhydr(&ds), 200.0F);
  EXPECT_EQ(ewads_diagonal(&ds), 200);
}

TEST(DuctDerivedSizes, RectangleWithoutAreaHasNoEquivalentDiameter) {
  const DuctSize no_width = rectangle(0, 100);
  const DuctSize negative = rectangle(-400, 200);
  EXPECT_EQ(ewads_dekv(&no_width), 0.0F);
  EXPECT_EQ(ewads_dekv(&negative), 0.0F);
}

TEST(DuctDerivedSizes, HydraulicDiameterWithoutAreaIsZeroOverThePerimeter) {
  const DuctSize no_width = rectangle(0, 100);
  const DuctSize nothing = rectangle(0, 0);
  const DuctSize negative = rectangle(-300, 100);
  EXPECT_EQ(ewads_dhydr(&no_width), 0.0F);
  EXPECT_EQ(ewads_dhydr(&nothing), 0.0F);
  EXPECT_EQ(ewads_dhydr(&negative), 0.0F);
}

// Negative measures run through the formulas; only the bounds told in the header stop them.
TEST(DuctDerivedSizes, RectangleWithOneNegativeSide) {
  const DuctSize ds = rectangle(-100, 300);
  EXPECT_EQ(ewads_dekv(&ds), 0.0F);
  EXPECT_EQ(ewads_dhydr(&ds), -300.0F);  // four times -0.03 m2 over 0.4 m
  EXPECT_EQ(ewads_diagonal(&ds), 316);
  EXPECT_EQ(ewads_m2(&ds), -0.03F);
  EXPECT_EQ(ewads_vms(&ds, 30.0), 0.0F);
}

TEST(DuctDerivedSizes, RectangleWithBothSidesNegativeHasThePositiveAreaAndNoPerimeter) {
  const DuctSize ds = rectangle(-400, -200);
  const DuctSize positive = rectangle(400, 200);
  EXPECT_EQ(ewads_dekv(&ds), ewads_dekv(&positive));
  EXPECT_EQ(ewads_dhydr(&ds), 0.0F);
  EXPECT_EQ(ewads_diagonal(&ds), 447);
  EXPECT_EQ(ewads_m2(&ds), 0.08F);
  EXPECT_EQ(ewads_vms(&ds, 160.0), ewads_vms(&positive, 160.0));
}

TEST(DuctDerivedSizes, NegativeDiameterIsGivenAsItStandsWithAPositiveArea) {
  const DuctSize ds = round_duct(-200);
  EXPECT_EQ(ewads_dekv(&ds), -200.0F);
  EXPECT_EQ(ewads_dhydr(&ds), -200.0F);
  EXPECT_EQ(ewads_diagonal(&ds), -200);
  EXPECT_EQ(ewads_m2(&ds), 0.031415927F);
  EXPECT_FLOAT_EQ(ewads_vms(&ds, 31.415927), 1.0F);
}

TEST(DuctDerivedSizes, EquivalentDiameterTakesItsQuotientInFloat) {
  const DuctSize ds = rectangle(1, 2);
  const float quotient = 8.0F / 3.1415927F;
  EXPECT_EQ(ewads_dekv(&ds), static_cast<float>(std::sqrt(static_cast<double>(quotient))));
  EXPECT_NE(ewads_dekv(&ds), static_cast<float>(std::sqrt(8.0 / 3.1415927)));
}

TEST(DuctDerivedSizes, AreaOfACircleUsesTenDecimalsOfPiInDouble) {
  // 0.785398163375 * 2975^2 / 1e6 = 6.9512646; a full pi/4 in double gives the next float.
  const DuctSize ds = round_duct(2975);
  EXPECT_EQ(ewads_m2(&ds), 6.95126438F);
  EXPECT_NE(ewads_m2(&ds), 6.95126486F);
}

TEST(DuctDerivedSizes, LargestRectangleStaysInsideItsTypes) {
  const DuctSize ds = rectangle(32767, 32767);
  // The diagonal would be 46340.
  EXPECT_EQ(ewads_diagonal(&ds), 32767);
  EXPECT_NEAR(ewads_dekv(&ds), 36973.6F, 0.004F);
  EXPECT_EQ(ewads_dhydr(&ds), 32767.0F);
  EXPECT_NEAR(ewads_m2(&ds), 1073.676289F, 0.0001F);
}

TEST(DuctDerivedSizes, DiagonalRoundsToWholeMillimetres) {
  const DuctSize exact = rectangle(300, 400);
  const DuctSize up = rectangle(1, 3);    // 3.1623
  const DuctSize down = rectangle(2, 2);  // 2.8284
  const DuctSize nothing = rectangle(0, 0);
  const DuctSize negative = rectangle(-300, -400);
  EXPECT_EQ(ewads_diagonal(&exact), 500);
  EXPECT_EQ(ewads_diagonal(&up), 3);
  EXPECT_EQ(ewads_diagonal(&down), 3);
  EXPECT_EQ(ewads_diagonal(&nothing), 0);
  EXPECT_EQ(ewads_diagonal(&negative), 500);
}

TEST(DuctDerivedSizes, EquivalentDiameterGivesTheAreaBack) {
  for (int b = 100; b <= 2000; b += 190) {
    for (int h = 100; h <= 2000; h += 270) {
      const DuctSize ds = rectangle(b, h);
      const double d = ewads_dekv(&ds);
      EXPECT_NEAR(d * d * 3.14159265358979 / 4, b * h, b * h * 1e-6) << b << " by " << h;
    }
  }
}

TEST(DuctVelocity, RectangleOf400By200At160LitresPerSecond) {
  const DuctSize ds = rectangle(400, 200);
  EXPECT_EQ(ewads_vms(&ds, 160.0), 2.0F);
}

TEST(DuctVelocity, NoWidthGivesZero) {
  const DuctSize ds = rectangle(0, 200);
  EXPECT_EQ(ewads_vms(&ds, 160.0), 0.0F);
}

TEST(DuctVelocity, OneSquareMillimetreIsTooSmallAndTwoAreNot) {
  const DuctSize one = rectangle(1, 1);
  const DuctSize two = rectangle(2, 1);
  EXPECT_EQ(ewads_vms(&one, 1.0), 0.0F);
  EXPECT_FLOAT_EQ(ewads_vms(&two, 1.0), 500.0F);
}

TEST(DuctVelocity, NegativeAreaGivesZero) {
  const DuctSize ds = rectangle(-400, 200);
  EXPECT_EQ(ewads_vms(&ds, 160.0), 0.0F);
}

TEST(DuctVelocity, FlowRunsInDouble) {
  // A float flow could not tell these two apart.
  const DuctSize ds = rectangle(1000, 1000);
  EXPECT_EQ(ewads_vms(&ds, 16777217.0), static_cast<float>(16777217.0 / 1000.0));
}

TEST(DuctComparison, EqualOnlyInAllThreeFields) {
  const DuctSize ds = rectangle(400, 200);
  const DuctSize same = rectangle(400, 200);
  const DuctSize shape = size(0, 400, 200);
  const DuctSize b = rectangle(401, 200);
  const DuctSize h = rectangle(400, 201);
  EXPECT_EQ(ewads_equal_size(&ds, &same), 1);
  EXPECT_EQ(ewads_equal_size(&ds, &shape), 0);
  EXPECT_EQ(ewads_equal_size(&ds, &b), 0);
  EXPECT_EQ(ewads_equal_size(&ds, &h), 0);
}

TEST(DuctComparison, OneSideThatCoversBothSidesIsGreater) {
  const DuctSize other = rectangle(200, 250);
  const DuctSize covers = rectangle(300, 100);
  const DuctSize falls_short = rectangle(220, 100);
  EXPECT_EQ(ewads_greater_b_or_h(&covers, &other), 1);
  EXPECT_EQ(ewads_greater_b_or_h(&falls_short, &other), 0);
}

TEST(DuctComparison, EitherOrientationCovers) {
  const DuctSize upright = rectangle(100, 300);
  const DuctSize other = rectangle(250, 200);
  EXPECT_EQ(ewads_greater_b_or_h(&upright, &other), 1);
}

TEST(DuctComparison, EqualSideCovers) {
  const DuctSize ds = rectangle(250, 100);
  const DuctSize other = rectangle(200, 250);
  EXPECT_EQ(ewads_greater_b_or_h(&ds, &other), 1);
}

TEST(DuctComparison, CircleTakesPartWithTheHeightThatItHolds) {
  const DuctSize ds = size(0, 100, 300);
  const DuctSize other = rectangle(200, 250);
  EXPECT_EQ(ewads_greater_b_or_h(&ds, &other), 1);
}

TEST(DuctCopy, CopiesAllFields) {
  const DuctSize from = size(7, 400, 200);
  DuctSize to = size(kOld, kOld, kOld);
  ewads_copy(&to, &from);
  expect_size(to, 7, 400, 200);
}

TEST(DuctCopy, OntoItselfChangesNothing) {
  DuctSize ds = rectangle(400, 200);
  ewads_copy(&ds, &ds);
  expect_size(ds, 1, 400, 200);
}

TEST(DuctCopy, OverlappingRecordsAreCopiedWhole) {
  std::int16_t words[4] = {1, 400, 200, kOld};
  ewads_copy(reinterpret_cast<DuctSize*>(words + 1), reinterpret_cast<const DuctSize*>(words));
  EXPECT_EQ(words[1], 1);
  EXPECT_EQ(words[2], 400);
  EXPECT_EQ(words[3], 200);
}

TEST(DuctSwap, ExchangesTheSidesAndKeepsTheShape) {
  DuctSize ds = size(5, 400, 200);
  ewads_swap(&ds);
  expect_size(ds, 5, 200, 400);
}

TEST(DuctText, RectangleIsWrittenWithBothSides) {
  EXPECT_EQ(printed(rectangle(400, 200)), "400x200");
}

TEST(DuctText, CircleIsWrittenWithItsDiameterAlone) {
  EXPECT_EQ(printed(round_duct(160)), "160");
  EXPECT_EQ(printed(size(0, 160, 999)), "160");
}

TEST(DuctText, OtherShapesAreWrittenAsCircles) {
  EXPECT_EQ(printed(size(2, 400, 200)), "400");
}

TEST(DuctText, LongestSizeTakesFourteenCharacters) {
  std::string narrow(16, '#');
  const DuctSize ds = rectangle(-32768, -32768);
  ewads_sprintf(&ds, narrow.data());
  EXPECT_EQ(narrow, std::string("-32768x-32768\0##", 16));
  tavdtest::Wide wide(16, WIDE('#'));
  ewads_swprintf(&ds, wide.data());
  EXPECT_EQ(wide, tavdtest::Wide(WIDE("-32768x-32768\0##"), 16));
}

TEST(DuctScan, UpperCaseCrossIsARectangleAndCutsTheText) {
  const Scanned scanned = scan("400X200");
  EXPECT_EQ(scanned.result, 0);
  expect_size(scanned.ds, 1, 400, 200);
  EXPECT_EQ(scanned.text, "400|200");
}

TEST(DuctScan, NumberAloneIsACircleAndTheTextStays) {
  const Scanned scanned = scan("160");
  EXPECT_EQ(scanned.result, 0);
  expect_size(scanned.ds, 0, 160, 160);
  EXPECT_EQ(scanned.text, "160");
}

TEST(DuctScan, MissingHeightFailsAndLeavesTheWidth) {
  const Scanned scanned = scan("400x");
  EXPECT_EQ(scanned.result, -1);
  expect_size(scanned.ds, kOld, 400, kOld);
  EXPECT_EQ(scanned.text, "400|");
}

TEST(DuctScan, MissingWidthFailsAndLeavesTheRecord) {
  const Scanned scanned = scan("x200");
  EXPECT_EQ(scanned.result, -1);
  expect_size(scanned.ds, kOld, kOld, kOld);
  EXPECT_EQ(scanned.text, "|200");
}

TEST(DuctScan, ZeroByZeroIsARectangle) {
  const Scanned scanned = scan("0x0");
  EXPECT_EQ(scanned.result, 0);
  expect_size(scanned.ds, 1, 0, 0);
}

TEST(DuctScan, OnlyTheFirstUpperCaseCrossChangesAndTheFirstLowerCaseOneSplits) {
  const Scanned lower_first = scan("400x200X100X5");
  EXPECT_EQ(lower_first.result, 0);
  expect_size(lower_first.ds, 1, 400, 200);
  EXPECT_EQ(lower_first.text, "400|200x100X5");

  const Scanned upper_first = scan("400X200x100X5");
  EXPECT_EQ(upper_first.result, 0);
  expect_size(upper_first.ds, 1, 400, 200);
  EXPECT_EQ(upper_first.text, "400|200x100X5");
}

TEST(DuctScan, BlanksInFrontAreSkippedAndTheRestIsIgnored) {
  const Scanned circle = scan(" \t160 mm");
  EXPECT_EQ(circle.result, 0);
  expect_size(circle.ds, 0, 160, 160);

  const Scanned both = scan("  400mm x\n 200.7");
  EXPECT_EQ(both.result, 0);
  expect_size(both.ds, 1, 400, 200);
}

TEST(DuctScan, SignsAreRead) {
  const Scanned scanned = scan("-5x+7");
  EXPECT_EQ(scanned.result, 0);
  expect_size(scanned.ds, 1, -5, 7);
}

TEST(DuctScan, TextWithoutANumberFailsAndLeavesTheRecord) {
  for (const char* text : {"", "   ", "abc", "-", "+ 5", "--5", "."}) {
    const Scanned scanned = scan(text);
    EXPECT_EQ(scanned.result, -1) << text;
    expect_size(scanned.ds, kOld, kOld, kOld);
  }
}

TEST(DuctScan, NumbersBeyondSixteenBitsAreHeldAtTheirEnds) {
  const Scanned scanned = scan("32768x-32769");
  EXPECT_EQ(scanned.result, 0);
  expect_size(scanned.ds, 1, 32767, -32768);
  const Scanned endless = scan(std::string(400, '9'));
  EXPECT_EQ(endless.result, 0);
  expect_size(endless.ds, 0, 32767, 32767);
}

TEST(DuctScan, WideCharactersThatLookLikeNothingNarrowAreNoDigits) {
  tavdtest::Wide fullwidth = WIDE("\uFF11\uFF12");  // the digits 1 and 2 of another row
  DuctSize ds = size(kOld, kOld, kOld);
  EXPECT_EQ(ewads_swscanf(fullwidth.data(), &ds), -1);
  expect_size(ds, kOld, kOld, kOld);
  tavdtest::Wide low_byte = WIDE(
      "4\u0178"
      "5");  // the low byte of the second is an "x"
  EXPECT_EQ(ewads_swscanf(low_byte.data(), &ds), 0);
  expect_size(ds, 0, 4, 4);
}

TEST(DuctScan, ReadsWhatWasWritten) {
  for (int b = -32768; b <= 32767; b += 4111) {
    for (int h = -32768; h <= 32767; h += 3907) {
      const Scanned both = scan(printed(rectangle(b, h)));
      EXPECT_EQ(both.result, 0);
      expect_size(both.ds, 1, b, h);
    }
    const Scanned circle = scan(printed(round_duct(b)));
    EXPECT_EQ(circle.result, 0);
    expect_size(circle.ds, 0, b, b);
  }
}

}  // namespace
