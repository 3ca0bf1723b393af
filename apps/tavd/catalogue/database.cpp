#include "catalogue/database.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <map>
#include <new>
#include <utility>

#include "base/errors.h"
#include "base/paths.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "catalogue/attributes.h"
#include "catalogue/entry.h"
#include "catalogue/files.h"
#include "catalogue/source.h"
#include "catalogue/values.h"
#include "drafts/drafts.h"
#include "product/families.h"
#include "product/record_layout.h"
#include "product/text_codec.h"
#include "tavd/attributes.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

// A source and the products in it.
struct ParsedSource {
  Source source;
  Json::Value root;
};

using ParsedSources = std::deque<ParsedSource>;  // what is added stays where it is

// A file holds one product, or an array of them.
std::vector<const Json::Value*> products_of(const Json::Value& root) {
  std::vector<const Json::Value*> products;
  if (!root.isArray()) return {&root};
  for (const Json::Value& product : root) products.push_back(&product);
  return products;
}

ParsedSources parse_sources(const std::vector<std::string>& names, Faults& faults) {
  ParsedSources parsed;
  for (const std::string& name : names) {
    try {
      parsed.push_back({Source::read(name), {}});
      ParsedSource& next = parsed.back();
      if (!parse(next.source, next.root, faults)) next.root = Json::Value(Json::arrayValue);
    } catch (const std::bad_alloc&) {
      throw UserError(name + ": there is not enough memory to read it, expected smaller sources");
    }
  }
  return parsed;
}

bool is_file_header(const Json::Value& product) {
  return product.isObject() && product["class"].isString() &&
         product["class"].asString() == kFileHeaderClass && product["id"].isString() &&
         product["id"].asString() == kFileHeaderId;
}

// The file header decides how texts are stored, so it must be in the database before any text is encoded.
void store_encoding(const Database& database, const TextCodec& codec, const ParsedSources& sources) {
  for (const auto& [source, root] : sources) {
    for (const Json::Value* product : products_of(root)) {
      if (!is_file_header(*product)) continue;
      Faults told_later;
      const auto header = read_entry(codec, source, *product, told_later);
      if (!header || !header->attributes.contains(TAVD_ATT_USES_UTF8)) continue;
      store(database, {header->class_id,
                       header->object_id,
                       {{TAVD_ATT_USES_UTF8, header->attributes.at(TAVD_ATT_USES_UTF8)}},
                       {},
                       {}});
    }
  }
}

// All products of the sources, each key once.
class Collector {
 public:
  Collector(const TextCodec& codec, Faults& faults) : codec_(codec), faults_(faults) {}

  void add(const Source& source, const Json::Value& product) {
    auto entry = read_entry(codec_, source, product, faults_);
    if (!entry) return;
    const std::pair key(entry->class_id, entry->object_id);
    const auto [known, is_new] = places_.try_emplace(key, Found{&source, entry->place});
    if (is_new) {
      entries_.push_back(std::move(*entry));
      return;
    }
    const Found& first = known->second;
    faults_.add(source, entry->place,
                printable(key.first + ' ' + key.second) +
                    ": duplicate; expected each class and id once, first " + "found at " +
                    first.source->name() + ':' + std::to_string(first.place.line));
  }

  // In the order that the database has them, so that the same catalogue gives the same file.
  std::vector<Entry> take_sorted() {
    std::ranges::sort(entries_, {}, [](const Entry& entry) {
      std::string key = entry.class_id + entry.object_id;
      key.resize(hosts::kClassChars + hosts::kIdChars, ' ');
      return key;
    });
    return std::move(entries_);
  }

 private:
  struct Found {
    const Source* source;
    Source::Place place;
  };
  const TextCodec& codec_;
  Faults& faults_;
  std::vector<Entry> entries_;
  std::map<std::pair<std::string, std::string>, Found> places_;
};

void refuse(const Faults& faults, const std::string& target) {
  if (faults.empty()) return;
  throw UserError(std::to_string(faults.count()) + (faults.count() == 1 ? " fault" : " faults") +
                  " in the sources, " + target + " is left as it is\n" + faults.listing());
}

void store_all(const Database& database, const std::vector<Entry>& entries) {
  Transaction transaction(database);
  {
    Progress progress("Storing", entries.size());
    for (const Entry& entry : entries) {
      store(database, entry);
      progress.step();
    }
  }
  transaction.commit();
}

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
  DraftDatabase(const std::string& target, const Fill& fill)
      : folder_(to_path(target), drafts::Folder::Use::kPrivate), name_(to_path(target).filename()) {
    if (!folder_.reason().empty()) throw cannot_write(target, folder_.reason());
    try {
      const Database database(to_text(file()), Database::Open::kCreate, {}, target);
      fill(database);
    } catch (const UserError& error) {
      throw without_draft(error, to_text(file()), target);
    }
  }

  std::filesystem::path file() const { return folder_.path() / name_; }

 private:
  drafts::Folder folder_;
  std::filesystem::path name_;
};

void refuse_target_among(const std::vector<std::string>& sources, const std::string& target) {
  for (const std::string& source : sources) {
    std::error_code problem;
    if (std::filesystem::equivalent(to_path(source), to_path(target), problem)) {
      throw UserError(target + " is one of the sources, expected another name for the database");
    }
  }
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
  refuse_what_cannot_be_a_database(target);
  const DraftDatabase draft(target, fill);
  settle(target);
  std::string reason;
  if (!drafts::replace(draft.file(), to_path(target), reason)) throw cannot_write(target, reason);
}

bool add_database(const std::string& target, const Fill& fill) {
  refuse_what_cannot_be_a_database(target);
  const DraftDatabase draft(target, fill);
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

std::size_t build_database(const std::vector<std::string>& sources, const std::string& target) {
  const std::vector<std::string> files = source_files(sources);
  refuse_target_among(files, target);
  Faults faults;
  const ParsedSources parsed = parse_sources(files, faults);
  std::size_t records = 0;
  make_database(target, [&](const Database& database) {
    const TextCodec codec(database.handle());
    store_encoding(database, codec, parsed);
    Collector collector(codec, faults);
    for (const auto& [source, root] : parsed) {
      for (const Json::Value* product : products_of(root)) collector.add(source, *product);
    }
    refuse(faults, target);
    const std::vector<Entry> entries = collector.take_sorted();
    store_all(database, entries);
    records = entries.size();
  });
  return records;
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
