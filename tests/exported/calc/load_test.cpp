#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "support/database.h"
#include "support/products.h"

namespace {

using tavdtest::attenuation_row;
using tavdtest::entry;
using tavdtest::Record;
using tavdtest::sound_row;
using tavdtest::throw_row;

struct Loaded {
  int code = 99;
  FlowData fd;
};

Loaded load(const Record& record) {
  Loaded loaded;
  std::memset(&loaded.fd, 0xA5, sizeof loaded.fd);
  loaded.code = tavca_load_flowdata(1, record.rec(), &loaded.fd);
  return loaded;
}

// The older header: kind, size, flows, pressures in kPa.
void add_older_header(Record& record, std::int16_t kind, std::int16_t b, float qvmin, float qvmax,
                      float dpmin, float dpmax) {
  unsigned char item[20];
  const std::int16_t words[2] = {kind, b};
  const float limits[4] = {qvmin, qvmax, dpmin, dpmax};
  std::memcpy(item, words, sizeof words);
  std::memcpy(item + sizeof words, limits, sizeof limits);
  record.bytes(1649, item, sizeof item);
}

// A duct of 0.1 m2.
void add_header(Record& record, int kind) {
  record.header(static_cast<std::int16_t>(kind), 500, 200, 10.0F, 200.0F, 5.0F, 300.0F);
}

TEST(Load, OfARecordWithoutHeaderKeepsItsIds) {
  Record record("ASD", "PRODUCT-1");
  record.floats(1651, {100.0F, 50.0F});
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, -1);
  EXPECT_EQ(std::memcmp(loaded.fd.szclass, "ASD", 3), 0);
  EXPECT_STREQ(loaded.fd.szobjID, "PRODUCT-1");
  const auto* rest = reinterpret_cast<const unsigned char*>(&loaded.fd) + 40;
  EXPECT_TRUE(std::all_of(rest, rest + sizeof(FlowData) - 40, [](unsigned char byte) { return byte == 0; }));
}

TEST(Load, OfARecordWithoutHeaderButPartOfOneKeepsOnlyItsIds) {
  Record record("ASD", "PRODUCT-1");
  const unsigned char part[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  record.bytes(1650, part, sizeof part);
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, -1);
  EXPECT_EQ(+loaded.fd.kind100, 0);
  EXPECT_EQ(+loaded.fd.nhdd, 0);
}

TEST(Load, OfNothingFailsWithZeros) {
  FlowData fd;
  std::memset(&fd, 0xA5, sizeof fd);
  EXPECT_EQ(tavca_load_flowdata(1, nullptr, &fd), -1);
  EXPECT_EQ(+fd.nhdd, 0);
  EXPECT_EQ(fd.szclass[0], '\0');
  EXPECT_EQ(tavca_load_flowdata(1, nullptr, nullptr), -1);
}

TEST(Load, ReadsTheHeaderOfTotalPressures) {
  Record record("ASD", "PRODUCT-1");
  add_header(record, 110);
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.kind, 10);
  EXPECT_EQ(+loaded.fd.kind100, 110);
  EXPECT_EQ(+loaded.fd.nhdd, 1);
  EXPECT_EQ(+loaded.fd.b, 500);
  EXPECT_EQ(+loaded.fd.h, 200);
  EXPECT_EQ(+loaded.fd.qvmin, 10.0F);
  EXPECT_EQ(+loaded.fd.qvmax, 200.0F);
  EXPECT_EQ(+loaded.fd.dpmin, 5.0F);
  EXPECT_EQ(+loaded.fd.dpmax, 300.0F);
  EXPECT_EQ(+loaded.fd.ductarea, tavca_ductarea_m2(500, 200));
}

TEST(Load, TakesTheDynamicPressureOffExhaustProductsWithStaticPressures) {
  Record record("AEX", "PRODUCT-1");
  add_header(record, 10);
  record.floats(1651, {100.0F, 50.0F});
  const Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.kind, 10);
  EXPECT_EQ(+loaded.fd.kind100, 110);
  EXPECT_FLOAT_EQ(+loaded.fd.dpref, 49.4F);
  EXPECT_EQ(+loaded.fd.dpmin, 5.0F);  // limits are never corrected

  Record total("AEX", "PRODUCT-2");
  add_header(total, 110);
  total.floats(1651, {100.0F, 50.0F});
  EXPECT_EQ(+load(total).fd.dpref, 50.0F);
}

