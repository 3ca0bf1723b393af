// What fits, product by product, with numbers worked by hand; bad duties; nothing is written beside the hits.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "exported/select/small_catalogue.h"

namespace {

using selecttest::Catalogue;
using selecttest::damper;
using selecttest::duty;
using selecttest::open_catalogue;
using selecttest::Outcome;
using selecttest::select;
using selecttest::terminal;
using tavdtest::Database;
using tavdtest::Record;
using tavdtest::sound_row;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Why the one product of a database does not fit; 0 if it does.
int why_not(const Database& db, const tavdn_duty& asked) {
  const Outcome outcome = select(open_catalogue(db), asked);
  EXPECT_EQ(outcome.reasons.size(), 1U);
  EXPECT_EQ(outcome.products, outcome.reasons[0] == 0 ? 1U : 0U);
  return outcome.reasons[0];
}

TEST(SelectConditions, ADamperFitsWhereItsPositionSolves) {
  const Database db;
  damper(db, "DMP", "D-100", 100);
  EXPECT_EQ(why_not(db, duty(100, 200)), TAVDN_WHY_FITS);
  EXPECT_EQ(why_not(db, duty(360, 200)), TAVDN_WHY_FLOW_HIGH);
  EXPECT_EQ(why_not(db, duty(9, 200)), TAVDN_WHY_FLOW_LOW);
  EXPECT_EQ(why_not(db, duty(100, 20)), TAVDN_WHY_PRESSURE_HIGH);
  EXPECT_EQ(why_not(db, duty(100, 450)), TAVDN_WHY_PRESSURE_LOW);
  tavdn_duty by_hour = duty(360, 200);
  by_hour.flow_unit = TAVDN_FLOW_M3_H;
  const Outcome outcome = select(open_catalogue(db), by_hour);
  ASSERT_EQ(outcome.hits.size(), 1U);
  const tavdn_hit& hit = outcome.hits[0];
  EXPECT_EQ(hit.qv, 100.0F);
  EXPECT_FLOAT_EQ(hit.position, 1.5F);
  EXPECT_EQ(hit.setting, 1.0F);  // of 400 and 100 Pa both are as far by ratio: the more throttled
  EXPECT_EQ(hit.dp, 200.0F);
  EXPECT_EQ(hit.dp_min, 25.0F);
  EXPECT_EQ(hit.dp_max, 400.0F);
  EXPECT_EQ(hit.unknown, unsigned{TAVDN_UNKNOWN_SOUND | TAVDN_UNKNOWN_THROW});
  EXPECT_EQ(hit.lw_code, -3);
  EXPECT_NEAR(hit.fit, 5.0F / 95.0F, 1e-6F);
}

TEST(SelectConditions, AFixedResistanceTakesItsOwnPressure) {
  const Database db;
  terminal(db, "ASD", "T", 100);  // 80 Pa at 100 l/s, 20 at 50
  EXPECT_EQ(why_not(db, duty(50, 20)), TAVDN_WHY_FITS);
  EXPECT_EQ(why_not(db, duty(50, 19.9F)), TAVDN_WHY_PRESSURE_HIGH);
  tavdn_duty window = duty(50, 50);
  window.dp_lowest = 20;
  EXPECT_EQ(why_not(db, window), TAVDN_WHY_FITS);
  window.dp_lowest = 20.1F;
  EXPECT_EQ(why_not(db, window), TAVDN_WHY_PRESSURE_LOW);
  EXPECT_EQ(select(open_catalogue(db), duty(50, 70)).hits[0].dp, 20.0F);
}

TEST(SelectConditions, AThrowLiesInItsWindow) {
  const Database db;
  terminal(db, "ASD", "T", 100);  // 2 m at 50 l/s
  tavdn_duty asked = duty(50, 50);
  asked.throw_min = 1.9F;
  asked.throw_max = 2.1F;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
  asked.throw_min = 2.05F;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_THROW_SHORT);
  asked.throw_min = 0;
  asked.throw_max = 1.9F;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_THROW_LONG);
  asked.throw_min = 1;
  asked.throw_max = 0;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
}

TEST(SelectConditions, WhatIsUnknownExcludesUnlessItIsAllowed) {
  const Database db;
  damper(db, "DMP", "D-100", 100);
  tavdn_duty asked = duty(100, 200);
  asked.lp_max = 30;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_SOUND_UNKNOWN);
  asked.unknown_allowed = TAVDN_UNKNOWN_SOUND;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
  asked.throw_max = 3;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_THROW_UNKNOWN);
  asked.unknown_allowed |= TAVDN_UNKNOWN_THROW;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
}

