// `tavd copy`: a product from one database into another.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>

#include "db_records.h"
#include "families.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::kModelId;
using clitest::lines_of;
using clitest::parse_json;
using clitest::run_json;
using clitest::run_text;
using clitest::stored_records;
using clitest::StoredRecord;
using clitest::texts_of;
using tavdtest::Record;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Copy : testing::Test {
  Copy() { clitest::add_families(database); }

  std::vector<std::string> command(const char* class_id, const char* id,
                                   std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"copy", database.path(), class_id, id, target});
    return options;
  }

  // The records of a database, by class and object id.
  static std::map<std::string, StoredRecord> records(const std::string& path) {
    std::map<std::string, StoredRecord> by_key;
    for (const StoredRecord& record : stored_records(path)) {
      std::string key = record.key.substr(0, 3) + ' ' + record.key.substr(3);
      key.resize(key.find_last_not_of(' ') + 1);
      by_key[key] = record;
    }
    return by_key;
  }
  static std::vector<std::string> keys(const std::string& path) {
    std::vector<std::string> names;
    for (const auto& [key, record] : records(path)) names.push_back(key);
    return names;
  }

  tavdtest::Database database;
  clitest::Folder folder;
  std::string target = folder.file("target.tavdb");
};

TEST_F(Copy, OfAFamilyIntoANewDatabaseTakesSizesModelAndFileHeaderAlong) {
  EXPECT_THAT(lines_of(run_text(command("FAM", "F-*"))),
              ElementsAre("FAM F-* with 2 sizes copied to " + target, "model record MODEL-1 copied"));
  EXPECT_THAT(keys(target),
              ElementsAre("000 FILEHEADER", "FAM F-*", "FAM F-100", "FAM F-125", "TVM MODEL-1"));
  EXPECT_EQ(records(target)["TVM MODEL-1"].ahm, clitest::kModelBlock);
}

TEST_F(Copy, HandsMakerAndModelDownToTheSizesAndLeavesAllElseAsItWas) {
  run_text(command("FAM", "F-*"));
  auto from = records(database.path());
  auto into = records(target);
  for (const char* size : {"FAM F-100", "FAM F-125"}) {
    from[size].attributes[clitest::kMaker] = "Main works";
    from[size].attributes[kModelId] = "MODEL-1";
  }
  for (const auto& [key, record] : into) EXPECT_EQ(record, from[key]) << key;
  EXPECT_EQ(into.size(), 5u);
}

// The products of a database as its text has them, by class and id.
std::map<std::string, Json::Value> dumped(const std::string& path) {
  std::map<std::string, Json::Value> products;
  for (const Json::Value& product : parse_json(run_text({"db", "dump", path}))) {
    products[product["class"].asString() + ' ' + product["id"].asString()] = product;
  }
  return products;
}

