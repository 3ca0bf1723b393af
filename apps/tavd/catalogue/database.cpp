#include "catalogue/database.h"

#include <filesystem>
#include <memory>

#include "base/errors.h"
#include "base/paths.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "catalogue/files.h"
#include "drafts/drafts.h"
#include "product/text_codec.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

// Lets the service finish what a crash left of the file that is to be replaced: a journal that stayed beside
// it would be taken for the new file's.
void settle(const std::string& target) {
  std::error_code problem;
  if (!std::filesystem::exists(to_path(target), problem)) return;
  const std::int16_t handle = open_database_file(target, 0);
  if (handle >= 0) tavdsrv_closedatabase(handle);
  if (std::filesystem::exists(to_path(target + "-journal"), problem)) {
    throw UserError(target + "-journal lies beside the file to be replaced and would spoil the new one");
  }
}

// A database that is filled before its target's name is given to it. It lies in a folder of its own, with all
// that the service puts beside it, under the target's own name: one that the service refuses is refused here.
class DraftDatabase {
 public:
  // `place` is the file that the draft is to become, `shown` what messages call it.
  DraftDatabase(const std::filesystem::path& place, const std::string& shown, const Fill& fill)
      : folder_(place, drafts::Folder::Use::kPrivate), name_(place.filename()) {
    if (!folder_.reason().empty()) throw cannot_write(shown, folder_.reason());
    try {
      const Database database(to_text(file()), Database::Open::kCreate, {}, shown);
      fill(database);
    } catch (const UserError& error) {
      throw without_draft(error, to_text(file()), shown);
    }
  }

  std::filesystem::path file() const { return folder_.path() / name_; }

 private:
  drafts::Folder folder_;
  std::filesystem::path name_;
};

void remove_records(const Database& database) {
  Record record = database.first();
  check_service();
  while (record) {
    const RecordKey key = database.key(record);
    tavbdeleterec(database.handle(), key.class_id.c_str(), key.object_id.c_str());
    check_service();
    record = database.next(record);
    check_service();
  }
}

void copy_record(const Database& source, const Record& record, const Database& target) {
  std::int32_t length = 0;
  void* block = tavbgetahm(source.handle(), record.get(), &length);
  const std::unique_ptr<void, decltype(&tavbreleaseahm)> held(block, tavbreleaseahm);
  check_service();
  tavbsaverecwithahm(target.handle(), record.get(), block, length);
  check_service();
}

// On a server a database is replaced record by record, in one group that others see as a whole.
void make_on_server(const std::string& target, const Fill& fill) {
  const Database database(target, Database::Open::kCreate);
  const auto fill_and_store = [&](const Database& draft) {
    fill(draft);
    Transaction transaction(database);
    remove_records(database);
    Record record = draft.first();
    check_service();
    while (record) {
      copy_record(draft, record, database);
      record = draft.next(record);
      check_service();
    }
    transaction.commit();
  };
  const DraftDatabase draft(std::filesystem::temp_directory_path() / "server.tavdb", database.path(),
                            fill_and_store);
}

// The service ends class and id at a NUL, so that no catalogue can make such a record.
void refuse_nul(const Database& database, const Entry& entry) {
  const std::string key = entry.class_id + ' ' + entry.object_id;
  if (key.find('\0') == std::string::npos) return;
  throw UserError(
      database.path() + ": the record " + in_quotes(key) + " (" + to_hex(entry.object_id) +
      ") has a NUL byte in its class or id, expected none: a dump of it could not be built again");
}

}  // namespace

void make_database(const std::string& target, const Fill& fill) {
  if (is_on_server(target)) return make_on_server(target, fill);
  refuse_what_cannot_be_a_database(target);
  const DraftDatabase draft(to_path(target), target, fill);
  settle(target);
  std::string reason;
  if (!drafts::replace(draft.file(), to_path(target), reason)) throw cannot_write(target, reason);
}

bool add_database(const std::string& target, const Fill& fill) {
  refuse_what_cannot_be_a_database(target);
  const DraftDatabase draft(to_path(target), target, fill);
  std::string reason;
  const drafts::Added added = drafts::add(draft.file(), to_path(target), reason);
  if (added == drafts::Added::kFailed) throw cannot_write(target, reason);
  return added == drafts::Added::kDone;
}

void store(const Database& database, const Entry& entry) {
  Record record(tavdsrv_newrec(entry.class_id.c_str(), entry.object_id.c_str()));
  check_service();
  for (const auto& [number, bytes] : entry.attributes) {
    tavbinsertatt(database.handle(), record.address(), number, bytes.data(),
                  static_cast<std::int16_t>(bytes.size()));
    check_service();
  }
  if (entry.ahm) {
    std::string block = *entry.ahm;
    tavbsaverecwithahm(database.handle(), record.get(), block.data(),
                       static_cast<std::int32_t>(block.size()));
  } else {
    tavbsaverec(database.handle(), record.get());
  }
  check_service();
}

std::size_t dump_database(const Database& database, std::ostream& out) {
  Progress progress("Writing", 0);
  TextCodec codec(database.handle());
  std::size_t records = 0;
  Record record = database.first();
  check_service();
  out << '[';
  while (record && out) {
    const Entry entry = stored_entry(database, record);
    refuse_nul(database, entry);
    out << (records == 0 ? "\n" : ",\n") << entry_text(codec, entry);
    ++records;
    progress.step();
    record = database.next(record);
    check_service();
  }
  out << (records == 0 ? "]\n" : "\n]\n");
  return records;
}

}  // namespace tavdhost
