// What the service offers beside the 17: the functions of tavd/tavdsrv.h.
#include "tavd/tavdsrv.h"

#include <algorithm>
#include <string>

#include "service/handles.h"
#include "service/lasterror.h"
#include "service/servername.h"
#include "service/text.h"

using tavdsrv::Database;
using tavdsrv::guarded;
using tavdsrv::Record;

namespace {

constexpr std::int32_t kFailed = TAVDSRV_FAILED;
constexpr std::int32_t kTooSmall = TAVDSRV_NO_ROOM;

// One step on a database, as a result code.
template <typename Step>
std::int32_t on_database(std::int16_t db, Step&& step) {
  return guarded(kFailed, [&] {
    step(*tavdsrv::database_of(db));
    return 0;
  });
}

}  // namespace

tavb_rec tavdsrv_newrec(const char* classId, const char* objId) {
  return guarded<tavb_rec>(nullptr, [&]() -> tavb_rec {
    const tavdsrv::Key key = tavdsrv::make_key(classId, objId);
    if (!key.has_object_id()) throw tavdsrv::Failure("a record needs an object id");
    return new Record(key);
  });
}

int32_t tavdsrv_attributecount(tavb_rec rec) {
  return rec != nullptr ? static_cast<std::int32_t>(static_cast<const Record*>(rec)->size()) : 0;
}

int32_t tavdsrv_attributeat(tavb_rec rec, int32_t index, int16_t* attId, const void** data, int32_t* length) {
  if (index < 0 || index >= tavdsrv_attributecount(rec)) return kFailed;
  const auto [number, value] = static_cast<const Record*>(rec)->at(static_cast<std::size_t>(index));
  if (attId != nullptr) *attId = number;
  if (data != nullptr) *data = value.data();
  if (length != nullptr) *length = static_cast<std::int32_t>(value.size());
  return 0;
}

int32_t tavdsrv_encodetext(int16_t db, int32_t charset, const tavd_wchar* text, char* buffer,
                           int32_t capacity) {
  return guarded(kFailed, [&] {
    if (text == nullptr) throw tavdsrv::Failure("no text given");
    const bool utf8 = tavdsrv::depends_on_database(charset) && tavdsrv::database_of(db)->uses_utf8();
    std::string encoded;
    if (!tavdsrv::encode(text, tavdsrv::code_page(charset, utf8), encoded)) {
      throw tavdsrv::Failure("a character has no place in charset " + std::to_string(charset));
    }
    const auto room = static_cast<std::size_t>(std::max(capacity, 0));
    if (encoded.size() > room || (buffer == nullptr && !encoded.empty())) return kTooSmall;
    std::copy(encoded.begin(), encoded.end(), buffer);
    return static_cast<std::int32_t>(encoded.size());
  });
}

int32_t tavdsrv_begin(int16_t db) {
  return on_database(db, [](Database& database) { database.begin(); });
}

int32_t tavdsrv_commit(int16_t db) {
  return on_database(db, [](Database& database) { database.commit(); });
}

int32_t tavdsrv_rollback(int16_t db) {
  return on_database(db, [](Database& database) { database.rollback(); });
}

int32_t tavdsrv_closedatabase(int16_t db) {
  return guarded(kFailed, [&] {
    tavdsrv::remove_handle(db);
    return 0;
  });
}

int32_t tavdsrv_shownname(const char* name, char* buffer, int32_t capacity) {
  return guarded(kFailed, [&] {
    if (name == nullptr) throw tavdsrv::Failure("no name given");
    const std::string shown = tavdsrv::shown_name(name);
    const auto room = static_cast<std::size_t>(std::max(capacity, 0));
    if (buffer == nullptr || shown.size() >= room) return kTooSmall;
    std::copy_n(shown.c_str(), shown.size() + 1, buffer);
    return static_cast<std::int32_t>(shown.size());
  });
}

const char* tavdsrv_lasterror(void) {
  return tavdsrv::last_error();
}

const char* tavdsrv_lastwarning(void) {
  return tavdsrv::last_warning();
}
