// Hostile bytes in the place of a database file: opened, searched and walked through, and every record
// loaded.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "fuzz/input.h"
#include "tavd/tavd.h"
#include "tavd/tavdsrv.h"

namespace {

using fuzz::require;

constexpr int kMostRecords = 64;

// In memory where the system has a place for that: a file is written for each input.
const std::string& file_name() {
  static const std::string name = [] {
    const std::filesystem::path memory = "/dev/shm";
    const auto folder = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    return (folder / ("tavd-fuzz-" + std::to_string(getpid()) + ".tavdb")).string();
  }();
  return name;
}

struct FileRemoved {
  ~FileRemoved() {
    for (const char* beside : {"", "-journal", "-wal", "-shm"}) std::filesystem::remove(file_name() + beside);
  }
};

void copy_attributes(std::int16_t db, tavb_rec rec) {
  const std::int32_t count = tavdsrv_attributecount(rec);
  for (std::int32_t i = 0; i < count; ++i) {
    std::int16_t number = 0;
    const void* value = nullptr;
    std::int32_t length = 0;
    require(tavdsrv_attributeat(rec, i, &number, &value, &length) == 0);
    // Never empty: a null buffer asks for a block.
    std::vector<unsigned char> room(static_cast<std::size_t>(length / 2 + 1));
    std::int16_t items = 0;
    const auto capacity = static_cast<std::int16_t>(std::min<std::size_t>(room.size(), INT16_MAX));
    tavbcopyatt(db, rec, number, &items, room.data(), capacity);
    tavbreleaseatt(tavbcopyatt(db, rec, number, &items, nullptr, 0));
    std::vector<tavd_wchar> wide(40);
    tavbcopywsz(db, rec, number, wide.data(), 80, i % 9);
  }
}

void use(std::int16_t db, tavb_rec rec) {
  char class_id[8] = {};
  char object_id[32] = {};
  tavbgetID(db, rec, class_id, object_id);
  copy_attributes(db, rec);
  FlowData fd;
  tavca_load_flowdata(db, rec, &fd);
  FamilyList family;
  tavfm_init(&family);
  tavfm_read(&family, db, class_id, object_id);
  tavfm_release(&family);
  std::int32_t length = 0;
  tavbreleaseahm(tavbgetahm(db, rec, &length));
  tavbreleaserec(tavbfindrec(db, class_id, object_id, 0));
}

void walk(std::int16_t db) {
  tavb_rec rec = tavbfindrec(db, "   ", "", 1);
  for (int i = 0; rec != nullptr && i < kMostRecords; ++i) {
    use(db, rec);
    tavb_rec next = tavbnextrec(db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  tavbreleaserec(rec);
}

void change(std::int16_t db) {
  tavb_rec rec = tavdsrv_newrec("FZZ", "NEW");
  tavbinsertatt(db, &rec, 1501, "CODE", 4);
  tavbsaverec(db, rec);
  tavbreleaserec(rec);
  tavbdeleterec(db, "FZZ", "NEW");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const FileRemoved at_the_end;
  std::ofstream(file_name(), std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  const std::int16_t db = tavdf_open_database(file_name().c_str(), 0);
  if (db < 0) return 0;
  walk(db);
  change(db);
  require(tavdsrv_closedatabase(db) == 0);
  return 0;
}
