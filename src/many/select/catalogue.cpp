// Opening a catalogue: a walk over the records of a database.
#include "many/select/catalogue.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

#include "codepage/codepage.h"
#include "db/handles.h"
#include "db/ids.h"
#include "db/markets.h"
#include "db/texts.h"
#include "many/select/variants.h"
#include "tavd/attributes.h"
#include "tavd/ewads.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace tavd {
namespace {

constexpr std::int32_t kTextChars = 256;         // of a code or a description
constexpr std::size_t kRecordsBetweenTold = 64;  // between two calls of the callback

// A caller's options, read and copied.
struct Wanted {
  std::vector<std::string> classes;  // blank-padded, rising; empty: all
  std::vector<WantedValues> sets;
  std::int16_t code_attribute;
  std::int16_t description_attribute;
  bool without_end_reflection;
  tavdn_progress progress;
  void* context;
};

bool read_classes(const char* const* classes, std::int32_t count, std::vector<std::string>& read) {
  if (count < 0 || (count > 0 && classes == nullptr)) return false;
  for (std::int32_t i = 0; i < count; ++i) {
    if (classes[i] == nullptr) return false;
    std::string& key = read.emplace_back(classes[i], strnlen(classes[i], kClassChars));
    key.resize(kClassChars, ' ');
  }
  std::sort(read.begin(), read.end());
  read.erase(std::unique(read.begin(), read.end()), read.end());
  return true;
}

bool read_values(const tavdn_values& set, WantedValues& read) {
  if (set.count < 0 || (set.count > 0 && set.values == nullptr)) return false;
  for (std::int32_t i = 0; i < set.count; ++i) {
    const tavdn_value& value = set.values[i];
    if (value.name == nullptr) return false;
    const bool is_free = value.value == nullptr;
    read.push_back({value.name, is_free ? "" : value.value, is_free});
  }
  return true;
}

bool read_sets(const tavdn_values* sets, std::int32_t count, std::vector<WantedValues>& read) {
  if (count < 0 || (count > 0 && sets == nullptr)) return false;
  for (std::int32_t i = 0; i < count; ++i) {
    if (!read_values(sets[i], read.emplace_back())) return false;
  }
  if (read.empty()) read.emplace_back();
  return true;
}

bool read_options(const tavdn_catalogue_options* options, Wanted& wanted) {
  tavdn_catalogue_options given{};
  given.size = sizeof given;
  if (options != nullptr) {
    if (options->size != sizeof given) return false;
    given = *options;
  }
  char market[TAVDCORE_MARKET_CHARS];
  read_market(given.market, market);
  wanted.code_attribute = market_attribute(market, &MarketRow::pcode, TAVD_ATT_CODE_DEFAULT);
  const bool is_language = given.language > 0 && given.language <= INT16_MAX;
  wanted.description_attribute =
      is_language ? description_attribute(static_cast<std::int16_t>(given.language)) : std::int16_t{0};
  wanted.without_end_reflection = given.without_end_reflection != 0;
  wanted.progress = given.progress;
  wanted.context = given.context;
  return read_classes(given.classes, given.nclasses, wanted.classes) &&
         read_sets(given.sets, given.nsets, wanted.sets);
}

// Whether the record stands for one product, and not for the sizes of a family or a layer.
bool is_one_product(std::int16_t db, tavb_rec rec, std::string_view class_id) {
  if (class_id == TAVD_FILEHEADER_CLASS || class_id == TAVD_MODEL_CLASS) return false;
  std::int16_t mode = TAVD_SIZING_SINGLE;
  tavbcopyatt(db, rec, TAVD_ATT_SIZING_MODE, nullptr, &mode, sizeof mode);
  switch (mode) {
    case TAVD_SIZING_PATTERN:
    case TAVD_SIZING_LIST:
    case TAVD_SIZING_MAIN_LAYER:
    case TAVD_SIZING_SUB_LAYER:
      return false;
    default:
      return mode >= TAVD_SIZING_SINGLE;
  }
}

class Reader {
 public:
  Reader(std::int16_t db, const Wanted& wanted, tavdn_catalogue& catalogue)
      : db_(db), wanted_(wanted), catalogue_(catalogue) {
    catalogue_.sets = wanted.sets.size();
  }

  // False if it was cancelled.
  bool read() {
    if (wanted_.classes.empty()) {
      const std::string lowest(kIdChars, '\x01');
      return read_from(lowest.c_str(), lowest.c_str(), "");
    }
    for (const std::string& class_id : wanted_.classes) {
      if (!read_from(class_id.c_str(), "", class_id)) return false;
      if (at_end_) break;
    }
    return true;
  }

