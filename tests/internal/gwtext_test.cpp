#include "base/gwtext.h"
#include "support/wide.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

tavdtest::Wide wide(const std::string& text) {
  return {text.begin(), text.end()};
}

// The narrow function and its twin must give the same.
int trimlen(const std::string& field, int n) {
  const int narrow = tavd::gwstrtrimlen(field.c_str(), n);
  EXPECT_EQ(tavd::gwwcstrimlen(wide(field).c_str(), n), narrow) << field;
  return narrow;
}

std::string rtrimmed(const std::string& text) {
  std::string narrow = text;
  tavd::gwrtrim(narrow.data());
  tavdtest::Wide twin = wide(text);
  tavd::gwrtrimw(twin.data());
  EXPECT_EQ(twin, wide(narrow)) << text;
  return narrow;  // the whole buffer, terminators included
}

int isnumber(const std::string& text) {
  const int narrow = tavd::gwisnumber(text.c_str());
  EXPECT_EQ(tavd::gwisnumberw(wide(text).c_str()), narrow) << text;
  return narrow;
}

struct Field {
  std::string dest;
  int next;  // offset of the address that was returned, -1 for null
};

Field field(const std::string& text, int index, int size, char sep = ',') {
  char dest[64];
  std::memset(dest, '#', sizeof dest);
  const char* next = tavd::gwstrfield(dest, text.c_str(), sep, index, size);
  const Field narrow{dest, next == nullptr ? -1 : static_cast<int>(next - text.c_str())};

  const tavdtest::Wide twin = wide(text);
  tavd_wchar wide_dest[64];
  std::fill_n(wide_dest, 64, WIDE('#'));
  const tavd_wchar* wide_next =
      tavd::gwwcsfield(wide_dest, twin.c_str(), static_cast<tavd_wchar>(sep), index, 2 * size);
  EXPECT_EQ(tavdtest::Wide(wide_dest), wide(narrow.dest)) << text;
  EXPECT_EQ(wide_next == nullptr ? -1 : static_cast<int>(wide_next - twin.c_str()), narrow.next) << text;
  return narrow;
}

TEST(TrimLength, CountsNoPaddingBlanks) {
  EXPECT_EQ(trimlen("ABCDEFGHIJ" + std::string(20, ' '), 30), 10);
  EXPECT_EQ(trimlen(std::string(30, ' '), 30), 0);
  EXPECT_EQ(trimlen(std::string(30, 'A'), 30), 30);
}

TEST(TrimLength, EndsAtTheFirstNul) {
  EXPECT_EQ(trimlen(std::string("AB \0CD", 6), 6), 2);
  EXPECT_EQ(trimlen(std::string("AB\0\0\0\0", 6), 6), 2);
}

TEST(TrimLength, ReadsNoFurtherThanItsField) {
  EXPECT_EQ(trimlen("ABCDEF", 3), 3);
}

TEST(TrimLength, KeepsLeadingAndInnerBlanks) {
  EXPECT_EQ(trimlen("  A B  ", 7), 5);
}

TEST(TrimLength, IsZeroForNoCharacters) {
  EXPECT_EQ(trimlen("ABC", 0), 0);
  EXPECT_EQ(trimlen("ABC", -5), 0);
  EXPECT_EQ(tavd::gwstrtrimlen(nullptr, 5), 0);
}

TEST(TrimCopy, WritesOneMoreThanTheFieldWhateverTheTextIs) {
  char dest[32];
  std::memset(dest, '#', sizeof dest);
  const std::string source = "AB" + std::string(28, ' ');
  EXPECT_EQ(tavd::gwstrtrimcpy(dest, source.c_str(), 30), dest);
  EXPECT_STREQ(dest, "AB");
  for (int i = 2; i <= 30; ++i) EXPECT_EQ(dest[i], 0) << i;
  EXPECT_EQ(dest[31], '#');
}

TEST(TrimCopy, TerminatesAFieldWithoutPadding) {
  char dest[32];
  std::memset(dest, '#', sizeof dest);
  tavd::gwstrtrimcpy(dest, std::string(40, 'A').c_str(), 30);
  EXPECT_EQ(std::string(dest), std::string(30, 'A'));
  EXPECT_EQ(dest[30], 0);
  EXPECT_EQ(dest[31], '#');
}

TEST(TrimCopy, WideTwinCountsInCharacters) {
  tavd_wchar dest[6];
  std::fill_n(dest, 6, WIDE('#'));
  EXPECT_EQ(tavd::gwwcstrimcpy(dest, WIDE("\u00C4 \u00D6 "), 4), dest);
  EXPECT_EQ(tavdtest::Wide(dest, 6), tavdtest::Wide(WIDE("\u00C4 \u00D6\0\0#"), 6));
}

TEST(TrimCopy, NoCharactersLeaveATerminator) {
  char dest[2] = {'#', '#'};
  tavd::gwstrtrimcpy(dest, "ABC", 0);
  EXPECT_EQ(dest[0], 0);
  EXPECT_EQ(dest[1], '#');
}

