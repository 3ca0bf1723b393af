// Family lists. Narrow and wide lists differ in two text fields and share one template for all else.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/gwarray.h"
#include "base/gwtext.h"
#include "base/widepointers.h"
#include "db/handles.h"
#include "db/ids.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdf.h"
#include "tavd/tavfm.h"

static_assert(sizeof(FamilyMember) == 338, "hosts read members as records of 338 bytes");
static_assert(offsetof(FamilyMember, ds) == 230,
              "the texts of a member stand without padding before its size");
static_assert(offsetof(FamilyMember, shapedata) == 236, "the shape follows the duct size directly");
static_assert(offsetof(FamilyMember, nsh) == 336, "the word count follows the shape directly");
static_assert(sizeof(FamilyMemberW) == 458, "hosts read wide members as records of 458 bytes");
static_assert(offsetof(FamilyMemberW, pcode) == 30, "the code follows the id directly");
static_assert(offsetof(FamilyMemberW, ds) == 350,
              "the texts of a member stand without padding before its size");
static_assert(offsetof(FamilyMemberW, shapedata) == 356, "the shape follows the duct size directly");
static_assert(offsetof(FamilyMemberW, nsh) == 456, "the word count follows the shape directly");
static_assert(!tavd::kWidePointers || sizeof(FamilyList) == 256, "hosts reserve 256 bytes for a list");
static_assert(!tavd::kWidePointers || offsetof(FamilyList, objId) == 19, "the id follows the class directly");
static_assert(!tavd::kWidePointers || offsetof(FamilyList, idLen) == 250, "the numbers follow the texts");
static_assert(!tavd::kWidePointers || sizeof(FamilyListW) == 376, "hosts reserve 376 bytes for a wide list");
static_assert(!tavd::kWidePointers || offsetof(FamilyListW, pcode) == 50,
              "wide texts stand at an even address");
static_assert(!tavd::kWidePointers || offsetof(FamilyListW, idLen) == 370, "the numbers follow the texts");

namespace tavd {
namespace {

// An id with room for the scans, which look one or two places behind its end: NULs from the id's end on.
using IdText = std::array<char, kIdRoom>;

// Copies an id of at most `most` characters that may end early at a NUL.
IdText copy_id(const char* id, std::size_t most) {
  IdText text{};
  for (std::size_t i = 0; i < most && id[i] != '\0'; ++i) text[i] = id[i];
  return text;
}

void copy_texts(std::int16_t db, tavb_rec rec, char* pcode, char* descr) {
  tavdf_copyproductcode(db, rec, pcode, TAVFM_PCODE_CHARS);
  tavdf_copyproductdesc(db, rec, descr, TAVFM_DESCR_CHARS);
}

void copy_texts(std::int16_t db, tavb_rec rec, tavd_wchar* pcode, tavd_wchar* descr) {
  tavdf_copyproductcodew(db, rec, pcode, TAVFM_PCODE_CHARS);
  tavdf_copyproductdescw(db, rec, descr, TAVFM_DESCR_CHARS);
}

std::size_t field_end(const IdText& text, std::size_t start, std::size_t length) {
  std::size_t end = start + 1;
  while (end < length && tavfm_is_codeparam_separator(text[end]) == 0) ++end;
  return std::min(end, length);
}

// Whether `id` fits `pattern`, field by field, from the first '*' on.
std::int32_t match_fields(const IdText& pattern, std::size_t idLen, const IdText& id, std::size_t wildPos) {
  const auto candLen = static_cast<std::size_t>(gwstrtrimlen(id.data(), kIdChars));
  std::size_t p = wildPos;
  std::size_t c = wildPos;
  if (tavfm_is_codeparam_separator(id[c]) != 0) ++c;
  for (;;) {
    const std::size_t pe = field_end(pattern, p, idLen);
    const std::size_t ce = field_end(id, c, candLen);
    if (pattern[p] != '*') {
      for (; p < pe; ++p, ++c) {
        if (c >= ce || pattern[p] != id[c]) return TAVFM_NO_MEMBER;
      }
    }
    p = pe;
    c = ce;
    if (p >= idLen) return TAVFM_MEMBER;
    if (pattern[p] != id[c]) return TAVFM_NO_MEMBER;
    ++p;
    ++c;
  }
}

template <typename List, typename Member>
struct Family {
  static void init(List* list) {
    if (list == nullptr) return;
    *list = {};
    gwarray_init(&list->members, sizeof(Member));
  }

