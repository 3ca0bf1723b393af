// The search for a level along a sound table, by cases worked by hand and against the plain transcription.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "diagram/soundlevels.h"
#include "oracle/reference/level_search.h"
#include "oracle/reference/records.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

namespace ref = transcription;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kRoomdamp = 4.0F;  // what the library starts with

// A row whose eight bands are alike.
LevelRow flat(std::int16_t group, float val, float level) {
  LevelRow row{};
  row.group = group;
  row.val = val;
  std::fill(row.lw, row.lw + TAVD_BANDS, level);
  return row;
}

LevelTable table_of(const std::vector<LevelRow>& rows) {
  LevelTable table(kRoomdamp);
  for (const LevelRow& row : rows) {
    table.add(row);
  }
  return table;
}

// Eight alike bands of 0 dB in the room: 2.97 dB(A), so that a level needs bands of that much less.
float flat_level() {
  const float lw[TAVD_BANDS] = {};
  return tavca_LpA(lw);
}

// Bands rise by 30 dB in a decade: 40 dB at 10, 70 dB at 100.
class LevelSearch : public ::testing::Test {
 protected:
  LevelTable table = table_of({flat(0, 10, 40), flat(0, 100, 70)});
  static double expected(double L) { return 10 * std::pow(10.0, (L - flat_level() - 40) / 30); }
  // A tenth of a dB.
  static double tolerance(double L) { return expected(L) * (std::pow(10.0, 0.101 / 30) - 1); }
};

TEST_F(LevelSearch, FindsALevelBetweenTheRows) {
  for (const float L : {43.0F, 50.0F, 60.0F, 72.0F}) {
    EXPECT_NEAR(expected(L), lp_find(table, L, 0), tolerance(L)) << L;
  }
}

TEST_F(LevelSearch, FindsALevelBelowTheTable) {
  for (const float L : {42.0F, 30.0F, 12.0F, -40.0F}) {
    EXPECT_NEAR(expected(L), lp_find(table, L, 0), tolerance(L)) << L;
  }
}

TEST_F(LevelSearch, FindsALevelAboveTheTable) {
  for (const float L : {74.0F, 90.0F, 130.0F}) {
    EXPECT_NEAR(expected(L), lp_find(table, L, 0), tolerance(L)) << L;
  }
}

TEST_F(LevelSearch, GivesUpFarBelowAndFarAbove) {
  // The last probe below is the float just under 0.01, 90 dB under the first row; the last above 25600, 72 dB
  // over the second.
  EXPECT_NE(0.0F, lp_find(table, flat_level() + 40 - 89, 0));
  EXPECT_EQ(0.0F, lp_find(table, flat_level() + 40 - 91, 0));
  EXPECT_NE(0.0F, lp_find(table, flat_level() + 70 + 72, 0));
  EXPECT_EQ(0.0F, lp_find(table, flat_level() + 70 + 73, 0));
}

TEST_F(LevelSearch, OneRowHasNoLevels) {
  EXPECT_EQ(0.0F, lp_find(table_of({flat(0, 10, 40)}), 40, 0));
  EXPECT_EQ(0.0F, lp_find(table_of({flat(0, 10, 40), flat(1, 20, 50), flat(1, 40, 60)}), 40, 0));
}

TEST_F(LevelSearch, UnknownGroupHasNone) {
  EXPECT_EQ(0.0F, lp_find(table, 50, 1));
  EXPECT_EQ(0.0F, lp_find(table, 50, -1));
  EXPECT_EQ(0.0F, lp_find(table_of({}), 50, 0));
}

TEST_F(LevelSearch, GroupEndsWhereAnotherBegins) {
  // Only the first run of group 0 counts: a single row.
  EXPECT_EQ(0.0F, lp_find(table_of({flat(0, 10, 40), flat(1, 20, 50), flat(0, 100, 70)}), 50, 0));
}

