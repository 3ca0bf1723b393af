// Product ids: from the template of a record, or the record's own id.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "exported/db/guarded.h"
#include "exported/db/service_spy.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/codes.h"

namespace {

using tavdtest::Balance;
using tavdtest::Database;
using tavdtest::Guarded;
using tavdtest::Record;
using testing::ElementsAre;

constexpr DuctSize kRound = {0, 125, 125};
constexpr DuctSize kRectangular = {1, 300, 200};
constexpr tavd_wchar kNonsense = 0x5A5A;

std::string fixed_id(tavb_rec rec, const DuctSize* ds1, const DuctSize* ds2) {
  const Balance balance;
  Guarded<char> dest(31);
  EXPECT_EQ(tavd_build_productId_ds(0, dest.data(), rec, ds1, ds2), 0);
  EXPECT_TRUE(dest.intact());
  EXPECT_EQ(dest[30], '\0');
  return dest.data();
}

std::string sized_id(tavb_rec rec, int32_t room, const DuctSize* ds1, const DuctSize* ds2) {
  const Balance balance;
  Guarded<char> dest(static_cast<std::size_t>(room));
  EXPECT_EQ(tavd_build_productId_ds2(0, dest.data(), room, rec, ds1, ds2), 0);
  EXPECT_TRUE(dest.intact());
  EXPECT_EQ(dest[dest.size() - 1], '\0');
  return dest.data();
}

// A database of one encoding, and one record in it.
class WideId {
 public:
  explicit WideId(const char* id) : record("ASD", id) {}

  // What the file header tells, for the calls behind; without a call the database has no header.
  WideId& encoding(int16_t usesUTF8) {
    Record("000", "FILEHEADER").words(1049, {usesUTF8}).save(database.handle());
    return *this;
  }

  tavdtest::Wide fixed(const DuctSize* ds1 = &kRound, const DuctSize* ds2 = &kRectangular) const {
    const Balance balance;
    Guarded<tavd_wchar> dest(256, kNonsense);
    EXPECT_EQ(tavd_build_productId_dsw(database.handle(), dest.data(), record.rec(), ds1, ds2), 0);
    EXPECT_TRUE(dest.intact());
    return dest.data();
  }
  tavdtest::Wide sized(int32_t room, const DuctSize* ds1 = &kRound,
                       const DuctSize* ds2 = &kRectangular) const {
    const Balance balance;
    Guarded<tavd_wchar> dest(static_cast<std::size_t>(room), kNonsense);
    EXPECT_EQ(tavd_build_productId_dsw2(database.handle(), dest.data(), room, record.rec(), ds1, ds2), 0);
    EXPECT_TRUE(dest.intact());
    EXPECT_EQ(dest[dest.size() - 1], 0);
    return dest.data();
  }

  Database database;
  Record record;
};

TEST(ProductId, RecordWithoutTemplateGivesItsIdWithoutTrailingBlanks) {
  const Record record("ASD", "ABC-100");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "ABC-100");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "ABC-100");
}

TEST(ProductId, TemplateIsFilled) {
  Record record("ASD", "ABC-*");
  record.text(1511, "ABC-{D}-{B2}x{H2}   ");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, &kRectangular), "ABC-125-300x200");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, &kRectangular), "ABC-125-300x200");
}

TEST(ProductId, EmptyTemplateGivesAnEmptyId) {
  Record record("ASD", "ABC-*");
  record.text(1511, "");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "");
}

TEST(ProductId, NullSecondSizeIsRoundSoThatItsWidthFallsBackToTheId) {
  Record record("ASD", "ABC-*");
  record.text(1511, "ABC-{D}-{B2}");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "ABC-*");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "ABC-*");
}

TEST(ProductId, NullSecondSizeHasADiameterOfZero) {
  Record record("ASD", "ABC-*");
  record.text(1511, "ABC-{D2}-{D2:3mm}");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "ABC--000");
}

TEST(ProductId, EveryFaultOfTheTemplateFallsBackToTheId) {
  for (const char* fault : {"A{", "A{B}", "A{X}", "A{D:", "A{D:4", "A{D:4}"}) {
    Record record("ASD", "ABC-*");
    record.text(1511, fault);
    EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "ABC-*") << fault;
    EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "ABC-*") << fault;
  }
}

