// Records and host texts as they should not be: cut in the middle, without an end, longer than any field.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "exported/db/guarded.h"
#include "exported/db/service_spy.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/tavd.h"

namespace {

using tavdtest::AtPageEnd;
using tavdtest::Balance;
using tavdtest::Database;
using tavdtest::Record;

std::vector<int16_t> words(const DuctSize& ds) {
  return {ds.shape, ds.b, ds.h};
}

// The first `length` bytes of these words, the rest zero.
std::vector<int16_t> cut(std::vector<int16_t> values, std::size_t length) {
  auto* bytes = reinterpret_cast<unsigned char*>(values.data());
  std::fill(bytes + length, bytes + values.size() * sizeof(int16_t), static_cast<unsigned char>(0));
  return values;
}

AtPageEnd<char> unterminated(const std::string& text) {
  return AtPageEnd<char>(std::vector<char>(text.begin(), text.end()));
}

TEST(HostileRecord, DuctSizeOfAHeaderCutAnywhere) {
  const std::vector<int16_t> header = {20, 0x1234, 0x0567, 1, 2, 3, 4, 5, 6, 7, 8};
  for (std::size_t length = 0; length <= 22; ++length) {
    const auto left = cut(header, length);
    Record record("ASD", "A");
    record.bytes(1650, header.data(), length);
    DuctSize ds = {7, 7, 7};
    EXPECT_EQ(tavdf_load_ductsize(0, record.rec(), &ds), 0) << length;
    const bool round = left[2] == 0;
    EXPECT_EQ(words(ds),
              (std::vector<int16_t>{static_cast<int16_t>(round ? 0 : 1), left[1], round ? left[1] : left[2]}))
        << length;
  }
}

TEST(HostileRecord, DuctSizeOfOlderSourcesCutAnywhere) {
  const std::vector<int16_t> source = {0x0B0A, 0x1234, 3, 4, 5, 6, 7, 8, 9, 10};
  for (std::size_t length = 0; length <= 20; ++length) {
    const auto left = cut(source, length);
    Record header("ASD", "A");
    header.bytes(1649, source.data(), length);
    DuctSize ds = {7, 7, 7};
    EXPECT_EQ(tavdf_load_ductsize(0, header.rec(), &ds), -1) << length;
    EXPECT_EQ(words(ds), (std::vector<int16_t>{0, left[1], left[1]})) << length;
    Record diameters("ASD", "A");
    diameters.bytes(1102, source.data(), length);
    ds = {7, 7, 7};
    EXPECT_EQ(tavdf_load_ductsize(0, diameters.rec(), &ds), -1) << length;
    EXPECT_EQ(words(ds), (std::vector<int16_t>{0, left[0], left[0]})) << length;
  }
}

TEST(HostileRecord, ShapeOfAnyKindAndLengthStaysInItsRoom) {
  const DuctSize ds = {1, 32767, -32768};
  for (const int16_t kind : std::initializer_list<int16_t>{0, 101, 104, 130, 140, 150, 181, 183, -1}) {
    std::vector<int16_t> shape(60, 32767);
    shape[0] = kind;
    for (std::size_t length = 0; length <= 40; ++length) {
      Record record("ASD", "A");
      record.bytes(1110, shape.data(), length);
      for (int16_t maxwords = 0; maxwords <= 12; ++maxwords) {
        AtPageEnd<int16_t> room(std::max<std::size_t>(10, static_cast<std::size_t>(maxwords)));
        const int16_t nsh = tavdf_load_shapedata(0, record.rec(), &ds, room.data(), maxwords);
        ASSERT_LE(nsh, maxwords) << kind << ' ' << length;
        ASSERT_EQ(nsh > 0, length >= 2 && maxwords > 0) << kind << ' ' << length;
      }
    }
  }
}

TEST(HostileRecord, ShapeCheckOfAnyCountStaysInTenWords) {
  const DuctSize ds = {1, 32767, -32768};
  for (const int16_t kind : std::initializer_list<int16_t>{0, 104, 130, 140, 150, 181, 183}) {
    for (const int16_t count : std::initializer_list<int16_t>{-32768, -1, 0, 1, 2, 3, 4, 9, 32767}) {
      for (const int16_t value : std::initializer_list<int16_t>{-32768, -1, 0, 1, 32767}) {
        AtPageEnd<int16_t> shape(10, value);
        shape[0] = kind;
        int16_t nsh = count;
        EXPECT_EQ(tavdf_check_shapedata(shape.data(), &nsh, &ds), 0);
      }
    }
  }
}

TEST(HostileRecord, InstallationTextIsCutAtEveryCapacity) {
  const std::string text = "a duct in a ceiling";
  Record record("ASD", "A");
  record.text(1513, text);
  for (std::size_t capacity = 0; capacity <= text.size() + 2; ++capacity) {
    AtPageEnd<char> room(capacity);
    EXPECT_EQ(tavdf_load_installationdef(0, record.rec(), room.data(), static_cast<int32_t>(capacity)), 0);
    const std::size_t copied = std::min(capacity, text.size());
    EXPECT_EQ(std::string(room.data(), copied), text.substr(0, copied)) << capacity;
    if (capacity > text.size()) {
      EXPECT_EQ(room[text.size()], char{0});
    }
  }
}

TEST(HostileRecord, ProductTextsStayInEveryRoom) {
  const Database database;
  tavdcore_init(1510, "FIN", nullptr);
  Record record("ASD", "A");
  record.text(9500, std::string(5000, 'c'))
      .text(9550, std::string(5000, 'd'))
      .text(8500, std::string(5000, 'l'));
  const int16_t db = database.handle();
  for (const std::size_t room : {1U, 2U, 3U, 39U, 40U, 255U, 256U, 257U, 600U}) {
    const auto length = static_cast<int32_t>(room);
    for (auto* copy : {tavdf_copyproductcode, tavdf_copyproductdesc, tavdf_copyweblink}) {
      AtPageEnd<char> text(room);
      copy(db, record.rec(), text.data(), length);
      EXPECT_EQ(std::string(text.data()), std::string(std::min<std::size_t>(room - 1, 255), 'c')) << room;
    }
    const std::pair<decltype(&tavdf_copyproductcodew), tavd_wchar> wide[] = {
        {tavdf_copyproductcodew, WIDE('c')},
        {tavdf_copyproductdescw, WIDE('d')},
        {tavdf_copyweblinkw, WIDE('l')}};
    for (const auto& [copy, letter] : wide) {
      AtPageEnd<tavd_wchar> text(room, 0x5A5A);
      copy(db, record.rec(), text.data(), length);
      EXPECT_EQ(tavdtest::Wide(text.data()), tavdtest::Wide(room - 1, letter)) << room;
    }
  }
  tavdcore_init(0, nullptr, nullptr);
}

TEST(HostileRecord, NamedFamilyCutAnywhereHasItsWholeItemsOnly) {
  const Database database;
  const int16_t db = database.handle();
  for (const char* id : {"A", "B", "C"}) Record("ASD", id).save(db);
  const std::string names =
      "A" + std::string(29, ' ') + "B" + std::string(29, '\0') + "C" + std::string(29, ' ');
  Record main("ASD", "MAIN");
  main.words(1150, {2});
  for (std::size_t length = 0; length <= names.size(); length += length % 30 == 28 ? 1 : 7) {
    main.text(1604, names.substr(0, length));
    main.save(db);
    const Balance balance;
    FamilyList list;
    tavfm_init(&list);
    EXPECT_EQ(tavfm_read(&list, db, "ASD", "MAIN"), static_cast<int32_t>(length / 30)) << length;
    tavfm_release(&list);
  }
}

TEST(HostileRecord, NamesThatAreNoIdsFindNothing) {
  const Database database;
  const int16_t db = database.handle();
  Record("ASD", "A").save(db);
  std::string names(std::size_t{30} * 40, '\0');
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = static_cast<char>(i * 37 + i / 30);
  Record("ASD", "MAIN").words(1150, {2}).text(1604, names + std::string(30, '\0')).save(db);
  const Balance balance;
  FamilyListW list;
  tavfm_initw(&list);
  EXPECT_EQ(tavfm_readw(&list, db, "ASD", "MAIN"), 0);
  tavfm_releasew(&list);
}

TEST(HostileRecord, LargestNamedFamilyIsReadWhole) {
  const Database database;
  const int16_t db = database.handle();
  Record("ASD", "A").save(db);
  std::string names;
  for (int i = 0; i < 1092; ++i) names += "A" + std::string(29, ' ');  // all that 16 bits of length hold
  Record("ASD", "MAIN").words(1150, {2}).text(1604, names + "A      ").save(db);
  const Balance balance;
  FamilyList list;
  tavfm_init(&list);
  EXPECT_EQ(tavfm_read(&list, db, "ASD", "MAIN"), 1092);
  tavfm_release(&list);
}

TEST(HostileRecord, SizingModeOfOneByteCountsAsItsLowByte) {
  const Database database;
  const int16_t db = database.handle();
  const unsigned char mode = 10;
  Record("ASD", "AB-*").bytes(1150, &mode, 1).save(db);
  Record("ASD", "AB-1").bytes(1150, nullptr, 0).save(db);
  FamilyList list;
  tavfm_init(&list);
  EXPECT_EQ(tavfm_read(&list, db, "ASD", "AB-*"), 1);
  EXPECT_EQ(list.sizingmode, 10);
  tavfm_release(&list);
  IdSet set;
  tavdidset_init(&set);
  EXPECT_EQ(tavdidset_read(&set, db, "ASD", "AB-1"), 0);
  EXPECT_STREQ(set.mainId, "AB-*");
  EXPECT_EQ(set.subs.count, 0);
  tavdidset_release(&set);
}

TEST(HostileHost, IdsNeedNoTerminatorAnywhere) {
  const Database database;
  const Database destination;
  const int16_t db = database.handle();
  const std::string id = "AB-" + std::string(27, '9');
  Record("ASD", id.c_str()).words(1150, {10}).save(db);
  AtPageEnd<char> class_id = unterminated("ASD");
  AtPageEnd<char> object_id = unterminated(id);
  const Balance balance;

  FamilyList list;
  tavfm_init(&list);
  EXPECT_EQ(tavfm_read(&list, db, class_id.data(), object_id.data()), 1);
  EXPECT_EQ(tavfm_is_member(&list, object_id.data()), -1);
  tavfm_release(&list);
  FamilyListW listw;
  tavfm_initw(&listw);
  EXPECT_EQ(tavfm_readw(&listw, db, class_id.data(), object_id.data()), 1);
  EXPECT_EQ(tavfm_is_memberw(&listw, object_id.data()), -1);
  tavfm_releasew(&listw);

  IdSet set;
  tavdidset_init(&set);
  EXPECT_EQ(tavdidset_read(&set, db, class_id.data(), object_id.data()), 0);
  EXPECT_EQ(tavdidset_adjust(&set, db, object_id.data()), 0);
  EXPECT_NE(set.curRec, nullptr);
  tavdidset_release(&set);

  EXPECT_EQ(tavdf_copy_recs(db, destination.handle(), class_id.data(), object_id.data()), 0);
  EXPECT_EQ(tavdf_delete_recs(destination.handle(), class_id.data(), object_id.data()), 0);
}

TEST(HostileHost, TextsOfTheSettingsAreReadNoFurtherThanTheyAreKept) {
  AtPageEnd<char> market = unterminated(std::string(39, 'm'));
  tavdcore_set_market_area(market.data());
  EXPECT_EQ(std::string(tavdcore_marketArea()), std::string(39, 'M'));
  AtPageEnd<char> path = unterminated(std::string(299, 'p'));
  tavdcore_init(0, market.data(), path.data());
  EXPECT_EQ(std::string(tavdcore_vlkFilename()), std::string(299, 'p'));
  AtPageEnd<tavd_wchar> wide(299, WIDE('w'));
  tavdcore_initw(0, market.data(), wide.data());
  EXPECT_EQ(tavdtest::Wide(tavdcore_vlkFilenamew()), tavdtest::Wide(299, WIDE('w')));
  EXPECT_EQ(std::string(tavdcore_marketArea()), std::string(39, 'M'));
  tavdcore_init(0, nullptr, nullptr);
}

TEST(HostileHost, IndicesOutsideGiveZeroedMembers) {
  FamilyList list;
  tavfm_init(&list);
  for (const int32_t index :
       {0, 1, -1, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    AtPageEnd<unsigned char> room(sizeof(FamilyMember));
    EXPECT_EQ(tavfm_get(&list, index, reinterpret_cast<FamilyMember*>(room.data())), -1) << index;
    EXPECT_TRUE(
        std::all_of(room.data(), room.data() + room.size(), [](unsigned char byte) { return byte == 0; }));
  }
  tavfm_release(&list);
}

TEST(HostileHost, DatabaseHandlesThatAreNoneFindNothing) {
  const Record record("ASD", "A");
  for (const int16_t db : std::initializer_list<int16_t>{-1, 0, 32767, -32768}) {
    const Balance balance;
    FamilyList list;
    tavfm_init(&list);
    EXPECT_EQ(tavfm_read(&list, db, "ASD", "A"), 0) << db;
    EXPECT_EQ(tavfm_add(&list, db, record.rec()), 0) << "the record needs no database";
    tavfm_release(&list);
    EXPECT_EQ(tavdf_copy_recs(db, db, "ASD", "A"), -1) << db;
    EXPECT_EQ(tavdf_delete_recs(db, "ASD", "A"), -1) << db;
    IdSet set;
    tavdidset_init(&set);
    EXPECT_EQ(tavdidset_read(&set, db, "ASD", "A-1"), 0) << db;
    EXPECT_EQ(set.subs.count, 0);
    tavdidset_release(&set);
    char id[31];
    EXPECT_EQ(tavd_build_productId_ds(db, id, record.rec(), nullptr, nullptr), 0);
    EXPECT_STREQ(id, "A");
  }
}

}  // namespace
