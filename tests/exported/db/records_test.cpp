// Opening databases, and what a record tells about its size, shape and installation.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "exported/db/guarded.h"
#include "exported/db/service_spy.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace {

using tavdtest::Balance;
using tavdtest::Guarded;
using tavdtest::Record;
using testing::ElementsAre;

std::vector<int16_t> words(const DuctSize& ds) {
  return {ds.shape, ds.b, ds.h};
}

std::string missing_path() {
  return (std::filesystem::temp_directory_path() / ("tavd-db-missing-" + std::to_string(getpid()))).string();
}

tavdtest::Wide widen(const std::string& ascii) {
  return {ascii.begin(), ascii.end()};
}

TEST(OpenDatabase, MissingFileIsRefusedInModeZeroAndNeverReachesTheService) {
  tavdtest::clear_calls();
  EXPECT_EQ(tavdf_open_database(missing_path().c_str(), 0), -1);
  EXPECT_EQ(tavdf_open_databasew(widen(missing_path()).c_str(), 0), -1);
  EXPECT_THAT(tavdtest::calls(), testing::IsEmpty());
}

TEST(OpenDatabase, MissingFileReachesTheServiceInAnotherModeWithTheNarrowVlkPath) {
  tavdcore_init(0, "FIN", "service.vlk");
  tavdtest::clear_calls();
  const int16_t db = tavdf_open_database(missing_path().c_str(), 1);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("open service.vlk 1"));
  EXPECT_GE(db, 0);
  EXPECT_TRUE(std::filesystem::exists(missing_path()));
  EXPECT_EQ(tavdsrv_closedatabase(db), 0);
  std::filesystem::remove(missing_path());
}

TEST(OpenDatabase, WideFormOfAMissingFileReachesTheServiceInAnotherModeToo) {
  tavdcore_initw(0, "FIN", WIDE("service.vlk"));
  tavdtest::clear_calls();
  const int16_t db = tavdf_open_databasew(widen(missing_path()).c_str(), 1);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("openw service.vlk 1"));
  EXPECT_GE(db, 0);
  EXPECT_TRUE(std::filesystem::exists(missing_path()));
  EXPECT_EQ(tavdsrv_closedatabase(db), 0);
  std::filesystem::remove(missing_path());
  tavdcore_init(0, nullptr, nullptr);
}

TEST(OpenDatabase, WideFormPassesOnTheWideVlkPath) {
  const tavdtest::Database database;
  tavdcore_initw(0, "FIN", WIDE("wide.vlk"));
  tavdtest::clear_calls();
  const int16_t db = tavdf_open_databasew(widen(database.path()).c_str(), 0);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("openw wide.vlk 0"));
  EXPECT_GE(db, 0);
  EXPECT_EQ(tavdsrv_closedatabase(db), 0);
  tavdcore_init(0, nullptr, nullptr);
}

TEST(OpenDatabase, NullPathIsRefused) {
  EXPECT_EQ(tavdf_open_database(nullptr, 1), -1);
  EXPECT_EQ(tavdf_open_databasew(nullptr, 1), -1);
}

TEST(LoadDuctSize, HeaderWithoutHeightIsRound) {
  Record record("ASD", "A");
  record.header(20, 160, 0, 1, 2, 3, 4).words(1102, {999});
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), 0);
  EXPECT_THAT(words(ds), ElementsAre(0, 160, 160));
}

TEST(LoadDuctSize, HeaderWithHeightIsRectangular) {
  Record record("ASD", "A");
  record.header(20, 400, 200, 1, 2, 3, 4);
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), 0);
  EXPECT_THAT(words(ds), ElementsAre(1, 400, 200));
}

TEST(LoadDuctSize, OlderHeaderGivesARoundSizeAndMinusOne) {
  Record record("ASD", "A");
  record.words(1649, {20, 125, 80, 0, 0, 0, 0, 0, 0, 0}).words(1102, {999});
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), -1);
  EXPECT_THAT(words(ds), ElementsAre(0, 125, 125));
}

TEST(LoadDuctSize, FirstOfTheDiametersIsTheLastSource) {
  Record record("ASD", "A");
  record.words(1102, {315, 400, 500});
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), -1);
  EXPECT_THAT(words(ds), ElementsAre(0, 315, 315));
}

TEST(LoadDuctSize, NoSourceGivesZero) {
  const Record record("ASD", "A");
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), -1);
  EXPECT_THAT(words(ds), ElementsAre(0, 0, 0));
}

TEST(LoadDuctSize, AsksTheThreeSourcesInOrderWithoutCount) {
  const Record record("ASD", "A");
  DuctSize ds = {7, 7, 7};
  tavdtest::clear_calls();
  tavdf_load_ductsize(0, record.rec(), &ds);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1650 22", "att 1649 20", "att 1102 160"));
}

