#include "catalogue/build.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <new>
#include <utility>

#include "base/errors.h"
#include "base/paths.h"
#include "base/progress.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "catalogue/database.h"
#include "catalogue/files.h"
#include "product/families.h"
#include "product/text_codec.h"
#include "tavd/attributes.h"

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
  Collector(const TextCodec& codec, Faults& faults, Faults& remarks)
      : codec_(codec), faults_(faults), remarks_(remarks) {}

  void add(const Source& source, const Json::Value& product) {
    auto entry = read_entry(codec_, source, product, faults_, &remarks_);
    if (!entry) return;
    const RecordKey key{entry->class_id, entry->object_id};
    if (places_.add(key, {&source, &product})) {
      entries_.push_back(std::move(*entry));
      return;
    }
    if (repeats_file_header(*entry)) return;
    const Places::Product& first = places_.product(key);
    faults_.add(source, entry->place,
                printable(key.class_id + ' ' + key.object_id) +
                    ": duplicate; expected each class and id once, first found at " + first.source->name() +
                    ':' + std::to_string(first.source->place(first.value->getOffsetStart()).line));
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

  const Places& places() const { return places_; }

 private:
  // Sources that can each be built alone bring a file header each, which must be the same.
  bool repeats_file_header(const Entry& entry) const {
    return entry.class_id == kFileHeaderClass && entry.object_id == kFileHeaderId &&
           std::ranges::any_of(entries_, [&](const Entry& other) {
             return other.class_id == entry.class_id && other.object_id == entry.object_id &&
                    other.attributes == entry.attributes && other.ahm == entry.ahm;
           });
  }

  const TextCodec& codec_;
  Faults& faults_;
  Faults& remarks_;
  std::vector<Entry> entries_;
  Places places_;
};

// The value of an attribute in a product's text: under its name, as a member of its group, or under its
// number.
const Json::Value* member_of(const Json::Value& product, std::int16_t attribute) {
  const std::string name = attribute_name(attribute);
  const std::size_t point = name.find('.');
  const Json::Value& group = point == std::string::npos ? product : product[name.substr(0, point)];
  const std::string key = point == std::string::npos ? name : name.substr(point + 1);
  if (group.isObject() && group.isMember(key)) return &group[key];
  const std::string number = std::to_string(attribute);
  return product.isMember(number) ? &product[number] : nullptr;
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

void refuse_target_among(const std::vector<std::string>& sources, const std::string& target) {
  for (const std::string& source : sources) {
    std::error_code problem;
    if (std::filesystem::equivalent(to_path(source), to_path(target), problem)) {
      throw UserError(target + " is one of the sources, expected another name for the database");
    }
  }
}

}  // namespace

std::optional<Places::At> Places::find(const RecordKey& key, std::optional<std::int16_t> attribute,
                                       std::size_t row) const {
  const auto found = products_.find({key.class_id, key.object_id});
  if (found == products_.end()) return std::nullopt;
  const Json::Value* value = found->second.value;
  if (attribute) {
    if (const Json::Value* member = member_of(*value, *attribute)) value = member;
    const auto index = static_cast<Json::ArrayIndex>(row - 1);
    if (row > 0 && value->isArray() && index < value->size()) value = &(*value)[index];
  }
  const Source& source = *found->second.source;
  return At{&source, source.place(value->getOffsetStart())};
}

UserError refused(const Faults& faults, const char* what, const std::string& target) {
  return UserError(std::to_string(faults.count()) + ' ' + what + (faults.count() == 1 ? "" : "s") +
                   " in the sources, " + target + " is left as it is\n" + faults.listing());
}

void build_database(const std::vector<std::string>& sources, const std::string& target,
                    const Inspect& inspect) {
  const std::vector<std::string> files = source_files(sources);
  refuse_target_among(files, target);
  Faults faults;
  Faults remarks;
  const ParsedSources parsed = parse_sources(files, faults);
  for (const ParsedSource& next : parsed) remarks.name(next.source);
  make_database(target, [&](const Database& database) {
    const TextCodec codec(database.handle());
    store_encoding(database, codec, parsed);
    Collector collector(codec, faults, remarks);
    for (const auto& [source, root] : parsed) {
      for (const Json::Value* product : products_of(root)) collector.add(source, *product);
    }
    if (!faults.empty()) throw refused(faults, "fault", shown_name(target));
    const std::vector<Entry> entries = collector.take_sorted();
    store_all(database, entries);
    inspect({database, collector.places(), remarks, entries.size()});
  });
}

}  // namespace tavdhost
