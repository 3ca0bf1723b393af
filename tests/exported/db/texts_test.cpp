// Product code, description and web link: their sources, charsets and room.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "exported/db/guarded.h"
#include "exported/db/service_spy.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"

namespace {

using tavdtest::Guarded;
using tavdtest::Record;
using testing::ElementsAre;

using NarrowCopy = void (*)(int16_t, tavb_rec, char*, int32_t);
using WideCopy = void (*)(int16_t, tavb_rec, tavd_wchar*, int32_t);

constexpr tavd_wchar kNonsense = 0x5A5A;

class Texts : public testing::Test {
 protected:
  void SetUp() override { use("FIN", 1510); }
  void TearDown() override { tavdcore_init(0, nullptr, nullptr); }

  static void use(const char* market, int16_t lng) { tavdcore_init(lng, market, nullptr); }

  tavdtest::Wide wide(WideCopy copy, Record& record, int32_t destLen = 100) const {
    Guarded<tavd_wchar> text(static_cast<std::size_t>(destLen), kNonsense);
    copy(database_.handle(), record.rec(), text.data(), destLen);
    EXPECT_TRUE(text.intact()) << "room of " << destLen;
    const tavdtest::WideView all(text.data(), text.size());
    EXPECT_NE(all.find(WIDE('\0')), tavdtest::WideView::npos) << "not terminated in a room of " << destLen;
    EXPECT_EQ(all.find(kNonsense), tavdtest::WideView::npos)
        << "the room of " << destLen << " was not cleared";
    return tavdtest::Wide(all.substr(0, all.find(WIDE('\0'))));
  }

  std::string narrow(NarrowCopy copy, Record& record, int32_t destLen = 100) const {
    Guarded<char> text(static_cast<std::size_t>(destLen));
    copy(database_.handle(), record.rec(), text.data(), destLen);
    EXPECT_TRUE(text.intact()) << "room of " << destLen;
    const std::string_view all(text.data(), text.size());
    EXPECT_NE(all.find('\0'), std::string_view::npos) << "not terminated in a room of " << destLen;
    return std::string(all.substr(0, all.find('\0')));
  }

  tavdtest::Database database_;
};

TEST_F(Texts, MarketsOwnCodeComesFirst) {
  Record record("ASD", "ID");
  record.text(9500, "own").text(1562, "default").text(1505, "first").text(1501, "second");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("own"));
}

TEST_F(Texts, EachAbsentCodeLeadsToTheNextSource) {
  Record record("ASD", "ID");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("ID") + tavdtest::Wide(28, WIDE(' ')));
  record.text(1501, "second");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("second"));
  record.text(1505, "first");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("first"));
  record.text(1562, "default");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("default"));
  record.text(9501, "Sweden's");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("default"));
}

TEST_F(Texts, AskedSourcesOfACode) {
  const Record record("ASD", "ID");
  tavd_wchar text[40];
  use("RUS", 0);
  tavdtest::clear_calls();
  tavdf_copyproductcodew(database_.handle(), record.rec(), text, 40);
  EXPECT_THAT(tavdtest::calls(),
              ElementsAre("wsz 9518 78 8", "wsz 1562 78 1", "wsz 1505 78 0", "wsz 1501 78 0", "id"));
}

TEST_F(Texts, UnknownMarketAsksTheDefaultTwice) {
  const Record record("ASD", "ID");
  tavd_wchar text[40];
  use("XXX", 0);
  tavdtest::clear_calls();
  tavdf_copyproductcodew(database_.handle(), record.rec(), text, 40);
  EXPECT_THAT(tavdtest::calls(),
              ElementsAre("wsz 1562 78 1", "wsz 1562 78 1", "wsz 1505 78 0", "wsz 1501 78 0", "id"));
}

TEST_F(Texts, EmptyCodeThatExistsEndsTheSearch) {
  Record record("ASD", "ID");
  record.text(9500, "").text(1562, "default");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE(""));
}

TEST_F(Texts, ObjectIdKeepsItsBlanksInAnyRoom) {
  Record record("ASD", "ABC-100");
  const tavdtest::Wide id = WIDE("ABC-100") + tavdtest::Wide(23, WIDE(' '));
  for (int32_t destLen = 1; destLen <= 33; ++destLen) {
    EXPECT_EQ(wide(tavdf_copyproductcodew, record, destLen),
              id.substr(0, static_cast<std::size_t>(destLen) - 1));
  }
}