TEST(Load, CorrectsStaticPressuresByClass) {
  const struct {
    const char* class_id;
    float dpref;
  } cases[] = {{"ASD", 50.6F}, {"AOD", 50.6F}, {"CCB", 50.6F}, {"AEX", 49.4F},
               {"AED", 49.4F}, {"XXX", 50.0F}, {"asd", 50.0F}};
  for (const auto& c : cases) {
    Record record(c.class_id, "PRODUCT-1");
    add_header(record, 10);
    record.floats(1651, {100.0F, 50.0F});
    EXPECT_FLOAT_EQ(+load(record).fd.dpref, c.dpref) << c.class_id;
  }
}

TEST(Load, OfTheOlderHeaderTakesKilopascalAndNoDynamicPressure) {
  Record record("ASD", "PRODUCT-1");
  add_older_header(record, 20, 200, 10.0F, 200.0F, 0.02F, 0.3F);
  record.rows<DamperPoint>(1652, {{1, 100.0F, 0.4F}, {2, 100.0F, 0.1F}});
  record.rows<LwPoint>(1653, {sound_row(100.0F, 0.4F, 50)});
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.dpmin, 0.02F * 1000.0F);
  EXPECT_EQ(+loaded.fd.dpmax, 0.3F * 1000.0F);
  EXPECT_EQ(+loaded.fd.kind, 20);
  EXPECT_EQ(+loaded.fd.kind100, 120);
  EXPECT_EQ(+loaded.fd.h, 0);
  EXPECT_EQ(+loaded.fd.ndamper, 2);
  EXPECT_EQ(+loaded.fd.damper[0].dp, 0.4F * 1000.0F);
  EXPECT_EQ(+loaded.fd.damper[1].dp, 0.1F * 1000.0F);
  EXPECT_EQ(+loaded.fd.lwpoints[0].dp, 0.4F * 1000.0F);
  EXPECT_EQ(loaded.fd.lwpoints[0].lw[0], 50);
}

TEST(Load, OfTheOlderHeaderConvertsEveryTableButTheFanCurve) {
  Record reference("ASD", "A");
  add_older_header(reference, 10, 200, 10.0F, 200.0F, 0.02F, 0.3F);
  reference.floats(1651, {100.0F, 0.05F});
  EXPECT_EQ(+load(reference).fd.dpref, 0.05F * 1000.0F);

  Record curve("ASD", "B");
  add_older_header(curve, 12, 200, 10.0F, 200.0F, 0.02F, 0.3F);
  curve.rows<QvDpPoint>(1657, {{10.0F, 0.02F}, {20.0F, 0.08F}});
  EXPECT_EQ(+load(curve).fd.qvdppoints[1].dp, 0.08F * 1000.0F);

  Record fan("ASD", "C");
  add_older_header(fan, 40, 200, 10.0F, 200.0F, 0.02F, 0.3F);
  fan.rows<FanPoint>(1666, {{100.0F, 400.0F, 7.0F}});
  Loaded loaded = load(fan);
  EXPECT_EQ(+loaded.fd.fancurve[0].dp, 400.0F);
  EXPECT_EQ(+loaded.fd.fancurve[0].aux, 7.0F);
  EXPECT_EQ(+loaded.fd.dpmax, 0.3F * 1000.0F);
  fan.floats(1658, {11.0F, 222.0F, 33.0F, 444.0F});
  loaded = load(fan);
  EXPECT_EQ(+loaded.fd.qvmin, 11.0F);
  EXPECT_EQ(+loaded.fd.qvmax, 222.0F);
  EXPECT_EQ(+loaded.fd.dpmin, 33.0F);
  EXPECT_EQ(+loaded.fd.dpmax, 444.0F);
  EXPECT_EQ(+loaded.fd.nhdd, 1);
}