TEST_F(LevelSearch, EachBracketIsItsOwnLine) {
  // 30 dB a decade up to 100, then 60 dB.
  const LevelTable bent = table_of({flat(0, 10, 40), flat(0, 100, 70), flat(0, 1000, 130)});
  EXPECT_NEAR(expected(60), lp_find(bent, 60, 0), tolerance(60));
  const double above = 100 * std::pow(10.0, (100 - flat_level() - 70) / 60);
  EXPECT_NEAR(above, lp_find(bent, 100, 0), above * 0.005);
}

TEST_F(LevelSearch, LevelOfARowIsSoughtBelowIt) {
  // "At most" the first row's own level: the search runs from a tenth of it up to it.
  const float found = lp_find(table, table.row(0).lpa, 0);
  EXPECT_LE(found, 10.0F);
  EXPECT_NEAR(10.0F, found, tolerance(43));
}

TEST_F(LevelSearch, TablesOfOneLevelEnd) {
  const LevelTable flat_table = table_of({flat(0, 10, 40), flat(0, 100, 40), flat(0, 1000, 40)});
  EXPECT_EQ(0.0F, lp_find(flat_table, 20, 0));
  EXPECT_EQ(0.0F, lp_find(flat_table, 60, 0));
  EXPECT_EQ(0.0F, lp_find(table_of({flat(0, 10, 0), flat(0, 10, 0)}), 20, 0));
}

TEST_F(LevelSearch, FallingTablesEnd) {
  const LevelTable falling = table_of({flat(0, 10, 70), flat(0, 100, 40)});
  for (const float L : {10.0F, 43.0F, 50.0F, 60.0F, 73.0F, 100.0F}) {
    const float found = lp_find(falling, L, 0);
    EXPECT_GE(found, 0.0F) << L;
  }
}

TEST_F(LevelSearch, TableKeepsNoMoreRowsThanTheRecord) {
  LevelTable full(kRoomdamp);
  for (int i = 0; i < TAVD_LW_ROWS + 5; ++i) {
    full.add(flat(0, static_cast<float>(i + 1), static_cast<float>(i)));
  }
  EXPECT_EQ(TAVD_LW_ROWS, full.count());
  EXPECT_EQ(full.row(TAVD_LW_ROWS - 1).lpa, full.highest());
  EXPECT_EQ(full.row(0).lpa, full.lowest());
}

// ---- Against the plain transcription ----------------------------------------------------------------------

struct Search {
  LevelTable table{kRoomdamp};
  std::vector<ref::LevelSearchRow> rows;
  void add(const LevelRow& row) {
    table.add(row);
    ref::LevelSearchRow copy{row.group, row.val, {}};
    std::copy(row.lw, row.lw + TAVD_BANDS, copy.lw);
    rows.push_back(copy);
  }
  float expected(float L, int g) const {
    return ref::lp_find(static_cast<int>(rows.size()), rows.data(), L, g, kRoomdamp);
  }
};

std::string bits(float value) {
  return std::to_string(value) + " (" + std::to_string(std::bit_cast<std::uint32_t>(value)) + ")";
}

class LevelSearchTwice : public ::testing::Test {
 protected:
  void compare(const Search& search, float L, int g) {
    ++compared_;
    const float expected = search.expected(L, g);
    const float found = lp_find(search.table, L, g);
    found_ += expected != 0.0F ? 1 : 0;
    if (bits(expected) != bits(found) && ++differences_ <= 10) {
      ADD_FAILURE() << "level " << L << " of group " << g << ": " << bits(found) << ", second opinion "
                    << bits(expected);
    }
  }
  long compared_ = 0;
  long found_ = 0;
  long differences_ = 0;
};

// Tables as they are measured: whole dB, rising with the pressure, several groups.
TEST_F(LevelSearchTwice, MeasuredTablesAreEqualToTheBit) {
  reference::Random random(7);
  for (int round = 0; round < 3000; ++round) {
    Search search;
    const int groups = random.between(1, 6);
    for (std::int16_t g = 0; g < groups; ++g) {
      float val = random.logarithmic(2, 60);
      float level = random.uniform(10, 45);
      for (int i = random.between(1, 5); i > 0; --i) {
        LevelRow row{};
        row.group = g;
        row.val = val;
        for (float& band : row.lw) {
          band = std::floor(level + random.uniform(-15, 15));
        }
        search.add(row);
        val *= random.uniform(1.2F, 4);
        level += random.uniform(2, 15);
      }
    }
    for (int g = 0; g < groups; ++g) {
      compare(search, static_cast<float>(random.between(1, 16)) * 5, g);
      compare(search, random.uniform(0, 80), g);
    }
  }
  EXPECT_EQ(0, differences_) << "of " << compared_;
  EXPECT_GT(found_, compared_ / 2);
}

