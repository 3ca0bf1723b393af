// Family lists: what is gathered, and what each member tells. Narrow and wide lists run through the same
// tests.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "exported/db/service_spy.h"
#include "support/database.h"
#include "tavd/tavdcore.h"
#include "tavd/tavfm.h"

namespace {

using tavdtest::Balance;
using tavdtest::Record;
using testing::ElementsAre;
using testing::IsEmpty;

struct NarrowForm {
  using List = FamilyList;
  using Member = FamilyMember;
  static constexpr auto init = tavfm_init;
  static constexpr auto reset = tavfm_reset;
  static constexpr auto release = tavfm_release;
  static constexpr auto read = tavfm_read;
  static constexpr auto add = tavfm_add;
  static constexpr auto get = tavfm_get;
  static constexpr bool kShowsDescription = false;
};

struct WideForm {
  using List = FamilyListW;
  using Member = FamilyMemberW;
  static constexpr auto init = tavfm_initw;
  static constexpr auto reset = tavfm_resetw;
  static constexpr auto release = tavfm_releasew;
  static constexpr auto read = tavfm_readw;
  static constexpr auto add = tavfm_addw;
  static constexpr auto get = tavfm_getw;
  static constexpr bool kShowsDescription = true;
};

std::string ascii(const char* text) {
  return text;
}

std::string ascii(const tavd_wchar* text) {
  std::string narrow;
  for (; *text != 0; ++text) narrow += static_cast<char>(*text);
  return narrow;
}

std::string raw(const std::string& id) {
  return id + std::string(30 - id.size(), ' ');
}

template <typename Form>
class Family : public testing::Test {
 protected:
  using List = typename Form::List;
  using Member = typename Form::Member;

  void SetUp() override {
    tavdcore_init(1510, "FIN", nullptr);
    std::memset(&list_, 0x5A, sizeof list_);
    Form::init(&list_);
  }
  void TearDown() override {
    Form::release(&list_);
    tavdcore_init(0, nullptr, nullptr);
  }

  void save(const char* id, std::int16_t sizingmode) {
    Record("ASD", id).words(1150, {sizingmode}).save(db());
  }
  void save(const char* id) { Record("ASD", id).text(9500, id).save(db()); }

  int32_t read(const char* id, const char* class_id = "ASD") {
    const Balance balance;
    return Form::read(&list_, db(), class_id, id);
  }

  Member member(int32_t index) {
    Member fmb;
    std::memset(&fmb, 0x5A, sizeof fmb);
    EXPECT_EQ(Form::get(&list_, index, &fmb), 0);
    return fmb;
  }

  std::vector<std::string> ids() {
    std::vector<std::string> all;
    for (int32_t i = 0; i < list_.members.count; ++i) {
      const std::string id(member(i).objId, sizeof Member::objId);
      all.push_back(id.substr(0, id.find_last_not_of(' ') + 1));
    }
    return all;
  }

  std::int16_t db() const { return database_.handle(); }

  template <typename T>
  static bool is_zero(const T& value) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&value);
    return std::all_of(bytes, bytes + sizeof value, [](unsigned char byte) { return byte == 0; });
  }

  tavdtest::Database database_;
  List list_;
};

using Forms = testing::Types<NarrowForm, WideForm>;
TYPED_TEST_SUITE(Family, Forms, );

TYPED_TEST(Family, SingleProductIsItsOwnOnlyMember) {
  Record("ASD", "ABC-100").words(1150, {0}).text(9500, "Code 100").save(this->db());
  EXPECT_EQ(this->read("ABC-100"), 1);
  EXPECT_EQ(ascii(this->list_.pcode), "Code 100");
  EXPECT_EQ(ascii(this->member(0).pcode), "Code 100");
  EXPECT_THAT(this->ids(), ElementsAre("ABC-100"));
}

TYPED_TEST(Family, AbsentSizingModeCountsAsSingle) {
  this->save("ABC-100");
  EXPECT_EQ(this->read("ABC-100"), 1);
  EXPECT_EQ(this->list_.sizingmode, 0);
}