TEST(SelectConditions, SoundIsLimitedInTheRoomAndBandByBand) {
  const Database db;
  // All bands 40 dB at every point of the table; 30 dB lower in one band is told by the limit, not the table.
  Record("CCB", "BEAM")
      .header(130, 100, 0, 10, 100, 10, 100)
      .rows<LwPoint>(
          1653, {sound_row(20, 20, 40), sound_row(20, 80, 40), sound_row(80, 20, 40), sound_row(80, 80, 40)})
      .save(db.handle());
  tavdn_duty asked = duty(50, 50);
  const Outcome outcome = select(open_catalogue(db), asked);
  ASSERT_EQ(outcome.hits.size(), 1U);
  EXPECT_EQ(outcome.hits[0].lw[3], 40.0F);
  const float level = outcome.hits[0].lpa;
  asked.lp_max = level;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
  asked.lp_max = std::nextafterf(level, 0.0F);
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_LEVEL);
  asked.roomdamp = 5.0F;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
  asked.lw_max[7] = 40;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
  asked.lw_max[7] = 39.9F;
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_BAND);
}

TEST(SelectConditions, ADeviceForARangeAndAFan) {
  const Database db;
  Record("CCB", "BEAM").header(130, 100, 0, 10, 100, 10, 100).save(db.handle());
  EXPECT_EQ(why_not(db, duty(50, 50)), TAVDN_WHY_FITS);
  EXPECT_EQ(why_not(db, duty(50, 9)), TAVDN_WHY_PRESSURE_HIGH);
  EXPECT_EQ(why_not(db, duty(50, 101)), TAVDN_WHY_PRESSURE_LOW);
  const Database fans;
  Record("FAN", "FAN")
      .header(140, 100, 0, 0, 200, 0, 300)
      .rows<FanPoint>(1666, {{50, 300, 0}, {100, 200, 0}, {150, 100, 0}})
      .save(fans.handle());
  EXPECT_EQ(why_not(fans, duty(100, 150)), TAVDN_WHY_FITS);
  EXPECT_EQ(why_not(fans, duty(100, 201)), TAVDN_WHY_FAN_OVER_CURVE);
  EXPECT_EQ(why_not(fans, duty(100, 40)), TAVDN_WHY_FAN_ABOVE_CURVE);
  EXPECT_EQ(why_not(fans, duty(40, 290)), TAVDN_WHY_FAN_BELOW_CURVE);
  EXPECT_EQ(select(open_catalogue(fans), duty(100, 150)).hits[0].fan_total, 200.0F);
}

// A curve has no pressure at the flow of its last point, which its code does not say.
TEST(SelectConditions, ACurveAtItsLastPointHasNoPressure) {
  const Database db;
  Record("AEX", "CURVE")
      .header(112, 100, 0, 10, 100, 1, 100)
      .rows<QvDpPoint>(1657, {{20, 4}, {100, 100}})
      .save(db.handle());
  EXPECT_EQ(why_not(db, duty(99.9, 150)), TAVDN_WHY_FITS);
  EXPECT_EQ(why_not(db, duty(100, 150)), TAVDN_WHY_PRESSURE_UNKNOWN);
  tavdn_duty asked = duty(100, 150);
  asked.unknown_allowed = TAVDN_UNKNOWN_PRESSURE;
  const Outcome outcome = select(open_catalogue(db), asked);
  ASSERT_EQ(outcome.hits.size(), 1U);
  EXPECT_TRUE((outcome.hits[0].unknown & TAVDN_UNKNOWN_PRESSURE) != 0);
}

TEST(SelectConditions, AProductByVelocityNeedsASize) {
  const Database db;
  // 100 l/s through 400 x 250 mm is 1 m/s.
  Record("GRL", "SIZED").header(111, 400, 250, 0.5F, 2, 1, 100).floats(1651, {1, 10}).save(db.handle());
  EXPECT_EQ(why_not(db, duty(100, 10)), TAVDN_WHY_FITS);
  EXPECT_EQ(why_not(db, duty(201, 50)), TAVDN_WHY_FLOW_HIGH);
  EXPECT_EQ(select(open_catalogue(db), duty(100, 10)).hits[0].qv, 1.0F);
  const Database unsized;
  Record("GRL", "NONE").header(111, 0, 0, 0.5F, 2, 1, 100).floats(1651, {1, 10}).save(unsized.handle());
  EXPECT_EQ(why_not(unsized, duty(100, 10)), TAVDN_WHY_FLOW_UNKNOWN);
}

