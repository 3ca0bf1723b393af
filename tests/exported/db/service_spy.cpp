#include "exported/db/service_spy.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <utility>

#include "support/next_service.h"
#include "tavd/tavb.h"

namespace {

std::vector<std::string> noted;
std::multiset<void*> out;
std::size_t taken = 0;
tavb_rec last_record = nullptr;
std::string last_key_asked;
std::string action_line;
std::function<void()> action;
bool inside_service = false;  // a service may call its own functions by their names: those calls are not ours

template <typename Function>
Function* service(Function* /*spy*/, const char* name) {
  return reinterpret_cast<Function*>(tavdtest::next_service(name));
}

void note(std::string line, std::initializer_list<long> numbers = {}) {
  if (inside_service) return;
  for (const long number : numbers) {
    line += ' ';
    line += std::to_string(number);
  }
  noted.push_back(line);
  if (action && line == action_line) std::exchange(action, nullptr)();
}

void* hand_out(void* handle) {
  if (handle == nullptr || inside_service) return handle;
  out.insert(handle);
  ++taken;
  return handle;
}

tavb_rec hand_out_record(tavb_rec rec) {
  if (rec != nullptr && !inside_service) last_record = rec;
  return hand_out(rec);
}

void take_back(void* handle) {
  const auto found = out.find(handle);
  if (found != out.end()) out.erase(found);
}

}  // namespace

namespace tavdtest {

std::vector<std::string>& calls() {
  return noted;
}

void clear_calls() {
  noted.clear();
}

std::string last_key() {
  return last_key_asked;
}

std::size_t handles_out() {
  return out.size();
}

std::size_t handles_taken() {
  return taken;
}

bool release_last_record() {
  if (!out.contains(last_record)) return false;
  tavbreleaserec(last_record);
  return true;
}

void at_call(std::string line, std::function<void()> what) {
  action_line = std::move(line);
  action = std::move(what);
}

Balance::Balance() : before_(out.size()) {}

Balance::~Balance() {
  EXPECT_EQ(out.size(), before_) << "handles or blocks were not given back";
}

}  // namespace tavdtest

// The service's functions as the library sees them.

int16_t tavbopendatabase(const char* vlkFile, const char* dbPath, int32_t mode) {
  note(std::string("open ") + (vlkFile == nullptr ? "-" : vlkFile), {mode});
  return service(&tavbopendatabase, "tavbopendatabase")(vlkFile, dbPath, mode);
}

int16_t tavbopendatabasew(const tavd_wchar* vlkFile, const tavd_wchar* dbPath, int32_t mode) {
  std::string vlk;
  for (const tavd_wchar* c = vlkFile; *c != 0; ++c) vlk += static_cast<char>(*c);
  note("openw " + vlk, {mode});
  return service(&tavbopendatabasew, "tavbopendatabasew")(vlkFile, dbPath, mode);
}

tavb_rec tavbfindrec(int16_t db, const char* classId, const char* objId, int16_t mode) {
  note("find " + std::string(classId, 3), {mode});
  if (!inside_service) last_key_asked.assign(objId, strnlen(objId, 30));
  return hand_out_record(service(&tavbfindrec, "tavbfindrec")(db, classId, objId, mode));
}

tavb_rec tavbnextrec(int16_t db, tavb_rec rec) {
  note("next");
  return hand_out_record(service(&tavbnextrec, "tavbnextrec")(db, rec));
}

void tavbreleaserec(tavb_rec rec) {
  note("release");
  take_back(rec);
  service(&tavbreleaserec, "tavbreleaserec")(rec);
}

void tavbgetID(int16_t db, tavb_rec rec, char* classIdx, char* objIdx) {
  note(classIdx == nullptr ? "id" : "ids");
  service(&tavbgetID, "tavbgetID")(db, rec, classIdx, objIdx);
}

void* tavbcopyatt(int16_t db, tavb_rec rec, int16_t attId, int16_t* count, void* buffer, int16_t capacity) {
  note("att " + std::to_string(attId) + ' ' + std::to_string(capacity) +
       (count != nullptr ? " counted" : "") + (buffer == nullptr ? " block" : ""));
  void* block = service(&tavbcopyatt, "tavbcopyatt")(db, rec, attId, count, buffer, capacity);
  return buffer != nullptr ? block : hand_out(block);
}

void* tavbcopywsz(int16_t db, tavb_rec rec, int16_t attId, tavd_wchar* buffer, int32_t capacity,
                  int32_t charset) {
  note("wsz", {attId, capacity, charset});
  return service(&tavbcopywsz, "tavbcopywsz")(db, rec, attId, buffer, capacity, charset);
}

void* tavbfindatt(int16_t db, const char* classId, const char* objId, int16_t attId, int16_t* count,
                  void* buffer, int16_t capacity) {
  note("findatt " + std::string(classId, 3) + ' ' + objId, {attId, capacity});
  inside_service = true;
  void* block = service(&tavbfindatt, "tavbfindatt")(db, classId, objId, attId, count, buffer, capacity);
  inside_service = false;
  return buffer != nullptr ? block : hand_out(block);
}

void tavbreleaseatt(void* block) {
  note("releaseatt");
  take_back(block);
  service(&tavbreleaseatt, "tavbreleaseatt")(block);
}

void tavbinsertatt(int16_t db, tavb_rec* recp, int16_t attId, const void* data, int16_t length) {
  note("insert", {attId, length});
  const bool was_out = out.contains(*recp);
  if (was_out) take_back(*recp);
  service(&tavbinsertatt, "tavbinsertatt")(db, recp, attId, data, length);
  if (was_out) out.insert(*recp);
}

void tavbsaverec(int16_t db, tavb_rec rec) {
  note("save", {db});
  service(&tavbsaverec, "tavbsaverec")(db, rec);
}

void tavbdeleterec(int16_t db, const char* classId, const char* objId) {
  note("delete " + std::string(classId, 3));
  service(&tavbdeleterec, "tavbdeleterec")(db, classId, objId);
}

void* tavbgetahm(int16_t db, tavb_rec rec, int32_t* length) {
  note("ahm");
  return hand_out(service(&tavbgetahm, "tavbgetahm")(db, rec, length));
}

void tavbsaverecwithahm(int16_t db, tavb_rec rec, void* block, int32_t length) {
  note("saveahm", {db, length});
  service(&tavbsaverecwithahm, "tavbsaverecwithahm")(db, rec, block, length);
}

void tavbreleaseahm(void* block) {
  note("releaseahm");
  take_back(block);
  service(&tavbreleaseahm, "tavbreleaseahm")(block);
}