TEST(ProductId, WhatAFailedTemplateWroteBehindTheIdStaysInTheSizedForm) {
  Record record("ASD", "ABC-*");
  record.text(1511, std::string(30, 'x') + "tail{");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "ABC-*" + std::string(25, ' ') + "tail");
  EXPECT_EQ(sized_id(record.rec(), 31, &kRound, nullptr), "ABC-*");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), std::string(30, 'x'))
      << "the fixed form is full before the fault";
  record.text(1511, std::string(29, 'x') + "{");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "ABC-*");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "ABC-*");
}

TEST(ProductId, IdOfThirtyCharactersIsWhole) {
  const std::string id = "ABC-DEF-GHI-JKL-MNO-PQR-STU-VW";
  ASSERT_EQ(id.size(), 30U);
  const Record record("ASD", id.c_str());
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), id);
  EXPECT_EQ(sized_id(record.rec(), 31, &kRound, nullptr), id);
  EXPECT_EQ(sized_id(record.rec(), 30, &kRound, nullptr), id.substr(0, 29));
}

TEST(ProductId, LongCodesAreCutToTheirForms) {
  Record record("ASD", "ABC-*");
  record.text(1511, std::string(190, 'x') + "{D:9mm}");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), std::string(30, 'x'));
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), std::string(190, 'x') + "000000125");
  EXPECT_EQ(sized_id(record.rec(), 192, &kRound, nullptr), std::string(190, 'x') + "0");
}

TEST(ProductId, EveryRoomHoldsTheBeginningAndATerminator) {
  Record record("ASD", "ABC-*");
  record.text(1511, "AB {D} {B2}");
  const std::string whole = "AB 125 300";
  for (int32_t room = 1; room <= 20; ++room) {
    std::string expected = whole.substr(0, static_cast<std::size_t>(room) - 1);
    while (!expected.empty() && expected.back() == ' ') expected.pop_back();
    EXPECT_EQ(sized_id(record.rec(), room, &kRound, &kRectangular), expected) << room;
  }
}

TEST(ProductId, RoomBeyondTheIdIsCleared) {
  Record record("ASD", "ABC-*");
  record.text(1511, std::string(250, 'x') + "{D:9mm}");
  Guarded<char> dest(1000);
  EXPECT_EQ(tavd_build_productId_ds2(0, dest.data(), 1000, record.rec(), &kRound, nullptr), 0);
  // 256 bytes of template are read, so "{D:9mm" is left of the field.
  EXPECT_EQ(std::string(dest.data()), "ABC-*" + std::string(25, ' ') + std::string(220, 'x'));
  for (std::size_t i = 250; i < 1000; ++i) ASSERT_EQ(dest[i], '\0') << i;
  EXPECT_TRUE(dest.intact());
}

TEST(ProductId, CodeOfTwoHundredFiftySixBytesIsWholeWhereThereIsRoom) {
  Record record("ASD", "ABC-*");
  record.text(1511, std::string(300, 'x'));
  EXPECT_EQ(sized_id(record.rec(), 1000, &kRound, nullptr), std::string(256, 'x'));
  EXPECT_EQ(sized_id(record.rec(), 257, &kRound, nullptr), std::string(256, 'x'));
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), std::string(255, 'x'));
}

TEST(ProductId, TemplateThatFillsItsRoomEndsThere) {
  std::string fields;
  for (int i = 0; i < 36; ++i) fields += "{D2:0mm}";  // these print nothing
  fields.resize(fields.find('{', 240));
  fields.resize(256, 'x');
  const std::string expected(256 - fields.find('x'), 'x');
  Record record("ASD", "ABC-*");
  record.text(1511, fields + "behind");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), expected);
}

TEST(ProductId, TemplateIsReadToItsForm) {
  const Record record("ASD", "A");
  tavdtest::clear_calls();
  fixed_id(record.rec(), &kRound, nullptr);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1511 200", "id"));
  tavdtest::clear_calls();
  sized_id(record.rec(), 256, &kRound, nullptr);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1511 256", "id"));
}

TEST(ProductId, FieldThatTheEndOfAFixedFormsTemplateDividesIsAFault) {
  // 23 fields of 8 bytes that print nothing, then text up to the cut at 200 bytes.
  std::string fields;
  for (int i = 0; i < 23; ++i) fields += "{D2:0mm}";
  ASSERT_EQ(fields.size(), 184U);
  Record record("ASD", "ABC-*");
  record.text(1511, fields + "0123456789{D:mm}");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "0123456789125") << "200 bytes, read whole";
  record.text(1511, fields + "0123456789x{D:mm}");
  EXPECT_EQ(fixed_id(record.rec(), &kRound, nullptr), "ABC-*");
  EXPECT_EQ(sized_id(record.rec(), 256, &kRound, nullptr), "0123456789x125");
}