TEST(SelectConditions, SizesOfDucts) {
  const Database db;
  damper(db, "DMP", "D-160", 160);
  tavdn_duty asked = duty(100, 200);
  asked.duct_min = asked.duct_max = {0, 160, 160};
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_FITS);
  asked.duct_min = {0, 125, 0};
  asked.duct_max = {0, 159, 0};
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_SIZE);
  asked.duct_min = asked.duct_max = {1, 160, 160};
  EXPECT_EQ(why_not(db, asked), TAVDN_WHY_SIZE);
  const Database unsized;
  damper(unsized, "DMP", "D", 0);
  EXPECT_EQ(why_not(unsized, asked), TAVDN_WHY_SIZE_UNKNOWN);
  asked.unknown_allowed = TAVDN_UNKNOWN_SIZE;
  EXPECT_EQ(why_not(unsized, asked), TAVDN_WHY_FITS);
}

TEST(SelectConditions, LimitsThatAreNoNumbersAdmitNothing) {
  const Database db;
  Record("DMP", "D").header(110, 100, 0, kNaN, 100, 1, 100).floats(1651, {50, 20}).save(db.handle());
  EXPECT_EQ(why_not(db, duty(50, 50)), TAVDN_WHY_FLOW_LOW);
  const Database other;
  Record("DMP", "D").header(110, 100, 0, 10, kNaN, 1, 100).floats(1651, {50, 20}).save(other.handle());
  EXPECT_EQ(why_not(other, duty(50, 50)), TAVDN_WHY_FLOW_HIGH);
}

TEST(SelectRanking, TiesAreInTheOrderOfClassAndId) {
  const Database db;
  for (const char* id : {"C", "A", "D", "B"}) damper(db, "DMP", id, 100);
  terminal(db, "ZZZ", "A", 80);
  const Catalogue catalogue = open_catalogue(db);
  tavdn_duty asked = duty(50, 50);
  asked.wanted = 4;
  const auto order = [&](int rank) {
    asked.rank = rank;
    std::string ids;
    for (const tavdn_hit& hit : select(catalogue, asked).hits) {
      const tavdn_listed* const listed = tavdn_catalogue_product(catalogue.get(), hit.product);
      ids += std::string(listed->class_id).substr(0, 1) + listed->object_id + ' ';
    }
    return ids;
  };
  EXPECT_EQ(order(TAVDN_RANK_SOUND), "DA DB DC DD ");     // nobody has a level
  EXPECT_EQ(order(TAVDN_RANK_PRESSURE), "DA DB DC DD ");  // 6.25 Pa against 20
  EXPECT_EQ(order(TAVDN_RANK_SIZE), "ZA DA DB DC ");
  EXPECT_EQ(order(TAVDN_RANK_FIT), "ZA DA DB DC ");  // 5/45 against 55/95
}

// ---- Bad input ----------------------------------------------------------------

class SelectArguments : public testing::Test {
 protected:
  SelectArguments() {
    damper(db, "DMP", "D-100", 100);
    catalogue = open_catalogue(db);
  }
  int check(const tavdn_duty& asked) const {
    const int code = tavdn_check_duty(catalogue.get(), &asked);
    tavdn_hit hit;
    std::memset(&hit, 0x5A, sizeof hit);
    tavdn_fitting fitting{77, 77};
    unsigned char reason = 200;
    EXPECT_EQ(tavdn_select(catalogue.get(), &asked, 1, &hit, &fitting, &reason), code);
    if (code != 0) {
      const auto* const bytes = reinterpret_cast<const unsigned char*>(&hit);
      EXPECT_TRUE(std::all_of(bytes, bytes + sizeof hit, [](unsigned char b) { return b == 0x5A; }));
      EXPECT_EQ(fitting.products, 77U);
      EXPECT_EQ(reason, 200);
    }
    return code;
  }

  const Database db;
  Catalogue catalogue;
};