  static void release(List* list) {
    if (list == nullptr) return;
    gwarray_release(&list->members);
    *list = {};
  }

  static void reset(List* list) {
    release(list);
    init(list);
  }

  static std::int32_t read(List* list, std::int16_t db, const char* classId, const char* objId) {
    if (list == nullptr) return 0;
    if (classId == nullptr || objId == nullptr) {
      reset(list);
      return 0;
    }
    // The host may hand in the ids of this very list, which the reset clears.
    const IdText class_key = copy_id(classId, kClassChars);
    const IdText id_key = copy_id(objId, kIdChars);
    reset(list);
    const RecordHandle main(tavbfindrec(db, class_key.data(), id_key.data(), TAVB_FIND_EXACT));
    if (!main) return 0;
    read_header(list, db, main.get(), class_key, id_key);
    switch (list->sizingmode) {
      case TAVD_SIZING_PATTERN:
        add_matching(list, db, class_key);
        break;
      case TAVD_SIZING_LIST:
        add_named(list, db, main.get(), class_key);
        break;
      default:
        if (list->sizingmode >= TAVD_SIZING_SINGLE) add(list, db, main.get());
        break;
    }
    return list->members.count;
  }

  static std::int32_t add(List* list, std::int16_t db, tavb_rec rec) {
    if (list == nullptr || rec == nullptr || !is_ready(*list)) return TAVFM_REFUSED;
    Member member = {};
    char objIdx[kIdRoom] = {};
    tavbgetID(db, rec, nullptr, objIdx);
    std::memcpy(member.objId, objIdx, sizeof member.objId);
    tavdf_load_ductsize(db, rec, &member.ds);
    tavbcopyatt(db, rec, TAVD_ATT_SHAPE_DATA, &member.nsh, member.shapedata, sizeof member.shapedata);
    member.nsh = std::clamp<std::int16_t>(member.nsh, 0, TAVFM_SHAPE_WORDS);
    copy_texts(db, rec, member.pcode, member.descr);
    tavdf_load_installationdef(db, rec, member.installationdef, TAVFM_INSTALLATION_CHARS);
    if (member.installationdef[0] == '\0') {
      std::memcpy(member.installationdef, list->installationdef, sizeof member.installationdef);
    }
    return gwarray_append(&list->members, &member);
  }

  static std::int32_t get(const List* list, std::int32_t index, Member* fmb) {
    if (fmb == nullptr) return TAVFM_NO_SUCH_INDEX;
    if (list != nullptr && is_ready(*list)) return gwarray_get(&list->members, index, fmb);
    *fmb = {};
    return TAVFM_NO_SUCH_INDEX;
  }

  static std::int32_t is_member(const List* list, const char* id) {
    if (list == nullptr || id == nullptr) return TAVFM_NO_MEMBER;
    const auto idLen = static_cast<std::size_t>(std::clamp<int>(list->idLen, 0, kIdChars));
    const auto wildPos = std::min(static_cast<std::size_t>(std::max<int>(list->wildPos, 0)), idLen);
    const IdText pattern = copy_id(list->objId, kIdChars);
    const IdText candidate = copy_id(id, kIdChars);
    if (std::memcmp(candidate.data(), pattern.data(), idLen) == 0) return TAVFM_NO_MEMBER;
    if (std::memcmp(candidate.data(), pattern.data(), wildPos) != 0) return TAVFM_PAST_FAMILY;
    return match_fields(pattern, idLen, candidate, wildPos);
  }

 private:
  static bool is_ready(const List& list) { return list.members.itemsize == std::int32_t{sizeof(Member)}; }