TEST(ProductId, NoRoomWritesNothing) {
  const Database database;
  const Record record("ASD", "ABC-*");
  for (const int32_t room : {0, -1, -2147483647}) {
    Guarded<char> dest(8);
    EXPECT_EQ(tavd_build_productId_ds2(0, dest.data(), room, record.rec(), &kRound, nullptr), 0);
    EXPECT_TRUE(dest.untouched_from(0)) << room;
    Guarded<tavd_wchar> wide(8, kNonsense);
    EXPECT_EQ(tavd_build_productId_dsw2(database.handle(), wide.data(), room, record.rec(), &kRound, nullptr),
              0);
    EXPECT_TRUE(wide.untouched_from(0)) << room;
  }
}

TEST(ProductId, NullArguments) {
  Record record("ASD", "ABC-*");
  record.text(1511, "A{D:3mm}");
  EXPECT_EQ(fixed_id(record.rec(), nullptr, nullptr), "A000");
  EXPECT_EQ(fixed_id(nullptr, &kRound, nullptr), "");
  EXPECT_EQ(sized_id(nullptr, 40, &kRound, nullptr), "");
  EXPECT_EQ(tavd_build_productId_ds(0, nullptr, record.rec(), &kRound, nullptr), 0);
  EXPECT_EQ(tavd_build_productId_ds2(0, nullptr, 31, record.rec(), &kRound, nullptr), 0);
  EXPECT_EQ(tavd_build_productId_dsw(0, nullptr, record.rec(), &kRound, nullptr), 0);
  EXPECT_EQ(tavd_build_productId_dsw2(0, nullptr, 31, record.rec(), &kRound, nullptr), 0);
}

TEST(WideProductId, DatabaseWithoutHeaderIsInTheDefaultCodePage) {
  WideId id("ABC-*");
  id.record.text(1511, "\xC4-{D}\x80");
  EXPECT_EQ(id.fixed(), WIDE("\u00C4-125\u20AC"));
  EXPECT_EQ(id.sized(256), WIDE("\u00C4-125\u20AC"));
}

TEST(WideProductId, EncodingIsTheDatabases) {
  WideId id("ABC-*");
  id.record.text(1511, "\xC3\x84-{D}");
  for (const int16_t code_page : std::initializer_list<int16_t>{0, 2}) {
    id.encoding(code_page);
    EXPECT_EQ(id.fixed(), WIDE("\u00C3\u201E-125")) << code_page;
    EXPECT_EQ(id.sized(256), WIDE("\u00C3\u201E-125")) << code_page;
  }
  id.encoding(1);
  EXPECT_EQ(id.fixed(), WIDE("\u00C4-125"));
  EXPECT_EQ(id.sized(256), WIDE("\u00C4-125"));
}

TEST(WideProductId, UnknownEncodingGivesAnEmptyTextInTheSizedForm) {
  WideId id("ABC-*");
  for (const int16_t encoding : std::initializer_list<int16_t>{3, -1, 256, 32767}) {
    id.encoding(encoding);
    EXPECT_EQ(id.sized(256), WIDE("")) << encoding;
  }
}

TEST(WideProductId, UnknownEncodingLeavesTheTextOfTheFixedFormWithoutItsTrailingBlanks) {
  WideId id("ABC-*");
  for (const int16_t encoding : std::initializer_list<int16_t>{3, -1, 256, 32767}) {
    id.encoding(encoding);
    Guarded<tavd_wchar> dest(256, kNonsense);
    tavdtest::Wide(WIDE("the host's  ")).copy(dest.data(), 12);
    dest[12] = 0;
    EXPECT_EQ(tavd_build_productId_dsw(id.database.handle(), dest.data(), id.record.rec(), &kRound, nullptr),
              0);
    EXPECT_EQ(tavdtest::Wide(dest.data()), WIDE("the host's")) << encoding;
    EXPECT_EQ(dest[11], WIDE(' ')) << "one terminator is written and nothing behind it";
    EXPECT_TRUE(dest.untouched_from(13)) << encoding;
  }
}

TEST(WideProductId, UnknownEncodingTerminatesTheTextOfTheFixedFormInsideItsRoom) {
  WideId id("ABC-*");
  id.encoding(3);
  EXPECT_EQ(id.fixed(), tavdtest::Wide(255, kNonsense));
}