TEST_F(SelectArguments, BadDutiesAreRefusedWithACodeOfTheirOwn) {
  const tavdn_duty good = duty(100, 200);
  EXPECT_EQ(check(good), 0);
  tavdn_duty bad = good;
  bad.size = 0;
  EXPECT_EQ(check(bad), TAVDN_DUTY_RECORD);
  for (const double flow : {0.0, -80.0, double{kNaN}, double{kInfinity}, 1e300, 1e-300}) {
    bad = good;
    bad.qv = flow;
    EXPECT_EQ(check(bad), TAVDN_DUTY_FLOW) << flow;
  }
  bad = good;
  bad.flow_unit = 2;
  EXPECT_EQ(check(bad), TAVDN_DUTY_FLOW);
  for (const float dp : {0.0F, -1.0F, kNaN, kInfinity}) {
    bad = good;
    bad.dp = dp;
    EXPECT_EQ(check(bad), TAVDN_DUTY_PRESSURE) << dp;
  }
  for (const float lowest : {201.0F, -1.0F, kNaN}) {
    bad = good;
    bad.dp_lowest = lowest;
    EXPECT_EQ(check(bad), TAVDN_DUTY_PRESSURE) << lowest;
  }
  for (float tavdn_duty::*member : {&tavdn_duty::lp_max, &tavdn_duty::throw_min, &tavdn_duty::throw_max}) {
    for (const float value : {-1.0F, kNaN, kInfinity}) {
      bad = good;
      bad.*member = value;
      EXPECT_EQ(check(bad), member == &tavdn_duty::lp_max ? TAVDN_DUTY_SOUND : TAVDN_DUTY_THROW) << value;
    }
  }
  bad = good;
  bad.roomdamp = kNaN;
  EXPECT_EQ(check(bad), TAVDN_DUTY_SOUND);
  bad = good;
  bad.lw_max[7] = kNaN;
  EXPECT_EQ(check(bad), TAVDN_DUTY_SOUND);
  bad = good;
  bad.throw_min = 4;
  bad.throw_max = 2;
  EXPECT_EQ(check(bad), TAVDN_DUTY_THROW);
  bad = good;
  bad.rank = 4;
  EXPECT_EQ(check(bad), TAVDN_DUTY_RANK);
  bad.rank = -1;
  EXPECT_EQ(check(bad), TAVDN_DUTY_RANK);
  bad = good;
  bad.values = 1;
  EXPECT_EQ(check(bad), TAVDN_DUTY_VALUES);
  bad = good;
  bad.unknown_allowed = 16;
  EXPECT_EQ(check(bad), TAVDN_DUTY_UNKNOWN);
  bad = good;
  bad.wanted = 0;
  EXPECT_EQ(check(bad), TAVDN_DUTY_WANTED);
}

TEST_F(SelectArguments, BadSizesAndClasses) {
  tavdn_duty bad = duty(100, 200);
  const DuctSize sizes[][2] = {{{0, 200, 0}, {0, 100, 0}},   {{0, 0, 0}, {0, 100, 0}},
                               {{0, 100, 0}, {1, 100, 50}},  {{1, 100, 50}, {1, 200, 40}},
                               {{2, 100, 50}, {2, 100, 50}}, {{0, -5, 0}, {0, 5, 0}}};
  for (const auto& size : sizes) {
    bad.duct_min = size[0];
    bad.duct_max = size[1];
    EXPECT_EQ(check(bad), TAVDN_DUTY_SIZE) << size[0].b << ' ' << size[1].b;
  }
  bad = duty(100, 200);
  const char* classes[] = {"DMP", "XYZ"};
  bad.classes = classes;
  bad.nclasses = 2;
  EXPECT_EQ(check(bad), TAVDN_DUTY_CLASS);
  bad.nclasses = 1;
  EXPECT_EQ(check(bad), 0);
  bad.nclasses = -1;
  EXPECT_EQ(check(bad), TAVDN_DUTY_CLASS);
  classes[0] = nullptr;
  bad.nclasses = 1;
  EXPECT_EQ(check(bad), TAVDN_DUTY_CLASS);
  bad.classes = nullptr;
  EXPECT_EQ(check(bad), TAVDN_DUTY_CLASS);
}

TEST_F(SelectArguments, NullAndNothing) {
  const tavdn_duty asked = duty(100, 200);
  tavdn_hit hit{};
  tavdn_fitting fitting{};
  EXPECT_EQ(tavdn_check_duty(nullptr, &asked), TAVDN_BAD_ARGUMENT);
  EXPECT_EQ(tavdn_check_duty(catalogue.get(), nullptr), TAVDN_DUTY_RECORD);
  EXPECT_EQ(tavdn_select(nullptr, &asked, 1, &hit, &fitting, nullptr), TAVDN_BAD_ARGUMENT);
  EXPECT_EQ(tavdn_select(catalogue.get(), nullptr, 1, &hit, &fitting, nullptr), TAVDN_DUTY_RECORD);
  EXPECT_EQ(tavdn_select(catalogue.get(), &asked, 1, nullptr, &fitting, nullptr), TAVDN_BAD_ARGUMENT);
  EXPECT_EQ(tavdn_select(catalogue.get(), &asked, 1, &hit, nullptr, nullptr), TAVDN_BAD_ARGUMENT);
  EXPECT_EQ(tavdn_select(catalogue.get(), &asked, 0, &hit, &fitting, nullptr), TAVDN_DUTY_WANTED);
  EXPECT_EQ(tavdn_select(catalogue.get(), &asked, 1, &hit, &fitting, nullptr), 0);
  EXPECT_EQ(tavdn_select_many(catalogue.get(), 0, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr), 0);
  EXPECT_EQ(tavdn_select_many(catalogue.get(), 1, nullptr, 1, &hit, &fitting, nullptr, 0, nullptr),
            TAVDN_BAD_ARGUMENT);
  EXPECT_EQ(tavdn_select_many(catalogue.get(), SIZE_MAX / 2, &asked, 1, &hit, &fitting, nullptr, 0, nullptr),
            TAVDN_BAD_ARGUMENT);
  EXPECT_EQ(tavdn_select_many(catalogue.get(), 1, &asked, SIZE_MAX, &hit, &fitting, nullptr, 0, nullptr),
            TAVDN_BAD_ARGUMENT);
}

