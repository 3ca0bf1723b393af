// The test's server from outside the service: databases of it, statements of its administrator, killing it.
#pragma once

#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

namespace tavdtest {

inline constexpr std::int32_t kOpenExisting = 0;
inline constexpr std::int32_t kCreate = 1;

inline std::string server_folder() {
  const char* folder = std::getenv("TAVD_TEST_SERVER");
  if (folder == nullptr)
    throw std::runtime_error("start this program with tests/service/postgresql/server run");
  return folder;
}

// The name of the server's last database, which tests of this folder have to themselves.
inline std::string name_of_database(const std::string& role = "tavd", const std::string& more = "") {
  return "host=" + server_folder() + " user=" + role + " dbname=t3" + more;
}

// The id of one of many records, which stand in the order of their numbers.
inline std::string id_of(int index) {
  return "R" + std::to_string(100 + index);
}

class Administrator {
 public:
  explicit Administrator(const std::string& name = name_of_database())
      : connection_(PQconnectdb(name.c_str()), PQfinish) {
    EXPECT_EQ(PQstatus(connection_.get()), CONNECTION_OK) << PQerrorMessage(connection_.get());
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
  }

  // The first value of the answer; empty if there is none.
  std::string run(const std::string& sql) const {
    const std::unique_ptr<PGresult, decltype(&PQclear)> answer(PQexec(connection_.get(), sql.c_str()),
                                                               PQclear);
    const ExecStatusType status = PQresultStatus(answer.get());
    EXPECT_TRUE(status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK)
        << sql << ": " << PQerrorMessage(connection_.get());
    return PQntuples(answer.get()) > 0 ? PQgetvalue(answer.get(), 0, 0) : "";
  }

  // Waits until the answer is true.
  void wait_for(const std::string& sql, std::chrono::seconds patience) const {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < end) {
      if (run(sql) == "t") return;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    FAIL() << "never came: " << sql;
  }

  // Ends all connections but this one, as the server does when its administrator stops it.
  void end_connections() const {
    run("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
        " WHERE backend_type = 'client backend' AND pid <> pg_backend_pid()");
  }

 private:
  std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

inline void server(const char* what) {
  const std::string command =
      std::string(std::getenv("TAVD_TEST_SERVER_OF")) + " " + what + " " + server_folder();
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

// Each test begins with a database without tables.
class OnServer : public testing::Test {
 protected:
  OnServer() { administrator->run("DROP SCHEMA IF EXISTS tavd CASCADE"); }

  static std::int16_t open(std::int32_t mode = kCreate, const std::string& name = name_of_database()) {
    return tavbopendatabase(nullptr, name.c_str(), mode);
  }
  // A server that starts again takes no connection for a moment.
  void restart_server() {
    administrator.reset();
    server("kill");
    server("start");
    administrator = std::make_unique<Administrator>();
  }

  std::unique_ptr<Administrator> administrator = std::make_unique<Administrator>();
};

// A handle that is closed at the end.
class Open {
 public:
  explicit Open(const std::string& name = name_of_database(), std::int32_t mode = kCreate)
      : handle_(tavbopendatabase(nullptr, name.c_str(), mode)) {
    EXPECT_GT(handle_, 0) << tavdsrv_lasterror();
  }
  ~Open() { tavdsrv_closedatabase(handle_); }
  Open(const Open&) = delete;
  Open& operator=(const Open&) = delete;
  std::int16_t get() const { return handle_; }

 private:
  std::int16_t handle_;
};

}  // namespace tavdtest