TEST(WideProductId, EncodingIsAskedOfTheFileHeader) {
  WideId id("ABC-*");
  tavdtest::clear_calls();
  id.sized(40);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1511 256", "id", "findatt 000 FILEHEADER 1049 2"));
  tavdtest::clear_calls();
  id.fixed();
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1511 200", "id", "findatt 000 FILEHEADER 1049 2"));
}

TEST(WideProductId, FallsBackToTheIdWithoutItsBlanks) {
  WideId id("ABC-*");
  id.record.text(1511, "A-{B}");
  EXPECT_EQ(id.fixed(), WIDE("ABC-*"));
  EXPECT_EQ(id.sized(256), WIDE("ABC-*"));
  EXPECT_EQ(id.fixed(&kRectangular), WIDE("A-300"));
}

TEST(WideProductId, CutLeavesOutADividedCharacter) {
  WideId id("ABC-*");
  id.encoding(1);
  const std::string text = std::string(29, 'x') + "\xC3\x84";
  id.record.text(1511, text);
  EXPECT_EQ(id.fixed(), tavdtest::Wide(29, WIDE('x')));
  EXPECT_EQ(id.sized(256), tavdtest::Wide(29, WIDE('x')) + WIDE('\u00C4'));
  id.record.text(1511, std::string(254, 'x') + "\xC3\x84");
  EXPECT_EQ(id.sized(300), tavdtest::Wide(254, WIDE('x')));
  id.record.text(1511, std::string(253, 'x') + "\xC3\x84");
  EXPECT_EQ(id.sized(300), tavdtest::Wide(253, WIDE('x')) + WIDE('\u00C4'));
}

TEST(WideProductId, HalfACharacterThatIsStoredShowsAReplacement) {
  WideId id("ABC-*");
  id.encoding(1);
  id.record.text(1511, "A\xC3");
  EXPECT_EQ(id.fixed(), WIDE("A\uFFFD"));
  id.record.text(1511, "A\xFF-{D}");
  EXPECT_EQ(id.sized(256), WIDE("A\uFFFD-125"));
}

TEST(WideProductId, BytesOfNoCharacterAtTheCutAreReplacedOneByOne) {
  WideId id("ABC-*");
  id.encoding(1);
  id.record.text(1511, std::string(29, 'x') + "\xF5\x80");
  EXPECT_EQ(id.fixed(), tavdtest::Wide(29, WIDE('x')) + WIDE('\uFFFD')) << "begins no character";
  id.record.text(1511, std::string(26, 'x') + "\x80\x80\x80\x80\x80");
  EXPECT_EQ(id.fixed(), tavdtest::Wide(26, WIDE('x')) + tavdtest::Wide(4, WIDE('\uFFFD'))) << "none begins";
}

TEST(WideProductId, EveryRoomHoldsTheBeginningAndATerminator) {
  WideId id("ABC-*");
  id.record.text(1511, "AB-{D}-{B2}");
  const tavdtest::Wide whole = WIDE("AB-125-300");
  for (int32_t room = 1; room <= 20; ++room) {
    EXPECT_EQ(id.sized(room), whole.substr(0, static_cast<std::size_t>(room) - 1)) << room;
  }
}

TEST(WideProductId, SizedFormEndsAtTwoHundredFiftyFiveCharactersAndClearsTheRest) {
  WideId id("ABC-*");
  id.record.text(1511, std::string(300, 'x'));
  Guarded<tavd_wchar> dest(600, kNonsense);
  EXPECT_EQ(
      tavd_build_productId_dsw2(id.database.handle(), dest.data(), 600, id.record.rec(), &kRound, nullptr),
      0);
  EXPECT_EQ(tavdtest::Wide(dest.data()), tavdtest::Wide(255, WIDE('x')));
  for (std::size_t i = 255; i < 600; ++i) ASSERT_EQ(dest[i], 0) << i;
}

TEST(WideProductId, FixedFormTouchesNothingBehindItsThirtyCharacters) {
  WideId id("ABC-*");
  id.record.text(1511, std::string(100, 'x'));
  Guarded<tavd_wchar> dest(256, kNonsense);
  EXPECT_EQ(tavd_build_productId_dsw(id.database.handle(), dest.data(), id.record.rec(), &kRound, nullptr),
            0);
  EXPECT_EQ(tavdtest::Wide(dest.data()), tavdtest::Wide(30, WIDE('x')));
  EXPECT_TRUE(dest.untouched_from(31));
}

}  // namespace
