// Templates of product codes in narrow text.
#include "tavd/codes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

#include "exported/db/guarded.h"

namespace {

using tavdtest::AtPageEnd;
using tavdtest::Guarded;

constexpr DuctSize kRound = {0, 125, 125};
constexpr DuctSize kRectangular = {1, 300, 200};
constexpr DuctSize kNone = {0, 0, 0};

// A code as it was built into a field of a told width, with its trailing blanks cut where a test says so.
struct Built {
  int result;
  std::string text;
};

bool operator==(const Built& a, const Built& b) {
  return a.result == b.result && a.text == b.text;
}

std::ostream& operator<<(std::ostream& out, const Built& built) {
  return out << built.result << " \"" << built.text << '"';
}

Built build_field(int32_t width, const std::string& code_template, const DuctSize& ds1,
                  const DuctSize& ds2 = kNone) {
  // The template lies at the end of its memory: nothing behind its terminator may be read.
  AtPageEnd<char> at_end(code_template.size() + 1);
  std::copy(code_template.begin(), code_template.end(), at_end.data());
  at_end[code_template.size()] = '\0';
  Guarded<char> field(static_cast<std::size_t>(width));
  const int result = tavd_build_code_ds2(field.data(), width, at_end.data(), &ds1, &ds2);
  EXPECT_TRUE(field.intact());
  return {result, std::string(field.data(), field.size())};
}

Built build(const std::string& code_template, const DuctSize& ds1, const DuctSize& ds2 = kNone) {
  Built built = build_field(60, code_template, ds1, ds2);
  built.text.resize(built.text.find_last_not_of(' ') + 1);
  return built;
}

TEST(CodeTemplate, LiteralTextIsFollowedByBlanksUpToTheWidth) {
  EXPECT_EQ(build_field(12, "ABC-{D}", kRound), (Built{0, "ABC-125     "}));
  EXPECT_EQ(build_field(12, "", kRound), (Built{0, std::string(12, ' ')}));
}

TEST(CodeTemplate, DiameterInItsDigitsAndUnits) {
  EXPECT_EQ(build("{D}", kRound), (Built{0, "125"}));
  EXPECT_EQ(build("{D:4mm}", kRound), (Built{0, "0125"}));
  EXPECT_EQ(build("{D:4cm}", kRound), (Built{0, "0012"}));
  EXPECT_EQ(build("{D1dm}", kRound), (Built{0, "1"}));
  EXPECT_EQ(build("{D:1dm}", kRound), (Built{0, "1"}));
}

TEST(CodeTemplate, WidthAndHeightOfARectangularDuct) {
  EXPECT_EQ(build("{B}x{H}", kRectangular), (Built{0, "300x200"}));
  EXPECT_EQ(build("{B:cm}x{H:4dm}", kRectangular), (Built{0, "30x0002"}));
}

TEST(CodeTemplate, DiameterOfARectangularDuctIsRefusedWithNothingWritten) {
  EXPECT_EQ(build("{D}", kRectangular), (Built{-1, ""}));
  EXPECT_EQ(build("A-{D}-B", kRectangular), (Built{-1, "A-"}));
}

TEST(CodeTemplate, WidthAndHeightOfARoundDuctAreRefused) {
  EXPECT_EQ(build("{B}", kRound).result, TAVD_CODE_BAD_SIZE);
  EXPECT_EQ(build("{H}", kRound).result, TAVD_CODE_BAD_SIZE);
}

TEST(CodeTemplate, EachConnectionHasItsOwnShape) {
  EXPECT_EQ(build("{D}-{B2}", kRound, kRectangular), (Built{0, "125-300"}));
  EXPECT_EQ(build("{D}-{D2}", kRound, kRectangular), (Built{-1, "125-"}));
  EXPECT_EQ(build("{D1}-{H2}", kRound, kRectangular), (Built{0, "125-200"}));
}

TEST(CodeTemplate, EveryConnectionFromTwoUpIsTheSecond) {
  for (char connection = '2'; connection <= '9'; ++connection) {
    EXPECT_EQ(build(std::string("{B") + connection + "}", kRound, kRectangular), (Built{0, "300"}))
        << connection;
  }
}

TEST(CodeTemplate, FirstDigitBehindTheLetterIsTheConnectionAndNotTheDigits) {
  EXPECT_EQ(build("{D4cm}", kNone, kRound), (Built{0, "12"}));
  EXPECT_EQ(build("{D14cm}", kRound), (Built{0, "0012"})) << "the second one counts digits";
  EXPECT_EQ(build("{D0}", kRound).result, TAVD_CODE_BAD_LETTER);
  EXPECT_EQ(build("{D10mm}", kRound), (Built{0, "125"}));
}

TEST(CodeTemplate, AnyShapeButZeroIsRectangular) {
  for (const int16_t shape : std::initializer_list<int16_t>{1, 2, -1, 32767, -32768}) {
    const DuctSize ds = {shape, 300, 200};
    EXPECT_EQ(build("{B}x{H}", ds), (Built{0, "300x200"})) << shape;
    EXPECT_EQ(build("{D}", ds).result, TAVD_CODE_BAD_SIZE) << shape;
  }
}

TEST(CodeTemplate, SizeZeroNeedsADigitToBeSeen) {
  EXPECT_EQ(build("a{D}b", kNone), (Built{0, "ab"}));
  EXPECT_EQ(build("a{D:0mm}b", kNone), (Built{0, "ab"}));
  EXPECT_EQ(build("a{D:1mm}b", kNone), (Built{0, "a0b"}));
  EXPECT_EQ(build("a{D:9cm}b", kNone), (Built{0, "a000000000b"}));
  EXPECT_EQ(build("a{D:dm}b", {0, 99, 99}), (Built{0, "ab"})) << "99 mm are 0 dm";
}

TEST(CodeTemplate, UnitsCutTowardsZero) {
  EXPECT_EQ(build("{D:cm} {D:dm}", {0, 129, 0}), (Built{0, "12 1"}));
  EXPECT_EQ(build("{D} {D:cm} {D:dm}", {0, -129, 0}), (Built{0, "-129 -12 -1"}));
  EXPECT_EQ(build("{D:5mm} {D:5cm}", {0, -129, 0}), (Built{0, "-00129 -00012"})) << "the sign is no digit";
}

TEST(CodeTemplate, LargestSizes) {
  EXPECT_EQ(build("{D}/{D:9mm}", {0, 32767, 0}), (Built{0, "32767/000032767"}));
  EXPECT_EQ(build("{B}x{H}", {1, -32768, 32767}), (Built{0, "-32768x32767"}));
}

TEST(CodeTemplate, NumberLongerThanItsDigitsIsWhole) {
  EXPECT_EQ(build("{D:2mm}", kRound), (Built{0, "125"}));
}

TEST(CodeTemplate, ColonsHaveNoMeaning) {
  for (const char* code_template : {"{D}", "{D:}", "{D::}", "{D1:}", "{D1::mm}", "{D:::0mm}", "{D:mm}"}) {
    EXPECT_EQ(build(code_template, kRound), (Built{0, "125"})) << code_template;
  }
}

TEST(CodeTemplate, LowerCaseLettersWork) {
  EXPECT_EQ(build("{d}", kRound), (Built{0, "125"}));
  EXPECT_EQ(build("{b}x{h:cm}", kRectangular), (Built{0, "300x20"}));
}

TEST(CodeTemplate, TextOutsideOfFieldsIsCopiedByteByByte) {
  EXPECT_EQ(build("a}b::1mm\xE4\xC3\xA4\x01%d", kRound), (Built{0, "a}b::1mm\xE4\xC3\xA4\x01%d"}));
  EXPECT_EQ(build("{D}}", kRound), (Built{0, "125}"}));
}

struct Fault {
  const char* code_template;
  int result;
};

TEST(CodeTemplate, EveryBrokenFieldHasItsNumber) {
  const Fault faults[] = {
      // The template ends behind the brace.
      {"{", -1},
      // What stands behind the letter, or the letter itself.
      {"{D", -2},
      {"{X", -2},
      {"{X}", -2},
      {"{}", -2},
      {"{}}", -2},
      {"{:}", -2},
      {"{{D}", -2},
      {"{DD}", -2},
      {"{D }", -2},
      {"{ D}", -2},
      {"{D-}", -2},
      {"{D0}", -2},
      {"{Dmm}", -2},
      {"{D;}", -2},
      {"{\xC4}", -2},
      {"{X:9km", -2},
      // The template ends inside the field.
      {"{D:", -3},
      {"{D:::", -3},
      {"{D1", -3},
      {"{D1:", -3},
      {"{D:mm", -3},
      {"{D:4mm", -3},
      // Something between the unit and the brace.
      {"{D:4mmx}", -3},
      {"{D:4mm }", -3},
      {"{D:mm:}", -3},
      {"{D:mmmm}", -3},
      // The template ends behind the digits.
      {"{D:4", -4},
      {"{D14", -4},
      {"{D::0", -4},
      // No unit, or none that there is.
      {"{D:4}", -5},
      {"{D14}", -5},
      {"{D:4km}", -5},
      {"{D:4:mm}", -5},
      {"{D:44mm}", -5},
      {"{D:m}", -5},
      {"{D:m", -5},
      {"{D:4m", -5},
      {"{D:c", -5},
      {"{D:MM}", -5},
      {"{D:Cm}", -5},
      {"{D: mm}", -5},
      {"{D:mc}", -5},
      {"{D1x}", -5},
      {"{D:-1mm}", -5},
  };
  for (const Fault& fault : faults) {
    EXPECT_EQ(build(fault.code_template, kRound), (Built{fault.result, ""})) << fault.code_template;
    EXPECT_EQ(build(std::string("A{D}B") + fault.code_template, kRound), (Built{fault.result, "A125B"}))
        << fault.code_template;
  }
}

TEST(CodeTemplate, LetterThatDoesNotSuitGoesBeforeTheFaultsBehindIt) {
  EXPECT_EQ(build("{B:", kRound).result, TAVD_CODE_BAD_SIZE);
  EXPECT_EQ(build("{B:4}", kRound).result, TAVD_CODE_BAD_SIZE);
  EXPECT_EQ(build("{D2:9km}", kRound, kRectangular).result, TAVD_CODE_BAD_SIZE);
  EXPECT_EQ(build("{Bx}", kRound).result, TAVD_CODE_BAD_LETTER) << "but not before what is behind the letter";
}

TEST(CodeTemplate, EveryByteAsALetterIsOneOfThreeOrRefused) {
  for (int byte = 1; byte < 256; ++byte) {
    const char letter = static_cast<char>(byte);
    const std::string code_template = {'{', letter, '}'};
    const bool round = letter == 'D' || letter == 'd';
    const bool rectangular = letter == 'B' || letter == 'b' || letter == 'H' || letter == 'h';
    const int unknown = TAVD_CODE_BAD_LETTER;
    const int unsuited = TAVD_CODE_BAD_SIZE;
    EXPECT_EQ(build(code_template, kRound).result, round ? 0 : rectangular ? unsuited : unknown) << byte;
    EXPECT_EQ(build(code_template, kRectangular).result, rectangular ? 0
                                                         : round     ? unsuited
                                                                     : unknown)
        << byte;
  }
}

TEST(CodeTemplate, FullFieldCutsTheNumberAndLooksNoFurther) {
  EXPECT_EQ(build_field(6, "ABCD{D}", kRound), (Built{0, "ABCD12"}));
  EXPECT_EQ(build_field(6, "ABCD{D}{X", kRound), (Built{0, "ABCD12"})) << "the fault is behind the end";
  EXPECT_EQ(build_field(4, "ABCD{", kRound), (Built{0, "ABCD"}));
  EXPECT_EQ(build_field(5, "ABCD{", kRound), (Built{-1, "ABCD "}));
  EXPECT_EQ(build_field(1, "{D:9mm}{D", kRound), (Built{0, "0"}));
}

TEST(CodeTemplate, LongTextIsCutAtTheWidth) {
  EXPECT_EQ(build_field(5, std::string(1000, 'x'), kRound), (Built{0, "xxxxx"}));
}

TEST(CodeTemplate, EveryWidthGivesTheBeginningOfTheWholeCode) {
  const std::string code_template = "TUNE-{D}-{D:5cm}/{B2}x{H2:9dm}.{D1:mm}";
  const std::string whole = build(code_template, kRound, kRectangular).text;
  ASSERT_EQ(whole, "TUNE-125-00012/300x000000002.125");
  for (int32_t width = 1; width <= 40; ++width) {
    std::string expected = whole.substr(0, static_cast<std::size_t>(width));
    expected.resize(static_cast<std::size_t>(width), ' ');
    EXPECT_EQ(build_field(width, code_template, kRound, kRectangular), (Built{0, expected})) << width;
  }
}

// There and back: what a field prints is the size over its unit, in so many digits.
TEST(CodeTemplate, EverySizeReadsBackFromItsDigits) {
  const std::pair<const char*, int> units[] = {{"mm", 1}, {"cm", 10}, {"dm", 100}};
  for (const auto& [name, millimetres] : units) {
    for (int digits = 0; digits <= 9; ++digits) {
      const std::string code_template = "{D:" + std::to_string(digits) + name + "}";
      for (int size = -1000; size <= 32767; size += 997) {
        const auto b = static_cast<int16_t>(size);
        const Built built = build(code_template, {0, b, 0});
        ASSERT_EQ(built.result, 0);
        const int value = size / millimetres;
        const std::size_t sign = value < 0 ? 1 : 0;
        const std::size_t natural = value == 0 ? 0 : std::to_string(value).size() - sign;
        ASSERT_EQ(built.text.size(), sign + std::max<std::size_t>(natural, static_cast<std::size_t>(digits)))
            << code_template << ' ' << size;
        ASSERT_EQ(built.text.empty() ? 0 : std::stoi(built.text), value) << code_template << ' ' << size;
      }
    }
  }
}

TEST(CodeTemplate, FixedFormFillsThirtyBytes) {
  Guarded<char> field(30);
  EXPECT_EQ(tavd_build_code_ds(field.data(), "ABC-{D}", &kRound, &kNone), 0);
  EXPECT_EQ(std::string(field.data(), 30), "ABC-125" + std::string(23, ' '));
  EXPECT_TRUE(field.intact());

  Guarded<char> full(30);
  const std::string longer = std::string(29, 'x') + "{D}{";
  EXPECT_EQ(tavd_build_code_ds(full.data(), longer.c_str(), &kRound, &kNone), 0);
  EXPECT_EQ(std::string(full.data(), 30), std::string(29, 'x') + "1");
  EXPECT_TRUE(full.intact());
}

TEST(CodeTemplate, NoRoomWritesNothingAndIsNoError) {
  for (const int32_t width : {0, -1, -2147483647}) {
    Guarded<char> field(8);
    EXPECT_EQ(tavd_build_code_ds2(field.data(), width, "{", &kRound, &kNone), 0) << width;
    EXPECT_TRUE(field.untouched_from(0)) << width;
  }
}

TEST(CodeTemplate, NullArguments) {
  EXPECT_EQ(tavd_build_code_ds2(nullptr, 30, "{D}", &kRound, &kNone), 0);
  EXPECT_EQ(tavd_build_code_ds(nullptr, "{D}", &kRound, &kNone), 0);
  Guarded<char> field(30);
  EXPECT_EQ(tavd_build_code_ds(field.data(), nullptr, &kRound, &kNone), 0);
  EXPECT_EQ(std::string(field.data(), 30), std::string(30, ' '));
  EXPECT_EQ(tavd_build_code_ds(field.data(), "a{D:1mm}{D2:2mm}", nullptr, nullptr), 0);
  EXPECT_EQ(std::string(field.data(), 30), "a000" + std::string(26, ' '));
  EXPECT_EQ(tavd_build_code_ds(field.data(), "{B}", nullptr, &kRectangular), TAVD_CODE_BAD_SIZE);
  EXPECT_TRUE(field.intact());
}

}  // namespace