TYPED_TEST(Family, SizingModesAboveTwoAreSingleAndBelowZeroEmpty) {
  for (const std::int16_t mode : std::initializer_list<std::int16_t>{3, 10, 11, 32767}) {
    this->save("ABC-*", mode);
    EXPECT_EQ(this->read("ABC-*"), 1) << mode;
    EXPECT_EQ(this->list_.sizingmode, mode);
  }
  for (const std::int16_t mode : std::initializer_list<std::int16_t>{-1, -32768}) {
    this->save("ABC-*", mode);
    EXPECT_EQ(this->read("ABC-*"), 0) << mode;
    EXPECT_EQ(this->list_.sizingmode, mode);
  }
}

TYPED_TEST(Family, MissingMainRecordGivesAnEmptyListWithoutIds) {
  this->save("ABC-100");
  EXPECT_EQ(this->read("ABC-100"), 1);
  EXPECT_EQ(this->read("ABC-200"), 0);
  EXPECT_EQ(this->read("ABC-100", "AOD"), 0);
  EXPECT_EQ(this->list_.members.count, 0);
  EXPECT_TRUE(this->is_zero(this->list_.classId));
  EXPECT_TRUE(this->is_zero(this->list_.objId));
}

TYPED_TEST(Family, PatternGathersItsNeighboursWithoutTheMainRecord) {
  this->save("ABC-*-10", 1);
  for (const char* id : {"ABB-125-10", "ABC-100-10", "ABC-125-10", "ABC-125-11", "ABC-160-100", "ABD-125-10"})
    this->save(id);
  EXPECT_EQ(this->read("ABC-*-10"), 3);
  EXPECT_THAT(this->ids(), ElementsAre("ABC-100-10", "ABC-125-10", "ABC-160-100"));
}

TYPED_TEST(Family, PatternWithoutStarIsEmpty) {
  this->save("ABC-10", 1);
  for (const char* id : {"ABC-10-1", "ABC-100", "ABC-11"}) this->save(id);
  EXPECT_EQ(this->read("ABC-10"), 0);
}

TYPED_TEST(Family, PatternStopsAtTheEndOfItsClass) {
  this->save("ABC-*", 1);
  this->save("ABC-100");
  Record("ASE", "ABC-200").save(this->db());
  Record("AAA", "ABC-050").save(this->db());
  EXPECT_EQ(this->read("ABC-*"), 1);
  EXPECT_THAT(this->ids(), ElementsAre("ABC-100"));
}

TYPED_TEST(Family, PatternRunsToTheEndOfTheDatabase) {
  this->save("ABC-*", 1);
  this->save("ABC-100");
  EXPECT_EQ(this->read("ABC-*"), 1);
}

TYPED_TEST(Family, PatternOfAStarAloneTakesTheWholeClass) {
  this->save("*", 1);
  for (const char* id : {"100", "ABC", "XYZ-1"}) this->save(id);
  EXPECT_EQ(this->read("*"), 3);
}

TYPED_TEST(Family, HeaderTellsLengthAndPlaceOfTheStar) {
  this->save("ABC-*-10", 1);
  this->read("ABC-*-10                        ");
  EXPECT_EQ(this->list_.idLen, 8);
  EXPECT_EQ(this->list_.wildPos, 4);
  EXPECT_EQ(std::string(this->list_.classId, 3), "ASD");
  EXPECT_EQ(std::string(this->list_.objId, 30), raw("ABC-*-10"));
  this->save("ABC-10", 0);
  this->read("ABC-10");
  EXPECT_EQ(this->list_.idLen, 6);
  EXPECT_EQ(this->list_.wildPos, 6);
}

TYPED_TEST(Family, IdsNeedNoTerminator) {
  const std::string id = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
  this->save(id.c_str());
  const char class_id[] = {'A', 'S', 'D', 'X'};
  EXPECT_EQ(this->read((id + "567").c_str(), class_id), 1);
  EXPECT_EQ(std::string(this->list_.objId, 30), id);
  EXPECT_EQ(this->list_.idLen, 30);
  EXPECT_EQ(std::string(this->member(0).objId, 30), id);
}