TEST(LoadDuctSize, AttributeThatEndsEarlyCountsAsZeroBehindItsEnd) {
  Record record("ASD", "A");
  record.words(1650, {20, 250});
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), 0);
  EXPECT_THAT(words(ds), ElementsAre(0, 250, 250));
}

TEST(LoadDuctSize, LongerDiameterListStaysInsideTheLibrary) {
  Record record("ASD", "A");
  record.rows(1102, std::vector<int16_t>(3000, 80));
  Guarded<int16_t> ds(3);
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), reinterpret_cast<DuctSize*>(ds.data())), -1);
  EXPECT_EQ(ds[1], 80);
  EXPECT_TRUE(ds.intact());
}

TEST(LoadDuctSize, NullArguments) {
  const Record record("ASD", "A");
  DuctSize ds = {7, 7, 7};
  EXPECT_EQ(tavdf_load_ductsize(0, nullptr, &ds), -1);
  EXPECT_THAT(words(ds), ElementsAre(0, 0, 0));
  EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), nullptr), -1);
}

TEST(LoadShapeData, RecordWithoutShapeLeavesTheBufferUntouched) {
  const Record record("ASD", "A");
  Guarded<int16_t> shape(10);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 10), 0);
  EXPECT_TRUE(shape.untouched_from(0));
}

TEST(LoadShapeData, OrdinaryShapeIsReadAsItStands) {
  Record record("ASD", "A");
  record.words(1110, {101, 10, 20, 30});
  Guarded<int16_t> shape(10);
  tavdtest::clear_calls();
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 10), 4);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1110 20 counted"));
  EXPECT_THAT(std::vector<int16_t>(shape.data(), shape.data() + 4), ElementsAre(101, 10, 20, 30));
  EXPECT_TRUE(shape.untouched_from(4));
}

TEST(LoadShapeData, LongShapeIsCutToTheToldWords) {
  Record record("ASD", "A");
  record.words(1110, {101, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  Guarded<int16_t> shape(10);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 4), 4);
  EXPECT_TRUE(shape.untouched_from(4));
}

TEST(LoadShapeData, OldFormWithSmallRoomIsRepairedWholeAndCut) {
  Record record("ASD", "A");
  record.words(1110, {104, 101, 102, 103, 104, 105, 106, 107});
  Guarded<int16_t> shape(10);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 4), 4);
  EXPECT_THAT(std::vector<int16_t>(shape.data(), shape.data() + 6), ElementsAre(118, 103, 101, 50, 101, 102));
  // Words 6 to 9 come from those that had no room: the nonsense of the buffer.
  EXPECT_THAT(std::vector<int16_t>(shape.data() + 6, shape.data() + 10), ElementsAre(0x5A, 0x5A, 0x5A, 0x5A));
  EXPECT_TRUE(shape.intact());
}

TEST(LoadShapeData, OldFormBecomesTenWords) {
  Record record("ASD", "A");
  record.words(1110, {104, 101, 102, 103, 104, 105, 106, 107});
  Guarded<int16_t> shape(12);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 12), 10);
  EXPECT_THAT(std::vector<int16_t>(shape.data(), shape.data() + 10),
              ElementsAre(118, 103, 101, 50, 101, 102, 104, 105, 106, 107));
  EXPECT_TRUE(shape.untouched_from(10));
}

TEST(LoadShapeData, RepairOfAShortShapeIsCutToOneWord) {
  Record record("ASD", "A");
  record.words(1110, {130});
  Guarded<int16_t> shape(10);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 1), 1);
  EXPECT_EQ(shape[0], 130);
  EXPECT_TRUE(shape.untouched_from(3));
}

TEST(LoadShapeData, NoWordsReadNothingAndTheWordsThatStandThereAreRepaired) {
  Record record("ASD", "A");
  record.words(1110, {101, 1, 2, 3});
  for (const int16_t maxwords : std::initializer_list<int16_t>{0, -1, -32768}) {
    Guarded<int16_t> old_form(10);
    old_form[0] = 104;
    old_form[1] = 41;
    EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, old_form.data(), maxwords), 0) << maxwords;
    EXPECT_THAT(std::vector<int16_t>(old_form.data(), old_form.data() + 5),
                ElementsAre(118, 0x5A, 41, 20, 41))
        << maxwords;
    EXPECT_TRUE(old_form.intact()) << maxwords;
    Guarded<int16_t> margins(10);
    margins[0] = 183;
    const DuctSize ds = {1, 200, 100};
    EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), &ds, margins.data(), maxwords), 0) << maxwords;
    EXPECT_THAT(std::vector<int16_t>(margins.data(), margins.data() + 3),
                ElementsAre(182, 0x5A, 200 + 2 * 0x5A))
        << maxwords;
    EXPECT_TRUE(margins.untouched_from(3)) << maxwords;
  }
}