TEST_F(Texts, ObjectIdIsInTheDefaultCodePage) {
  Record record("ASD", "\xC4\x80-1");  // A umlaut, euro sign
  EXPECT_EQ(wide(tavdf_copyproductcodew, record).substr(0, 4), WIDE("\u00C4\u20AC-1"));
}

TEST_F(Texts, CodesComeInTheCharsetOfTheirMarket) {
  Record record("ASD", "ID");
  record
      .text(9508, "\xA3\xF3\x64\x9F")          // Polish, windows-1250
      .text(9518, "\xC2\xEE\xE7\xE4\xF3\xF5")  // Russian, windows-1251
      .text(9515, "\xF5hk \xD0\xFE")           // Estonian, windows-1257
      .text(9526, "\xE9\xA3\x8E\xE5\x8F\xA3")  // Chinese, UTF-8
      .text(9500, "\xE4\x80")                  // Finnish, windows-1252
      .text(1562, "\xC3\xA4");                 // default, UTF-8
  const std::pair<const char*, tavdtest::Wide> expected[] = {
      {"POL", WIDE("\u0141\u00F3d\u017A")},   {"RUS", WIDE("\u0412\u043E\u0437\u0434\u0443\u0445")},
      {"EST", WIDE("\u00F5hk \u0160\u017E")}, {"CHN", WIDE("\u98CE\u53E3")},
      {"FIN", WIDE("\u00E4\u20AC")},          {"", WIDE("\u00E4")}};
  for (const auto& [market, text] : expected) {
    use(market, 0);
    EXPECT_EQ(wide(tavdf_copyproductcodew, record), text) << market;
  }
}

TEST_F(Texts, DefaultCharsetIsUtf8WhereTheDatabaseSaysSo) {
  Record("000", "FILEHEADER").words(1049, {1}).save(database_.handle());
  Record record("ASD", "ID");
  record.text(9500, "\xC3\xA4");
  EXPECT_EQ(wide(tavdf_copyproductcodew, record), WIDE("\u00E4"));
}

TEST_F(Texts, CutCodeIsTerminatedInsideItsRoom) {
  Record record("ASD", "ID");
  record.text(9500, "0123456789");
  for (int32_t destLen = 1; destLen <= 12; ++destLen) {
    EXPECT_EQ(wide(tavdf_copyproductcodew, record, destLen),
              tavdtest::Wide(WIDE("0123456789")).substr(0, static_cast<std::size_t>(destLen) - 1));
  }
}

TEST_F(Texts, CutNeverLeavesHalfACharacter) {
  Record record("ASD", "ID");
  record.text(9526,
              "A\xF0\x9F\x8C\x80"
              "B");  // a character of two UTF-16 units
  use("CHN", 0);
  EXPECT_EQ(wide(tavdf_copyproductcodew, record, 2), WIDE("A"));
  EXPECT_EQ(wide(tavdf_copyproductcodew, record, 3), WIDE("A"));
  EXPECT_EQ(wide(tavdf_copyproductcodew, record, 4), WIDE("A\U0001F300"));
  EXPECT_EQ(wide(tavdf_copyproductcodew, record, 5), WIDE("A\U0001F300B"));
}

TEST_F(Texts, TextStoredWithHalfACharacterShowsAReplacement) {
  Record record("ASD", "ID");
  record.text(9526, "A\xE9\xA3");
  use("CHN", 0);
  EXPECT_EQ(wide(tavdf_copyproductcodew, record).substr(0, 2), WIDE("A\uFFFD"));
}

