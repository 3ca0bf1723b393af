// Copying and deleting whole products: the record, its family, its model record.
#include "db/copy.h"

#include <cstdint>
#include <cstring>

#include "base/gwtext.h"
#include "db/handles.h"
#include "db/ids.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdf.h"
#include "tavd/tavfm.h"

namespace tavd {
namespace {

// A narrow family list that gives its members back.
class FamilyOf {
 public:
  FamilyOf(std::int16_t db, const char* classId, const char* objId) {
    tavfm_init(&list_);
    count_ = tavfm_read(&list_, db, classId, objId);
  }
  ~FamilyOf() { tavfm_release(&list_); }
  FamilyOf(const FamilyOf&) = delete;
  FamilyOf& operator=(const FamilyOf&) = delete;

  std::int32_t count() const { return count_; }
  FamilyMember member(std::int32_t index) const {
    FamilyMember fmb;
    tavfm_get(&list_, index, &fmb);
    return fmb;
  }

 private:
  FamilyList list_;
  std::int32_t count_;
};

// What a main record hands down to the copies of its members.
struct Heritage {
  char szManu[TAVD_MAKER_BYTES + 1];
  char szTvmodelID[kIdChars + 1];
};

// Reads a text with one byte less than the zeroed field holds. False if it is absent.
template <std::size_t kSize>
bool copy_text(std::int16_t db, tavb_rec rec, std::int16_t attribute, char (&text)[kSize]) {
  return tavbcopyatt(db, rec, attribute, nullptr, text, static_cast<std::int16_t>(kSize - 1)) != nullptr;
}

bool heads_family(std::int16_t db, tavb_rec rec) {
  std::int16_t sizingmode = 0;
  tavbcopyatt(db, rec, TAVD_ATT_SIZING_MODE, nullptr, &sizingmode, sizeof sizingmode);
  return sizingmode == TAVD_SIZING_PATTERN || sizingmode == TAVD_SIZING_LIST;
}

void insert_text(std::int16_t db, RecordHandle& rec, std::int16_t attribute, const char* text) {
  if (*text == '\0') return;
  tavbinsertatt(db, rec.address(), attribute, text, static_cast<std::int16_t>(std::strlen(text)));
}

Heritage read_heritage(std::int16_t db, tavb_rec rec) {
  Heritage heritage = {};
  char tvmAtt[TAVD_MODEL_ID_BYTES + 1] = {};
  copy_text(db, rec, TAVD_ATT_MAKER, heritage.szManu);
  copy_text(db, rec, TAVD_ATT_MODEL_ID, tvmAtt);
  if (tvmAtt[0] == '\0') copy_text(db, rec, TAVD_ATT_MODEL_ID_SECOND, tvmAtt);
  gwstrtrimcpy(heritage.szTvmodelID, tvmAtt, kIdChars);
  return heritage;
}

void copy_member(std::int16_t srcdb, std::int16_t dstdb, const char* classId, const FamilyMember& fmb,
                 const Heritage& heritage) {
  RecordHandle member(tavbfindrec(srcdb, classId, fmb.objId, TAVB_FIND_EXACT));
  if (!member) return;
  insert_text(dstdb, member, TAVD_ATT_MAKER, heritage.szManu);
  insert_text(dstdb, member, TAVD_ATT_MODEL_ID, heritage.szTvmodelID);
  tavbsaverec(dstdb, member.get());
  copy_model(srcdb, dstdb, member.get());
}

}  // namespace

void copy_model(std::int16_t srcdb, std::int16_t dstdb, tavb_rec rec) {
  char tvmName[kIdRoom] = {};
  if (!copy_text(srcdb, rec, TAVD_ATT_MODEL_ID, tvmName) &&
      !copy_text(srcdb, rec, TAVD_ATT_MODEL_ID_SECOND, tvmName)) {
    return;
  }
  const RecordHandle model(tavbfindrec(srcdb, TAVD_MODEL_CLASS, tvmName, TAVB_FIND_EXACT));
  if (!model) return;
  std::int32_t tvmLen = 0;
  void* block = tavbgetahm(srcdb, model.get(), &tvmLen);
  tavbsaverecwithahm(dstdb, model.get(), block, tvmLen);
  tavbreleaseahm(block);
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

int32_t tavdf_copy_recs(int16_t srcdb, int16_t dstdb, const char* classId, const char* objId) {
  if (classId == nullptr || objId == nullptr) return TAVDF_NO_RECORD;
  RecordHandle rec(tavbfindrec(srcdb, classId, objId, TAVB_FIND_EXACT));
  if (!rec) return TAVDF_NO_RECORD;
  const bool is_family = heads_family(srcdb, rec.get());
  tavbsaverec(dstdb, rec.get());
  copy_model(srcdb, dstdb, rec.get());
  const Heritage heritage = read_heritage(srcdb, rec.get());
  rec.release();
  if (!is_family) return 0;

  const FamilyOf family(srcdb, classId, objId);
  for (int32_t i = 0; i < family.count(); ++i) copy_member(srcdb, dstdb, classId, family.member(i), heritage);
  return 0;
}

int32_t tavdf_delete_recs(int16_t db, const char* classId, const char* objId) {
  if (classId == nullptr || objId == nullptr) return TAVDF_NO_RECORD;
  RecordHandle rec(tavbfindrec(db, classId, objId, TAVB_FIND_EXACT));
  if (!rec) return TAVDF_NO_RECORD;
  const bool is_family = heads_family(db, rec.get());
  rec.release();
  if (is_family) {
    const FamilyOf family(db, classId, objId);
    for (int32_t i = 0; i < family.count(); ++i) tavbdeleterec(db, classId, family.member(i).objId);
  }
  tavbdeleterec(db, classId, objId);
  return 0;
}