TYPED_TEST(Family, ListCanBeReadAgainByItsOwnIds) {
  this->save("ABC-100");
  ASSERT_EQ(this->read("ABC-100"), 1);
  EXPECT_EQ(this->read(this->list_.objId, this->list_.classId), 1);
  EXPECT_EQ(std::string(this->list_.objId, 7), "ABC-100");
}

TYPED_TEST(Family, NamedMembersComeInTheirOrderAndUnknownOnesAreDropped) {
  Record("ASD", "MAIN")
      .words(1150, {2})
      .text(1604, raw("C") + raw("MISSING") + raw("A") + raw("MAIN"))
      .save(this->db());
  for (const char* id : {"A", "B", "C"}) this->save(id);
  EXPECT_EQ(this->read("MAIN"), 3);
  EXPECT_THAT(this->ids(), ElementsAre("C", "A", "MAIN"));
}

TYPED_TEST(Family, NamedMembersAreReadAsOneBlock) {
  Record("ASD", "MAIN").words(1150, {2}).text(1604, raw("A")).save(this->db());
  this->save("A");
  tavdtest::clear_calls();
  this->read("MAIN");
  EXPECT_THAT(tavdtest::calls(), testing::Contains("att 1604 0 counted block").Times(1));
  EXPECT_THAT(tavdtest::calls(), testing::Contains("releaseatt").Times(1));
}

TYPED_TEST(Family, PartOfAnItemIsNoMember) {
  Record("ASD", "MAIN").words(1150, {2}).text(1604, raw("A") + "B").save(this->db());
  this->save("A");
  this->save("B");
  EXPECT_EQ(this->read("MAIN"), 1);
}

TYPED_TEST(Family, NamedFamilyWithoutNamesIsEmpty) {
  this->save("MAIN", 2);
  EXPECT_EQ(this->read("MAIN"), 0);
  Record("ASD", "MAIN").words(1150, {2}).text(1604, "").save(this->db());
  EXPECT_EQ(this->read("MAIN"), 0);
}

TYPED_TEST(Family, MemberTellsTheWholeRecord) {
  Record("ASD", "A")
      .header(20, 400, 200, 1, 2, 3, 4)
      .words(1110, {104, 1, 2, 3})
      .text(9500, "code")
      .text(9550, "described")
      .text(1513, "installed")
      .save(this->db());
  ASSERT_EQ(this->read("A"), 1);
  const auto fmb = this->member(0);
  EXPECT_EQ(std::string(fmb.objId, 30), raw("A"));
  EXPECT_EQ(ascii(fmb.pcode), "code");
  EXPECT_EQ(ascii(fmb.descr), TypeParam::kShowsDescription ? "described" : "code");
  EXPECT_STREQ(fmb.installationdef, "installed");
  EXPECT_EQ(fmb.ds.shape, 1);
  EXPECT_EQ(fmb.ds.b, 400);
  EXPECT_EQ(fmb.ds.h, 200);
  EXPECT_EQ(fmb.nsh, 4);
  EXPECT_THAT(std::vector<std::int16_t>(fmb.shapedata, fmb.shapedata + 5), ElementsAre(104, 1, 2, 3, 0))
      << "not repaired";
  EXPECT_EQ(ascii(this->list_.descr), TypeParam::kShowsDescription ? "described" : "code");
  EXPECT_STREQ(this->list_.installationdef, "installed");
}

TYPED_TEST(Family, MemberTakesItsSizeFromTheFirstSource) {
  Record("ASD", "A").words(1649, {20, 125, 9}).words(1102, {999}).save(this->db());
  this->read("A");
  EXPECT_EQ(this->member(0).ds.b, 125);
  EXPECT_EQ(this->member(0).ds.h, 125);
  Record("ASD", "A").words(1102, {315, 400}).save(this->db());
  this->read("A");
  EXPECT_EQ(this->member(0).ds.b, 315);
  Record("ASD", "A").save(this->db());
  this->read("A");
  EXPECT_TRUE(this->is_zero(this->member(0).ds));
}