TEST(Load, OfAFanCorrectsTheCurveUnderTheNewerHeader) {
  Record record("ASD", "FAN");
  add_header(record, 40);
  record.rows<FanPoint>(1666, {{100.0F, 400.0F, 7.0F}, {200.0F, 300.0F, 8.0F}});
  const Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.nfan, 2);
  const float area = tavca_ductarea_m2(500, 200);
  EXPECT_EQ(+loaded.fd.fancurve[0].dp, 400.0F + tavca_pdyn(100.0F, area, 0));
  EXPECT_EQ(+loaded.fd.fancurve[1].dp, 300.0F + tavca_pdyn(200.0F, area, 0));
}

TEST(Load, ReadsFanLimitsForFansOnly) {
  Record record("ASD", "DAMPER");
  add_header(record, 120);
  record.floats(1658, {11.0F, 222.0F, 33.0F, 444.0F});
  EXPECT_EQ(+load(record).fd.qvmin, 10.0F);
}

TEST(Load, OfAVelocityProductCorrectsByVelocity) {
  for (int kind : {11, 22}) {
    Record record("ASD", "VELOCITY");
    record.header(static_cast<std::int16_t>(kind), 400, 0, 1.0F, 5.0F, 5.0F, 300.0F);
    record.floats(1651, {3.0F, 50.0F});
    record.rows<DamperPoint>(1652, {{1, 3.0F, 50.0F}});
    const Loaded loaded = load(record);
    EXPECT_EQ(loaded.fd.isvelocity, 1);
    EXPECT_EQ(+loaded.fd.ductarea, 0.0F);
    const float dp = kind == 11 ? +loaded.fd.dpref : +loaded.fd.damper[0].dp;
    EXPECT_EQ(dp, 50.0F + 0.6F * 3.0F * 3.0F);
  }
}

TEST(Load, OfASizeOfTenMillimetresKnowsNoAreaAndNoDynamicPressure) {
  Record record("ASD", "SMALL");
  record.header(10, 10, 0, 10.0F, 200.0F, 5.0F, 300.0F);
  record.floats(1651, {100.0F, 50.0F});
  record.rows<LwPoint>(1653, {sound_row(100.0F, 50.0F, 40)});
  const Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.ductarea, 0.0F);
  EXPECT_EQ(+loaded.fd.dpref, 50.0F);
  EXPECT_EQ(+loaded.fd.lwpoints[0].dp, 50.0F);

  Record larger("ASD", "LARGER");
  larger.header(10, 11, 0, 10.0F, 200.0F, 5.0F, 300.0F);
  EXPECT_EQ(+load(larger).fd.ductarea, tavca_ductarea_m2(11, 0));
}

TEST(Load, CorrectsEachRowAtItsOwnFlow) {
  Record record("AED", "DAMPER");
  add_header(record, 20);
  record.rows<DamperPoint>(1652, {{1, 100.0F, 400.0F}, {2, 200.0F, 100.0F}});
  record.rows<LwPoint>(1653, {sound_row(150.0F, 60.0F, 40)});
  const Loaded loaded = load(record);
  const float area = tavca_ductarea_m2(500, 200);
  EXPECT_EQ(+loaded.fd.damper[0].dp, 400.0F - tavca_pdyn(100.0F, area, 0));
  EXPECT_EQ(+loaded.fd.damper[1].dp, 100.0F - tavca_pdyn(200.0F, area, 0));
  EXPECT_EQ(+loaded.fd.lwpoints[0].dp, 60.0F - tavca_pdyn(150.0F, area, 0));

  Record curve("AED", "CURVE");
  add_header(curve, 12);
  curve.rows<QvDpPoint>(1657, {{100.0F, 400.0F}});
  EXPECT_EQ(+load(curve).fd.qvdppoints[0].dp, 400.0F - tavca_pdyn(100.0F, area, 0));
}

