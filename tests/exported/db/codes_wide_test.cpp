// Templates of product codes in wide text.
#include <gtest/gtest.h>

#include <string>

#include "exported/db/guarded.h"
#include "support/wide.h"
#include "tavd/codes.h"

namespace {

using tavdtest::Guarded;

constexpr DuctSize kRound = {0, 125, 125};
constexpr DuctSize kRectangular = {1, 300, 200};
constexpr tavd_wchar kNonsense = 0x5A5A;

struct Built {
  int result;
  tavdtest::Wide text;
};

bool operator==(const Built& a, const Built& b) {
  return a.result == b.result && a.text == b.text;
}

// For the messages of failed checks: what is not ASCII as a number.
std::ostream& operator<<(std::ostream& out, const Built& built) {
  out << built.result << " \"";
  for (const tavd_wchar c : built.text) {
    if (c < 0x80) {
      out << static_cast<char>(c);
    } else {
      out << '<' << static_cast<unsigned>(c) << '>';
    }
  }
  return out << '"';
}

Built build(const tavdtest::Wide& code_template, int32_t room = 256, const DuctSize& ds1 = kRound,
            const DuctSize& ds2 = kRectangular) {
  Guarded<tavd_wchar> dest(static_cast<std::size_t>(room), kNonsense);
  const int result = tavd_build_code_dsw2(dest.data(), room, code_template.c_str(), &ds1, &ds2);
  EXPECT_TRUE(dest.intact());
  return {result, tavdtest::Wide(dest.data())};
}

Built build_fixed(const tavdtest::Wide& code_template, const DuctSize& ds1 = kRound,
                  const DuctSize& ds2 = kRectangular) {
  Guarded<tavd_wchar> dest(256, kNonsense);
  const int result = tavd_build_code_dsw(dest.data(), code_template.c_str(), &ds1, &ds2);
  EXPECT_TRUE(dest.intact());
  return {result, tavdtest::Wide(dest.data())};
}

TEST(WideCode, IsTerminatedWithoutTrailingBlanks) {
  EXPECT_EQ(build(WIDE("ABC-{D}  ")), (Built{0, WIDE("ABC-125")}));
  EXPECT_EQ(build_fixed(WIDE("ABC-{D}  ")), (Built{0, WIDE("ABC-125")}));
  EXPECT_EQ(build(WIDE("  a  b{B2}")), (Built{0, WIDE("  a  b300")})) << "other blanks stay";
  EXPECT_EQ(build(WIDE("")), (Built{0, WIDE("")}));
  EXPECT_EQ(build_fixed(WIDE("    ")), (Built{0, WIDE("")}));
}

TEST(WideCode, KeepsWhatTheNarrowCodePageLacks) {
  const tavdtest::Wide text = WIDE("\u0416\u6C34\u00E4\U0001F300-{D}");
  EXPECT_EQ(build(text), (Built{0, WIDE("\u0416\u6C34\u00E4\U0001F300-125")}));
  EXPECT_EQ(build_fixed(text), (Built{0, WIDE("\u0416\u6C34\u00E4\U0001F300-125")}));
}

TEST(WideCode, FaultsAreToldAndWhatWasWrittenStays) {
  const std::pair<const tavd_wchar*, int> faults[] = {
      {WIDE("{"), -1},    {WIDE("{B}"), -1},   {WIDE("{D"), -2},      {WIDE("{D:"), -3},
      {WIDE("{D:4"), -4}, {WIDE("{D:4}"), -5}, {WIDE("{\u0416}"), -2}};
  for (const auto& [fault, result] : faults) {
    EXPECT_EQ(build(tavdtest::Wide(WIDE("A-{D} ")) + fault), (Built{result, WIDE("A-125")}));
    EXPECT_EQ(build_fixed(tavdtest::Wide(WIDE("A-{D} ")) + fault), (Built{result, WIDE("A-125")}));
  }
}

TEST(WideCode, FixedFormEndsAtThirtyBytes) {
  EXPECT_EQ(build_fixed(tavdtest::Wide(40, WIDE('x'))), (Built{0, tavdtest::Wide(30, WIDE('x'))}));
  EXPECT_EQ(build_fixed(tavdtest::Wide(28, WIDE('x')) + WIDE("{D}{")),
            (Built{0, tavdtest::Wide(28, WIDE('x')) + WIDE("12")}));
}

TEST(WideCode, CutCountsBytesAndLeavesOutADividedCharacter) {
  // 28 bytes, then characters of two, three and four bytes.
  const tavdtest::Wide begin(28, WIDE('x'));
  EXPECT_EQ(build_fixed(begin + WIDE("\u00E4\u00E4")), (Built{0, begin + WIDE("\u00E4")}));
  EXPECT_EQ(build_fixed(begin + WIDE("x\u00E4")), (Built{0, begin + WIDE("x")}));
  EXPECT_EQ(build_fixed(begin + WIDE("\u6C34")), (Built{0, begin}));
  EXPECT_EQ(build_fixed(begin + WIDE("x\u6C34")), (Built{0, begin + WIDE("x")}));
  for (std::size_t room = 1; room <= 3; ++room) {
    const tavdtest::Wide shorter(30 - room, WIDE('x'));
    EXPECT_EQ(build_fixed(shorter + WIDE("\U0001F300")), (Built{0, shorter})) << room;
  }
  const tavdtest::Wide fits(26, WIDE('x'));
  EXPECT_EQ(build_fixed(fits + WIDE("\U0001F300")), (Built{0, fits + WIDE("\U0001F300")}));
}

TEST(WideCode, BlanksInFrontOfADividedCharacterAreTrailingOnes) {
  EXPECT_EQ(build_fixed(tavdtest::Wide(20, WIDE('x')) + tavdtest::Wide(8, WIDE(' ')) + WIDE("\u6C34")),
            (Built{0, tavdtest::Wide(20, WIDE('x'))}));
}

TEST(WideCode, SizedFormEndsAtTwoHundredFiftyFiveBytes) {
  EXPECT_EQ(build(tavdtest::Wide(400, WIDE('x')), 400), (Built{0, tavdtest::Wide(255, WIDE('x'))}));
  // 127 characters of two bytes are 254, the next one is divided.
  EXPECT_EQ(build(tavdtest::Wide(200, WIDE('\u00E4')), 400), (Built{0, tavdtest::Wide(127, WIDE('\u00E4'))}));
  EXPECT_EQ(build(tavdtest::Wide(200, WIDE('\u6C34')), 400), (Built{0, tavdtest::Wide(85, WIDE('\u6C34'))}));
  EXPECT_EQ(build(WIDE("x") + tavdtest::Wide(200, WIDE('\u6C34')), 400),
            (Built{0, WIDE("x") + tavdtest::Wide(84, WIDE('\u6C34'))}));
}

TEST(WideCode, TemplateIsCutAtTwoHundredFiftyFiveBytesAlsoInsideAField) {
  // The field begins at byte 253, so "{D" is left of it.
  EXPECT_EQ(build(tavdtest::Wide(253, WIDE('x')) + WIDE("{D}")).result, TAVD_CODE_BAD_LETTER);
  EXPECT_EQ(build(tavdtest::Wide(252, WIDE('x')) + WIDE("{D}")),
            (Built{0, tavdtest::Wide(252, WIDE('x')) + WIDE("125")}));
}

TEST(WideCode, FieldThatGrowsBeyondTheRoomIsCut) {
  tavdtest::Wide code_template;
  for (int i = 0; i < 31; ++i) code_template += WIDE("{D:9mm}");  // 217 bytes give 279
  const Built built = build(code_template, 300);
  EXPECT_EQ(built.result, 0);
  EXPECT_EQ(built.text.size(), 255U);
}

TEST(WideCode, EveryRoomHoldsTheBeginningAndATerminator) {
  const tavdtest::Wide whole = build(WIDE("T\u00C4-{D}-{D:5cm}/{B2}")).text;
  ASSERT_EQ(whole, WIDE("T\u00C4-125-00012/300"));
  for (int32_t room = 1; room <= 24; ++room) {
    const tavdtest::Wide expected = whole.substr(0, static_cast<std::size_t>(room) - 1);
    EXPECT_EQ(build(WIDE("T\u00C4-{D}-{D:5cm}/{B2}"), room), (Built{0, expected})) << room;
  }
}

TEST(WideCode, RoomNeverDividesASurrogatePair) {
  EXPECT_EQ(build(WIDE("ab\U0001F300c"), 4), (Built{0, WIDE("ab")}));
  EXPECT_EQ(build(WIDE("ab\U0001F300c"), 5), (Built{0, WIDE("ab\U0001F300")}));
}

TEST(WideCode, LoneSurrogatesBecomeReplacements) {
  const tavdtest::Wide lone = {WIDE('a'), tavd_wchar{0xD83C}, WIDE('b'), tavd_wchar{0xDF00}};
  EXPECT_EQ(build(lone), (Built{0, WIDE("a\uFFFDb\uFFFD")}));
}

TEST(WideCode, SizedFormClearsAsManyBytesAsItHasCharacters) {
  // The code with its blanks covers 255 characters; of the room behind them only what lies in the first half
  // of all bytes is cleared.
  Guarded<tavd_wchar> dest(1000, kNonsense);
  EXPECT_EQ(tavd_build_code_dsw2(dest.data(), 1000, WIDE("{D}"), &kRound, &kRectangular), 0);
  EXPECT_EQ(tavdtest::Wide(dest.data()), WIDE("125"));
  EXPECT_EQ(dest[499], 0);
  EXPECT_TRUE(dest.untouched_from(500));
}

TEST(WideCode, FixedFormTouchesNothingBehindItsThirtyCharacters) {
  Guarded<tavd_wchar> dest(256, kNonsense);
  EXPECT_EQ(tavd_build_code_dsw(dest.data(), WIDE("{D}"), &kRound, &kRectangular), 0);
  EXPECT_EQ(tavdtest::Wide(dest.data()), WIDE("125"));
  EXPECT_TRUE(dest.untouched_from(31));
}

TEST(WideCode, NoRoomWritesNothing) {
  for (const int32_t room : {0, -1, -2147483647}) {
    Guarded<tavd_wchar> dest(8, kNonsense);
    EXPECT_EQ(tavd_build_code_dsw2(dest.data(), room, WIDE("{"), &kRound, &kRectangular), 0) << room;
    EXPECT_TRUE(dest.untouched_from(0)) << room;
  }
}

TEST(WideCode, NullArguments) {
  EXPECT_EQ(tavd_build_code_dsw2(nullptr, 30, WIDE("{D}"), &kRound, &kRound), 0);
  EXPECT_EQ(tavd_build_code_dsw(nullptr, WIDE("{D}"), &kRound, &kRound), 0);
  Guarded<tavd_wchar> dest(256, kNonsense);
  EXPECT_EQ(tavd_build_code_dsw2(dest.data(), 256, nullptr, &kRound, &kRound), 0);
  EXPECT_EQ(dest[0], 0);
  EXPECT_EQ(tavd_build_code_dsw(dest.data(), WIDE("a{D:1mm}"), nullptr, nullptr), 0);
  EXPECT_EQ(tavdtest::Wide(dest.data()), WIDE("a0"));
}

}  // namespace
