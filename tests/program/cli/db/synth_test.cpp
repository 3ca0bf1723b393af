// Synthetic databases: what `tavd db synth` makes, and that nothing stays behind where it fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

#include "db_records.h"
#include "support/program.h"
#include "tavd/tavca.h"
#include "tavd/tavdidset.h"
#include "tavd/tavfm.h"

namespace {

using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using clitest::stored_records;
using clitest::StoredRecord;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kSizingMode = 1150;
constexpr std::int16_t kModel = 1525;
constexpr std::int16_t kMemberIds = 1604;
constexpr std::size_t kClassBytes = 3;
constexpr std::size_t kIdBytes = 30;

const std::vector<std::string> kProductClasses = {"AEX", "ASD", "CCB", "DMP", "FAN"};

std::string made(const Folder& folder, const std::string& records, const std::string& seed = "1") {
  std::string path = folder.file("s" + seed + "-" + records + ".tavdb");
  const Outcome outcome = run_program({"db", "synth", path, "--records", records, "--seed", seed});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, path + ": " + records + (records == "1" ? " record\n" : " records\n"));
  return path;
}

std::string class_of(const StoredRecord& record) {
  return record.key.substr(0, kClassBytes);
}

std::string id_of(const StoredRecord& record) {
  const std::string id = record.key.substr(kClassBytes);
  return id.substr(0, id.find_last_not_of(' ') + 1);
}

int word_of(const StoredRecord& record, std::int16_t attribute, int absent) {
  const auto found = record.attributes.find(attribute);
  if (found == record.attributes.end()) return absent;
  std::int16_t word = 0;
  std::memcpy(&word, found->second.data(), sizeof word);
  return word;
}

// What a test of one whole database looks at.
struct Synth : testing::Test {
  // Made once: no test changes it.
  struct Made {
    Folder folder;
    std::string path = made(folder, "3000");
    std::vector<StoredRecord> records = stored_records(path);
  };
  static const Made& once() {
    static const Made all;
    return all;
  }

  Folder folder;
  const std::string& path = once().path;
  const std::vector<StoredRecord>& records = once().records;
};

// An open database, closed at the end.
struct Open {
  explicit Open(const std::string& path) : db(tavbopendatabase(nullptr, path.c_str(), 0)) {}
  ~Open() { tavdsrv_closedatabase(db); }
  Open(const Open&) = delete;
  Open& operator=(const Open&) = delete;
  std::int16_t db;
};

// Files can grow no longer while this lives.
class ShortFiles {
 public:
  explicit ShortFiles(rlim_t bytes) : former_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &limit_);
    rlimit shorter = limit_;
    shorter.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &shorter);
  }
  ~ShortFiles() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    signal(SIGXFSZ, former_);
  }
  ShortFiles(const ShortFiles&) = delete;
  ShortFiles& operator=(const ShortFiles&) = delete;

 private:
  void (*former_)(int);
  rlimit limit_{};
};

}  // namespace

TEST(SynthCount, IsExactlyWhatWasAskedFor) {
  const Folder folder;
  for (const char* records : {"1", "2", "6", "7", "42", "205", "206", "999"}) {
    EXPECT_EQ(std::to_string(stored_records(made(folder, records)).size()), records);
  }
}

TEST(SynthCount, SmallestDatabaseIsItsFileHeader) {
  const Folder folder;
  const auto records = stored_records(made(folder, "1"));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(class_of(records[0]), "000");
  EXPECT_EQ(id_of(records[0]), "FILEHEADER");
}

TEST(SynthSeed, SameSeedGivesTheSameFileAndAnotherOneDoesNot) {
  const Folder first, second;
  EXPECT_EQ(read_file(made(first, "500", "7")), read_file(made(second, "500", "7")));
  EXPECT_NE(stored_records(made(first, "500", "7")), stored_records(made(first, "500", "8")));
}

