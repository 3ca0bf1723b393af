// Templates of product codes in wide text.
#include <gtest/gtest.h>

#include <string>

#include "db/guarded.h"
#include "tavd/codes.h"

namespace {

using tavdtest::Guarded;

constexpr DuctSize kRound = {0, 125, 125};
constexpr DuctSize kRectangular = {1, 300, 200};
constexpr tavd_wchar kNonsense = 0x5A5A;

struct Built {
  int result;
  std::u16string text;
};

bool operator==(const Built& a, const Built& b) {
  return a.result == b.result && a.text == b.text;
}

// For the messages of failed checks: what is not ASCII as a number.
std::ostream& operator<<(std::ostream& out, const Built& built) {
  out << built.result << " \"";
  for (const char16_t c : built.text) {
    if (c < 0x80) {
      out << static_cast<char>(c);
    } else {
      out << '<' << static_cast<unsigned>(c) << '>';
    }
  }
  return out << '"';
}

Built build(const std::u16string& code_template, int32_t room = 256, const DuctSize& ds1 = kRound,
            const DuctSize& ds2 = kRectangular) {
  Guarded<tavd_wchar> dest(static_cast<std::size_t>(room), kNonsense);
  const int result = tavd_build_code_dsw2(dest.data(), room, code_template.c_str(), &ds1, &ds2);
  EXPECT_TRUE(dest.intact());
  return {result, std::u16string(dest.data())};
}

Built build_fixed(const std::u16string& code_template, const DuctSize& ds1 = kRound,
                  const DuctSize& ds2 = kRectangular) {
  Guarded<tavd_wchar> dest(256, kNonsense);
  const int result = tavd_build_code_dsw(dest.data(), code_template.c_str(), &ds1, &ds2);
  EXPECT_TRUE(dest.intact());
  return {result, std::u16string(dest.data())};
}

TEST(WideCode, IsTerminatedWithoutTrailingBlanks) {
  EXPECT_EQ(build(u"ABC-{D}  "), (Built{0, u"ABC-125"}));
  EXPECT_EQ(build_fixed(u"ABC-{D}  "), (Built{0, u"ABC-125"}));
  EXPECT_EQ(build(u"  a  b{B2}"), (Built{0, u"  a  b300"})) << "other blanks stay";
  EXPECT_EQ(build(u""), (Built{0, u""}));
  EXPECT_EQ(build_fixed(u"    "), (Built{0, u""}));
}

TEST(WideCode, KeepsWhatTheNarrowCodePageLacks) {
  const std::u16string text = u"\u0416\u6C34\u00E4\U0001F300-{D}";
  EXPECT_EQ(build(text), (Built{0, u"\u0416\u6C34\u00E4\U0001F300-125"}));
  EXPECT_EQ(build_fixed(text), (Built{0, u"\u0416\u6C34\u00E4\U0001F300-125"}));
}

TEST(WideCode, FaultsAreToldAndWhatWasWrittenStays) {
  const std::pair<const char16_t*, int> faults[] = {
      {u"{", -1}, {u"{B}", -1}, {u"{D", -2}, {u"{D:", -3}, {u"{D:4", -4}, {u"{D:4}", -5}, {u"{\u0416}", -2}};
  for (const auto& [fault, result] : faults) {
    EXPECT_EQ(build(std::u16string(u"A-{D} ") + fault), (Built{result, u"A-125"}));
    EXPECT_EQ(build_fixed(std::u16string(u"A-{D} ") + fault), (Built{result, u"A-125"}));
  }
}

TEST(WideCode, FixedFormEndsAtThirtyBytes) {
  EXPECT_EQ(build_fixed(std::u16string(40, u'x')), (Built{0, std::u16string(30, u'x')}));
  EXPECT_EQ(build_fixed(std::u16string(28, u'x') + u"{D}{"), (Built{0, std::u16string(28, u'x') + u"12"}));
}

TEST(WideCode, CutCountsBytesAndLeavesOutADividedCharacter) {
  // 28 bytes, then characters of two, three and four bytes.
  const std::u16string begin(28, u'x');
  EXPECT_EQ(build_fixed(begin + u"\u00E4\u00E4"), (Built{0, begin + u"\u00E4"}));
  EXPECT_EQ(build_fixed(begin + u"x\u00E4"), (Built{0, begin + u"x"}));
  EXPECT_EQ(build_fixed(begin + u"\u6C34"), (Built{0, begin}));
  EXPECT_EQ(build_fixed(begin + u"x\u6C34"), (Built{0, begin + u"x"}));
  for (std::size_t room = 1; room <= 3; ++room) {
    const std::u16string shorter(30 - room, u'x');
    EXPECT_EQ(build_fixed(shorter + u"\U0001F300"), (Built{0, shorter})) << room;
  }
  const std::u16string fits(26, u'x');
  EXPECT_EQ(build_fixed(fits + u"\U0001F300"), (Built{0, fits + u"\U0001F300"}));
}

TEST(WideCode, BlanksInFrontOfADividedCharacterAreTrailingOnes) {
  EXPECT_EQ(build_fixed(std::u16string(20, u'x') + std::u16string(8, u' ') + u"\u6C34"),
            (Built{0, std::u16string(20, u'x')}));
}

TEST(WideCode, SizedFormEndsAtTwoHundredFiftyFiveBytes) {
  EXPECT_EQ(build(std::u16string(400, u'x'), 400), (Built{0, std::u16string(255, u'x')}));
  // 127 characters of two bytes are 254, the next one is divided.
  EXPECT_EQ(build(std::u16string(200, u'\u00E4'), 400), (Built{0, std::u16string(127, u'\u00E4')}));
  EXPECT_EQ(build(std::u16string(200, u'\u6C34'), 400), (Built{0, std::u16string(85, u'\u6C34')}));
  EXPECT_EQ(build(u"x" + std::u16string(200, u'\u6C34'), 400),
            (Built{0, u"x" + std::u16string(84, u'\u6C34')}));
}

TEST(WideCode, TemplateIsCutAtTwoHundredFiftyFiveBytesAlsoInsideAField) {
  // The field begins at byte 253, so "{D" is left of it.
  EXPECT_EQ(build(std::u16string(253, u'x') + u"{D}").result, TAVD_CODE_BAD_LETTER);
  EXPECT_EQ(build(std::u16string(252, u'x') + u"{D}"), (Built{0, std::u16string(252, u'x') + u"125"}));
}

TEST(WideCode, FieldThatGrowsBeyondTheRoomIsCut) {
  std::u16string code_template;
  for (int i = 0; i < 31; ++i) code_template += u"{D:9mm}";  // 217 bytes give 279
  const Built built = build(code_template, 300);
  EXPECT_EQ(built.result, 0);
  EXPECT_EQ(built.text.size(), 255U);
}

TEST(WideCode, EveryRoomHoldsTheBeginningAndATerminator) {
  const std::u16string whole = build(u"T\u00C4-{D}-{D:5cm}/{B2}").text;
  ASSERT_EQ(whole, u"T\u00C4-125-00012/300");
  for (int32_t room = 1; room <= 24; ++room) {
    const std::u16string expected = whole.substr(0, static_cast<std::size_t>(room) - 1);
    EXPECT_EQ(build(u"T\u00C4-{D}-{D:5cm}/{B2}", room), (Built{0, expected})) << room;
  }
}

TEST(WideCode, RoomNeverDividesASurrogatePair) {
  EXPECT_EQ(build(u"ab\U0001F300c", 4), (Built{0, u"ab"}));
  EXPECT_EQ(build(u"ab\U0001F300c", 5), (Built{0, u"ab\U0001F300"}));
}

TEST(WideCode, LoneSurrogatesBecomeReplacements) {
  const std::u16string lone = {u'a', char16_t{0xD83C}, u'b', char16_t{0xDF00}};
  EXPECT_EQ(build(lone), (Built{0, u"a\uFFFDb\uFFFD"}));
}

TEST(WideCode, SizedFormClearsAsManyBytesAsItHasCharacters) {
  // The code with its blanks covers 255 characters; of the room behind them only what lies in the first half
  // of all bytes is cleared.
  Guarded<tavd_wchar> dest(1000, kNonsense);
  EXPECT_EQ(tavd_build_code_dsw2(dest.data(), 1000, u"{D}", &kRound, &kRectangular), 0);
  EXPECT_EQ(std::u16string(dest.data()), u"125");
  EXPECT_EQ(dest[499], 0);
  EXPECT_TRUE(dest.untouched_from(500));
}

TEST(WideCode, FixedFormTouchesNothingBehindItsThirtyCharacters) {
  Guarded<tavd_wchar> dest(256, kNonsense);
  EXPECT_EQ(tavd_build_code_dsw(dest.data(), u"{D}", &kRound, &kRectangular), 0);
  EXPECT_EQ(std::u16string(dest.data()), u"125");
  EXPECT_TRUE(dest.untouched_from(31));
}

TEST(WideCode, NoRoomWritesNothing) {
  for (const int32_t room : {0, -1, -2147483647}) {
    Guarded<tavd_wchar> dest(8, kNonsense);
    EXPECT_EQ(tavd_build_code_dsw2(dest.data(), room, u"{", &kRound, &kRectangular), 0) << room;
    EXPECT_TRUE(dest.untouched_from(0)) << room;
  }
}

TEST(WideCode, NullArguments) {
  EXPECT_EQ(tavd_build_code_dsw2(nullptr, 30, u"{D}", &kRound, &kRound), 0);
  EXPECT_EQ(tavd_build_code_dsw(nullptr, u"{D}", &kRound, &kRound), 0);
  Guarded<tavd_wchar> dest(256, kNonsense);
  EXPECT_EQ(tavd_build_code_dsw2(dest.data(), 256, nullptr, &kRound, &kRound), 0);
  EXPECT_EQ(dest[0], 0);
  EXPECT_EQ(tavd_build_code_dsw(dest.data(), u"a{D:1mm}", nullptr, nullptr), 0);
  EXPECT_EQ(std::u16string(dest.data()), u"a0");
}

}  // namespace