TEST(Load, ReadsOnlyTheCurveOfItsKind) {
  Record record("XXX", "ALL");
  add_header(record, 130);
  record.floats(1651, {100.0F, 50.0F});
  record.rows<DamperPoint>(1652, {{1, 100.0F, 400.0F}});
  record.rows<QvDpPoint>(1657, {{100.0F, 400.0F}});
  record.rows<FanPoint>(1666, {{100.0F, 400.0F, 0.0F}});
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.nref, 0);
  EXPECT_EQ(+loaded.fd.ndamper, 0);
  EXPECT_EQ(+loaded.fd.nqvdp, 0);
  EXPECT_EQ(+loaded.fd.nfan, 0);
}

TEST(Load, OfAnUnknownKindHasNoPressureLaw) {
  Record record("XXX", "ODD");
  add_header(record, 150);
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.kind, 50);
  EXPECT_EQ(tavca_minmaxdptot(&loaded.fd, 100.0F, nullptr, nullptr), -6);
}

TEST(Load, PrefersAttenuationByPosition) {
  Record record("XXX", "BOTH");
  add_header(record, 120);
  record.rows<DlwPoint>(1655, {attenuation_row(1.0F, 10), attenuation_row(2.0F, 20)});
  const unsigned char dlw[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  record.bytes(1654, dlw, sizeof dlw);
  Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.ndlwpoints, 2);
  EXPECT_EQ(+loaded.fd.dlwpoints[1].pos, 2.0F);
  EXPECT_EQ(+loaded.fd.ndlw, 0);
  EXPECT_EQ(loaded.fd.dlw[0], 0);

  Record one("XXX", "ONE");
  add_header(one, 120);
  one.bytes(1654, dlw, sizeof dlw);
  loaded = load(one);
  EXPECT_NE(+loaded.fd.ndlw, 0);
  EXPECT_EQ(std::memcmp(loaded.fd.dlw, dlw, sizeof dlw), 0);
}

TEST(Load, ReadsWhatIsKeptForTheHostAndTheSizeCoefficient) {
  Record record("XXX", "HOST");
  add_header(record, 110);
  record.words(1670, {3, -4}).floats(1671, {1.5F, -2.5F}).floats(1302, {3.25F});
  const Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.intpair[0], 3);
  EXPECT_EQ(+loaded.fd.intpair[1], -4);
  EXPECT_EQ(+loaded.fd.floatpair[0], 1.5F);
  EXPECT_EQ(+loaded.fd.floatpair[1], -2.5F);
  EXPECT_EQ(+loaded.fd.lwsizecoef, 3.25F);
}

TEST(Load, ReadsThrowPoints) {
  Record record("XXX", "THROW");
  add_header(record, 110);
  record.rows<QvL2Point>(1659, {{100.0F, 5.0F}, {200.0F, 8.0F}});
  record.rows<ParL2Point>(1660, {throw_row("10", 100.0F, 4.0F)});
  const Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.nqvL2, 2);
  EXPECT_EQ(+loaded.fd.qvL2[1].L2, 8.0F);
  EXPECT_EQ(+loaded.fd.nparL2, 1);
  EXPECT_EQ(std::memcmp(loaded.fd.parL2[0].value, "10    ", 6), 0);
}

// A product with one or two parameter tables and the names as told.
FlowData with_parameters(int tables, const char* names) {
  Record record("XXX", "PARAMETERS");
  add_header(record, 130);
  record.rows<ParEntry>(1661, {entry("1", 0.01F), entry("2", 0.02F)});
  if (tables > 1) record.rows<ParEntry>(1662, {entry("5", 0.03F)});
  if (names != nullptr) record.text(1514, names);
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  return loaded.fd;
}

TEST(LoadParameters, NeedsTheirNames) {
  FlowData fd = with_parameters(2, nullptr);
  EXPECT_EQ(+fd.npar, 0);
  EXPECT_EQ(+fd.par[0].count, 2);
  EXPECT_EQ(+fd.par[1].count, 1);
  EXPECT_EQ(tavca_param_setvalue(&fd, "", "2"), -1);
  EXPECT_EQ(tavca_dptotmin(&fd, 10.0F), 5.0F);
}