TEST(SynthSeed, UnnamedSeedIsOne) {
  const Folder folder;
  const std::string path = folder.file("unnamed");
  ASSERT_EQ(run_program({"db", "synth", path, "--records", "100"}).exit_code, 0);
  EXPECT_EQ(read_file(path), read_file(made(folder, "100", "1")));
}

TEST_F(Synth, HoldsAFileHeaderProductsAndModels) {
  std::map<std::string, int> classes;
  for (const StoredRecord& record : records) ++classes[class_of(record)];
  EXPECT_EQ(classes["000"], 1);
  EXPECT_EQ(classes["TVM"], 29);
  for (const std::string& name : kProductClasses) EXPECT_EQ(classes[name], 594) << name;
}

TEST_F(Synth, RecordsAreStoredInTheirOrder) {
  EXPECT_TRUE(std::is_sorted(records.begin(), records.end(),
                             [](const StoredRecord& a, const StoredRecord& b) { return a.key < b.key; }));
}

TEST_F(Synth, FamiliesByPatternHaveTwoToFortyMembersAndTheLibraryListsThem) {
  const Open open(path);
  FamilyList list;
  tavfm_init(&list);
  std::set<int> sizes;
  for (const StoredRecord& record : records) {
    if (word_of(record, kSizingMode, 0) != 1) continue;
    const std::string key = record.key;
    const int members = tavfm_read(&list, open.db, class_of(record).c_str(), key.substr(kClassBytes).c_str());
    EXPECT_GE(members, 1) << key;
    EXPECT_LE(members, 40) << key;
    sizes.insert(members);
    for (int i = 0; i < members; ++i) {
      FamilyMember member{};
      ASSERT_EQ(tavfm_get(&list, i, &member), 0);
      EXPECT_EQ(member.ds.b, 100 + 25 * i) << key;
    }
  }
  tavfm_release(&list);
  EXPECT_TRUE(sizes.contains(40));
  EXPECT_TRUE(sizes.contains(2));
  EXPECT_GE(sizes.size(), 6U);
}

TEST_F(Synth, EveryClassBeginsWithAFamilyOfForty) {
  const Open open(path);
  FamilyList list;
  tavfm_init(&list);
  for (const std::string& name : kProductClasses) {
    EXPECT_EQ(tavfm_read(&list, open.db, name.c_str(), "Q0000000-*                    "), 40) << name;
  }
  tavfm_release(&list);
}

TEST_F(Synth, FamiliesByListNameRecordsThatAreThere) {
  std::set<std::string> keys;
  for (const StoredRecord& record : records) keys.insert(record.key);
  int lists = 0;
  for (const StoredRecord& record : records) {
    if (word_of(record, kSizingMode, 0) != 2) continue;
    ++lists;
    const std::string& ids = record.attributes.at(kMemberIds);
    ASSERT_EQ(ids.size() % kIdBytes, 0U);
    EXPECT_GT(ids.size(), 0U);
    for (std::size_t at = 0; at < ids.size(); at += kIdBytes) {
      EXPECT_TRUE(keys.contains(class_of(record) + ids.substr(at, kIdBytes))) << ids.substr(at, kIdBytes);
    }
  }
  EXPECT_GT(lists, 5);
}

TEST_F(Synth, SetsHaveOneMainRecordAndSubAndExactRecordsUnderItsPrefix) {
  struct Set {
    int mains = 0, subs = 0, exact = 0;
  };
  std::map<std::string, Set> sets;
  const auto prefix = [](const StoredRecord& record) {
    return record.key.substr(0, record.key.find('-') + 1);
  };
  for (const StoredRecord& record : records) {
    if (word_of(record, kSizingMode, 0) == 10) ++sets[prefix(record)].mains;
  }
  ASSERT_GT(sets.size(), 5U);
  int exact = 0;
  for (const StoredRecord& record : records) {
    const int mode = word_of(record, kSizingMode, 0);
    const auto set = sets.find(prefix(record));
    if (mode == 11) {
      ASSERT_NE(set, sets.end()) << record.key;
      ++set->second.subs;
      EXPECT_THAT(id_of(record), HasSubstr("*"));
    } else if (set != sets.end() && mode == 0) {
      ++exact;
      EXPECT_THAT(id_of(record), ::testing::Not(HasSubstr("*")));
    }
  }
  for (const auto& [key, set] : sets) {
    EXPECT_EQ(set.mains, 1) << key;
  }
  EXPECT_GT(exact, 5);
}

