// The command line host with databases on a server: it says and makes the same as with files.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "administrator.h"
#include "support/program.h"
#include "tavd/tavdf.h"

using namespace tavdtest;
using clitest::expect_user_error;
using clitest::run_program;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

constexpr const char* kCatalogue = TAVD_SOURCE_DIR "/catalogue";

std::string output_of(const Strings& arguments) {
  const clitest::Outcome outcome = run_program(arguments);
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  return outcome.out;
}

class Host : public OnServer {
 protected:
  clitest::Folder folder;
  std::string file = folder.file("file.tavdb");
  std::string server = name_of_database();
};

}  // namespace

TEST_F(Host, MakesTheSameDatabaseOnAServerAsInAFileAndAnswersTheSameOfIt) {
  for (const std::string& target : {file, server}) output_of({"db", "build", kCatalogue, "-o", target});
  const std::string dump = output_of({"db", "dump", file});
  EXPECT_THAT(dump, HasSubstr("QZDA-160"));
  EXPECT_EQ(output_of({"db", "dump", server}), dump);
  const std::vector<Strings> commands = {
      {"list"},
      {"show", "DMP", "QZDA-160"},
      {"calc", "DMP", "QZDA-160", "--qv", "50", "--dp", "60", "--market", "FIN", "--language", "fi"},
      {"select", "--qv", "80", "--dp", "70", "--json"},
      {"family", "DMP", "QZDA-*"},
      {"db", "check"},
  };
  for (const Strings& command : commands) {
    Strings of_file = command;
    Strings of_server = command;
    const auto place = command[0] == "db" ? 2 : 1;
    of_file.insert(of_file.begin() + place, file);
    of_server.insert(of_server.begin() + place, server);
    const std::string answer = output_of(of_file);
    EXPECT_THAT(answer, Not(IsEmpty()));
    EXPECT_EQ(output_of(of_server), answer) << command[0];
  }
}

TEST_F(Host, ReplacesADatabaseOnAServerWhole) {
  output_of({"db", "synth", file, "--records", "700"});
  output_of({"db", "build", kCatalogue, "-o", server});
  output_of({"db", "synth", server, "--records", "700"});
  EXPECT_EQ(output_of({"db", "dump", server}), output_of({"db", "dump", file}));
}

TEST_F(Host, BuildThatFailsLeavesTheDatabaseOnTheServerAsItIs) {
  output_of({"db", "build", kCatalogue, "-o", server});
  const std::string before = output_of({"db", "dump", server});
  std::ofstream(folder.file("wrong.json")) << R"([{"class": "DMP", "id": "NEW", "nonsense": 1}])";
  const clitest::Outcome outcome = run_program({"db", "build", folder.file("wrong.json"), "-o", server});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("nonsense"));
  EXPECT_EQ(output_of({"db", "dump", server}), before);
}

TEST_F(Host, CopiesProductsBetweenFilesAndServers) {
  output_of({"db", "build", kCatalogue, "-o", server});
  output_of({"copy", server, "DMP", "QZDA-160", file});
  EXPECT_THAT(output_of({"list", file}), HasSubstr("QZDA-160"));
  EXPECT_THAT(expect_user_error({"copy", server, "DMP", "QZDA-160", server}),
              HasSubstr("is the source itself"));
  administrator->run("DROP SCHEMA tavd CASCADE");
  output_of({"copy", file, "DMP", "QZDA-160", server});
  EXPECT_EQ(output_of({"db", "dump", server}), output_of({"db", "dump", file}));
  output_of({"delete", server, "DMP", "QZDA-160", "--yes"});
  EXPECT_THAT(output_of({"db", "dump", server}), Not(HasSubstr("QZDA-160")));
}

TEST_F(Host, SaysWhyADatabaseIsNotThereAndShowsNoPassword) {
  EXPECT_THAT(expect_user_error({"list", server}), HasSubstr("holds no product database"));
  const std::string error =
      expect_user_error({"list", "postgresql://locked:SeCrEt@/nowhere?host=" + server_folder()});
  EXPECT_THAT(error, HasSubstr("postgresql://locked:***@/nowhere"));
  EXPECT_THAT(error, Not(HasSubstr("SeCrEt")));
}

// Nobody who uses files needs the part, or libpq.
TEST_F(Host, ServiceWithoutItsPartOpensFilesAndSaysWhatServersNeed) {
  output_of({"db", "build", kCatalogue, "-o", file});
  fs::copy(fs::path(TAVD_SERVICE), folder.file("libtavdsrv.so"));
  setenv("LD_LIBRARY_PATH", fs::path(file).parent_path().c_str(), 1);
  EXPECT_THAT(output_of({"list", file}), HasSubstr("QZDA-160"));
  EXPECT_THAT(expect_user_error({"list", server}),
              testing::AllOf(HasSubstr("databases on servers need libtavdsrv-postgresql.so and libpq"),
                             HasSubstr("cannot open shared object file")));
  // The part is there, and libpq is none.
  const std::string part = "libtavdsrv-postgresql.so";
  fs::copy(fs::path(TAVD_SERVICE).parent_path() / part, folder.file(part));
  std::ofstream(folder.file("libpq.so.5")) << "no library";
  EXPECT_THAT(expect_user_error({"list", server}), HasSubstr("libpq.so.5"));
  EXPECT_THAT(output_of({"list", file}), HasSubstr("QZDA-160"));
  unsetenv("LD_LIBRARY_PATH");
}

TEST_F(Host, LibraryPassesNamesOfServersOnWhateverTheMode) {
  const Open made;
  Record("ASD", "A").save(made.get());
  for (const std::int32_t mode : {kOpenExisting, kCreate}) {
    const std::int16_t db = tavdf_open_database(server.c_str(), mode);
    ASSERT_GT(db, 0) << tavdsrv_lasterror();
    EXPECT_EQ(found(db, "ASD", "A", kExact), "ASD:A");
    tavdsrv_closedatabase(db);
    const std::int16_t wide = tavdf_open_databasew(
        fs::path("postgresql:///t3?user=tavd&host=" + server_folder()).string<tavd_wchar>().c_str(), mode);
    ASSERT_GT(wide, 0) << tavdsrv_lasterror();
    tavdsrv_closedatabase(wide);
  }
  EXPECT_EQ(tavdf_open_database("postgresql.tavdb", 0), -1);
  EXPECT_EQ(tavdf_open_database("dbname=t3", 0), -1);
}