TEST(LoadShapeData, NoWordsOfARecordWithoutShapeRepairNothing) {
  const Record record("ASD", "A");
  Guarded<int16_t> shape(10, 104);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 0), 0);
  EXPECT_TRUE(shape.untouched_from(0));
}

TEST(LoadShapeData, NoWordsStillAskForTheNumberOfThoseStored) {
  Record record("ASD", "A");
  record.words(1110, {101, 1, 2, 3});
  Guarded<int16_t> shape(10);
  tavdtest::clear_calls();
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 0), 0);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1110 0 counted"));
}

TEST(LoadShapeData, RoomBeyondSixteenBitsOfBytesIsHeldBelowThem) {
  Record record("ASD", "A");
  record.rows(1110, std::vector<int16_t>(16383, 101));
  Guarded<int16_t> shape(32767);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, shape.data(), 32767), 16383);
  EXPECT_EQ(shape[16382], 101);
  EXPECT_TRUE(shape.untouched_from(16383));
}

TEST(LoadShapeData, MarginsAreResolvedAgainstTheDuct) {
  Record record("ASD", "A");
  record.words(1110, {181, 300, 10, 20});
  Guarded<int16_t> shape(10);
  const DuctSize ds = {1, 200, 100};
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), &ds, shape.data(), 10), 4);
  EXPECT_THAT(std::vector<int16_t>(shape.data(), shape.data() + 4), ElementsAre(180, 300, 220, 140));
}

TEST(LoadShapeData, NullArguments) {
  const Record record("ASD", "A");
  int16_t shape[10] = {};
  EXPECT_EQ(tavdf_load_shapedata(0, nullptr, nullptr, shape, 10), 0);
  EXPECT_EQ(tavdf_load_shapedata(0, record.rec(), nullptr, nullptr, 10), 0);
}

// A shape before and after the check, with the word count.
struct ShapeCase {
  std::vector<int16_t> before;
  int16_t count;
  std::vector<int16_t> after;
  int16_t count_after;
};

void expect_checked(const ShapeCase& shape, const DuctSize* ds) {
  Guarded<int16_t> words(10);
  std::copy(shape.before.begin(), shape.before.end(), words.data());
  int16_t nsh = shape.count;
  EXPECT_EQ(tavdf_check_shapedata(words.data(), &nsh, ds), 0);
  EXPECT_EQ(nsh, shape.count_after);
  EXPECT_EQ(std::vector<int16_t>(words.data(), words.data() + shape.after.size()), shape.after);
  EXPECT_TRUE(words.untouched_from(std::max(shape.after.size(), shape.before.size())));
}

TEST(CheckShapeData, Kind130WithOneWordGetsBothDimensions) {
  expect_checked({{130}, 1, {130, 50, 500}, 3}, nullptr);
}

TEST(CheckShapeData, Kind130WithTwoWordsGetsTheLength) {
  expect_checked({{130, 70}, 2, {130, 70, 500}, 3}, nullptr);
}

TEST(CheckShapeData, Kind130WithLengthZeroKeepsTheOtherDimension) {
  expect_checked({{130, 70, 0}, 3, {130, 70, 500}, 3}, nullptr);
}

TEST(CheckShapeData, Kind130WithMoreWordsAndBadLengthEndsWithThree) {
  expect_checked({{130, 70, -5, 4, 5}, 5, {130, 70, 500, 4, 5}, 3}, nullptr);
}

TEST(CheckShapeData, Kind130WithLengthIsUnchanged) {
  expect_checked({{130, 70, 10}, 3, {130, 70, 10}, 3}, nullptr);
  expect_checked({{130, 0, 1, 9}, 4, {130, 0, 1, 9}, 4}, nullptr);
}

TEST(CheckShapeData, Kinds140And150GetTheirDimension) {
  for (const int16_t kind : std::initializer_list<int16_t>{140, 150}) {
    expect_checked({{kind}, 1, {kind, 200}, 2}, nullptr);
    expect_checked({{kind, 0}, 2, {kind, 200}, 2}, nullptr);
    expect_checked({{kind, -3, 8}, 3, {kind, 200, 8}, 2}, nullptr);
    expect_checked({{kind, 1, 8}, 3, {kind, 1, 8}, 3}, nullptr);
  }
}

TEST(CheckShapeData, Kind181NeedsTheDuct) {
  expect_checked({{181, 5, 10, 20}, 4, {181, 5, 10, 20}, 4}, nullptr);
  const DuctSize ds = {1, 200, 100};
  expect_checked({{181, 5, 10, 20}, 4, {180, 5, 220, 140}, 4}, &ds);
}

