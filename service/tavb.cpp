// The 17 functions of tavd/tavb.h.
#include "tavd/tavb.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <new>

#include "codepage/system.h"
#include "service/attributes.h"
#include "service/handles.h"
#include "service/lasterror.h"
#include "service/stores.h"
#include "service/text.h"

using tavdsrv::Bytes;
using tavdsrv::Database;
using tavdsrv::guarded;
using tavdsrv::Key;
using tavdsrv::make_key;
using tavdsrv::Record;

namespace {

// The result for a caller that asks whether an attribute exists without having it copied.
char exists_marker;

std::filesystem::path path_of(const char* name) {
  return codepage::path_of(name);
}

std::filesystem::path path_of(const tavd_wchar* name) {
  return name;
}

template <typename Character>
std::int16_t open_database(const Character* path, std::int32_t mode) {
  return guarded(tavdsrv::kNoDatabase, [&] {
    if (path == nullptr) throw tavdsrv::Failure("no file name given");
    return tavdsrv::add_handle(std::make_shared<Database>(tavdsrv::open_store(path_of(path), mode != 0)));
  });
}

const Record* record_of(tavb_rec rec) {
  return static_cast<const Record*>(rec);
}

Bytes bytes_of(const void* data, std::int32_t length) {
  if (data == nullptr || length <= 0) return {};
  return {static_cast<const unsigned char*>(data), static_cast<std::size_t>(length)};
}

// A block of the caller's own, with a terminator behind it so that a text can be read as it is.
void* copy_block(Bytes value) {
  auto* block = static_cast<unsigned char*>(std::malloc(value.size() + 1));
  if (block == nullptr) throw std::bad_alloc();
  std::copy(value.begin(), value.end(), block);
  block[value.size()] = 0;
  return block;
}

void* copy_attribute(const Record* record, std::int16_t attribute, std::int16_t* count, void* buffer,
                     std::int16_t capacity) {
  const auto value = record != nullptr ? record->find(attribute) : std::nullopt;
  if (!value.has_value()) return nullptr;
  if (count != nullptr) *count = tavdsrv::item_count(attribute, value->size());
  if (buffer == nullptr) return capacity == 0 ? copy_block(*value) : &exists_marker;

  const auto room = static_cast<std::size_t>(std::max<std::int16_t>(capacity, 0));
  const Bytes copied = value->first(std::min(value->size(), room));
  auto* dest = static_cast<unsigned char*>(buffer);
  std::copy(copied.begin(), copied.end(), dest);
  if (copied.size() < room && tavdsrv::is_text(attribute)) dest[copied.size()] = 0;
  return buffer;
}

}  // namespace

int16_t tavbopendatabase(const char*, const char* dbPath, int32_t mode) {
  return open_database(dbPath, mode);
}

int16_t tavbopendatabasew(const tavd_wchar*, const tavd_wchar* dbPath, int32_t mode) {
  return open_database(dbPath, mode);
}

tavb_rec tavbfindrec(int16_t db, const char* classId, const char* objId, int16_t mode) {
  return guarded<tavb_rec>(nullptr, [&]() -> tavb_rec {
    const auto database = tavdsrv::database_of(db);
    const Key key = make_key(classId, objId);
    return (mode == 0 ? database->find(key) : database->find_at_or_after(key)).release();
  });
}

tavb_rec tavbnextrec(int16_t db, tavb_rec rec) {
  return guarded<tavb_rec>(nullptr, [&]() -> tavb_rec {
    if (rec == nullptr) return nullptr;
    return tavdsrv::database_of(db)->find_after(record_of(rec)->key()).release();
  });
}

void tavbreleaserec(tavb_rec rec) {
  delete static_cast<Record*>(rec);
}