TEST_F(Synth, SetsAnswerForAConcreteIdFromTheLayerThatFits) {
  constexpr std::int16_t kHeader = 1650, kSound = 1653, kMaker = 1503, kDescription = 9552;
  const Open open(path);
  IdSet set;
  tavdidset_init(&set);
  int sets = 0;
  for (const StoredRecord& record : records) {
    if (word_of(record, kSizingMode, 0) != 10) continue;
    const std::string prefix = id_of(record).substr(0, id_of(record).find('*'));
    if (!std::any_of(records.begin(), records.end(), [&](const StoredRecord& other) {
          return class_of(other) == class_of(record) && id_of(other) == prefix + "0100-*";
        })) {
      continue;  // cut off by the end of its class
    }
    ++sets;
    ASSERT_EQ(tavdidset_read(&set, open.db, class_of(record).c_str(), prefix.c_str()), 0) << prefix;
    ASSERT_EQ(tavdidset_adjust(&set, open.db, (prefix + "0100-20").c_str()), 0) << prefix;
    std::int16_t count = 0;
    std::int16_t header[11] = {};
    EXPECT_EQ(tavdidset_findatt(&set, open.db, kHeader, &count, header, sizeof header), 1);
    EXPECT_EQ(header[1], 100) << "the sub record of the size, before the main record of another size";
    char text[80] = {};
    EXPECT_EQ(tavdidset_findatt(&set, open.db, kDescription, &count, text, sizeof text - 1), 1);
    EXPECT_THAT(text, ::testing::EndsWith(prefix + "*-20")) << "the sub record of the year";
    EXPECT_EQ(tavdidset_findatt(&set, open.db, kMaker, &count, text, sizeof text - 1), 1)
        << "the main record";
    char sound[960] = {};
    EXPECT_EQ(tavdidset_findatt(&set, open.db, kSound, &count, sound, sizeof sound), 1);
    EXPECT_GT(count, 0);
  }
  tavdidset_release(&set);
  EXPECT_GT(sets, 5);
}

TEST_F(Synth, ModelsHaveBlocksAndProductsNameModelsThatAreThere) {
  std::set<std::string> models;
  for (const StoredRecord& record : records) {
    if (class_of(record) != "TVM") continue;
    models.insert(id_of(record));
    EXPECT_THAT(record.ahm, ::testing::Not(IsEmpty()));
  }
  int named = 0;
  for (const StoredRecord& record : records) {
    const auto model = record.attributes.find(kModel);
    if (model == record.attributes.end()) continue;
    ++named;
    EXPECT_TRUE(models.contains(model->second)) << model->second;
  }
  EXPECT_GT(named, 1000);
}

TEST_F(Synth, TextsAreStoredInTheCharsetsOfTheirLanguages) {
  const auto damper = std::find_if(records.begin(), records.end(), [](const StoredRecord& record) {
    return class_of(record) == "DMP" && id_of(record) == "Q0000000-0100";
  });
  ASSERT_NE(damper, records.end());
  const auto& attributes = damper->attributes;
  EXPECT_EQ(attributes.at(9550), "S\xE4\xE4t\xF6pelti Q0000000-0100");  // windows-1252
  EXPECT_EQ(attributes.at(9558),
            "Przepustnica reguluj\xB9"
            "ca Q0000000-0100");                                                        // windows-1250
  EXPECT_EQ(attributes.at(9565), "\xD5huklapp Q0000000-0100");                          // windows-1257
  EXPECT_EQ(attributes.at(9568).substr(0, 6), "\xD0\xE5\xE3\xF3\xEB\xE8");              // windows-1251
  EXPECT_EQ(attributes.at(9593).substr(0, 9), "\xE8\xB0\x83\xE8\x8A\x82\xE9\x98\x80");  // UTF-8
}

