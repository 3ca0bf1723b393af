// Whether records that name or need others find them.
#include <cstring>
#include <set>

#include "base/text.h"
#include "check/check.h"
#include "product/families.h"
#include "product/layers.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

constexpr int kMostEncodings = 2;  // 0, 1 and 2 are known

int word_of(const Entry& entry, std::int16_t number) {
  std::int16_t word = 0;
  const auto found = entry.attributes.find(number);
  if (found == entry.attributes.end() || found->second.size() < sizeof word) return 0;
  std::memcpy(&word, found->second.data(), sizeof word);
  return word;
}

// Sub records and mains of one product begin alike, up to the first separator.
std::string product_prefix(const std::string& id) {
  return id.substr(0, id.find_first_of("-+") + 1);
}

}  // namespace

bool is_layer(const Entry& entry) {
  const int mode = word_of(entry, TAVD_ATT_SIZING_MODE);
  return mode == TAVD_SIZING_MAIN_LAYER || mode == TAVD_SIZING_SUB_LAYER;
}

void LinkCheck::check(const Record& record, const Entry& entry, Findings& findings) {
  const RecordKey key = database_.key(record);
  check_header(entry, findings);
  if (key.class_id == kModelClass) models_.push_back(key.object_id);
  if (!hosts::is_product_class(key.class_id)) return;
  const int mode = word_of(entry, TAVD_ATT_SIZING_MODE);
  switch (mode) {
    case TAVD_SIZING_SINGLE:
      break;
    case TAVD_SIZING_PATTERN:
    case TAVD_SIZING_LIST:
      check_family(record, key, findings);
      break;
    case TAVD_SIZING_MAIN_LAYER:
    case TAVD_SIZING_SUB_LAYER:
      check_layers(mode, key, findings);
      break;
    default:
      findings.add(TAVD_ATT_SIZING_MODE, 0, "0, 1, 2, 10 or 11", std::to_string(mode));
  }
  check_model(record, entry, findings);
}

void LinkCheck::check_header(const Entry& entry, Findings& findings) {
  const bool is_header = entry.class_id == kFileHeaderClass && entry.object_id == kFileHeaderId;
  has_header_ = has_header_ || is_header;
  if (!entry.attributes.contains(TAVD_ATT_USES_UTF8)) return;
  const int encoding = word_of(entry, TAVD_ATT_USES_UTF8);
  if (!is_header) {
    findings.add(TAVD_ATT_USES_UTF8, 0, "this on the file header only", std::to_string(encoding));
  } else if (encoding < 0 || encoding > kMostEncodings) {
    findings.add(TAVD_ATT_USES_UTF8, 0, "0 or 2 for windows-1252, or 1 for UTF-8", std::to_string(encoding));
  }
}

void LinkCheck::check_family(const Record& record, const RecordKey& key, Findings& findings) const {
  const Family family = read_family(database_, record);
  if (family.mode == TAVD_SIZING_PATTERN && key.object_id.find('*') == std::string::npos) {
    findings.add(TAVD_ATT_SIZING_MODE, 0, "a * in the id of a main record with sizing mode 1",
                 printable(key.object_id));
    return;
  }
  for (const std::string& id : family.missing) {
    findings.add(TAVD_ATT_MEMBER_IDS, 0, "only ids that are in the database", in_quotes(id));
  }
  std::set<std::string> known;
  for (const FamilySize& size : family.sizes) {
    if (!known.insert(size.key.object_id).second) {
      findings.add(TAVD_ATT_MEMBER_IDS, 0, "each id once", in_quotes(size.key.object_id) + " twice");
    }
    if (size.key == key) findings.add(TAVD_ATT_MEMBER_IDS, 0, "ids of sizes", "the main record itself");
  }
  if (family.sizes.empty()) {
    const bool by_list = family.mode == TAVD_SIZING_LIST;
    findings.add(by_list ? TAVD_ATT_MEMBER_IDS : TAVD_ATT_SIZING_MODE, 0,
                 by_list ? "ids of the sizes" : "records whose ids fit that of the main record", "none");
  }
}

void LinkCheck::check_layers(int mode, const RecordKey& key, Findings& findings) const {
  if (!has_separator(key.object_id)) {
    findings.add(TAVD_ATT_SIZING_MODE, 0, "an id with \"-\" or \"+\" between its fields",
                 printable(key.object_id));
    return;
  }
  try {
    Layers layers(database_, key.class_id, key.object_id);
    if (layers.main_id().empty()) {
      findings.add(
          TAVD_ATT_SIZING_MODE, 0,
          "a main record, sizing mode 10, whose id begins with " + in_quotes(product_prefix(key.object_id)),
          "none");
    } else if (mode == TAVD_SIZING_SUB_LAYER && !layers.adjust(key.object_id)) {
      findings.add(TAVD_ATT_SIZING_MODE, 0,
                   "an id that fits that of the main record, " + in_quotes(layers.main_id()),
                   printable(key.object_id));
    }
  } catch (const UserError&) {
    if (mode == TAVD_SIZING_MAIN_LAYER) {
      findings.add(TAVD_ATT_SIZING_MODE, 0,
                   "one main record whose id begins with " + in_quotes(product_prefix(key.object_id)), "two");
    }
  }
}

void LinkCheck::check_model(const Record& record, const Entry& entry, Findings& findings) {
  const std::string id = model_id(database_, record);
  if (id.empty()) return;
  const auto first = entry.attributes.find(kModelIds[0]);
  const bool is_first = first != entry.attributes.end() && !trim_end(first->second).empty();
  const std::int16_t number = kModelIds[is_first ? 0 : 1];
  const std::size_t length = trim_end(entry.attributes.at(number)).size();
  named_models_.insert(id);
  if (length > hosts::kIdChars) {
    findings.add(number, 0, "an object id of at most 30 characters", std::to_string(length) + " characters");
  } else if (!database_.find(kModelClass, id)) {
    findings.add(number, 0, "the id of a model record, class TVM", in_quotes(id) + ", which is not there");
  }
}

void LinkCheck::finish(Findings& findings) const {
  for (const std::string& id : models_) {
    if (named_models_.contains(id)) continue;
    findings.about({kModelClass, id});
    findings.add(std::nullopt, 0, "a product that names this model record", "none");
  }
  if (has_header_) return;
  findings.about({kFileHeaderClass, kFileHeaderId});
  findings.add(std::nullopt, 0, "this record in every database", "none");
}

}  // namespace tavdhost
