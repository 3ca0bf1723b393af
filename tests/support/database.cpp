#include "support/database.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "tavd/tavdsrv.h"

namespace tavdtest {

Record::Record(const char* class_id, const char* object_id) : rec_(tavdsrv_newrec(class_id, object_id)) {}

Record::~Record() {
  tavbreleaserec(rec_);
}

Record& Record::bytes(int attribute, const void* data, std::size_t length) {
  tavbinsertatt(0, &rec_, static_cast<std::int16_t>(attribute), data, static_cast<std::int16_t>(length));
  return *this;
}

Record& Record::words(int attribute, std::initializer_list<std::int16_t> values) {
  return bytes(attribute, values.begin(), values.size() * sizeof(std::int16_t));
}

Record& Record::floats(int attribute, std::initializer_list<float> values) {
  return bytes(attribute, values.begin(), values.size() * sizeof(float));
}

Record& Record::text(int attribute, std::string_view value) {
  return bytes(attribute, value.data(), value.size());
}

Record& Record::header(std::int16_t kind, std::int16_t b, std::int16_t h, float qvmin, float qvmax,
                       float dpmin, float dpmax) {
  unsigned char item[22];
  const std::int16_t sizes[3] = {kind, b, h};
  const float limits[4] = {qvmin, qvmax, dpmin, dpmax};
  std::memcpy(item, sizes, sizeof sizes);
  std::memcpy(item + sizeof sizes, limits, sizeof limits);
  return bytes(1650, item, sizeof item);
}

void Record::save(std::int16_t db) {
  tavbsaverec(db, rec_);
}

Database::Database() {
  static int serial = 0;
  path_ = (std::filesystem::temp_directory_path() /
           ("tavd-test-" + std::to_string(getpid()) + "-" + std::to_string(serial++) + ".tavdb"))
              .string();
  std::filesystem::remove(path_);
  handle_ = tavbopendatabase(nullptr, path_.c_str(), 1);
}

Database::~Database() {
  tavdsrv_closedatabase(handle_);
  std::filesystem::remove(path_);
}

}  // namespace tavdtest
