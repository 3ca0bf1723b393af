#include "fuzz/records.h"

#include <unistd.h>

#include <filesystem>

#include "tavd/tavdsrv.h"

extern "C" long memory_service_open_handles(void);

namespace fuzz {

namespace {

constexpr std::size_t kMostRecords = 24;
constexpr std::size_t kClassChars = 3;
constexpr std::size_t kIdChars = 30;

// The one database of the process.
std::int16_t database() {
  static const std::int16_t db = [] {
    const auto path = std::filesystem::temp_directory_path() / ("tavd-fuzz-" + std::to_string(getpid()));
    const std::int16_t opened = tavbopendatabase(nullptr, path.c_str(), 1);
    std::filesystem::remove(path);
    require(opened >= 0);
    return opened;
  }();
  return db;
}

}  // namespace

Records::Records(Input& input) : db_(database()), handles_before_(memory_service_open_handles()) {
  while (!input.empty()) {
    const auto number = input.number<std::int16_t>();
    const std::string value = input.bytes(input.number<std::uint16_t>());
    if (number == kBeginsRecord) {
      if (records_.size() == kMostRecords) break;
      begin(value.substr(0, kClassChars),
            value.size() > kClassChars ? value.substr(kClassChars, kIdChars) : "");
    } else {
      if (records_.empty()) begin("FZZ", "PRODUCT");
      const auto length = static_cast<std::int16_t>(std::min<std::size_t>(value.size(), INT16_MAX));
      tavbinsertatt(db_, &records_.back(), number, value.data(), length);
    }
  }
  if (records_.empty()) begin("FZZ", "PRODUCT");
  for (tavb_rec rec : records_) tavbsaverec(db_, rec);
}

Records::~Records() {
  for (tavb_rec rec : records_) {
    tavbdeleterec(db_, class_id(rec).c_str(), object_id(rec).c_str());
    tavbreleaserec(rec);
  }
  require(memory_service_open_handles() == handles_before_);
}

std::string Records::class_id(tavb_rec rec) {
  char id[kClassChars + 1] = {};
  tavbgetID(0, rec, id, nullptr);
  return id;
}

std::string Records::object_id(tavb_rec rec) {
  char id[kIdChars + 1] = {};
  tavbgetID(0, rec, nullptr, id);
  return id;
}

void Records::begin(const std::string& class_id, const std::string& object_id) {
  tavb_rec rec = tavdsrv_newrec(class_id.c_str(), object_id.c_str());
  records_.push_back(rec != nullptr ? rec : tavdsrv_newrec("FZZ", "PRODUCT"));
}

}  // namespace fuzz
