// No text of a chart stands on another one, on the duty or beyond its room: over the whole catalogue and all
// kinds of synthetic products, at duties of all sorts, as pages of PDF measure texts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "program/charts/scenes.h"
#include "sheet/chart/band_chart.h"
#include "sheet/chart/labels.h"
#include "sheet/chart/throw_chart.h"
#include "sheet/portable/cairo_painter.h"
#include "sheet/recording_painter.h"
#include "support/program.h"
#include "support/unseen_page.h"

namespace {

using tavdhost::Box;
using tavdhost::CairoPainter;
using tavdhost::ChartDuty;
using tavdhost::ChartLayout;
using tavdhost::flow_curves;
using tavdhost::FlowCurves;
using tavdhost::Product;
using testing::Each;
using testing::IsEmpty;
using testing::Not;

constexpr float kRoomDamping = 4;  // dB

std::vector<std::string> faults_of_flow_chart(const FlowCurves& curves, const ChartDuty& duty,
                                              const Box& room) {
  const UnseenPage page;
  CairoPainter painter(page.context(), "en");
  painter.keep_texts();
  const ChartLayout layout = draw_flow_chart(painter, room, curves, duty, charts::english());
  return charts::faults(painter.texts(), layout);
}

std::vector<std::string> faults_of_throw_chart(const FlowData& flow, const ChartDuty& duty, const Box& room) {
  const UnseenPage page;
  CairoPainter painter(page.context(), "en");
  painter.keep_texts();
  const ChartLayout layout =
      draw_throw_chart(painter, room, tavdhost::throw_curves(flow), duty, 3, charts::english());
  return charts::faults(painter.texts(), layout);
}

struct ChartLabels : testing::Test {
  // A database that the program makes.
  std::vector<Product> made(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"db"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const clitest::Outcome outcome = clitest::run_program(all);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    return charts::products_of(path);
  }
  void expect_no_faults(const std::vector<Product>& products) {
    std::vector<std::string> found;
    std::map<int, int> kinds;
    for (const Product& product : products) {
      ++kinds[product.flow.kind];
      const FlowCurves curves = flow_curves(product.flow, &product.size, kRoomDamping);
      std::size_t number = 0;
      for (const ChartDuty& duty : charts::duties(product.flow)) {
        const Box room = charts::rooms()[number++ % charts::rooms().size()];
        for (const std::string& fault : faults_of_flow_chart(curves, duty, room)) {
          found.push_back(product.key.object_id + ": " + fault);
        }
        if (product.flow.nqvL2 == 0 && product.flow.nparL2 == 0) continue;
        for (const std::string& fault : faults_of_throw_chart(product.flow, duty, room)) {
          found.push_back(product.key.object_id + ", throw: " + fault);
        }
      }
    }
    EXPECT_THAT(found, IsEmpty());
    EXPECT_GE(kinds.size(), 5U);
  }

  const clitest::Folder folder;
  const std::string path = folder.file("products.tavdb");
};

TEST_F(ChartLabels, StandOnNothingOverTheWholeCatalogue) {
  const std::vector<Product> products = made({"build", TAVD_SOURCE_DIR "/catalogue", "-o", path});
  EXPECT_GT(products.size(), 80U);
  expect_no_faults(products);
}

// A few of each kind, or as many as TAVD_SYNTHETIC_CHARTS asks for.
TEST_F(ChartLabels, StandOnNothingForAllSyntheticKinds) {
  const char* const asked = std::getenv("TAVD_SYNTHETIC_CHARTS");
  const int each = asked == nullptr ? 6 : std::atoi(asked);
  std::map<int, int> taken;
  std::vector<Product> products;
  for (Product& product : made({"synth", path, "--records", std::to_string(100 * each)})) {
    if (taken[product.flow.kind]++ < each) products.push_back(std::move(product));
  }
  expect_no_faults(products);
}

// The count is able to fail: the same labels placed without regard to each other.
TEST_F(ChartLabels, AreCountedWhereTheyOverlap) {
  const UnseenPage page;
  CairoPainter painter(page.context(), "en");
  painter.keep_texts();
  const Box room = {0, 0, 60, 60};
  const tavdhost::TextStyle style = {2.5};
  tavdhost::ChartLayout layout;
  layout.limits = room;
  for (int i = 0; i < 2; ++i) {
    tavdhost::LabelPlacer placer(painter, room);  // knows nothing of the other's label
    placer.add_line({{5, 50}, {50, 5}}, tavdhost::kUsualLine);
    const auto label = placer.on_line(0, "35", style, 0.5);
    ASSERT_TRUE(label);
    EXPECT_DOUBLE_EQ(label->angle, 45);
    placer.draw(*label, room);
    layout.labels.push_back({label->text, label->quad});
  }
  EXPECT_THAT(charts::faults(painter.texts(), layout), testing::ElementsAre("overlap: \"35\" and \"35\""));
  layout.duty = tavdhost::PagePoint{27.5, 27.5};
  EXPECT_EQ(charts::faults(painter.texts(), layout).size(), 3U);
  layout.limits = {0, 0, 20, 20};
  EXPECT_EQ(charts::faults(painter.texts(), layout).size(), 5U);
  painter.text("too long for its room", style, {{50, 10}}, room);
  EXPECT_EQ(charts::faults(painter.texts(), layout).size(), 6U);
}

TEST_F(ChartLabels, MoveAlongTheirCurveUntilTheyAreFree) {
  tavdhost::RecordingPainter painter;
  const Box room = {0, 0, 60, 60};
  tavdhost::LabelPlacer placer(painter, room);
  placer.add_line({{5, 30}, {55, 30}}, tavdhost::kUsualLine);
  placer.keep_free(tavdhost::quad_of({20, 20, 20, 20}));
  const auto label = placer.on_line(0, "35", {2.5}, 0.5);
  ASSERT_TRUE(label);
  EXPECT_FALSE(overlap(label->quad, tavdhost::quad_of({20, 20, 20, 20})));
  EXPECT_DOUBLE_EQ(label->middle.y, 30);
  placer.keep_free(tavdhost::quad_of({0, 20, 60, 20}));
  EXPECT_FALSE(placer.on_line(0, "35", {2.5}, 0.5));
}

// Bars of all heights, also none.
TEST_F(ChartLabels, OfBarsStandOnNothing) {
  const UnseenPage page;
  for (const float level : {-20.0F, 0.0F, 5.0F, 49.5F, 100.0F}) {
    CairoPainter painter(page.context(), "en");
    painter.keep_texts();
    tavdhost::BandLevels levels = {{level, 50, 45, 40, 35, 30, level, level}, 44};
    draw_band_chart(painter, {122, 109, 73, 49}, levels, charts::english());
    EXPECT_THAT(charts::faults(painter.texts(), {}), IsEmpty()) << level;
    EXPECT_EQ(painter.texts().size() > 20, true);
  }
}

}  // namespace
