// `tavd delete`: a product with its sizes, after a yes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db_records.h"
#include "families.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::run_json;
using clitest::run_on_terminal;
using clitest::run_text;
using clitest::Terminal;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

struct Delete : testing::Test {
  Delete() { clitest::add_families(database); }

  std::vector<std::string> command(const char* class_id, const char* id,
                                   std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"delete", database.path(), class_id, id});
    return options;
  }
  std::vector<std::string> ids(const char* class_id) const {
    std::vector<std::string> found;
    for (const clitest::StoredRecord& record : clitest::stored_records(database.path())) {
      if (record.key.compare(0, 3, class_id) != 0) continue;
      found.push_back(record.key.substr(3, record.key.find_last_not_of(' ') - 2));
    }
    return found;
  }

  tavdtest::Database database;
};

TEST_F(Delete, OfAFamilyTakesItsSizesAndLeavesModelRecords) {
  EXPECT_EQ(run_text(command("FAM", "F-*", {"--yes"})),
            "FAM F-* and its 2 sizes deleted from " + database.path() + "\n");
  EXPECT_THAT(ids("FAM"), ElementsAre("F"));
  EXPECT_THAT(ids("TVM"), ElementsAre("MODEL-1", "MODEL-2"));
}

TEST_F(Delete, OfAFamilyByListTakesTheNamedSizes) {
  run_text(command("FAM", "F", {"--yes"}));
  EXPECT_THAT(ids("FAM"), ElementsAre("F-*"));
}

TEST_F(Delete, OfOneRecordLeavesAllOthers) {
  EXPECT_EQ(run_text(command("FAM", "F-100", {"--yes"})), "FAM F-100 deleted from " + database.path() + "\n");
  EXPECT_THAT(ids("FAM"), ElementsAre("F", "F-*", "F-125"));
  EXPECT_EQ(run_text(command("TVM", "MODEL-1", {"--yes"})),
            "TVM MODEL-1 deleted from " + database.path() + "\n");
  EXPECT_THAT(ids("TVM"), ElementsAre("MODEL-2"));
}

TEST_F(Delete, JsonNamesWhatIsGone) {
  const Json::Value json = run_json(command("FAM", "F-*", {"--yes"}));
  ASSERT_EQ(json["deleted"].size(), 3u);
  EXPECT_EQ(json["deleted"][0]["id"].asString(), "F-*");
  EXPECT_EQ(json["deleted"][1]["class"].asString(), "FAM");
  EXPECT_EQ(json["deleted"][2]["id"].asString(), "F-125");
}

TEST_F(Delete, WithoutATerminalAndWithoutYesIsRefused) {
  EXPECT_EQ(expect_user_error(command("FAM", "F-*")),
            "tavd: deleting FAM F-* and its 2 sizes from " + database.path() +
                " needs a yes: there is no terminal to ask on, expected --yes\n");
  EXPECT_THAT(ids("FAM"), Contains("F-100"));
}

TEST_F(Delete, OnATerminalAsksFirst) {
  const Terminal terminal = run_on_terminal(command("FAM", "F-*"), "y\n");
  EXPECT_EQ(terminal.exit_code, 0) << terminal.shown;
  EXPECT_THAT(terminal.shown,
              HasSubstr("Delete FAM F-* and its 2 sizes from " + database.path() + "? [y/N] "));
  EXPECT_THAT(terminal.shown, HasSubstr("deleted from"));
  EXPECT_THAT(ids("FAM"), ElementsAre("F"));
}

TEST_F(Delete, OnATerminalAnyOtherAnswerLeavesAllAsItIs) {
  for (const char* answer : {"n\n", "\n", "yesterday\n", "\x04"}) {
    const Terminal terminal = run_on_terminal(command("FAM", "F-*"), answer);
    EXPECT_EQ(terminal.exit_code, 2) << terminal.shown;
    EXPECT_THAT(terminal.shown, HasSubstr("nothing was deleted, as the answer was not yes"));
    EXPECT_THAT(ids("FAM"), ElementsAre("F", "F-*", "F-100", "F-125"));
  }
}

TEST_F(Delete, OnATerminalWithYesDoesNotAsk) {
  const Terminal terminal = run_on_terminal(command("FAM", "F-100", {"--yes"}), "");
  EXPECT_EQ(terminal.exit_code, 0) << terminal.shown;
  EXPECT_THAT(terminal.shown, Not(HasSubstr("?")));
  EXPECT_THAT(ids("FAM"), Not(Contains("F-100")));
}

TEST_F(Delete, TheFileHeaderStays) {
  EXPECT_THAT(expect_user_error(command("000", "FILEHEADER", {"--yes"})), HasSubstr("the file header"));
  EXPECT_THAT(ids("000"), ElementsAre("FILEHEADER"));
}

TEST_F(Delete, WhatDoesNotExistIsNamed) {
  EXPECT_THAT(expect_user_error(command("FAM", "F-200", {"--yes"})), HasSubstr("no product \"F-200\""));
  EXPECT_THAT(expect_user_error({"delete", "/nowhere", "FAM", "F", "--yes"}),
              HasSubstr("no database \"/nowhere\""));
}

TEST_F(Delete, AGroupOfChangesThatIsOpenElsewhereIsAnErrorAndNothingGoes) {
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  const std::string error = expect_user_error(command("FAM", "F-100", {"--yes"}));
  ASSERT_EQ(tavdsrv_rollback(database.handle()), 0);
  EXPECT_THAT(error, HasSubstr(database.path()));
  EXPECT_THAT(ids("FAM"), Contains("F-100"));
}

}  // namespace