TYPED_TEST(Family, MemberIsReadInThisOrder) {
  this->save("A");
  Record record("ASD", "A");
  record.text(9500, "code").text(9550, "described");
  tavdtest::clear_calls();
  EXPECT_EQ(TypeParam::add(&this->list_, this->db(), record.rec()), 0);
  std::vector<std::string> expected = {"id", "att 1650 22", "att 1649 20", "att 1102 160",
                                       "att 1110 100 counted"};
  if (TypeParam::kShowsDescription) {
    expected.insert(expected.end(), {"wsz 9500 78 0", "wsz 9550 158 0"});
  } else {
    expected.insert(expected.end(), {"wsz 9500 510 0", "wsz 9500 510 0"});
  }
  expected.emplace_back("att 1513 80");
  EXPECT_EQ(tavdtest::calls(), expected);
}

TYPED_TEST(Family, EmptyInstallationTextIsTheLists) {
  Record("ASD", "MAIN")
      .words(1150, {2})
      .text(1604, raw("A") + raw("B") + raw("C"))
      .text(1513, "of the list")
      .save(this->db());
  Record("ASD", "A").text(1513, "").save(this->db());
  Record("ASD", "B").save(this->db());
  Record("ASD", "C").text(1513, "own").save(this->db());
  ASSERT_EQ(this->read("MAIN"), 3);
  EXPECT_STREQ(this->member(0).installationdef, "of the list");
  EXPECT_STREQ(this->member(1).installationdef, "of the list");
  EXPECT_STREQ(this->member(2).installationdef, "own");
}

TYPED_TEST(Family, LongTextsStayInTheirFields) {
  Record("ASD", "A")
      .text(9500, std::string(200, 'c'))
      .text(9550, std::string(200, 'd'))
      .text(1513, std::string(200, 'i'))
      .words(1150, {0})
      .save(this->db());
  ASSERT_EQ(this->read("A"), 1);
  const auto fmb = this->member(0);
  EXPECT_EQ(ascii(fmb.pcode), std::string(39, 'c'));
  EXPECT_EQ(ascii(fmb.descr), std::string(79, TypeParam::kShowsDescription ? 'd' : 'c'));
  EXPECT_EQ(std::string(fmb.installationdef, 80), std::string(80, 'i'));
  EXPECT_TRUE(this->is_zero(fmb.ds));
  EXPECT_EQ(ascii(this->list_.pcode), std::string(39, 'c'));
  EXPECT_EQ(std::string(this->list_.installationdef, 80), std::string(80, 'i'));
  EXPECT_EQ(this->list_.idLen, 1);
}

TYPED_TEST(Family, LongShapeIsCutToFiftyWords) {
  std::vector<std::int16_t> shape(70);
  for (std::size_t i = 0; i < shape.size(); ++i) shape[i] = static_cast<std::int16_t>(i + 1);
  Record("ASD", "A").rows(1110, shape).save(this->db());
  this->read("A");
  const auto fmb = this->member(0);
  EXPECT_EQ(fmb.nsh, 50);
  EXPECT_EQ(fmb.shapedata[0], 1);
  EXPECT_EQ(fmb.shapedata[49], 50);
}

TYPED_TEST(Family, MemberOutsideTheListIsZero) {
  this->save("A");
  ASSERT_EQ(this->read("A"), 1);
  for (const int32_t index : {-1, 1, 2147483647, -2147483647}) {
    typename TypeParam::Member fmb;
    std::memset(&fmb, 0x5A, sizeof fmb);
    EXPECT_EQ(TypeParam::get(&this->list_, index, &fmb), -1) << index;
    EXPECT_TRUE(this->is_zero(fmb)) << index;
  }
}