// A level exactly a tenth of a dB, or nothing, from what a probe tells decides by its last bit.
TEST_F(LevelSearchTwice, LevelsOnTheEdgeOfADecisionAreEqualToTheBit) {
  reference::Random random(8);
  for (int round = 0; round < 3000; ++round) {
    Search search;
    for (int i = 0; i < 3; ++i) {
      LevelRow row{};
      row.val = static_cast<float>(10 * (i + 1) * (i + 1));
      for (float& band : row.lw) {
        band = static_cast<float>(random.between(20, 35) + 12 * i);
      }
      search.add(row);
    }
    // The level at the first middle of the bracket, and what lies a tenth beside it.
    float lw[TAVD_BANDS];
    for (int band = 0; band < TAVD_BANDS; ++band) {
      lw[band] = tavca_loglin_interp(10, 40, 25, search.rows[0].lw[band], search.rows[1].lw[band]);
    }
    const float p = tavca_LpA(lw);
    for (const float at :
         {p, p - 0.1F, p + 0.1F, search.table.row(0).lpa, search.table.row(1).lpa, search.table.row(2).lpa}) {
      float L = at;
      for (int i = 0; i < 4; ++i) {
        compare(search, L, 0);
        L = std::nextafter(L, 1000.0F);
      }
      compare(search, std::nextafter(at, -1000.0F), 0);
    }
  }
  EXPECT_EQ(0, differences_) << "of " << compared_;
}

// Equal values, zero bands, levels far out, NaN and infinity: whatever runs through, both end with the same.
TEST_F(LevelSearchTwice, HostileTablesAreEqualToTheBitAndEnd) {
  const float vals[] = {1e-6F, 0.01F,  1,     10,   10,         10.000001F,
                        100,   1000,   20000, 1e7F, 3e38F,      kInfinity,
                        kNaN,  1e-40F, 0,     -5,   -kInfinity, std::nextafter(100.0F, 101.0F)};
  const float levels[] = {0,   0,      20,    35, 35.5F,     60,   99,         127,
                          255, -32768, 32767, -5, kInfinity, kNaN, -kInfinity, 1e30F};
  const auto pick = [](reference::Random& random, const auto& from) {
    return from[random.below(static_cast<int>(std::size(from)))];
  };
  reference::Random random(9);
  for (int round = 0; round < 3000; ++round) {
    const bool sane_levels = random.one_in(2);
    Search search;
    for (int i = random.between(1, 6); i > 0; --i) {
      LevelRow row{};
      row.val = pick(random, vals);
      for (float& band : row.lw) {
        band = sane_levels ? static_cast<float>(random.between(0, 80)) : pick(random, levels);
      }
      search.add(row);
    }
    compare(search, static_cast<float>(random.between(0, 20)) * 5, 0);
    compare(search, random.one_in(2) ? pick(random, levels) : random.uniform(0, 80), 0);
  }
  EXPECT_EQ(0, differences_) << "of " << compared_;
}

TEST_F(LevelSearchTwice, LoudAndDampedRoomsAreEqualToTheBit) {
  reference::Random random(10);
  for (int round = 0; round < 500; ++round) {
    Search search;
    const float base = random.one_in(2) ? random.uniform(-300, 300) : random.uniform(-20000, 20000);
    for (int i = 0; i < 3; ++i) {
      LevelRow row{};
      row.val = static_cast<float>(10 << i);
      for (float& band : row.lw) {
        band = base + random.uniform(0, 40);
      }
      search.add(row);
    }
    compare(search, base + random.uniform(-30, 60), 0);
    compare(search, random.uniform(0, 80), 0);
  }
  EXPECT_EQ(0, differences_) << "of " << compared_;
}

}  // namespace
}  // namespace tavd