TEST(CheckShapeData, Kind183NeedsTheDuct) {
  expect_checked({{183, 5, 10, 20}, 4, {183, 5, 10, 20}, 4}, nullptr);
  const DuctSize ds = {0, 200, 200};
  expect_checked({{183, 5, 10, 20}, 4, {182, 5, 220, 20}, 4}, &ds);
}

TEST(CheckShapeData, SumsWrapAtSixteenBits) {
  const DuctSize ds = {1, 32767, 1};
  expect_checked({{181, 0, 1, -16385}, 4, {180, 0, -32767, 32767}, 4}, &ds);  // 32769, -32769
}

TEST(CheckShapeData, HalfOfTheOldFormsWidthIsTruncatedTowardZero) {
  expect_checked({{104, 7, 2, 3, 4, 5, 6, 9}, 8, {118, 3, 7, 3, 7, 2, 4, 5, 6, 9}, 10}, nullptr);
  expect_checked({{104, -7, 2, 3, 4, 5, 6, 9}, 8, {118, 3, -7, -3, -7, 2, 4, 5, 6, 9}, 10}, nullptr);
}

TEST(CheckShapeData, OtherKindsPassUntouched) {
  const DuctSize ds = {1, 200, 100};
  for (const int16_t kind :
       std::initializer_list<int16_t>{0, 101, 103, 105, 118, 129, 131, 141, 151, 180, 182, -104}) {
    expect_checked({{kind, 0, 0, 0}, 4, {kind, 0, 0, 0}, 4}, &ds);
  }
}

TEST(CheckShapeData, NullArguments) {
  int16_t shape[10] = {104};
  int16_t nsh = 1;
  EXPECT_EQ(tavdf_check_shapedata(nullptr, &nsh, nullptr), 0);
  EXPECT_EQ(nsh, 1);
  EXPECT_EQ(tavdf_check_shapedata(shape, nullptr, nullptr), 0);
  EXPECT_EQ(shape[0], 104);
}

TEST(LoadInstallationDef, TextIsReadWithATerminator) {
  Record record("ASD", "A");
  record.text(1513, "duct");
  Guarded<char> text(80);
  tavdtest::clear_calls();
  EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), text.data(), 80), 0);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1513 80"));
  EXPECT_STREQ(text.data(), "duct");
  EXPECT_TRUE(text.untouched_from(5));
}

TEST(LoadInstallationDef, AbsentTextEmptiesTheBuffer) {
  const Record record("ASD", "A");
  Guarded<char> text(80);
  EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), text.data(), 80), -1);
  EXPECT_EQ(text[0], '\0');
  EXPECT_TRUE(text.untouched_from(1));
}

TEST(LoadInstallationDef, SmallRoomIsNotOverrun) {
  Record record("ASD", "A");
  record.text(1513, "duct");
  const Record bare("ASD", "B");
  for (const int32_t capacity : {0, 1, 2}) {
    const Balance balance;
    const auto room = static_cast<std::size_t>(capacity);
    Guarded<char> text(room);
    EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), text.data(), capacity), 0);
    EXPECT_EQ(std::string(text.data(), room), std::string("duct").substr(0, room));
    EXPECT_TRUE(text.intact());
    Guarded<char> empty(room);
    EXPECT_EQ(tavdf_load_installationdef(0, bare.rec(), empty.data(), capacity), -1);
    EXPECT_TRUE(empty.untouched_from(std::min<std::size_t>(room, 1)));
  }
}

TEST(LoadInstallationDef, NegativeRoomWritesNothing) {
  Record record("ASD", "A");
  record.text(1513, "duct");
  for (const int32_t capacity : {-1, -32768, -2147483647}) {
    Guarded<char> text(0);
    EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), text.data(), capacity), 0);
    EXPECT_TRUE(text.intact());
  }
}

TEST(LoadInstallationDef, RoomBeyondSixteenBitsIsHeld) {
  Record record("ASD", "A");
  record.text(1513, "duct");
  Guarded<char> text(70000);
  EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), text.data(), 70000), 0);
  EXPECT_STREQ(text.data(), "duct");
  EXPECT_TRUE(text.untouched_from(5));
}

TEST(LoadInstallationDef, NullArguments) {
  Record record("ASD", "A");
  record.text(1513, "duct");
  const Balance balance;
  EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), nullptr, 0), -1);
  char text[2] = {'x', 'x'};
  EXPECT_EQ(tavdf_load_installationdef(0, nullptr, text, 2), -1);
  EXPECT_EQ(text[0], '\0');
}

}  // namespace