TYPED_TEST(Family, ReleasedListHasNoMembersAndTakesNone) {
  this->save("A");
  ASSERT_EQ(this->read("A"), 1);
  TypeParam::release(&this->list_);
  EXPECT_TRUE(this->is_zero(this->list_));
  typename TypeParam::Member fmb;
  std::memset(&fmb, 0x5A, sizeof fmb);
  EXPECT_EQ(TypeParam::get(&this->list_, 0, &fmb), -1);
  EXPECT_TRUE(this->is_zero(fmb));
  const Record record("ASD", "A");
  EXPECT_EQ(TypeParam::add(&this->list_, this->db(), record.rec()), -1);
}

TYPED_TEST(Family, ResetListIsEmptyAndReady) {
  this->save("A");
  ASSERT_EQ(this->read("A"), 1);
  TypeParam::reset(&this->list_);
  EXPECT_EQ(this->list_.members.count, 0);
  EXPECT_EQ(this->list_.members.itemsize, static_cast<int32_t>(sizeof(typename TypeParam::Member)));
  EXPECT_TRUE(this->is_zero(this->list_.objId));
  const Record record("ASD", "B");
  EXPECT_EQ(TypeParam::add(&this->list_, this->db(), record.rec()), 0);
  EXPECT_THAT(this->ids(), ElementsAre("B"));
}

TYPED_TEST(Family, HostMayAddMembersAndReleaseTheirRecords) {
  this->save("A");
  ASSERT_EQ(this->read("A"), 1);
  {
    const Record record("AOD", "OTHER");
    const Balance balance;
    EXPECT_EQ(TypeParam::add(&this->list_, this->db(), record.rec()), 0);
  }
  EXPECT_THAT(this->ids(), ElementsAre("A", "OTHER"));
}

TYPED_TEST(Family, FailedAppendEmptiesTheList) {
  this->list_.members.count = 10'000'000;  // the next item would take more than 32 bits of bytes
  const Record record("ASD", "A");
  EXPECT_EQ(TypeParam::add(&this->list_, this->db(), record.rec()), -2);
  EXPECT_EQ(this->list_.members.count, 0);
  EXPECT_EQ(this->list_.members.data, nullptr);
  EXPECT_EQ(TypeParam::add(&this->list_, this->db(), record.rec()), 0) << "the list stays usable";
}

TYPED_TEST(Family, MarketChangeReachesTheNextReadOnly) {
  Record("ASD", "A").text(9500, "finnish").text(9501, "swedish").save(this->db());
  this->read("A");
  tavdcore_set_market_area("SWE");
  EXPECT_EQ(ascii(this->member(0).pcode), "finnish");
  this->read("A");
  EXPECT_EQ(ascii(this->member(0).pcode), "swedish");
}

TYPED_TEST(Family, NullArguments) {
  this->save("A");
  ASSERT_EQ(this->read("A"), 1);
  TypeParam::init(nullptr);
  TypeParam::reset(nullptr);
  TypeParam::release(nullptr);
  const Record record("ASD", "A");
  EXPECT_EQ(TypeParam::read(nullptr, this->db(), "ASD", "A"), 0);
  EXPECT_EQ(TypeParam::add(nullptr, this->db(), record.rec()), -1);
  EXPECT_EQ(TypeParam::add(&this->list_, this->db(), nullptr), -1);
  EXPECT_EQ(TypeParam::get(&this->list_, 0, nullptr), -1);
  typename TypeParam::Member fmb;
  std::memset(&fmb, 0x5A, sizeof fmb);
  EXPECT_EQ(TypeParam::get(nullptr, 0, &fmb), -1);
  EXPECT_TRUE(this->is_zero(fmb));
  EXPECT_EQ(this->list_.members.count, 1);
  EXPECT_EQ(TypeParam::read(&this->list_, this->db(), "ASD", nullptr), 0);
  EXPECT_EQ(TypeParam::read(&this->list_, this->db(), nullptr, "A"), 0);
  EXPECT_EQ(this->list_.members.count, 0);
}

}  // namespace
