// Which databases on a server are product databases, and that the others are left alone.
#include <gmock/gmock.h>

#include <vector>

#include "administrator.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

constexpr const char* kOtherTables = "its tables are not those of a product database";

class Tables : public OnServer {
 protected:
  // All that is declared in the database outside the system's own schemas, and how many records there are.
  std::string contents() {
    return administrator->run(
        "SELECT string_agg(n.nspname || c.relname || c.relkind::text || a.attname || a.atttypid, ',' ORDER "
        "BY "
        "n.nspname, c.relname, a.attnum) FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
        "JOIN pg_attribute a ON a.attrelid = c.oid WHERE n.nspname NOT LIKE 'pg%' AND "
        "n.nspname <> 'information_schema'");
  }
  void make_database() {
    const Open db;
    Record("ASD", "PIPE").text(1503, "maker").save(db.get());
  }
  void expect_refused(const std::string& reason) {
    const std::string before = contents();
    for (const std::int32_t mode : {kOpenExisting, kCreate}) {
      EXPECT_EQ(open(mode), -1);
      EXPECT_THAT(tavdsrv_lasterror(), HasSubstr(name_of_database() + ": "));
      EXPECT_THAT(tavdsrv_lasterror(), HasSubstr(reason));
    }
    EXPECT_EQ(contents(), before) << "the database was touched";
  }
};

}  // namespace

TEST_F(Tables, AreNotMadeWhereOnlyWhatExistsIsOpened) {
  EXPECT_EQ(open(kOpenExisting), -1);
  EXPECT_EQ(tavdsrv_lasterror(), name_of_database() + ": holds no product database");
  EXPECT_EQ(administrator->run("SELECT to_regnamespace('tavd')"), "");
}

TEST_F(Tables, AreMadeWhereACreatingModeFindsNone) {
  make_database();
  const Open again(name_of_database(), kOpenExisting);
  EXPECT_EQ(stored_text(again.get(), "ASD", "PIPE", 1503), "maker");
}

TEST_F(Tables, DatabaseThatIsMissingIsToldAndNotMade) {
  for (const std::int32_t mode : {kOpenExisting, kCreate}) {
    EXPECT_EQ(open(mode, "postgresql:///nowhere?user=tavd&host=" + server_folder()), -1);
    EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("database \"nowhere\" does not exist"));
  }
}

TEST_F(Tables, SchemaOfSomebodyElseIsRefused) {
  administrator->run("CREATE SCHEMA tavd; CREATE TABLE tavd.record(key bytea, body bytea)");
  expect_refused("not a product database");
  administrator->run("COMMENT ON SCHEMA tavd IS 'product database, layout 1'");
  expect_refused(kOtherTables);
}

TEST_F(Tables, OtherLayoutsAreRefusedWithBothNumbers) {
  make_database();
  administrator->run("COMMENT ON SCHEMA tavd IS 'product database, layout 2'");
  expect_refused("layout 2, this service reads layout 1");
}

TEST_F(Tables, ThatAreDeclaredInAnyOtherWayAreRefused) {
  const std::vector<std::string> changes = {
      "ALTER TABLE tavd.record ADD COLUMN more bytea",
      "ALTER TABLE tavd.record ALTER body TYPE text USING ''",
      "ALTER TABLE tavd.record ALTER body DROP NOT NULL",
      "ALTER TABLE tavd.record ALTER body SET DEFAULT ''",
      "ALTER TABLE tavd.record DROP CONSTRAINT record_body_check",
      "ALTER TABLE tavd.record DROP CONSTRAINT record_body_check,"
      " ADD CHECK (octet_length(body) <= 67108864) NOT VALID",
      "ALTER TABLE tavd.record DROP CONSTRAINT record_pkey",
      "ALTER TABLE tavd.record ENABLE ROW LEVEL SECURITY",
      "CREATE POLICY all_rows ON tavd.record USING (true)",
      "CREATE INDEX costly ON tavd.record(md5(body))",
      "CREATE RULE instead AS ON INSERT TO tavd.record DO INSTEAD NOTHING",
      "CREATE FUNCTION pg_temp.code() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RETURN NULL; END';"
      "CREATE TRIGGER code BEFORE INSERT ON tavd.record FOR EACH ROW EXECUTE FUNCTION pg_temp.code()",
      "CREATE TABLE public.heir() INHERITS (tavd.record)",
      "CREATE TABLE public.other(key bytea REFERENCES tavd.record)",
      "ALTER TABLE tavd.record SET UNLOGGED",
      "ALTER TABLE tavd.ahm RENAME TO other; CREATE VIEW tavd.ahm AS SELECT * FROM tavd.other",
      "DROP TABLE tavd.ahm; CREATE VIEW tavd.ahm AS SELECT ''::bytea AS key, ''::bytea AS block",
      "DROP TABLE tavd.ahm",
      "CREATE TABLE tavd.more(a int)",
      "CREATE SEQUENCE tavd.more",
  };
  for (const std::string& change : changes) {
    make_database();
    administrator->run(change);
    SCOPED_TRACE(change);
    expect_refused(kOtherTables);
    administrator->run("DROP SCHEMA tavd CASCADE; DROP TABLE IF EXISTS public.heir, public.other");
  }
}

