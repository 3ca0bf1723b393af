// Data sheets of the sample catalogue in all languages: no text leaves the room that it has, none stands on
// another or is cut short. They are laid out in this process, with the fonts that pages are drawn with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "product/database.h"
#include "sheet/contents.h"
#include "sheet/layout.h"
#include "sheet/portable/text_shaper.h"
#include "sheet/sheet_page.h"
#include "sheet/subject.h"
#include "support/program.h"

namespace {

using tavdhost::Box;
using tavdhost::Database;
using tavdhost::PlacedText;
using tavdhost::Record;
using tavdhost::RecordKey;
using testing::IsEmpty;

constexpr double kTolerance = 0.02;  // mm

// Measures as pages do, and draws nothing.
class MeasuringPainter : public tavdhost::Painter {
 public:
  explicit MeasuringPainter(std::string language) : language_(std::move(language)) { keep_texts(); }
  void line(std::span<const tavdhost::PagePoint> /*points*/, const tavdhost::LineStyle& /*style*/) override {}
  void area(std::span<const tavdhost::PagePoint> /*corners*/, std::uint32_t /*colour*/) override {}
  void circle(tavdhost::PagePoint /*centre*/, double /*radius*/,
              const tavdhost::LineStyle& /*style*/) override {}
  void disc(tavdhost::PagePoint /*centre*/, double /*radius*/, std::uint32_t /*colour*/) override {}
  tavdhost::TextSize measure(const std::string& text, const tavdhost::TextStyle& style) override {
    return tavdhost::shaped_size(text, style, language_);
  }

 protected:
  void draw_text(const std::string& /*text*/, const tavdhost::TextStyle& /*style*/,
                 const tavdhost::TextPlace& /*place*/, const tavdhost::TextSize& /*size*/) override {}