TEST_F(Copy, OfASampleFamilyDumpsAsTheSameProductsWithMakerAndModelHandedDown) {
  const std::string source = folder.file("catalogue.tavdb");
  run_text({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", source});
  const struct {
    const char* class_id;
    const char* main;
    std::size_t sizes;
    const char* model;
  } families[] = {{"SIL", "QZNA-*-*+50", 6, "QZNA-MODEL"}, {"DMP", "QZDA-*", 6, "QZDA-MODEL"}};
  for (const auto& [class_id, main, sizes, model] : families) {
    const std::string copied = folder.file(std::string(class_id) + ".tavdb");
    run_text({"copy", source, class_id, main, copied});
    auto before = dumped(source);
    const auto after = dumped(copied);
    EXPECT_EQ(after.size(), sizes + 3);  // the main record, its model and the file header
    EXPECT_TRUE(after.contains(std::string("TVM ") + model));
    for (const auto& [key, product] : after) {
      ASSERT_TRUE(before.contains(key)) << key;
      Json::Value expected = before[key];
      if (product["class"].asString() == class_id) {
        EXPECT_EQ(product["szManu"].asString(), "Example Ventilation Works") << key;
        EXPECT_EQ(product["tvmAtt"].asString(), model) << key;
        expected["tvmAtt"] = model;
      }
      EXPECT_EQ(product, expected) << key;
    }
  }
}

TEST_F(Copy, OfAFamilyByListTakesTheNamedSizesAndTheirOwnModels) {
  const Json::Value json = run_json(command("FAM", "F"));
  EXPECT_EQ(json["class"].asString(), "FAM");
  EXPECT_EQ(json["id"].asString(), "F");
  EXPECT_THAT(texts_of(json["sizes"]), ElementsAre("F-125", "F-100"));
  EXPECT_THAT(texts_of(json["model_records"]), ElementsAre("MODEL-2"));
  EXPECT_EQ(json["model_records_not_found"].size(), 0u);
  EXPECT_EQ(json["replaced"].asInt(), 0);
  EXPECT_THAT(keys(target), ElementsAre("000 FILEHEADER", "FAM F", "FAM F-100", "FAM F-125", "TVM MODEL-2"));
}

TEST_F(Copy, OfOneSizeTakesThatSizeAlone) {
  EXPECT_EQ(run_text(command("FAM", "F-100")),
            "FAM F-100 copied to " + target + "\nmodel record MODEL-2 copied\n");
  EXPECT_THAT(keys(target), ElementsAre("000 FILEHEADER", "FAM F-100", "TVM MODEL-2"));
}

TEST_F(Copy, IntoADatabaseThatHoldsTheProductReplacesIt) {
  run_text(command("FAM", "F-100"));
  EXPECT_THAT(run_text(command("FAM", "F-*")),
              HasSubstr("FAM F-* with 2 sizes copied to " + target + ", 1 record replaced\n"));
  EXPECT_EQ(records(target)["FAM F-100"].attributes[clitest::kMaker], "Main works");
}

TEST_F(Copy, NamesAModelRecordThatTheSourceDoesNotHold) {
  Record("FAM", "LOST").text(clitest::kModelIdFallback, "MODEL-9").save(database.handle());
  EXPECT_THAT(run_text(command("FAM", "LOST")),
              HasSubstr("model record MODEL-9 is not in the source, not copied\n"));
  EXPECT_THAT(texts_of(run_json(command("FAM", "LOST"))["model_records_not_found"]), ElementsAre("MODEL-9"));
}

TEST_F(Copy, IntoADatabaseWithTextsOfAnotherEncodingIsRefused) {
  const tavdtest::Database other;
  Record("000", "FILEHEADER").words(1049, {1}).save(other.handle());
  EXPECT_EQ(expect_user_error({"copy", database.path(), "FAM", "F-*", other.path()}),
            "tavd: the texts of " + database.path() + " are windows-1252, those of " + other.path() +
                " UTF-8; expected the same encoding\n");
  EXPECT_THAT(keys(other.path()), ElementsAre("000 FILEHEADER"));
}

TEST_F(Copy, AProductThatDoesNotExistLeavesNoFileBehind) {
  EXPECT_THAT(expect_user_error(command("FAM", "G-*")), HasSubstr("no product \"G-*\" of class \"FAM\""));
  EXPECT_THAT(expect_user_error(command("XXX", "G")), HasSubstr("no class \"XXX\""));
  EXPECT_THAT(folder.names(), testing::IsEmpty());
}

TEST_F(Copy, HeaderAndModelRecordsAreNoProducts) {
  EXPECT_THAT(expect_user_error(command("000", "FILEHEADER")), HasSubstr("is the class of the file header"));
  EXPECT_THAT(expect_user_error(command("TVM", "MODEL-1")),
              HasSubstr("is the class of model records, which go along with their products"));
  EXPECT_THAT(folder.names(), testing::IsEmpty());
}

TEST_F(Copy, OntoTheSourceItselfIsRefused) {
  EXPECT_EQ(expect_user_error({"copy", database.path(), "FAM", "F-*", database.path()}),
            "tavd: " + database.path() + " is the source itself, expected another database to copy to\n");
}

TEST_F(Copy, IntoWhatIsNoDatabaseLeavesItAsItIs) {
  std::ofstream(target) << "text";
  EXPECT_THAT(expect_user_error(command("FAM", "F-*")), HasSubstr("as a product database"));
  EXPECT_EQ(clitest::read_file(target), "text");
  EXPECT_THAT(expect_user_error({"copy", database.path(), "FAM", "F-*", folder.file("no/where")}),
              HasSubstr("there is no folder"));
  EXPECT_THAT(expect_user_error({"copy", "/nowhere", "FAM", "F-*", target}),
              HasSubstr("no database \"/nowhere\""));
}

}  // namespace