 private:
  // The records from a key on, to the end of a class; empty: to the end of the database.
  bool read_from(const char* class_id, const char* object_id, std::string_view only) {
    RecordHandle record(tavbfindrec(db_, class_id, object_id, TAVB_FIND_FROM));
    for (; record; record = RecordHandle(tavbnextrec(db_, record.get()))) {
      char found[kClassRoom] = {};
      tavbgetID(db_, record.get(), found, nullptr);
      const std::string_view key(found, strnlen(found, kClassChars));
      if (!only.empty() && key != only) return true;
      if (is_one_product(db_, record.get(), key)) add(record.get(), key);
      ++records_;
      if (wanted_.progress == nullptr || records_ % kRecordsBetweenTold != 0) continue;
      if (wanted_.progress(wanted_.context, records_) != 0) return false;
    }
    at_end_ = true;
    return true;
  }

  void add(tavb_rec rec, std::string_view class_id) {
    FlowData fd;
    if (tavca_load_flowdata(db_, rec, &fd) != TAVCA_OK || fd.nhdd == 0) return;
    if (wanted_.without_end_reflection) tavca_check_end_reflection(&fd);
    Candidate& candidate = catalogue_.products.emplace_back();
    list(rec, class_id, candidate);
    prepare_variants(fd, wanted_.sets, candidate);
    if (catalogue_.classes.empty() || catalogue_.classes.back() != class_id) {
      catalogue_.classes.emplace_back(class_id);
    }
    candidate.class_index = catalogue_.classes.size() - 1;
  }

  void list(tavb_rec rec, std::string_view class_id, Candidate& candidate) const {
    tavdn_listed& listed = candidate.listed;
    class_id.copy(listed.class_id, kClassChars);
    char id[kIdRoom] = {};
    tavbgetID(db_, rec, nullptr, id);
    tavbobjIDtosz(db_, id, listed.object_id);
    tavdf_load_ductsize(db_, rec, &listed.duct);
    listed.area = std::max(ewads_m2(&listed.duct), 0.0F);
    tavd_wchar code[kTextChars];
    tavd_wchar description[kTextChars];
    copy_product_code(db_, rec, wanted_.code_attribute, code, kTextChars);
    copy_plain_text(db_, rec, wanted_.description_attribute, description, kTextChars);
    const std::size_t code_end = codepage::length(code, kTextChars) + 1;
    const std::size_t description_end = codepage::length(description, kTextChars) + 1;
    candidate.texts.assign(code, code + code_end);
    candidate.texts.insert(candidate.texts.end(), description, description + description_end);
    listed.code = candidate.texts.data();
    listed.description = candidate.texts.data() + code_end;
  }

  std::int16_t db_;
  const Wanted& wanted_;
  tavdn_catalogue& catalogue_;
  std::size_t records_ = 0;
  bool at_end_ = false;  // a service that cannot read on is not asked again, so that it can tell why
};

const Candidate* candidate_at(const tavdn_catalogue* catalogue, std::size_t index) {
  return catalogue != nullptr && index < catalogue->products.size() ? &catalogue->products[index] : nullptr;
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavdn_catalogue_open(int16_t db, const tavdn_catalogue_options* options, tavdn_catalogue** catalogue) {
  if (catalogue == nullptr) return TAVDN_BAD_ARGUMENT;
  *catalogue = nullptr;
  try {
    Wanted wanted{};
    if (!read_options(options, wanted)) return TAVDN_BAD_ARGUMENT;
    auto opened = std::make_unique<tavdn_catalogue>();
    if (!Reader(db, wanted, *opened).read()) return TAVDN_CANCELLED;
    opened->products.shrink_to_fit();
    *catalogue = opened.release();
  } catch (const std::bad_alloc&) {
    return TAVDN_NO_MEMORY;
  }
  return TAVDN_OK;
}

void tavdn_catalogue_close(tavdn_catalogue* catalogue) {
  delete catalogue;
}

size_t tavdn_catalogue_count(const tavdn_catalogue* catalogue) {
  return catalogue != nullptr ? catalogue->products.size() : 0;
}

const tavdn_listed* tavdn_catalogue_product(const tavdn_catalogue* catalogue, size_t index) {
  const Candidate* const candidate = candidate_at(catalogue, index);
  return candidate != nullptr ? &candidate->listed : nullptr;
}

const tavdn_product* tavdn_catalogue_variant(const tavdn_catalogue* catalogue, size_t index,
                                             int32_t variant) {
  const Candidate* const candidate = candidate_at(catalogue, index);
  if (candidate == nullptr || variant < 0 || variant >= candidate->listed.variants) return nullptr;
  return candidate->variants[static_cast<std::size_t>(variant)].get();
}
