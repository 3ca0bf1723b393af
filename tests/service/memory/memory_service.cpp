// The service over a std::map: small enough to be seen right, and strict enough to count what is not given
// back. Databases live as long as the process; a path means the same database as long as a file stands there.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "codepage/codepage.h"
#include "tavd/tavdsrv.h"

// Records, attribute blocks and ahm blocks that were handed out and not given back.
extern "C" TAVD_API long memory_service_open_handles(void);

namespace {

namespace fs = std::filesystem;

using Key = std::string;  // class id and object id, padded to 3 and 30
struct Stored {
  std::map<std::int16_t, std::string> attributes;
  std::string ahm;
};
using Store = std::map<Key, Stored>;
struct Record {
  Key key;
  std::map<std::int16_t, std::string> attributes;
};

std::map<std::string, std::shared_ptr<Store>> stores_of_paths;
std::vector<std::shared_ptr<Store>> handles;  // handle n at n - 1
std::set<void*> blocks;
long open_records = 0;
char exists;

std::string padded(const char* id, std::size_t width) {
  std::string text(id != nullptr ? std::string(id, strnlen(id, width)) : "");
  text.resize(width, ' ');
  return text;
}

Key key_of(const char* class_id, const char* object_id) {
  return padded(class_id, 3) + padded(object_id, 30);
}

Store* store_of(std::int16_t db) {
  if (db < 1 || static_cast<std::size_t>(db) > handles.size()) return nullptr;
  return handles[static_cast<std::size_t>(db) - 1].get();
}

std::int16_t open_path(const fs::path& given, bool create) {
  if (given.empty()) return -1;
  const fs::path path = fs::absolute(given);
  if (!fs::exists(path)) {
    stores_of_paths.erase(path.string());
    if (!create || !std::ofstream(path).put('m')) return -1;
    stores_of_paths[path.string()] = std::make_shared<Store>();
  }
  const auto store = stores_of_paths.find(path.string());
  if (store == stores_of_paths.end()) return -1;
  auto slot = std::find(handles.begin(), handles.end(), nullptr);
  if (slot == handles.end()) slot = handles.insert(slot, nullptr);
  *slot = store->second;
  return static_cast<std::int16_t>(slot - handles.begin() + 1);
}

template <typename Character>
std::int16_t open_database(const Character* path, std::int32_t mode) {
  try {
    return path != nullptr ? open_path(fs::path(path), mode != 0) : std::int16_t{-1};
  } catch (const std::exception&) {
    return -1;
  }
}

Record* hand_out(const Key& key, const std::map<std::int16_t, std::string>& attributes) {
  ++open_records;
  return new Record{key, attributes};
}

Record* hand_out(const Store& store, Store::const_iterator found) {
  return found != store.end() ? hand_out(found->first, found->second.attributes) : nullptr;
}

void* hand_out_block(const std::string& bytes) {
  void* block = std::malloc(bytes.size() + 1);
  std::memcpy(block, bytes.c_str(), bytes.size() + 1);
  blocks.insert(block);
  return block;
}

void take_back_block(void* block) {
  if (block == nullptr || block == &exists) return;
  if (blocks.erase(block) == 0) std::abort();  // never handed out, or given back twice
  std::free(block);
}

std::int16_t items(std::int16_t attribute, std::size_t length) {
  static const std::map<std::int16_t, std::size_t> sizes = {
      {1049, 2},  {1102, 2},  {1110, 2},  {1150, 2},  {1302, 4},  {1604, 30}, {1649, 20}, {1650, 22},
      {1651, 8},  {1652, 12}, {1653, 16}, {1654, 8},  {1655, 12}, {1657, 8},  {1658, 16}, {1659, 8},
      {1660, 14}, {1661, 18}, {1662, 18}, {1666, 12}, {1670, 4},  {1671, 8}};
  const auto size = sizes.find(attribute);
  return static_cast<std::int16_t>(size != sizes.end() ? std::min<std::size_t>(length / size->second, 32767)
                                                       : 1);
}

bool is_text(std::int16_t attribute) {
  static const std::set<std::int16_t> texts = {1501, 1503, 1505, 1511, 1513, 1514, 1525, 1562, 1669, 1674};
  return texts.count(attribute) != 0 || (attribute >= 8500 && attribute <= 8533) ||
         (attribute >= 9500 && attribute <= 9533) || (attribute >= 9550 && attribute <= 9594);
}

const std::string* value_of(const Record* record, std::int16_t attribute) {
  if (record == nullptr) return nullptr;
  const auto found = record->attributes.find(attribute);
  return found != record->attributes.end() ? &found->second : nullptr;
}

void* copy_attribute(const Record* record, std::int16_t attribute, std::int16_t* count, void* buffer,
                     std::int16_t capacity) {
  const std::string* value = value_of(record, attribute);
  if (count != nullptr) *count = value != nullptr ? items(attribute, value->size()) : std::int16_t{0};
  if (value == nullptr) return nullptr;
  if (buffer == nullptr) return capacity == 0 ? hand_out_block(*value) : &exists;
  const auto room = static_cast<std::size_t>(std::max<std::int16_t>(capacity, 0));
  const std::size_t copied = std::min(room, value->size());
  std::memcpy(buffer, value->data(), copied);
  if (copied < room && is_text(attribute)) static_cast<char*>(buffer)[copied] = '\0';
  return buffer;
}

bool uses_utf8(std::int16_t db) {
  const Store* store = store_of(db);
  if (store == nullptr) return false;
  const auto header = store->find(key_of("000", "FILEHEADER"));
  if (header == store->end()) return false;
  const auto flag = header->second.attributes.find(1049);
  return flag != header->second.attributes.end() && flag->second == std::string("\1\0", 2);
}

unsigned code_page(std::int32_t charset, std::int16_t db) {
  switch (charset) {
    case 1:
      return codepage::kUtf8;
    case 6:
      return codepage::kWindows1257;
    case 7:
      return codepage::kWindows1250;
    case 8:
      return codepage::kWindows1251;
    default:
      return uses_utf8(db) ? codepage::kUtf8 : codepage::kDefault;
  }
}

}  // namespace

