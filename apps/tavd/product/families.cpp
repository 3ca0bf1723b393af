#include "product/families.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "base/text.h"
#include "product/record_layout.h"
#include "product/text_codec.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdcore.h"
#include "tavd/tavfm.h"

namespace tavdhost {
namespace {

struct ModeText {
  int mode;
  const char* text;
};

constexpr ModeText kModeTexts[] = {
    {TAVD_SIZING_SINGLE, "single product"},
    {TAVD_SIZING_PATTERN, "main record of a family, by the * in its id"},
    {TAVD_SIZING_LIST, "main record of a family, by its list of members"},
    {TAVD_SIZING_MAIN_LAYER, "main record of a layered product"},
    {TAVD_SIZING_SUB_LAYER, "sub record of a layered product"},
};

// Installation texts are in the database's narrow encoding.
std::string installation_text(TextCodec& codec, const char (&bytes)[TAVFM_INSTALLATION_CHARS]) {
  const std::string_view text(bytes, strnlen(bytes, sizeof bytes));
  return printable(codec.decode(0, text).value_or(std::string(text)));
}

FamilySize size_of(TextCodec& codec, const std::string& class_id, const FamilyMemberW& member) {
  FamilySize size;
  size.key = {class_id, hosts::trimmed_id({member.objId, sizeof member.objId})};
  size.code = printable(to_utf8(member.pcode, TAVFM_PCODE_CHARS));
  size.description = printable(to_utf8(member.descr, TAVFM_DESCR_CHARS));
  size.installation = installation_text(codec, member.installationdef);
  size.size = member.ds;
  size.shape.assign(member.shapedata, member.shapedata + member.nsh);
  return size;
}

// The ids that a main record names, without trailing blanks.
std::vector<std::string> named_members(const Database& database, const Record& record) {
  std::int16_t count = 0;
  void* block = tavbcopyatt(database.handle(), record.get(), TAVD_ATT_MEMBER_IDS, &count, nullptr, 0);
  std::vector<std::string> ids;
  if (block == nullptr) return ids;
  const auto* bytes = static_cast<const char*>(block);
  for (std::size_t i = 0; i < static_cast<std::size_t>(std::max<int>(count, 0)); ++i) {
    ids.push_back(hosts::trimmed_id({bytes + i * hosts::kIdChars, hosts::kIdChars}));
  }
  tavbreleaseatt(block);
  return ids;
}

// Whether the id is one of the family whose main record has the id `pattern`.
bool fits_pattern(const std::string& pattern, const std::string& id) {
  FamilyListW list = {};
  pattern.copy(list.objId, sizeof list.objId);
  list.idLen = static_cast<std::int16_t>(pattern.size());
  list.wildPos = static_cast<std::int16_t>(std::min(pattern.find('*'), pattern.size()));
  return tavfm_is_memberw(&list, id.c_str()) == TAVFM_MEMBER;
}

bool has_member(const Database& database, const Record& main, const RecordKey& main_key,
                const RecordKey& key) {
  switch (sizing_mode(database.handle(), main)) {
    case TAVD_SIZING_PATTERN:
      return fits_pattern(main_key.object_id, key.object_id);
    case TAVD_SIZING_LIST: {
      const std::vector<std::string> ids = named_members(database, main);
      return std::ranges::find(ids, key.object_id) != ids.end();
    }
    default:
      return false;
  }
}

}  // namespace

std::string sizing_text(int mode) {
  const auto* found = std::ranges::find(kModeTexts, mode, &ModeText::mode);
  if (found != std::end(kModeTexts)) return found->text;
  return (mode < 0 ? "no product of its own, sizing mode " : "single product, sizing mode ") +
         std::to_string(mode);
}

Family read_family(const Database& database, const Record& record) {
  Family family{sizing_mode(database.handle(), record), {}, {}};
  const RecordKey key = database.key(record);
  TextCodec codec(database.handle());
  const hosts::FamilyMembers list(database.handle(), key);
  for (std::int32_t i = 0; i < list.count(); ++i) {
    family.sizes.push_back(size_of(codec, key.class_id, list.member(i)));
  }
  if (family.mode != TAVD_SIZING_LIST) return family;
  for (const std::string& id : named_members(database, record)) {
    if (!database.find(key.class_id, id)) family.missing.push_back(id);
  }
  return family;
}

std::vector<std::string> families_of(const Database& database, const RecordKey& key) {
  std::vector<std::string> ids;
  Record record = hosts::first_of_class(database.handle(), key.class_id);
  for (; record; record = database.next(record)) {
    const RecordKey candidate = database.key(record);
    if (candidate.class_id != key.class_id) break;
    if (has_member(database, record, candidate, key)) ids.push_back(candidate.object_id);
  }
  return ids;
}

std::string model_id(const Database& database, const Record& record) {
  for (const std::int16_t number : kModelIds) {
    char id[hosts::kIdChars + 2] = {};
    tavbcopyatt(database.handle(), record.get(), number, nullptr, id, hosts::kIdChars);
    std::string text = hosts::trimmed_id({id, hosts::kIdChars});
    if (!text.empty()) return text;
  }
  return {};
}

}  // namespace tavdhost