TEST_F(Texts, NoRoomWritesNothing) {
  Record record("ASD", "ID");
  record.text(9500, "own").text(9550, "text").text(8500, "link");
  for (const WideCopy copy : {tavdf_copyproductcodew, tavdf_copyproductdescw, tavdf_copyweblinkw}) {
    for (const int32_t destLen : {0, -1, -32768, std::numeric_limits<int32_t>::min()}) {
      Guarded<tavd_wchar> text(0, kNonsense);
      copy(database_.handle(), record.rec(), text.data(), destLen);
      EXPECT_TRUE(text.intact()) << destLen;
    }
    copy(database_.handle(), record.rec(), nullptr, 10);
  }
  for (const NarrowCopy copy : {tavdf_copyproductcode, tavdf_copyproductdesc, tavdf_copyweblink}) {
    for (const int32_t destLen : {0, -1, -32768, std::numeric_limits<int32_t>::min()}) {
      Guarded<char> text(0);
      copy(database_.handle(), record.rec(), text.data(), destLen);
      EXPECT_TRUE(text.intact()) << destLen;
    }
    copy(database_.handle(), record.rec(), nullptr, 10);
  }
}

TEST_F(Texts, NullRecordGivesEmptyTexts) {
  for (const WideCopy copy : {tavdf_copyproductcodew, tavdf_copyproductdescw, tavdf_copyweblinkw}) {
    Guarded<tavd_wchar> text(5, kNonsense);
    copy(database_.handle(), nullptr, text.data(), 5);
    EXPECT_EQ(text[0], 0);
    EXPECT_TRUE(text.intact());
  }
  Guarded<char> text(5);
  tavdf_copyproductcode(database_.handle(), nullptr, text.data(), 5);
  EXPECT_STREQ(text.data(), "");
  EXPECT_TRUE(text.intact());
}

// Rooms of a code whose byte length leaves 16 bits. `written` is how many characters may change.
struct LargeRoom {
  int32_t destLen;
  std::size_t written;
};

TEST_F(Texts, ByteLengthOfACodeIsHeldInSixteenBits) {
  Record record("ASD", "ID");
  record.text(9500, "01234567890123456789");
  constexpr LargeRoom kRooms[] = {{16383, 16383},
                                  {16384, 16384},
                                  {20000, 20000},
                                  {32767, 32767},  // fit
                                  {32768, 1},      // length 0: the terminator alone
                                  {32769, 1},
                                  {32770, 2},
                                  {32778, 10},
                                  {65536 + 5, 5},  // starts again at 0
                                  {std::numeric_limits<int32_t>::max(), 32767}};
  for (const LargeRoom& room : kRooms) {
    Guarded<tavd_wchar> text(70000, kNonsense);
    tavdf_copyproductcodew(database_.handle(), record.rec(), text.data(), room.destLen);
    EXPECT_EQ(tavdtest::Wide(text.data()),
              tavdtest::Wide(WIDE("01234567890123456789")).substr(0, room.written - 1))
        << room.destLen;
    EXPECT_TRUE(text.untouched_from(room.written)) << room.destLen;
  }
}

TEST_F(Texts, ObjectIdIsWholeAndTerminatedWhereTheByteLengthStartsAgain) {
  const Record record("ASD", "ID");
  for (const int32_t destLen : {32768, 32769, 32778, 65536, std::numeric_limits<int32_t>::max()}) {
    Guarded<tavd_wchar> text(70000, kNonsense);
    tavdf_copyproductcodew(database_.handle(), record.rec(), text.data(), destLen);
    EXPECT_EQ(tavdtest::Wide(text.data()), WIDE("ID") + tavdtest::Wide(28, WIDE(' '))) << destLen;
    EXPECT_TRUE(text.untouched_from(destLen < 70000 ? 31 : 32767)) << destLen;
  }
}

TEST_F(Texts, DescriptionClearsAllOfALargeRoom) {
  Record record("ASD", "ID");
  record.text(9550, "text");
  EXPECT_EQ(wide(tavdf_copyproductdescw, record, 40000), WIDE("text"));
}

TEST_F(Texts, DescriptionFollowsTheLanguage) {
  Record record("ASD", "ID");
  record.text(9550, "s\xE4\xE4t\xF6").text(9568, "\xC2\xEE").text(9593, "\xE9\xA3\x8E");
  EXPECT_EQ(wide(tavdf_copyproductdescw, record), WIDE("s\u00E4\u00E4t\u00F6"));
  tavdcore_set_user_lng(1528);
  EXPECT_EQ(wide(tavdf_copyproductdescw, record), WIDE("\u0412\u043E"));
  tavdcore_set_user_lng(1539);
  EXPECT_EQ(wide(tavdf_copyproductdescw, record), WIDE("\u98CE"));
}