long memory_service_open_handles(void) {
  return open_records + static_cast<long>(blocks.size());
}

int16_t tavbopendatabase(const char*, const char* dbPath, int32_t mode) {
  return open_database(dbPath, mode);
}

int16_t tavbopendatabasew(const tavd_wchar*, const tavd_wchar* dbPath, int32_t mode) {
  return open_database(dbPath, mode);
}

tavb_rec tavbfindrec(int16_t db, const char* classId, const char* objId, int16_t mode) {
  const Store* store = store_of(db);
  if (store == nullptr) return nullptr;
  const Key key = key_of(classId, objId);
  return hand_out(*store, mode == 0 ? store->find(key) : store->lower_bound(key));
}

tavb_rec tavbnextrec(int16_t db, tavb_rec rec) {
  const Store* store = store_of(db);
  if (store == nullptr || rec == nullptr) return nullptr;
  return hand_out(*store, store->upper_bound(static_cast<Record*>(rec)->key));
}

void tavbreleaserec(tavb_rec rec) {
  if (rec == nullptr) return;
  --open_records;
  delete static_cast<Record*>(rec);
}

void tavbgetID(int16_t, tavb_rec rec, char* classIdx, char* objIdx) {
  const Key key = rec != nullptr ? static_cast<Record*>(rec)->key : key_of(nullptr, nullptr);
  if (classIdx != nullptr) std::memcpy(classIdx, rec != nullptr ? key.substr(0, 3).c_str() : "\0\0\0", 4);
  if (objIdx != nullptr) std::memcpy(objIdx, key.data() + 3, 30);
}