TEST_F(Tables, ThatBecomeOthersAreRefusedWhenTheServerIsBackAgain) {
  const Open db;
  Record("ASD", "PIPE").save(db.get());
  administrator->run("ALTER TABLE tavd.record DROP CONSTRAINT record_body_check");
  administrator->end_connections();
  EXPECT_EQ(found(db.get(), "ASD", "PIPE", kExact), "none");
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("lost"));
  EXPECT_EQ(found(db.get(), "ASD", "PIPE", kExact), "none");
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr(kOtherTables));
}

TEST_F(Tables, TakeTheLongestRecordAndNoLongerOne) {
  constexpr std::int32_t kMost = 67108864;
  const Open db;
  const Record record("TVM", "M");
  std::string block(kMost + 1, 'b');
  tavbsaverecwithahm(db.get(), record.rec(), block.data(), kMost);
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  tavbsaverecwithahm(db.get(), record.rec(), block.data(), kMost + 1);
  EXPECT_THAT(tavdsrv_lasterror(),
              HasSubstr("67108865 bytes for one record, at most 67108864 can be stored"));
  std::int32_t length = 0;
  tavbreleaseahm(tavbgetahm(db.get(), record.rec(), &length));
  EXPECT_EQ(length, kMost);
}

TEST_F(Tables, RecordsWithDamagedBodiesAreReadAsFarAsTheyAreWhole) {
  const Open db;
  Record("ASD", "A").text(1503, "maker").text(1505, "second").save(db.get());
  administrator->run("UPDATE tavd.record SET body = substring(body FOR octet_length(body) - 1)");
  EXPECT_EQ(stored_text(db.get(), "ASD", "A", 1503), "maker");
  EXPECT_EQ(stored_text(db.get(), "ASD", "A", 1505), "absent");
}

TEST_F(Tables, WalkMeetsRecordsInTheOrderOfBytesWhereTheDatabaseHasAnother) {
  ASSERT_EQ(administrator->run("SELECT 'a' < 'B' AND 'z' > U&'\\00C5'"), "t") << "texts are ordered by bytes";
  const Open db;
  const std::vector<std::string> ids = {"\xC5", "z", "a", "B", "-b", "_", "A-2", "A 1", "A1", "\xFF"};
  for (const std::string& id : ids) Record("ASD", id.c_str()).save(db.get());
  std::vector<std::string> expected;
  for (const std::string& id : ids) expected.push_back("ASD:" + id);
  std::ranges::sort(expected, [](const std::string& a, const std::string& b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char one, char other) {
      return static_cast<unsigned char>(one) < static_cast<unsigned char>(other);
    });
  });
  std::vector<std::string> met;
  tavb_rec at = tavbfindrec(db.get(), "ASD", "", kAtOrAfter);
  while (at != nullptr) {
    met.push_back(name_of(at));
    tavb_rec next = tavbnextrec(db.get(), at);
    tavbreleaserec(at);
    at = next;
  }
  EXPECT_EQ(met, expected);
}