TEST_F(Synth, EveryProductWithFlowDataCanBeCalculated) {
  const Open open(path);
  int calculated = 0;
  tavb_rec rec = tavbfindrec(open.db, "AEX", "", 1);
  while (rec != nullptr) {
    FlowData flow{};
    tavca_load_flowdata(open.db, rec, &flow);
    if (flow.nhdd != 0) {
      const float qmin = flow.qvmin, qmax = flow.qvmax;
      const float qv = 0.5F * (qmin + qmax);
      const float dp = 0.5F * (tavca_dptotmin(&flow, qv) + tavca_dptotmax(&flow, qv));
      float lw[8] = {};
      EXPECT_EQ(tavca_lw(&flow, qv, dp, lw, nullptr), 0) << calculated;
      EXPECT_GT(lw[0], 0) << calculated;
      EXPECT_LT(lw[0], 120) << calculated;
      ++calculated;
    }
    tavb_rec next = tavbnextrec(open.db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  EXPECT_GT(calculated, 2000);
}

TEST_F(Synth, CanBeDumpedAndBuiltAgain) {
  const std::string text = folder.file("text.json"), again = folder.file("again.tavdb");
  ASSERT_EQ(run_program({"db", "dump", path, "-o", text}).exit_code, 0);
  ASSERT_EQ(run_program({"db", "build", text, "-o", again}).exit_code, 0);
  EXPECT_EQ(stored_records(again), records);
}

TEST(SynthRefusal, NumbersThatAreNoneAreRefused) {
  const Folder folder;
  const std::string path = folder.file("a.tavdb");
  for (const char* records : {"0", "-1", "ten", "1.5", "10000001", ""}) {
    const std::string error = clitest::expect_user_error({"db", "synth", path, "--records", records});
    EXPECT_THAT(error, HasSubstr("--records")) << records;
  }
  EXPECT_THAT(clitest::expect_user_error({"db", "synth", path, "--records", "5", "--seed", "x"}),
              HasSubstr("--seed"));
  clitest::expect_user_error({"db", "synth", path});
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SynthRefusal, TargetInNoFolderAndTargetThatIsAFolderAreRefused) {
  const Folder folder;
  clitest::expect_user_error({"db", "synth", folder.file("nowhere/a.tavdb"), "--records", "5"});
  clitest::expect_user_error({"db", "synth", folder.file("."), "--records", "5"});
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SynthRefusal, DatabaseThatIsThereIsReplacedAsAWhole) {
  const Folder folder;
  const std::string path = made(folder, "100");
  ASSERT_EQ(run_program({"db", "synth", path, "--records", "20"}).exit_code, 0);
  EXPECT_EQ(stored_records(path).size(), 20U);
  EXPECT_EQ(folder.names().size(), 1U);
}

TEST(SynthRefusal, FullDiskLeavesWhatWasThereAndNothingElse) {
  const Folder folder;
  const std::string path = folder.file("a.tavdb");
  std::ofstream(path) << "old";
  // The first fails where the empty database is made, the others while it grows.
  for (const rlim_t longest : {5'000, 100'000, 3'000'000}) {
    const ShortFiles limit(longest);
    const std::string error = clitest::expect_user_error({"db", "synth", path, "--records", "20000"});
    EXPECT_THAT(error, HasSubstr("a.tavdb")) << longest;
    EXPECT_THAT(folder.names(), ElementsAre("a.tavdb")) << longest;
    EXPECT_EQ(read_file(path), "old");
  }
}
