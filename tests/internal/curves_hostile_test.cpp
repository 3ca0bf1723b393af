// Curves over a state that no stored product makes: records with any number in any field.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "diagram/flowdiagram_draw.h"
#include "oracle/reference/records.h"
#include "support/recording.h"
#include "tavd/tavca.h"
#include "tavdgui/tavdgui.h"

namespace tavd {
namespace {

using tavdtest::Recording;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kHostile[] = {kNaN,   kInfinity, -kInfinity, 0.0F,  -0.0F, -1.0F,
                              -1e30F, 3.4e38F,   1e-40F,     1e-7F, 1e7F};
constexpr std::int16_t kKinds[] = {10, 11, 12, 13, 20, 22, 30, 40};

// The most that one paint draws: a chart of up to twice 10000 ticks, twenty damper lines, ten level lines of
// nineteen spans.
constexpr std::size_t kMostLines = 80'000;

class HostileCurves : public ::testing::Test {
 protected:
  void SetUp() override {
    objects_ = tgui_object_count();
    set_up(dg, 0);
  }
  void TearDown() override {
    release(dg);
    EXPECT_EQ(objects_, tgui_object_count()) << "objects are left";
  }

  // A good product of the kind with its chart.
  void build(std::int16_t kind) {
    FlowData& fd = dg.flowdata;
    std::memset(&fd, 0, sizeof fd);
    std::memcpy(fd.szclass, "ASD", 4);
    fd.kind = kind;
    fd.nhdd = 1;
    fd.isvelocity = static_cast<char>(kind == 11 || kind == 22 ? 1 : 0);
    fd.ductarea = 0.0314F;
    fd.qvmin = 20;
    fd.qvmax = 500;
    fd.dpmin = 5;
    fd.dpmax = 1000;
    fd.nref = 1;
    fd.qvref = 100;
    fd.dpref = 50;
    const auto square_law = [](float k, float qv) { return k * qv * qv; };
    for (int i = 0; i < 4; ++i) {
      const float n = static_cast<float>(i);
      const float k = 0.05F / static_cast<float>(1 << (2 * i));
      const float qv = 40 + 100 * n;
      fd.damper[fd.ndamper++] = {n + 1, 100, square_law(k, 100)};
      fd.qvdppoints[fd.nqvdp++] = {qv, square_law(0.005F, qv) * (1 + 0.1F * n)};
      fd.fancurve[fd.nfan++] = {qv, 900 - 200 * n, 0};
      for (int j = 0; j < 3; ++j) {
        LwPoint& row = fd.lwpoints[fd.nlw++];
        row.qv = kind == 30 ? qv : 60 * static_cast<float>(1 << j);
        row.dp = kind == 30 ? 20 * static_cast<float>(1 << (2 * j)) : square_law(k, row.qv);
        for (std::uint8_t& band : row.lw) {
          band = static_cast<std::uint8_t>(20 + 3 * i + 12 * j);
        }
      }
    }
    for (ParTable& par : fd.par) {
      std::memcpy(par.name, "PAR", 4);
      std::memcpy(par.value, "1", 2);
      par.count = 2;
      par.idx2 = 1;
      par.frac = 0.5F;
    }
    fd.npar = 2;
    dg.qv = 100;
    dg.dp = 100;
    dg.roomdamp = 4;
    dg.qvlimit1 = 50;
    dg.qvlimit2 = 200;
    dg.dptype = 1;
    make_chart();
  }

  void make_chart() {
    chart_destroy(dg.chart);
    const FlowData& fd = dg.flowdata;
    const bool log = fd.kind != TAVD_KIND_FAN;
    dg.chart = chart_create({fd.qvmin, fd.qvmax, 50, 5, 1, log}, {fd.dpmin, fd.dpmax, 100, 5, 1, log}, "x",
                            "y", "t");
    dg.ready = true;
  }

  void paint() {
    recording_.clear();
    create_tools(dg);
    draw(dg, recording_.surface());
    destroy_tools(dg);
    const std::string text = recording_.text();
    EXPECT_LT(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), kMostLines);
    tgui_state state{};
    tgui_surface_state(recording_.surface(), &state);
    EXPECT_EQ(tgui_stock_object(TGUI_BLACK_PEN), state.pen);
    EXPECT_EQ(tgui_stock_object(TGUI_SYSTEM_FONT), state.font);
    EXPECT_EQ(tgui_stock_object(TGUI_WHITE_BRUSH), state.brush);
  }

