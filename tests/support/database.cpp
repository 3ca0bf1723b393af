#include "support/database.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

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

namespace {

constexpr std::int32_t kCreate = 1;

// Databases of the server that tests have at the moment.
std::array<bool, 4>& taken() {
  static std::array<bool, 4> numbers{};
  return numbers;
}

int take_number() {
  const auto free = std::find(taken().begin(), taken().end(), false);
  if (free == taken().end()) throw std::runtime_error("a test has more databases than the server");
  *free = true;
  return static_cast<int>(free - taken().begin());
}

std::string temporary_file() {
  static int serial = 0;
  const std::string name =
      "tavd-test-" + std::to_string(getpid()) + "-" + std::to_string(serial++) + ".tavdb";
  return (std::filesystem::temp_directory_path() / name).string();
}

// What a former test has left.
void remove_records(std::int16_t db) {
  while (tavb_rec rec = tavbfindrec(db, "", "", 1)) {
    char class_id[8];
    char object_id[32];
    tavbgetID(db, rec, class_id, object_id);
    tavbdeleterec(db, class_id, object_id);
    tavbreleaserec(rec);
  }
}

}  // namespace

Database::Database() {
  const char* server = std::getenv("TAVD_TEST_DATABASES");
  if (server != nullptr) {
    number_ = take_number();
    path_ = server + std::to_string(number_);
    handle_ = tavbopendatabase(nullptr, path_.c_str(), kCreate);
    remove_records(handle_);
    return;
  }
  path_ = temporary_file();
  std::filesystem::remove(path_);
  handle_ = tavbopendatabase(nullptr, path_.c_str(), kCreate);
}

Database::~Database() {
  tavdsrv_closedatabase(handle_);
  if (number_ < 0) {
    std::filesystem::remove(path_);
  } else {
    taken()[static_cast<std::size_t>(number_)] = false;
  }
}

}  // namespace tavdtest