TEST(RightTrim, WritesOneTerminatorAtTheFirstTrailingBlank) {
  EXPECT_EQ(rtrimmed("AB   "), std::string("AB\0  ", 5));
  EXPECT_EQ(rtrimmed("    "), std::string("\0   ", 4));
}

TEST(RightTrim, LeavesOtherTextsAlone) {
  EXPECT_EQ(rtrimmed("AB"), "AB");
  EXPECT_EQ(rtrimmed(" A B\t"), " A B\t");
  EXPECT_EQ(rtrimmed(""), "");
}

TEST(NumberTest, AcceptsPlainUnsignedDecimals) {
  for (const char* text : {"12", ".5", "5.", " 12 ", "   12", "12   ", "0", "1.25", "007", "  5.  "}) {
    EXPECT_EQ(isnumber(text), 1) << text;
  }
}

TEST(NumberTest, RefusesEverythingElse) {
  for (const char* text : {"", "   ", ".", "1 2", "1.2.3", "-1", "+1", "1e3", "1 .", "1. 5", "a", "1a", "1,5",
                           " . ", "1\t", "\t1", "\xB2"}) {
    EXPECT_EQ(isnumber(text), 0) << text;
  }
}

TEST(NumberTest, TakesNoWideDigitsOfOtherRows) {
  EXPECT_EQ(tavd::gwisnumberw(WIDE("\uFF11")), 0);
  EXPECT_EQ(tavd::gwisnumberw(WIDE("\u0131")), 0);  // its low byte is the digit 1
}

TEST(FieldSplitter, WalksTheFieldsOfAText) {
  const Field first = field("a,b", 0, 10);
  EXPECT_EQ(first.dest, "a");
  EXPECT_EQ(first.next, 2);
  const Field second = field("a,b", 1, 10);
  EXPECT_EQ(second.dest, "b");
  EXPECT_EQ(second.next, 3);
  const Field none = field("a,b", 2, 10);
  EXPECT_EQ(none.dest, "");
  EXPECT_EQ(none.next, -1);
}

TEST(FieldSplitter, EmptyLastFieldIsNone) {
  EXPECT_EQ(field("a,", 1, 10).next, -1);
  EXPECT_EQ(field("a,", 1, 10).dest, "");
  EXPECT_EQ(field("", 0, 10).next, -1);
}

TEST(FieldSplitter, EmptyFieldInTheMiddleIsAField) {
  const Field middle = field("a,,b", 1, 10);
  EXPECT_EQ(middle.dest, "");
  EXPECT_EQ(middle.next, 3);
  EXPECT_EQ(field(",b", 0, 10).next, 1);
}

TEST(FieldSplitter, LongFieldIsCutAndTheNextFieldStillFound) {
  const Field cut = field("abcdef,gh", 0, 4);
  EXPECT_EQ(cut.dest, "abc");
  EXPECT_EQ(cut.next, 7);
  const Field last = field("abcdef", 0, 4);
  EXPECT_EQ(last.dest, "abc");
  EXPECT_EQ(last.next, 6);
}

TEST(FieldSplitter, FieldThatJustFitsIsWhole) {
  const Field whole = field("abc,d", 0, 4);
  EXPECT_EQ(whole.dest, "abc");
  EXPECT_EQ(whole.next, 4);
}

TEST(FieldSplitter, WritesNothingBehindItsRoom) {
  char dest[8];
  std::memset(dest, '#', sizeof dest);
  tavd::gwstrfield(dest, "abcdef,gh", ',', 0, 4);
  EXPECT_EQ(std::string(dest, 8), std::string("abc\0####", 8));
  tavd_wchar wide_dest[4] = {WIDE('#'), WIDE('#'), WIDE('#'), WIDE('#')};
  tavd::gwwcsfield(wide_dest, WIDE("abcdef,gh"), WIDE(','), 0, 5);  // five bytes hold two characters
  EXPECT_EQ(tavdtest::Wide(wide_dest, 4), tavdtest::Wide(WIDE("a\0##"), 4));
}

TEST(FieldSplitter, BadArgumentsEmptyTheField) {
  EXPECT_EQ(field("a,b", -1, 10).next, -1);
  EXPECT_EQ(field("a,b", -1, 10).dest, "");
  EXPECT_EQ(field("a,b", 0, 0).next, -1);
  EXPECT_EQ(field("a,b", 0, 0).dest, "");
  char dest[4] = "###";
  EXPECT_EQ(tavd::gwstrfield(dest, nullptr, ',', 0, 4), nullptr);
  EXPECT_STREQ(dest, "");
}

TEST(UpperCase, FoldsTheThreeLatinLetters) {
  EXPECT_EQ(tavd::gwtoupper('\xE4'), '\xC4');
  EXPECT_EQ(tavd::gwtoupper('\xF6'), '\xD6');
  EXPECT_EQ(tavd::gwtoupper('\xE5'), '\xC5');
  EXPECT_EQ(tavd::gwtoupper('\xE9'), '\xE9');
}

