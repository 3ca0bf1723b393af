// Opening a catalogue: which records are products, texts, parameter values, cancelling, and bad options.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "exported/select/small_catalogue.h"
#include "support/wide.h"
#include "tavd/tavdcore.h"

namespace {

using selecttest::Catalogue;
using selecttest::damper;
using selecttest::open_catalogue;
using selecttest::terminal;
using tavdtest::Database;
using tavdtest::entry;
using tavdtest::Record;

std::string id_at(const Catalogue& catalogue, std::size_t index) {
  const tavdn_listed* const product = tavdn_catalogue_product(catalogue.get(), index);
  return product != nullptr ? std::string(product->class_id) + ' ' + product->object_id : "none";
}

TEST(SelectCatalogue, HoldsProductsWithFlowDataInTheOrderOfTheDatabase) {
  const Database db;
  damper(db, "DMP", "B-125", 125);
  damper(db, "DMP", "A-160", 160);
  terminal(db, "ASD", "Z-100", 100);
  Record("ASD", "NO-DATA").text(1501, "NO-DATA").save(db.handle());
  const Catalogue catalogue = open_catalogue(db);
  ASSERT_EQ(tavdn_catalogue_count(catalogue.get()), 3U);
  EXPECT_EQ(id_at(catalogue, 0), "ASD Z-100");
  EXPECT_EQ(id_at(catalogue, 1), "DMP A-160");
  EXPECT_EQ(id_at(catalogue, 2), "DMP B-125");
  EXPECT_EQ(id_at(catalogue, 3), "none");
  const tavdn_listed* const listed = tavdn_catalogue_product(catalogue.get(), 1);
  EXPECT_EQ(listed->duct.b, 160);
  EXPECT_NEAR(listed->area, 0.0201062F, 1e-7F);
  EXPECT_EQ(listed->variants, 1);
}

TEST(SelectCatalogue, LeavesOutWhatStandsForSeveralProducts) {
  const Database db;
  for (const auto mode : std::initializer_list<std::int16_t>{1, 2, 10, 11, -1}) {
    Record record("DMP", ("MODE-" + std::to_string(mode)).c_str());
    record.header(110, 100, 0, 10, 100, 1, 100).floats(1651, {50, 20}).words(1150, {mode}).save(db.handle());
  }
  for (const char* class_id : {"000", "TVM"}) {
    Record(class_id, "X").header(110, 100, 0, 10, 100, 1, 100).floats(1651, {50, 20}).save(db.handle());
  }
  Record("DMP", "SIZE").header(110, 100, 0, 10, 100, 1, 100).words(1150, {3}).save(db.handle());
  const Catalogue catalogue = open_catalogue(db);
  ASSERT_EQ(tavdn_catalogue_count(catalogue.get()), 1U);
  EXPECT_EQ(id_at(catalogue, 0), "DMP SIZE");
}

TEST(SelectCatalogue, TakesTheClassesThatAreAsked) {
  const Database db;
  for (const char* class_id : {"AAA", "BBB", "CCC"}) damper(db, class_id, "D-100", 100);
  const char* const classes[] = {"CCC", "AAA", "NON", "AAA"};
  tavdn_catalogue_options options = selecttest::catalogue_options();
  options.classes = classes;
  options.nclasses = 4;
  const Catalogue catalogue = open_catalogue(db, &options);
  ASSERT_EQ(tavdn_catalogue_count(catalogue.get()), 2U);
  EXPECT_EQ(id_at(catalogue, 0), "AAA D-100");
  EXPECT_EQ(id_at(catalogue, 1), "CCC D-100");
}

// The process's own market and language do not count.
TEST(SelectCatalogue, TakesTheTextsOfItsMarketAndLanguage) {
  const Database db;
  Record("DMP", "D")
      .header(110, 100, 0, 10, 100, 1, 100)
      .text(1505, "SECOND")
      .text(8500, "FINNISH")
      .text(9502, "English text")
      .save(db.handle());
  tavdcore_init(TAVD_LANGUAGE_FINNISH, "FIN", "");
  const auto texts = [&](const char* market, std::int32_t language) {
    tavdn_catalogue_options options = selecttest::catalogue_options();
    options.market = market;
    options.language = language;
    const Catalogue catalogue = open_catalogue(db, &options);
    const tavdn_listed* const listed = tavdn_catalogue_product(catalogue.get(), 0);
    return std::pair(std::u16string(listed->code), std::u16string(listed->description));
  };
  tavdcore_set_user_lng(TAVD_LANGUAGE_ENGLISH);
  tavd_wchar code[40] = {};
  tavd_wchar description[40] = {};
  const tavb_rec rec = tavbfindrec(db.handle(), "DMP", "D", 0);
  tavdf_copyproductcodew(db.handle(), rec, code, 40);
  tavdf_copyproductdescw(db.handle(), rec, description, 40);
  tavbreleaserec(rec);
  EXPECT_EQ(texts("fin", TAVD_LANGUAGE_ENGLISH),
            std::pair(std::u16string(code), std::u16string(description)));
  EXPECT_EQ(texts(nullptr, 0), std::pair(std::u16string(u"SECOND"), std::u16string()));
  EXPECT_EQ(texts("NOWHERE", -5), std::pair(std::u16string(u"SECOND"), std::u16string()));
}

TEST(SelectCatalogue, PreparesAProductOnceForEachChoice) {
  const Database db;
  terminal(db, "ASD", "PLAIN", 100);
  Record("ASD", "PLATES")
      .header(110, 100, 0, 10, 100, 1, 100)
      .floats(1651, {50, 20})
      .text(1514, "PLATE")
      .rows<ParEntry>(1661, {entry("50", 0.01F), entry("100", 0.0F)})
      .save(db.handle());
  const tavdn_value half[] = {{"PLATE", "50"}};
  const tavdn_value between[] = {{"plate", "75"}};
  const tavdn_value all[] = {{"PLATE", nullptr}, {"OTHER", nullptr}};
  const tavdn_value unknown[] = {{"PLATE", "wide"}};
  const tavdn_values sets[] = {{nullptr, 0}, {half, 1}, {between, 1}, {all, 2}, {unknown, 1}, {half, 1}};
  tavdn_catalogue_options options = selecttest::catalogue_options();
  options.sets = sets;
  options.nsets = 6;
  const Catalogue catalogue = open_catalogue(db, &options);
  ASSERT_EQ(tavdn_catalogue_count(catalogue.get()), 2U);
  EXPECT_EQ(tavdn_catalogue_product(catalogue.get(), 0)->variants, 1);  // PLAIN
  ASSERT_EQ(tavdn_catalogue_product(catalogue.get(), 1)->variants, 4);  // none, 50, 75, 100
  EXPECT_STREQ(tavdn_flowdata(tavdn_catalogue_variant(catalogue.get(), 1, 0))->par[0].value, "");
  EXPECT_STREQ(tavdn_flowdata(tavdn_catalogue_variant(catalogue.get(), 1, 2))->par[0].value, "75");
  EXPECT_EQ(tavdn_catalogue_variant(catalogue.get(), 1, 4), nullptr);
  EXPECT_EQ(tavdn_catalogue_variant(catalogue.get(), 1, -1), nullptr);
  EXPECT_EQ(tavdn_catalogue_variant(catalogue.get(), 2, 0), nullptr);
}

TEST(SelectCatalogue, TellsHowFarItIsAndCanBeCancelled) {
  const Database db;
  for (int i = 0; i < 300; ++i) damper(db, "DMP", "D-" + std::to_string(i), 100);
  struct Told {
    std::size_t calls = 0, last = 0, stop_at = 0;
  } told;
  tavdn_catalogue_options options = selecttest::catalogue_options();
  options.context = &told;
  options.progress = [](void* context, std::size_t records) {
    Told& to = *static_cast<Told*>(context);
    EXPECT_GT(records, to.last);
    to.last = records;
    return ++to.calls == to.stop_at ? 7 : 0;
  };
  EXPECT_EQ(tavdn_catalogue_count(open_catalogue(db, &options).get()), 300U);
  EXPECT_GT(told.calls, 2U);
  EXPECT_LE(told.last, 300U);
  told = {0, 0, 2};
  tavdn_catalogue* catalogue = reinterpret_cast<tavdn_catalogue*>(&told);
  EXPECT_EQ(tavdn_catalogue_open(db.handle(), &options, &catalogue), TAVDN_CANCELLED);
  EXPECT_EQ(catalogue, nullptr);
  EXPECT_EQ(told.calls, 2U);
}

// Each record is read whole, as it was or as it is; nothing is met twice.
TEST(SelectCatalogue, IsWholeWhileItsDatabaseChanges) {
  const Database db;
  for (int i = 0; i < 200; ++i) damper(db, "DMP", "D-" + std::to_string(1000 + i), 100);
  std::thread writer([&] {
    for (int i = 0; i < 400; ++i) damper(db, "DMP", "D-" + std::to_string(1000 + i), i % 2 == 0 ? 100 : 200);
  });
  for (int round = 0; round < 20; ++round) {
    const Catalogue catalogue = open_catalogue(db);
    const std::size_t count = tavdn_catalogue_count(catalogue.get());
    EXPECT_GE(count, 200U);
    for (std::size_t i = 0; i < count; ++i) {
      const tavdn_listed* const listed = tavdn_catalogue_product(catalogue.get(), i);
      const FlowData& fd = *tavdn_flowdata(tavdn_catalogue_variant(catalogue.get(), i, 0));
      const int width = fd.b;  // a copy: the field is packed
      EXPECT_EQ(width, listed->duct.b);
      EXPECT_TRUE(width == 100 || width == 200) << width;
      EXPECT_EQ(int{fd.ndamper}, 3);
      if (i > 0) {
        EXPECT_LT(id_at(catalogue, i - 1), id_at(catalogue, i));
      }
    }
  }
  writer.join();
}

TEST(SelectCatalogue, RefusesBadOptions) {
  const Database db;
  const auto answer = [&](const tavdn_catalogue_options& options) {
    tavdn_catalogue* catalogue = nullptr;
    const int code = tavdn_catalogue_open(db.handle(), &options, &catalogue);
    EXPECT_EQ(catalogue == nullptr, code != TAVDN_OK);
    tavdn_catalogue_close(catalogue);
    return code;
  };
  tavdn_catalogue_options options = selecttest::catalogue_options();
  EXPECT_EQ(answer(options), 0);
  --options.size;
  EXPECT_EQ(answer(options), -1);
  options = selecttest::catalogue_options();
  const char* const no_class[] = {nullptr};
  options.classes = no_class;
  options.nclasses = 1;
  EXPECT_EQ(answer(options), -1);
  options.nclasses = -1;
  EXPECT_EQ(answer(options), -1);
  options = selecttest::catalogue_options();
  options.nsets = 1;
  EXPECT_EQ(answer(options), -1);
  const tavdn_value no_name[] = {{nullptr, "1"}};
  tavdn_values set = {no_name, 1};
  options.sets = &set;
  EXPECT_EQ(answer(options), -1);
  set = {nullptr, 1};
  EXPECT_EQ(answer(options), -1);
  set = {no_name, -1};
  EXPECT_EQ(answer(options), -1);
  EXPECT_EQ(tavdn_catalogue_open(db.handle(), nullptr, nullptr), -1);
}

TEST(SelectCatalogue, IsEmptyWithoutADatabaseAndNullIsAllowed) {
  tavdn_catalogue* catalogue = nullptr;
  ASSERT_EQ(tavdn_catalogue_open(-1, nullptr, &catalogue), 0);
  EXPECT_EQ(tavdn_catalogue_count(catalogue), 0U);
  tavdn_catalogue_close(catalogue);
  tavdn_catalogue_close(nullptr);
  EXPECT_EQ(tavdn_catalogue_count(nullptr), 0U);
  EXPECT_EQ(tavdn_catalogue_product(nullptr, 0), nullptr);
  EXPECT_EQ(tavdn_catalogue_variant(nullptr, 0, 0), nullptr);
}

}  // namespace