void tavbobjIDtosz(int16_t, const char* objIdx, char* sz) {
  if (sz == nullptr) return;
  std::string text = padded(objIdx, 30);
  text.resize(text.find_last_not_of(' ') + 1);
  std::memcpy(sz, text.c_str(), text.size() + 1);
}

void* tavbcopyatt(int16_t, tavb_rec rec, int16_t attId, int16_t* count, void* buffer, int16_t capacity) {
  return copy_attribute(static_cast<Record*>(rec), attId, count, buffer, capacity);
}

void* tavbcopywsz(int16_t db, tavb_rec rec, int16_t attId, tavd_wchar* buffer, int32_t capacity,
                  int32_t charset) {
  const std::string* value = value_of(static_cast<Record*>(rec), attId);
  if (value == nullptr) return nullptr;
  if (buffer == nullptr) return &exists;
  const auto room = static_cast<std::size_t>(std::max(capacity, 0)) / sizeof(tavd_wchar);
  const std::size_t length = strnlen(value->c_str(), value->size());
  const std::size_t written = codepage::widen(code_page(charset, db), value->data(), length, buffer, room);
  if (written < room) buffer[written] = 0;
  return buffer;
}

void* tavbfindatt(int16_t db, const char* classId, const char* objId, int16_t attId, int16_t* count,
                  void* buffer, int16_t capacity) {
  tavb_rec rec = tavbfindrec(db, classId, objId, 0);
  void* answer = tavbcopyatt(db, rec, attId, count, buffer, capacity);
  tavbreleaserec(rec);
  return answer;
}

void tavbreleaseatt(void* block) {
  take_back_block(block);
}

// Moves the record to another address every time, as the interface allows.
void tavbinsertatt(int16_t, tavb_rec* recp, int16_t attId, const void* data, int16_t length) {
  if (recp == nullptr || *recp == nullptr || length < 0 || (data == nullptr && length > 0)) return;
  auto* old = static_cast<Record*>(*recp);
  auto* moved = new Record(*old);
  moved->attributes[attId] =
      length > 0 ? std::string(static_cast<const char*>(data), static_cast<std::size_t>(length)) : "";
  delete old;
  *recp = moved;
}

void tavbsaverec(int16_t db, tavb_rec rec) {
  Store* store = store_of(db);
  if (store == nullptr || rec == nullptr) return;
  const auto* record = static_cast<Record*>(rec);
  (*store)[record->key].attributes = record->attributes;
}

void tavbdeleterec(int16_t db, const char* classId, const char* objId) {
  if (Store* store = store_of(db)) store->erase(key_of(classId, objId));
}

void* tavbgetahm(int16_t db, tavb_rec rec, int32_t* length) {
  if (length != nullptr) *length = 0;
  const Store* store = store_of(db);
  if (store == nullptr || rec == nullptr) return nullptr;
  const auto found = store->find(static_cast<Record*>(rec)->key);
  if (found == store->end() || found->second.ahm.empty()) return nullptr;
  if (length != nullptr) *length = static_cast<std::int32_t>(found->second.ahm.size());
  return hand_out_block(found->second.ahm);
}

void tavbsaverecwithahm(int16_t db, tavb_rec rec, void* block, int32_t length) {
  tavbsaverec(db, rec);
  Store* store = store_of(db);
  if (store == nullptr || rec == nullptr) return;
  const bool given = block != nullptr && length > 0;
  (*store)[static_cast<Record*>(rec)->key].ahm =
      given ? std::string(static_cast<char*>(block), static_cast<std::size_t>(length)) : "";
}

void tavbreleaseahm(void* block) {
  take_back_block(block);
}

tavb_rec tavdsrv_newrec(const char* classId, const char* objId) {
  const Key key = key_of(classId, objId);
  return key.find_first_not_of(' ', 3) != Key::npos ? hand_out(key, {}) : nullptr;
}

int32_t tavdsrv_closedatabase(int16_t db) {
  if (store_of(db) == nullptr) return -1;
  handles[static_cast<std::size_t>(db) - 1] = nullptr;
  return 0;
}
