// A database of the service for one test, and records to put into it. Works on any implementation of the
// service that can make a new record.
//
// Tests name attributes by plain numbers, not by those of tavd/attributes.h: databases have the numbers in
// them, so that a constant which is renumbered must fail.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tavd/tavb.h"

namespace tavdtest {

// Builds one record: Record("ASD", "DAMPER-100").floats(1651, {100, 50}).save(db).
class Record {
 public:
  Record(const char* class_id, const char* object_id);
  ~Record();
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  Record& bytes(int attribute, const void* data, std::size_t length);
  Record& words(int attribute, std::initializer_list<std::int16_t> values);
  Record& floats(int attribute, std::initializer_list<float> values);
  Record& text(int attribute, std::string_view value);
  template <typename Row>
  Record& rows(int attribute, const std::vector<Row>& values) {
    return bytes(attribute, values.data(), values.size() * sizeof(Row));
  }
  // The flow data header: kind, b, h, qvmin, qvmax, dpmin, dpmax (Pa).
  Record& header(std::int16_t kind, std::int16_t b, std::int16_t h, float qvmin, float qvmax, float dpmin,
                 float dpmax);

  tavb_rec rec() const { return rec_; }
  void save(std::int16_t db);

 private:
  tavb_rec rec_;
};

// A fresh, empty database in a file of its own, removed at the end. Where the environment names databases of
// a server (TAVD_TEST_DATABASES, see service/postgresql/server), it is one of those.
class Database {
 public:
  Database();
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  std::int16_t handle() const { return handle_; }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  std::int16_t handle_;
  int number_ = -1;  // of a server's database
};

}  // namespace tavdtest