 private:
  std::string language_;
};

Box bounds(const PlacedText& text) {
  Box box = {text.corners[0].x, text.corners[0].y, 0, 0};
  double right = box.left;
  double bottom = box.top;
  for (const auto& [x, y] : text.corners) {
    box.left = std::min(box.left, x);
    box.top = std::min(box.top, y);
    right = std::max(right, x);
    bottom = std::max(bottom, y);
  }
  return {box.left, box.top, right - box.left, bottom - box.top};
}

bool holds(const Box& outer, const Box& inner) {
  return inner.left >= outer.left - kTolerance && inner.top >= outer.top - kTolerance &&
         inner.right() <= outer.right() + kTolerance && inner.bottom() <= outer.bottom() + kTolerance;
}

// Cells of texts have room above and below the letters: lines may stand as close as that.
bool overlap(const Box& a, const Box& b) {
  constexpr double kCellRoom = 0.35;  // of a cell's height
  const double room = std::min(a.height, b.height) * kCellRoom;
  return a.left < b.right() - kTolerance && b.left < a.right() - kTolerance && a.top < b.bottom() - room &&
         b.top < a.bottom() - room;
}

bool is_upright(const PlacedText& text) {
  return text.corners[0].y == text.corners[1].y;
}

std::string told(const Box& box) {
  std::string text;
  for (const double side : {box.left, box.top, box.right(), box.bottom()}) text += std::to_string(side) + " ";
  return text;
}

struct CatalogueSheets : testing::Test {
  CatalogueSheets() {
    const std::string path = folder.file("catalogue.tavdb");
    const clitest::Outcome outcome =
        clitest::run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", path});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  }

  // Lays out the sheets of all products, at a point in the middle of their limits and at one outside of them.
  void lay_out(const tavdhost::SheetTexts& texts) {
    tavdhost::SheetForm form;
    form.texts = &texts;
    form.database = "catalogue.tavdb";
    form.database_time = "2026-11-22 15:50 UTC";
    // The library's languages have two letters.
    const Database database(folder.file("catalogue.tavdb"), Database::Open::kExisting,
                            {"", std::string(texts.language).substr(0, 2)});
    tavdhost::ProductChooser chooser(database);
    for (Record record = database.first(); record; record = database.next(record)) {
      const RecordKey key = database.key(record);
      if (!hosts::is_product_class(key.class_id)) continue;
      const FlowData flow = tavdhost::load_product(database, record).flow;
      if (flow.nhdd == 0) continue;
      const float middle = std::sqrt(std::max(float{flow.qvmin}, 1.0F) * flow.qvmax);
      const float pressure = std::sqrt(std::max(float{flow.dpmin}, 1.0F) * flow.dpmax);
      check(tavdhost::sheet_subject(database, chooser, key, {}, duty(middle, pressure), form), form);
      check(tavdhost::sheet_subject(database, chooser, key, {}, duty(flow.qvmax * 2, flow.dpmax * 3), form),
            form);
      ++products;
    }
  }

  static tavdhost::SheetDuty duty(float qv, float dp) {
    tavdhost::SheetDuty made;
    made.qv.plain = qv;
    made.dp = dp;
    return made;
  }

  void check(const tavdhost::SheetSubject& subject, const tavdhost::SheetForm& form) {
    MeasuringPainter painter(form.texts->language);
    tavdhost::draw_sheet(painter, subject, tavdhost::sheet_contents(subject, form), form, {1, 1},
                         [](const Box& /*box*/) {});
    const Box page = {0, 0, tavdhost::kSheetWidth, tavdhost::kSheetHeight};
    const std::string name =
        std::string(form.texts->language) + " " + subject.chosen.product.key.object_id + ": ";
    std::vector<std::pair<const PlacedText*, Box>> upright;
    for (const PlacedText& text : painter.texts()) {
      const Box box = bounds(text);
      if (!holds(text.room, box) || !holds(page, box)) {
        faults.push_back(name + text.text + " leaves its room: " + told(box) + " in " + told(text.room));
      }
      if (text.text.ends_with("…")) faults.push_back(name + text.text + " is cut short");
      for (const auto& [other, taken] : upright) {
        if (overlap(box, taken)) faults.push_back(name + text.text + " stands on " + other->text);
      }
      if (is_upright(text)) upright.emplace_back(&text, box);
      ++checked;
    }
  }

  clitest::Folder folder;
  std::size_t products = 0, checked = 0;
  std::vector<std::string> faults;
};

struct SheetsInALanguage : CatalogueSheets, testing::WithParamInterface<const tavdhost::SheetTexts*> {};

TEST_P(SheetsInALanguage, HaveNoTextOutsideItsRoomOnAnotherOrCutShort) {
  lay_out(*GetParam());
  EXPECT_GT(products, 80U);
  EXPECT_GT(checked, products * 80);
  EXPECT_THAT(faults, IsEmpty());
}

const std::vector<const tavdhost::SheetTexts*> kAllTexts(tavdhost::all_sheet_texts().begin(),
                                                         tavdhost::all_sheet_texts().end());
INSTANTIATE_TEST_SUITE_P(All, SheetsInALanguage, testing::ValuesIn(kAllTexts),
                         [](const auto& info) { return std::string(info.param->language).substr(0, 2); });

// A language without a word, or with one of another language, is a mistake in its table.
TEST(SheetTexts, OfAllLanguagesDifferAndAreComplete) {
  const auto texts = tavdhost::all_sheet_texts();
  ASSERT_EQ(texts.size(), 7U);
  for (const tavdhost::SheetTexts* one : texts) {
    for (const tavdhost::SheetTexts* other : texts) {
      if (one == other) continue;
      EXPECT_STRNE(one->headings.sheet, other->headings.sheet);
      EXPECT_STRNE(one->names.flow, other->names.flow);
      EXPECT_STRNE(one->notes.total_pressure, other->notes.total_pressure);
    }
    EXPECT_EQ(one->kinds.size(), 8U);
    EXPECT_THAT(one->notes.flow_outside, testing::HasSubstr("{}"));
    EXPECT_THAT(one->notes.unreachable, testing::HasSubstr("{}"));
    EXPECT_THAT(one->notes.takes, testing::HasSubstr("{}"));
    EXPECT_THAT(one->schedule.without, testing::HasSubstr("{}"));
  }
}

}  // namespace
