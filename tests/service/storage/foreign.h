// Files that may or may not be product databases, in a folder of the test's own.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

namespace tavdtest {

inline constexpr std::int32_t kOpenExisting = 0;
inline constexpr std::int32_t kCreate = 1;

inline void run_sql(const fs::path& path, const char* sql) {
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(path.string().c_str(), &connection), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(connection);
  sqlite3_close(connection);
}

class Foreign : public testing::Test {
 protected:
  // Makes a product database with some records, closed.
  fs::path make_database() {
    const fs::path path = folder / "good.tavdb";
    const std::int16_t db = tavbopendatabase(nullptr, path.string().c_str(), kCreate);
    tavdsrv_begin(db);
    for (int i = 0; i < 50; ++i) {
      Record("ASD", ("PIPE-" + std::to_string(i)).c_str()).text(1503, std::string(300, 'x')).save(db);
    }
    EXPECT_EQ(tavdsrv_commit(db), 0);
    tavdsrv_closedatabase(db);
    return path;
  }

  // Expects that the file is refused in both modes, for a reason, and that the whole folder stays as it is.
  void expect_refused(const fs::path& path, const std::string& reason) {
    const auto before = folder.snapshot();
    for (const std::int32_t mode : {kOpenExisting, kCreate}) {
      EXPECT_EQ(tavbopendatabase(nullptr, path.string().c_str(), mode), -1);
      EXPECT_THAT(tavdsrv_lasterror(), testing::HasSubstr(utf8(path)));
      EXPECT_THAT(tavdsrv_lasterror(), testing::HasSubstr(reason));
    }
    EXPECT_TRUE(folder.snapshot() == before) << path << " was touched";
  }

  Folder folder;
};

}  // namespace tavdtest