TEST_F(Texts, LanguageWithoutAttributeGivesAnEmptyTextAndNarrowTheCode) {
  Record record("ASD", "ID");
  record.text(9500, "code").text(9550, "description");
  use("FIN", 0);
  tavdtest::clear_calls();
  EXPECT_EQ(wide(tavdf_copyproductdescw, record), WIDE(""));
  EXPECT_THAT(tavdtest::calls(), testing::IsEmpty());
  EXPECT_EQ(narrow(tavdf_copyproductdesc, record), "code");
}

TEST_F(Texts, MissingDescriptionAndLinkHaveNoFallback) {
  Record record("ASD", "ID");
  record.text(1562, "code").text(8529, "default link");
  EXPECT_EQ(wide(tavdf_copyproductdescw, record), WIDE(""));
  EXPECT_EQ(wide(tavdf_copyweblinkw, record), WIDE("")) << "the default link is for unknown markets alone";
}

TEST_F(Texts, WebLinkFollowsTheMarket) {
  Record record("ASD", "ID");
  record.text(8500, "fi").text(8529, "all");
  tavdtest::clear_calls();
  EXPECT_EQ(wide(tavdf_copyweblinkw, record, 50), WIDE("fi"));
  EXPECT_THAT(tavdtest::calls(), ElementsAre("wsz 8500 98 0"));
  use("", 0);
  EXPECT_EQ(wide(tavdf_copyweblinkw, record), WIDE("all"));
}

TEST_F(Texts, CutDescriptionAndLinkAreTerminated) {
  Record record("ASD", "ID");
  record.text(9550, "0123456789").text(8500, "0123456789");
  for (int32_t destLen = 1; destLen <= 12; ++destLen) {
    const tavdtest::Wide expected =
        tavdtest::Wide(WIDE("0123456789")).substr(0, static_cast<std::size_t>(destLen) - 1);
    EXPECT_EQ(wide(tavdf_copyproductdescw, record, destLen), expected);
    EXPECT_EQ(wide(tavdf_copyweblinkw, record, destLen), expected);
  }
}

TEST_F(Texts, AllNarrowFormsGiveTheCode) {
  Record record("ASD", "ID");
  record.text(9500, "s\xE4\xE4t\xF6").text(9550, "description").text(8500, "link");
  for (const NarrowCopy copy : {tavdf_copyproductcode, tavdf_copyproductdesc, tavdf_copyweblink}) {
    EXPECT_EQ(narrow(copy, record), "s\xE4\xE4t\xF6");
    EXPECT_EQ(narrow(copy, record, 1), "");
    EXPECT_EQ(narrow(copy, record, 4), "s\xE4\xE4");
  }
}

TEST_F(Texts, NarrowFormsShowAQuestionMarkForWhatTheCodePageLacks) {
  Record record("ASD", "ID");
  record.text(9518, "a\xC2\xEE")
      .text(9526,
            "A\xF0\x9F\x8C\x80"
            "B");
  use("RUS", 0);
  EXPECT_EQ(narrow(tavdf_copyproductcode, record), "a??");
  use("CHN", 0);
  EXPECT_EQ(narrow(tavdf_copyproductcode, record), "A??B");
}

TEST_F(Texts, NarrowObjectIdKeepsItsBlanks) {
  Record record("ASD", "ABC");
  EXPECT_EQ(narrow(tavdf_copyproductcode, record), "ABC" + std::string(27, ' '));
  EXPECT_EQ(narrow(tavdf_copyproductcode, record, 31), "ABC" + std::string(27, ' '));
  EXPECT_EQ(narrow(tavdf_copyproductcode, record, 30), "ABC" + std::string(26, ' '));
}

TEST_F(Texts, NarrowFormsGoThroughTwoHundredFiftySixCharactersAndClearTheRest) {
  Record record("ASD", "ID");
  record.text(9500, std::string(400, 'x'));
  EXPECT_EQ(narrow(tavdf_copyproductcode, record, 1000), std::string(255, 'x'));
  Guarded<char> text(1000);
  tavdf_copyproductcode(database_.handle(), record.rec(), text.data(), 1000);
  EXPECT_EQ(std::string(text.data() + 255, 745), std::string(745, '\0'));
}

}  // namespace