  // Writes `value` over the float at an offset of the record.
  void put(std::size_t offset, float value) {
    std::memcpy(reinterpret_cast<unsigned char*>(&dg.flowdata) + offset, &value, sizeof value);
  }

  FlowDiagram dg{};
  Recording recording_;
  int objects_ = 0;
};

// Offsets of every float that a curve may read.
std::vector<std::size_t> float_offsets() {
  std::vector<std::size_t> all = {offsetof(FlowData, ductarea), offsetof(FlowData, lwsizecoef),
                                  offsetof(FlowData, qvmin),    offsetof(FlowData, qvmax),
                                  offsetof(FlowData, dpmin),    offsetof(FlowData, dpmax),
                                  offsetof(FlowData, qvref),    offsetof(FlowData, dpref)};
  const auto add_rows = [&all](std::size_t table, std::size_t row_size, std::size_t row,
                               std::initializer_list<std::size_t> fields) {
    for (const std::size_t field : fields) {
      all.push_back(table + row * row_size + field);
    }
  };
  for (std::size_t row = 0; row < 4; ++row) {
    add_rows(offsetof(FlowData, damper), sizeof(DamperPoint), row, {0, 4, 8});
    add_rows(offsetof(FlowData, qvdppoints), sizeof(QvDpPoint), row, {0, 4});
    add_rows(offsetof(FlowData, fancurve), sizeof(FanPoint), row, {0, 4, 8});
  }
  for (std::size_t row = 0; row < 12; ++row) {
    add_rows(offsetof(FlowData, lwpoints), sizeof(LwPoint), row, {0, 4});
  }
  for (std::size_t par = 0; par < TAVD_PARAMETERS; ++par) {
    const std::size_t table = offsetof(FlowData, par) + par * sizeof(ParTable);
    all.push_back(table + offsetof(ParTable, frac));
    for (std::size_t row = 0; row < 2; ++row) {
      add_rows(table + offsetof(ParTable, table), sizeof(ParEntry), row,
               {offsetof(ParEntry, dk), offsetof(ParEntry, factor)});
    }
  }
  return all;
}

TEST_F(HostileCurves, GoodProductsAreDrawn) {
  for (const std::int16_t kind : kKinds) {
    build(kind);
    paint();
    EXPECT_GT(recording_.segments().size(), 20U) << kind;
  }
}

TEST_F(HostileCurves, AnyNumberInAnyFieldIsSurvived) {
  const std::vector<std::size_t> offsets = float_offsets();
  for (const std::int16_t kind : kKinds) {
    for (const std::size_t offset : offsets) {
      for (const float value : kHostile) {
        build(kind);
        put(offset, value);
        SCOPED_TRACE(testing::Message() << "kind " << kind << ", offset " << offset << ", " << value);
        // The limits take part in the axes, as if the number had come through the build; the chart is the
        // good one in every other case.
        if (offset >= offsetof(FlowData, qvmin) && offset <= offsetof(FlowData, dpmax)) {
          paint();
          make_chart();
        }
        paint();
        if (HasFailure()) {
          return;
        }
      }
    }
  }
}

TEST_F(HostileCurves, AnyNumberInTheStateIsSurvived) {
  float* const fields[] = {&dg.qv,    &dg.dp,     &dg.qvlimit1, &dg.qvlimit2, &dg.lpmin,
                           &dg.lpmax, &dg.lpstep, &dg.xfactor,  &dg.yfactor};
  for (const std::int16_t kind : kKinds) {
    for (float* field : fields) {
      const float former = *field;
      for (const float value : kHostile) {
        build(kind);
        *field = value;
        paint();
        EXPECT_FALSE(HasFailure()) << kind;
        *field = former;
      }
    }
  }
}

TEST_F(HostileCurves, AnyResolutionAndSizeIsSurvived) {
  for (const std::int16_t kind : kKinds) {
    for (const int n : {std::numeric_limits<int>::min(), -1, 0, 1, 7, std::numeric_limits<int>::max()}) {
      build(kind);
      set_resolution(dg, n);
      paint();
      for (const int extent : {-(n / 2), n}) {
        dg.width = extent;
        dg.height = extent;
        paint();
      }
      dg.width = dg.height = kDefaultExtent;
      dg.resolution = 2;
    }
  }
}

TEST_F(HostileCurves, CountsThatLieAreCutToTheRowsOfTheRecord) {
  for (const std::int16_t kind : kKinds) {
    for (const std::int16_t count : {std::int16_t{-32768}, std::int16_t{-1}, std::int16_t{0}, std::int16_t{1},
                                     std::int16_t{61}, std::int16_t{32767}}) {
      build(kind);
      dg.flowdata.ndamper = dg.flowdata.nqvdp = dg.flowdata.nfan = dg.flowdata.nlw = count;
      paint();
    }
  }
}

TEST_F(HostileCurves, DegenerateSoundTablesEnd) {
  const struct {
    const char* what;
    int rows;
    float (*qv)(int);
    float (*dp)(int);
    int (*level)(int);
  } tables[] = {
      {"one row", 1, [](int) { return 100.0F; }, [](int) { return 100.0F; }, [](int) { return 40; }},
      {"equal rows", 60, [](int) { return 100.0F; }, [](int) { return 100.0F; }, [](int) { return 40; }},
      {"silence", 60, [](int i) { return 10.0F + static_cast<float>(i); },
       [](int i) { return 10.0F + static_cast<float>(i); }, [](int) { return 0; }},
      {"sixty groups", 60, [](int i) { return 10.0F * static_cast<float>(i + 1); },
       [](int i) { return 1.0F + static_cast<float>((i * 7) % 60) * 100; }, [](int i) { return i; }},
      {"falling levels", 60, [](int i) { return 20.0F + 30 * std::floor(static_cast<float>(i) / 10); },
       [](int i) { return 10.0F * static_cast<float>(i % 10 + 1); }, [](int i) { return 90 - i; }},
      {"pressures a float apart", 60,
       [](int i) { return 20.0F + 30 * std::floor(static_cast<float>(i) / 2); },
       [](int i) { return i % 2 == 0 ? 100.0F : std::nextafter(100.0F, 101.0F); },
       [](int i) { return i % 2 == 0 ? 20 : 90; }},
  };
  for (const std::int16_t kind : kKinds) {
    for (const auto& table : tables) {
      SCOPED_TRACE(testing::Message() << "kind " << kind << ", " << table.what);
      build(kind);
      dg.flowdata.nlw = static_cast<std::int16_t>(table.rows);
      for (int i = 0; i < table.rows; ++i) {
        LwPoint& row = dg.flowdata.lwpoints[i];
        row.qv = table.qv(i);
        row.dp = table.dp(i);
        std::fill(row.lw, row.lw + TAVD_BANDS, static_cast<std::uint8_t>(table.level(i)));
      }
      paint();
    }
  }
}

TEST_F(HostileCurves, AxesFromAThousandthToTenMillionAreDrawn) {
  for (const std::int16_t kind : kKinds) {
    build(kind);
    dg.flowdata.qvmin = dg.flowdata.dpmin = 1e-3F;
    dg.flowdata.qvmax = dg.flowdata.dpmax = 1e7F;
    make_chart();
    paint();
    EXPECT_GT(recording_.segments().size(), 8U) << kind;
  }
}

// Ends whose logarithms are the same float: an infinite scale.
TEST_F(HostileCurves, AxesWithoutAnExtentAreSurvived) {
  for (const std::int16_t kind : kKinds) {
    for (const float lo : {1e30F, 1.0F, 1e-30F}) {
      build(kind);
      const float hi = lo * 1.000002F;
      dg.flowdata.qvmin = dg.flowdata.dpmin = lo;
      dg.flowdata.qvmax = dg.flowdata.dpmax = hi;
      dg.qv = dg.dp = dg.qvlimit1 = dg.qvlimit2 = lo * 1.000001F;
      make_chart();
      paint();
    }
  }
}

TEST_F(HostileCurves, DampingWithoutBoundsIsSurvived) {
  for (const float damping : {kNaN, kInfinity, -kInfinity, 1e30F, -1e30F, 1000.0F, -1000.0F}) {
    tavca_setroomdamp(damping);
    for (const std::int16_t kind : kKinds) {
      build(kind);
      paint();
    }
  }
  tavca_setroomdamp(4);
}

TEST_F(HostileCurves, RandomHostileRecordsAreSurvived) {
  reference::Random random(11);
  for (int round = 0; round < 2000; ++round) {
    const std::int16_t kind = kKinds[random.below(static_cast<int>(std::size(kKinds)))];
    build(kind);
    const reference::Product product = random_product(random, kind, reference::Shape::hostile);
    dg.flowdata = product.fd;
    dg.dptype = random.below(2);
    if (random.one_in(2)) {
      make_chart();
    }
    paint();
  }
}

TEST_F(HostileCurves, DiagramsWithStatesOfTheirOwnDoNotMeet) {
  build(40);
  FlowDiagram fan = dg;
  dg = {};
  set_up(dg, 0);
  build(20);
  paint();
  const std::string before = recording_.text();
  Recording beside;
  create_tools(fan);
  draw(fan, beside.surface());
  destroy_tools(fan);
  release(fan);
  EXPECT_NE(before, beside.text());
  paint();
  EXPECT_EQ(before, recording_.text());
}

// A drawing whose tools cannot all be made leaves none of them behind.
TEST_F(HostileCurves, ToolsThatCannotBeMadeLeaveNothingBehind) {
  for (const std::int16_t kind : kKinds) {
    build(kind);
    const int objects = tgui_object_count();
    for (int first = 0; first < 14; ++first) {
      for (const int failing : {1, 3, 100}) {
        tgui_fail_objects(first, failing);
        paint();
        tgui_fail_objects(0, 0);
        EXPECT_EQ(objects, tgui_object_count()) << kind << ' ' << first << ' ' << failing;
      }
    }
  }
}

// ---- Marks of measured products, which no stored product shows: the loader reads no reference point for
// them

TEST_F(HostileCurves, MarksOfMeasuredProductsLieOnTheMeasuredCurve) {
  build(12);
  dg.dptype = 0;
  FlowData& fd = dg.flowdata;
  fd.npar = 0;
  fd.nlw = 2;
  fd.lwpoints[0].qv = 40;
  fd.lwpoints[0].dp = 8;
  fd.lwpoints[1].qv = 400;
  fd.lwpoints[1].dp = 800;
  std::fill(fd.lwpoints[0].lw, fd.lwpoints[0].lw + TAVD_BANDS, std::uint8_t{10});
  std::fill(fd.lwpoints[1].lw, fd.lwpoints[1].lw + TAVD_BANDS, std::uint8_t{40});
  dg.qv = 0;  // no operating point
  paint();
  const std::vector<tavdtest::Segment> marks = recording_.figures("ellipse");
  // 20, 25, 30, 35, 40 dB(A) at 30 dB a decade of flow: bands of 17.0, 22.0, ... dB.
  ASSERT_EQ(5U, marks.size());
  const float silent[TAVD_BANDS] = {};
  for (std::size_t i = 0; i < marks.size(); ++i) {
    const double L = 20 + 5 * static_cast<double>(i);
    const double qv = 40 * std::pow(10.0, (L - tavca_LpA(silent) - 10) / 30);
    const int x = (marks[i][0] + marks[i][2]) / 2;
    const int y = (marks[i][1] + marks[i][3]) / 2;
    // A tenth of a dB is a 300th of a decade: 17 units of x.
    EXPECT_NEAR(x_pixel(dg, static_cast<float>(qv)), x, 18) << L;
    EXPECT_NEAR(y_pixel(dg, tavca_floating_dp(&fd, static_cast<float>(qv))), y, 25) << L;
    EXPECT_EQ(100, marks[i][2] - x);
  }
  fd.nref = 0;
  paint();
  EXPECT_EQ(0U, recording_.figures("ellipse").size());
}

}  // namespace
}  // namespace tavd