void tavbgetID(int16_t, tavb_rec rec, char* classIdx, char* objIdx) {
  // No record: an empty class and a blank id, so that a caller never goes on with what lay in its buffers.
  const Key key = rec != nullptr ? record_of(rec)->key() : make_key(nullptr, nullptr);
  if (classIdx != nullptr) {
    std::memset(classIdx, 0, tavdsrv::kClassLength + 1);
    if (rec != nullptr) std::memcpy(classIdx, key.class_id(), tavdsrv::kClassLength);
  }
  if (objIdx != nullptr) std::memcpy(objIdx, key.object_id(), tavdsrv::kObjectLength);
}

void tavbobjIDtosz(int16_t, const char* objIdx, char* sz) {
  if (sz != nullptr) tavdsrv::write_object_text(objIdx != nullptr ? objIdx : "", sz);
}

void* tavbcopyatt(int16_t, tavb_rec rec, int16_t attId, int16_t* count, void* buffer, int16_t capacity) {
  if (count != nullptr) *count = 0;
  return guarded<void*>(nullptr,
                        [&] { return copy_attribute(record_of(rec), attId, count, buffer, capacity); });
}

void* tavbcopywsz(int16_t db, tavb_rec rec, int16_t attId, tavd_wchar* buffer, int32_t capacity,
                  int32_t charset) {
  return guarded<void*>(nullptr, [&]() -> void* {
    const auto value = rec != nullptr ? record_of(rec)->find(attId) : std::nullopt;
    if (!value.has_value()) return nullptr;
    if (buffer == nullptr) return &exists_marker;
    const auto database = tavdsrv::depends_on_database(charset) ? tavdsrv::find_database(db) : nullptr;
    const unsigned page = tavdsrv::code_page(charset, database != nullptr && database->uses_utf8());
    const auto room = static_cast<std::size_t>(std::max(capacity, 0)) / sizeof(tavd_wchar);
    tavdsrv::write_wide(*value, page, buffer, room);
    return buffer;
  });
}

void* tavbfindatt(int16_t db, const char* classId, const char* objId, int16_t attId, int16_t* count,
                  void* buffer, int16_t capacity) {
  if (count != nullptr) *count = 0;
  return guarded<void*>(nullptr, [&] {
    const auto record = tavdsrv::database_of(db)->find(make_key(classId, objId));
    return copy_attribute(record.get(), attId, count, buffer, capacity);
  });
}

void tavbreleaseatt(void* block) {
  if (block != &exists_marker) std::free(block);
}

void tavbinsertatt(int16_t, tavb_rec* recp, int16_t attId, const void* data, int16_t length) {
  guarded([&] {
    if (recp == nullptr || *recp == nullptr || length < 0 || (data == nullptr && length > 0)) return;
    static_cast<Record*>(*recp)->insert(attId, bytes_of(data, length));
  });
}

void tavbsaverec(int16_t db, tavb_rec rec) {
  guarded([&] {
    if (rec != nullptr) tavdsrv::database_of(db)->save(*record_of(rec));
  });
}

void tavbdeleterec(int16_t db, const char* classId, const char* objId) {
  guarded([&] { tavdsrv::database_of(db)->remove(make_key(classId, objId)); });
}

void* tavbgetahm(int16_t db, tavb_rec rec, int32_t* length) {
  if (length != nullptr) *length = 0;
  return guarded<void*>(nullptr, [&]() -> void* {
    if (rec == nullptr) return nullptr;
    void* block = nullptr;
    tavdsrv::database_of(db)->ahm(record_of(rec)->key(), [&](Bytes stored) {
      if (stored.empty()) return;
      block = copy_block(stored);
      if (length != nullptr) *length = static_cast<std::int32_t>(stored.size());
    });
    return block;
  });
}

void tavbsaverecwithahm(int16_t db, tavb_rec rec, void* block, int32_t length) {
  guarded([&] {
    if (rec != nullptr) tavdsrv::database_of(db)->save(*record_of(rec), bytes_of(block, length));
  });
}

void tavbreleaseahm(void* block) {
  std::free(block);
}