  static void read_header(List* list, std::int16_t db, tavb_rec main, const IdText& class_key,
                          const IdText& id_key) {
    std::memcpy(list->classId, class_key.data(), sizeof list->classId);
    std::memcpy(list->objId, id_key.data(), sizeof list->objId);
    copy_texts(db, main, list->pcode, list->descr);
    tavdf_load_installationdef(db, main, list->installationdef, TAVFM_INSTALLATION_CHARS);
    list->idLen = static_cast<std::int16_t>(gwstrtrimlen(list->objId, kIdChars));
    list->wildPos =
        static_cast<std::int16_t>(std::find(list->objId, list->objId + list->idLen, '*') - list->objId);
    tavbcopyatt(db, main, TAVD_ATT_SIZING_MODE, nullptr, &list->sizingmode, sizeof list->sizingmode);
  }

  // The records behind the prefix before the '*'. They are neighbours, so the first one outside ends
  // the walk.
  static void add_matching(List* list, std::int16_t db, const IdText& class_key) {
    char objIdx[kIdRoom];
    std::memset(objIdx, ' ', sizeof objIdx);
    std::memcpy(objIdx, list->objId, static_cast<std::size_t>(list->wildPos));
    RecordHandle rec(tavbfindrec(db, class_key.data(), objIdx, TAVB_FIND_FROM));
    while (rec) {
      char classIdx[kClassRoom] = {};
      tavbgetID(db, rec.get(), classIdx, objIdx);
      if (std::memcmp(classIdx, class_key.data(), kClassChars) != 0) return;
      const std::int32_t membership = is_member(list, objIdx);
      if (membership == TAVFM_PAST_FAMILY) return;
      if (membership == TAVFM_MEMBER) add(list, db, rec.get());
      rec = RecordHandle(tavbnextrec(db, rec.get()));
    }
  }

  static void add_named(List* list, std::int16_t db, tavb_rec main, const IdText& class_key) {
    std::int16_t ni = 0;
    void* block = tavbcopyatt(db, main, TAVD_ATT_MEMBER_IDS, &ni, nullptr, 0);
    if (block == nullptr) return;
    for (std::int16_t i = 0; i < ni; ++i) {
      const char* item = static_cast<const char*>(block) + static_cast<std::size_t>(i) * kIdChars;
      const RecordHandle rec(tavbfindrec(db, class_key.data(), item, TAVB_FIND_EXACT));
      if (rec) add(list, db, rec.get());
    }
    tavbreleaseatt(block);
  }
};

using Narrow = Family<FamilyList, FamilyMember>;
using Wide = Family<FamilyListW, FamilyMemberW>;

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavfm_init(FamilyList* list) {
  Narrow::init(list);
}

void tavfm_initw(FamilyListW* list) {
  Wide::init(list);
}

void tavfm_reset(FamilyList* list) {
  Narrow::reset(list);
}

void tavfm_resetw(FamilyListW* list) {
  Wide::reset(list);
}

void tavfm_release(FamilyList* list) {
  Narrow::release(list);
}

void tavfm_releasew(FamilyListW* list) {
  Wide::release(list);
}

int32_t tavfm_read(FamilyList* list, int16_t db, const char* classId, const char* objId) {
  return Narrow::read(list, db, classId, objId);
}

int32_t tavfm_readw(FamilyListW* list, int16_t db, const char* classId, const char* objId) {
  return Wide::read(list, db, classId, objId);
}

int32_t tavfm_add(FamilyList* list, int16_t db, tavb_rec rec) {
  return Narrow::add(list, db, rec);
}

int32_t tavfm_addw(FamilyListW* list, int16_t db, tavb_rec rec) {
  return Wide::add(list, db, rec);
}

int32_t tavfm_get(const FamilyList* list, int32_t index, FamilyMember* fmb) {
  return Narrow::get(list, index, fmb);
}

int32_t tavfm_getw(const FamilyListW* list, int32_t index, FamilyMemberW* fmb) {
  return Wide::get(list, index, fmb);
}

int32_t tavfm_is_member(const FamilyList* list, const char* id) {
  return Narrow::is_member(list, id);
}

int32_t tavfm_is_memberw(const FamilyListW* list, const char* id) {
  return Wide::is_member(list, id);
}

int tavfm_is_codeparam_separator(char c) {
  return c == ' ' || c == '+' || c == '-' || c == '.' || c == '/' ? 1 : 0;
}