TEST(UpperCase, FoldsNothingButThoseAndAToZ) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool letter = byte >= 'a' && byte <= 'z';
    const bool latin = byte == 0xE4 || byte == 0xF6 || byte == 0xE5;
    const int expected = letter || latin ? byte - 32 : byte;
    EXPECT_EQ(static_cast<unsigned char>(tavd::gwtoupper(static_cast<char>(byte))), expected) << byte;
  }
}

TEST(LongestLine, CountsNeitherCarriageReturnNorLineFeed) {
  EXPECT_EQ(tavd::gwmaxlinelen("abc\r\nabcde\r\nab"), 5);
  EXPECT_EQ(tavd::gwmaxlinelen("abc\r\nabcde"), 5);
}

TEST(LongestLine, ALineFeedAloneEndsNoLine) {
  EXPECT_EQ(tavd::gwmaxlinelen("abc\nde"), 5);
}

TEST(LongestLine, CountsBytesFrom0x20Up) {
  EXPECT_EQ(tavd::gwmaxlinelen("a\tb \xE4"), 4);
  EXPECT_EQ(tavd::gwmaxlinelen(""), 0);
  EXPECT_EQ(tavd::gwmaxlinelen("\r\r"), 0);
}

TEST(CaselessComparison, FoldsAsciiLettersOnlyAndComparesUnsignedBytes) {
  EXPECT_EQ(tavd::gwstricmp("abcXYZ", "ABCxyz"), 0);
  EXPECT_NE(tavd::gwstricmp("\xE4", "\xC4"), 0);
  EXPECT_LT(tavd::gwstricmp("z", "\xE4"), 0);
  EXPECT_GT(tavd::gwstricmp("\xE4", "Z"), 0);
  EXPECT_LT(tavd::gwstricmp("ab", "ABC"), 0);
  EXPECT_GT(tavd::gwstricmp("ABC", "ab"), 0);
  EXPECT_EQ(tavd::gwstricmp("", ""), 0);
}

TEST(FieldCopy, CutsAndTerminatesInsideTheField) {
  char dest[8];
  std::memset(dest, '#', sizeof dest);
  tavd::gwstrcpyfield(dest, "abcdef", 4);
  EXPECT_EQ(std::string(dest, 8), std::string("abc\0####", 8));
  tavd::gwstrcpyfield(dest, nullptr, 4);
  EXPECT_STREQ(dest, "");
  tavd_wchar wide_dest[4] = {WIDE('#'), WIDE('#'), WIDE('#'), WIDE('#')};
  tavd::gwwcscpyfield(wide_dest, WIDE("abc"), 2);
  EXPECT_EQ(tavdtest::Wide(wide_dest, 4), tavdtest::Wide(WIDE("a\0##"), 4));
}

TEST(TrimCopy, OntoItselfTakesTheBlanksOff) {
  char text[] = "AB  #";
  EXPECT_EQ(tavd::gwstrtrimcpy(text, text, 3), text);
  EXPECT_EQ(std::string(text, 5), std::string("AB\0\0#", 5));
}

TEST(TrimCopy, NothingIsWrittenWithoutADestinationOrBelowNoCharacters) {
  EXPECT_EQ(tavd::gwstrtrimcpy(nullptr, "AB", 2), nullptr);
  EXPECT_EQ(tavd::gwwcstrimcpy(nullptr, WIDE("AB"), 2), nullptr);
  char dest[] = "##";
  EXPECT_EQ(tavd::gwstrtrimcpy(dest, "AB", -1), dest);
  EXPECT_STREQ(dest, "##");
}

TEST(NullText, IsNoNumberAndHasNothingToTrim) {
  EXPECT_EQ(tavd::gwisnumber(nullptr), 0);
  EXPECT_EQ(tavd::gwisnumberw(nullptr), 0);
  tavd::gwrtrim(nullptr);
  tavd::gwrtrimw(nullptr);
}

TEST(NullText, ComparesLikeAnEmptyOne) {
  EXPECT_EQ(tavd::gwstricmp(nullptr, nullptr), 0);
  EXPECT_EQ(tavd::gwstricmp(nullptr, ""), 0);
  EXPECT_LT(tavd::gwstricmp(nullptr, "a"), 0);
  EXPECT_GT(tavd::gwstricmp("a", nullptr), 0);
}

TEST(FieldSplitter, WithoutADestinationHasNoField) {
  EXPECT_EQ(tavd::gwstrfield(nullptr, "a,b", ',', 0, 4), nullptr);
  EXPECT_EQ(tavd::gwwcsfield(nullptr, WIDE("a,b"), WIDE(','), 0, 8), nullptr);
}

TEST(FieldCopy, WritesNothingWithoutADestinationOrRoom) {
  tavd::gwstrcpyfield(nullptr, "abc", 4);
  tavd::gwwcscpyfield(nullptr, WIDE("abc"), 4);
  char dest[] = "##";
  tavd::gwstrcpyfield(dest, "abc", 0);
  EXPECT_STREQ(dest, "##");
}

}  // namespace
