#include "shared/records.h"

#include <algorithm>
#include <cstring>

#include "tavd/attributes.h"

namespace hosts {
namespace {

// Keys that none can sort before, and that none of a class can sort behind.
const std::string kLowestKey(kIdChars, '\x01');
const std::string kPastAllIds(kIdChars, '\xFF');

}  // namespace

RecordKey key_of(std::int16_t db, const Record& record) {
  char class_id[kClassChars + 1] = {};
  char object_id[kIdChars + 1] = {};
  tavbgetID(db, record.get(), class_id, object_id);
  return {std::string(class_id, strnlen(class_id, kClassChars)), trimmed_id({object_id, kIdChars})};
}

std::string trimmed_id(std::string_view bytes) {
  std::string text(bytes.substr(0, bytes.find('\0')));
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string padded_class(std::string_view class_id) {
  std::string key(class_id.substr(0, kClassChars));
  key.resize(kClassChars, ' ');
  return key;
}

Record first_record(std::int16_t db) {
  return Record(tavbfindrec(db, kLowestKey.c_str(), kLowestKey.c_str(), TAVB_FIND_FROM));
}

Record first_of_class(std::int16_t db, std::string_view class_id) {
  return Record(tavbfindrec(db, padded_class(class_id).c_str(), "", TAVB_FIND_FROM));
}

std::vector<std::string> classes_of(std::int16_t db) {
  std::vector<std::string> names;
  for (Record record = first_record(db); record;) {
    names.push_back(key_of(db, record).class_id);
    record = Record(tavbfindrec(db, padded_class(names.back()).c_str(), kPastAllIds.c_str(), TAVB_FIND_FROM));
    // An id of nothing but 0xFF would hold the walk up.
    if (record && key_of(db, record).class_id == names.back()) break;
  }
  return names;
}

bool is_product_class(std::string_view class_id) {
  return class_id != TAVD_FILEHEADER_CLASS && class_id != TAVD_MODEL_CLASS;
}

FamilyMembers::FamilyMembers(std::int16_t db, const RecordKey& family) {
  tavfm_initw(&list_);
  count_ = tavfm_readw(&list_, db, family.class_id.c_str(), family.object_id.c_str());
}

FamilyMembers::~FamilyMembers() {
  tavfm_releasew(&list_);
}

FamilyMemberW FamilyMembers::member(std::int32_t index) const {
  FamilyMemberW member{};
  tavfm_getw(&list_, index, &member);
  return member;
}

int sizing_mode(std::int16_t db, const Record& record) {
  std::int16_t mode = 0;
  tavbcopyatt(db, record.get(), TAVD_ATT_SIZING_MODE, nullptr, &mode, sizeof mode);
  return mode;
}

}  // namespace hosts