TEST(LoadParameters, TakesTwoNamesAroundAComma) {
  FlowData fd = with_parameters(2, "SPEED  ,SIZE ,REST");
  EXPECT_EQ(+fd.npar, 2);
  EXPECT_STREQ(fd.par[0].name, "SPEED");
  EXPECT_STREQ(fd.par[1].name, "SIZE");
  EXPECT_EQ(tavca_param_setvalue(&fd, "size", "5"), 0);
  EXPECT_FLOAT_EQ(tavca_dptotmin(&fd, 10.0F), 8.0F);
}

TEST(LoadParameters, WithAnEmptySecondNameIsOne) {
  EXPECT_EQ(+with_parameters(2, "SPEED,").npar, 1);
  EXPECT_EQ(+with_parameters(2, "SPEED").npar, 1);
  EXPECT_EQ(+with_parameters(2, "SPEED,,X").npar, 1);
}

TEST(LoadParameters, WithAnEmptyFirstNameIsNone) {
  EXPECT_EQ(+with_parameters(2, ",SIZE").npar, 0);
  EXPECT_EQ(+with_parameters(2, "").npar, 0);
  EXPECT_EQ(+with_parameters(1, "").npar, 0);
}

TEST(LoadParameters, OfOneTableTakesTheWholeTextAsItsName) {
  const FlowData fd = with_parameters(1, "A,B  ");
  EXPECT_EQ(+fd.npar, 1);
  EXPECT_STREQ(fd.par[0].name, "A,B");
}

TEST(LoadParameters, CutsNamesAtNineCharacters) {
  const FlowData two = with_parameters(2, "ABCDEFGHIJKLM,NOPQRSTUVWXYZ");
  EXPECT_STREQ(two.par[0].name, "ABCDEFGHI");
  EXPECT_STREQ(two.par[1].name, "NOPQRSTUV");
  const FlowData one = with_parameters(1, "ABCDEFGHIJKLM");
  EXPECT_STREQ(one.par[0].name, "ABCDEFGHI");
}

TEST(LoadParameters, OfNoFirstTableEndsTheLoad) {
  Record record("XXX", "SECOND");
  add_header(record, 130);
  record.rows<ParEntry>(1662, {entry("5", 0.03F)}).text(1514, "A,B");
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.npar, 0);
  EXPECT_EQ(+loaded.fd.par[1].count, 0);
}

TEST(Load, ReplacesEverything) {
  Record record("XXX", "PLAIN");
  add_header(record, 110);
  FlowData fd = with_parameters(2, "A,B");
  tavca_param_setvalue(&fd, "A", "2");
  EXPECT_EQ(tavca_load_flowdata(1, record.rec(), &fd), 0);
  const Loaded fresh = load(record);
  EXPECT_EQ(std::memcmp(&fd, &fresh.fd, sizeof fd), 0);
}

TEST(Load, WorksOnARecordOfADatabase) {
  tavdtest::Database database;
  Record record("ASD", "STORED");
  add_header(record, 110);
  record.floats(1651, {100.0F, 50.0F}).save(database.handle());
  tavb_rec found = tavbfindrec(database.handle(), "ASD", "STORED", 0);
  ASSERT_NE(found, nullptr);
  FlowData fd;
  EXPECT_EQ(tavca_load_flowdata(database.handle(), found, &fd), 0);
  tavbreleaserec(found);
  EXPECT_FLOAT_EQ(tavca_dptotmin(&fd, 50.0F), 12.5F);
  EXPECT_STREQ(fd.szobjID, "STORED");
}

TEST(LoadHostile, CutsTablesToTheRowsThatTheRecordHolds) {
  const std::string rows(16000, '@');  // floats of 3.02
  Record record("ASD", "LONG");
  add_header(record, 120);
  for (int attribute : {1652, 1653, 1655, 1659, 1660, 1661, 1662})
    record.bytes(attribute, rows.data(), rows.size());
  record.text(1514, "A,B");
  FlowData fd = load(record).fd;
  EXPECT_EQ(+fd.ndamper, TAVD_DAMPER_ROWS);
  EXPECT_EQ(+fd.nlw, TAVD_LW_ROWS);
  EXPECT_EQ(+fd.ndlwpoints, TAVD_DLW_ROWS);
  EXPECT_EQ(+fd.nqvL2, TAVD_QVL2_ROWS);
  EXPECT_EQ(+fd.nparL2, TAVD_PARL2_ROWS);
  EXPECT_EQ(+fd.par[0].count, TAVD_PARAMETER_ROWS);
  EXPECT_EQ(+fd.par[1].count, TAVD_PARAMETER_ROWS);
  EXPECT_EQ(+fd.npar, 2);
  EXPECT_EQ(tavca_param_setvalue(&fd, "A", "@@@@@@"), 0);

  for (int kind : {112, 140}) {
    Record curve("ASD", "CURVE");
    add_header(curve, kind);
    curve.bytes(kind == 112 ? 1657 : 1666, rows.data(), rows.size());
    fd = load(curve).fd;
    EXPECT_EQ(kind == 112 ? +fd.nqvdp : +fd.nfan, 20);
  }
}