TEST_F(SelectArguments, TellsWhichOfManyDutiesIsBad) {
  std::vector<tavdn_duty> duties(5, duty(100, 200));
  duties[3].qv = -1;
  duties[4].dp = -1;
  std::vector<tavdn_hit> hits(5);
  std::vector<tavdn_fitting> fitting(5, {55, 55});
  std::size_t bad = 99;
  EXPECT_EQ(
      tavdn_select_many(catalogue.get(), 5, duties.data(), 1, hits.data(), fitting.data(), nullptr, 3, &bad),
      TAVDN_DUTY_FLOW);
  EXPECT_EQ(bad, 3U);
  EXPECT_EQ(fitting[0].products, 55U);
}

// Places for hits that are not filled stay as they were.
TEST_F(SelectArguments, WritesItsHitsAndNothingElse) {
  tavdn_hit hits[3];
  std::memset(hits, 0x5A, sizeof hits);
  unsigned char reasons[2] = {9, 9};
  tavdn_duty asked = duty(100, 200);
  asked.wanted = 2;
  tavdn_fitting fitting{};
  ASSERT_EQ(tavdn_select(catalogue.get(), &asked, 2, hits, &fitting, reasons), 0);
  EXPECT_EQ(fitting.hits, 1);
  EXPECT_EQ(hits[0].product, 0U);
  EXPECT_EQ(hits[1].product, 0x5A5A5A5AU);
  EXPECT_EQ(reasons[0], 0);
  EXPECT_EQ(reasons[1], 9);
}

// Any number of threads answers what one does.
TEST_F(SelectArguments, ThreadsAnswerTheSame) {
  for (int i = 0; i < 40; ++i) damper(db, "DMP", "E-" + std::to_string(i), 100 + i);
  const Catalogue all = open_catalogue(db);
  std::vector<tavdn_duty> duties;
  for (int i = 0; i < 700; ++i) {
    duties.push_back(duty(5 + i * 0.3, 30.0F + static_cast<float>(i % 90)));
    duties.back().wanted = 1 + i % 3;
    duties.back().rank = i % 4;
    duties.back().roomdamp = static_cast<float>(i % 2);
  }
  std::vector<tavdn_hit> alone(duties.size() * 3);
  std::vector<tavdn_fitting> alone_fitting(duties.size());
  ASSERT_EQ(tavdn_select_many(all.get(), duties.size(), duties.data(), 3, alone.data(), alone_fitting.data(),
                              nullptr, 1, nullptr),
            0);
  for (const int threads : {0, -3, 2, 7, 64}) {
    std::vector<tavdn_hit> hits(duties.size() * 3);
    std::vector<tavdn_fitting> fitting(duties.size());
    ASSERT_EQ(tavdn_select_many(all.get(), duties.size(), duties.data(), 3, hits.data(), fitting.data(),
                                nullptr, threads, nullptr),
              0);
    EXPECT_EQ(std::memcmp(hits.data(), alone.data(), hits.size() * sizeof(tavdn_hit)), 0) << threads;
    for (std::size_t i = 0; i < duties.size(); ++i) EXPECT_EQ(fitting[i].products, alone_fitting[i].products);
  }
  for (std::size_t i = 0; i < duties.size(); ++i) {
    std::vector<tavdn_hit> one(3);
    tavdn_fitting fitting{};
    ASSERT_EQ(tavdn_select(all.get(), &duties[i], 3, one.data(), &fitting, nullptr), 0);
    EXPECT_EQ(std::memcmp(one.data(), &alone[i * 3], 3 * sizeof(tavdn_hit)), 0) << i;
  }
}

}  // namespace