TEST(LoadHostile, OfItemsThatAreTooShortCountsNone) {
  const unsigned char part[3] = {1, 2, 3};
  Record record("ASD", "SHORT");
  add_header(record, 120);
  for (int attribute : {1652, 1653, 1655, 1659, 1660, 1661, 1662, 1670, 1671, 1302}) {
    record.bytes(attribute, part, sizeof part);
  }
  record.text(1514, "A,B");
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.ndamper, 0);
  EXPECT_EQ(+loaded.fd.nlw, 0);
  EXPECT_EQ(+loaded.fd.ndlwpoints, 0);
  EXPECT_EQ(+loaded.fd.nqvL2, 0);
  EXPECT_EQ(+loaded.fd.nparL2, 0);
  EXPECT_EQ(+loaded.fd.par[0].count, 0);
  EXPECT_EQ(tavca_minmaxdptot(&loaded.fd, 10.0F, nullptr, nullptr), -4);
}

TEST(LoadHostile, OfLongItemsReadsOneAndCountsAllOfThem) {
  const std::string items(220, '\x01');
  Record record("ASD", "LONG");
  record.bytes(1650, items.data(), items.size());
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.nhdd, 10);
  EXPECT_EQ(+loaded.fd.kind100, 0x0101);
  EXPECT_EQ(+loaded.fd.nref, 0);
}

TEST(LoadHostile, OfAnOlderHeaderThatIsTooShortHasNoFlowData) {
  const unsigned char part[4] = {10, 0, 200, 0};
  Record record("ASD", "SHORT");
  record.bytes(1649, part, sizeof part);
  const Loaded loaded = load(record);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_EQ(+loaded.fd.nhdd, 0);
  EXPECT_EQ(tavca_qminqmax(&loaded.fd, nullptr, nullptr), -1);
}

TEST(LoadHostile, HoldsAKindThatTakesNoHundredMore) {
  Record record("ASD", "KIND");
  add_older_header(record, 32767, 200, 10.0F, 200.0F, 0.02F, 0.3F);
  const Loaded loaded = load(record);
  EXPECT_EQ(+loaded.fd.kind, 32767);
  EXPECT_EQ(+loaded.fd.kind100, 32767);
  Record negative("ASD", "NEGATIVE");
  negative.header(-32768, 200, 0, 10.0F, 200.0F, 5.0F, 300.0F);
  EXPECT_EQ(+load(negative).fd.kind100, -32668);
}

TEST(LoadHostile, OfTextsWithoutTerminatorStaysInside) {
  Record record("ASD", "123456789012345678901234567890");
  add_header(record, 130);
  record.rows<ParEntry>(1661, {entry("ABCDEF", 0.01F), entry("GHIJKL", 0.02F)});
  record.text(1514, std::string(80, 'N'));
  FlowData fd = load(record).fd;
  EXPECT_STREQ(fd.szobjID, "123456789012345678901234567890");
  EXPECT_STREQ(fd.par[0].name, "NNNNNNNNN");
  record.text(1514, "NAME" + std::string(500, ' '));
  fd = load(record).fd;
  EXPECT_STREQ(fd.par[0].name, "NAME");
  EXPECT_EQ(tavca_param_setvalue(&fd, "NAME", "GHIJKLMNOP"), 0);
  EXPECT_EQ(+fd.par[0].idx1, 1);
}

}  // namespace
