#include "db/idset.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "base/gwarray.h"
#include "base/gwmsg.h"
#include "base/gwtext.h"
#include "base/widepointers.h"
#include "db/ids.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"

static_assert(!tavd::kWidePointers || sizeof(IdSetItem) == 40,
              "hosts read the items of a set as records of 40 bytes");
static_assert(offsetof(IdSetItem, matches) == 31, "the mark follows the id directly");
static_assert(!tavd::kWidePointers || offsetof(IdSetItem, rec) == 32, "the handle follows the mark directly");
static_assert(!tavd::kWidePointers || sizeof(IdSet) == 152, "hosts reserve 152 bytes for a set");
static_assert(offsetof(IdSet, mainId) == 3, "the id follows the class directly");
static_assert(!tavd::kWidePointers || offsetof(IdSet, subs) == 48,
              "the sub records follow the main record's handle");
static_assert(!tavd::kWidePointers || offsetof(IdSet, curRec) == 96,
              "the exact record's handle follows its id");
static_assert(!tavd::kWidePointers || offsetof(IdSet, wildchars) == 104,
              "the wildcards follow the exact record's handle");
static_assert(!tavd::kWidePointers || offsetof(IdSet, adjusted) == 144,
              "the mark follows the separators directly");

namespace tavd {
namespace {

constexpr signed char kFirstRefusedSign = 0x30;

// Where one item stands against another.
constexpr int kBefore = -1;
constexpr int kAfter = 1;

void release_and_forget(tavb_rec* rec) {
  if (*rec != nullptr) tavbreleaserec(std::exchange(*rec, nullptr));
}

// A set that was released, or never initialised, has no place for items.
bool is_ready(const IdSet* set) {
  return set != nullptr && set->subs.itemsize == std::int32_t{sizeof(IdSetItem)};
}

IdSetItem* items_of(IdSet* set) {
  return static_cast<IdSetItem*>(set->subs.data);
}

int holds(const char* signs, char c) {
  for (int i = 0; i < TAVDIDSET_SIGN_CHARS && signs[i] != '\0'; ++i) {
    if (signs[i] == c) return 1;
  }
  return 0;
}

std::int32_t set_signs(char* field, const char* chars) {
  if (chars == nullptr) return TAVDIDSET_REFUSED;
  for (const char* c = chars; *c != '\0'; ++c) {
    if (static_cast<signed char>(*c) >= kFirstRefusedSign) return TAVDIDSET_REFUSED;
  }
  gwstrcpyfield(field, chars, TAVDIDSET_SIGN_CHARS);
  return 0;
}

// What tavdidset_read looks for, copied: the host may hand in texts of the set itself, which a reset clears.
struct Prefix {
  char classId[kClassRoom];
  char id[kIdRoom];
  std::size_t length;  // 0: the id has no separator
};

Prefix prefix_of(const IdSet* set, const char* classId, const char* id) {
  Prefix prefix = {};
  if (classId == nullptr || id == nullptr) return prefix;
  for (std::size_t i = 0; i < kClassChars && classId[i] != '\0'; ++i) prefix.classId[i] = classId[i];
  for (std::size_t i = 0; i < kIdChars && id[i] != '\0'; ++i) {
    prefix.id[i] = id[i];
    if (idset_is_separator(set, id[i]) == 0) continue;
    prefix.length = i + 1;
    break;
  }
  return prefix;
}

enum class Layer { kept, passed_over, duplicate_main, out_of_memory };

// Puts a record into the layer that its sizing mode names. Only of a kept one the handle is the set's.
Layer keep(IdSet* set, std::int16_t db, tavb_rec rec, const char* objIdx) {
  std::int16_t smode = 0;
  tavbcopyatt(db, rec, TAVD_ATT_SIZING_MODE, nullptr, &smode, sizeof smode);
  if (smode == TAVD_SIZING_MAIN_LAYER) {
    if (set->mainRec != nullptr) return Layer::duplicate_main;
    tavbobjIDtosz(db, objIdx, set->mainId);
    set->mainRec = rec;
    return Layer::kept;
  }
  if (smode != TAVD_SIZING_SUB_LAYER) return Layer::passed_over;
  IdSetItem item = {};
  tavbobjIDtosz(db, objIdx, item.id);
  item.rec = rec;
  // An array that cannot grow forgets its items, but not their block: the handles in it are still to release.
  const gwarray before = set->subs;
  if (gwarray_append(&set->subs, &item) == 0) return Layer::kept;
  set->subs = before;
  return Layer::out_of_memory;
}

// Walks the records that begin with the prefix; they are neighbours, so the first one that does not ends
// the walk.
std::int32_t read_layers(IdSet* set, std::int16_t db, const Prefix& prefix) {
  tavb_rec rec = tavbfindrec(db, prefix.classId, prefix.id, TAVB_FIND_FROM);
  while (rec != nullptr) {
    char classIdx[kClassRoom] = {};
    char objIdx[kIdRoom] = {};
    tavbgetID(db, rec, classIdx, objIdx);
    if (std::memcmp(classIdx, prefix.classId, kClassChars) != 0 ||
        std::memcmp(objIdx, prefix.id, prefix.length) != 0) {
      tavbreleaserec(rec);
      return 0;
    }
    const Layer layer = keep(set, db, rec, objIdx);
    if (layer == Layer::duplicate_main) {
      // The handle in hand stays open on purpose; the header warns of it.
      gwmsgf(nullptr, "Duplicate mainrecord\r\nin product %s", prefix.id);
      tavdidset_reset(set);
      return TAVDIDSET_NO_PRODUCT;
    }
    tavb_rec next = layer == Layer::out_of_memory ? nullptr : tavbnextrec(db, rec);
    if (layer != Layer::kept) tavbreleaserec(rec);
    if (layer == Layer::out_of_memory) {
      tavdidset_reset(set);
      return TAVDIDSET_NO_PRODUCT;
    }
    rec = next;
  }
  return 0;
}

// Selection sort, in place. Where items of equal rank stand follows from these very exchanges.
void sort_items(IdSet* set) {
  IdSetItem* items = items_of(set);
  for (std::int32_t i = 0; i + 1 < set->subs.count; ++i) {
    IdSetItem si = items[i];
    for (std::int32_t j = i + 1; j < set->subs.count; ++j) {
      if (idset_compare(set, &si, &items[j]) > 0) std::swap(si, items[j]);
    }
    items[i] = si;
  }
}

// How general a pattern is.
struct Wildcards {
  int count = 0;
  int separators_before = 0;  // summed over the wildcards
};

Wildcards count_wildcards(const IdSet* set, const char* id) {
  Wildcards wildcards;
  int separators = 0;
  for (int i = 0; i < TAVDIDSET_ID_CHARS && id[i] != '\0'; ++i) {
    separators += idset_is_separator(set, id[i]);
    if (idset_is_wildchar(set, id[i]) == 0) continue;
    ++wildcards.count;
    wildcards.separators_before += separators;
  }
  return wildcards;
}

}  // namespace

int idset_is_wildchar(const IdSet* set, char c) {
  return holds(set->wildchars, c);
}

int idset_is_separator(const IdSet* set, char c) {
  return holds(set->separators, c);
}

int idset_match(const IdSet* set, const char* code, const char* pattern) {
  if (code == nullptr || pattern == nullptr || *code == '\0' || *pattern == '\0') return 0;
  // A wildcard goes to the end of its field, steps back by one and is stepped over like any character. At a
  // separator in the first place that leads in front of the text, which counts as an end of text.
  std::ptrdiff_t s = 0;
  const auto at_end = [&] { return s < 0 || code[s] == '\0'; };
  const char* t = pattern;
  for (; !at_end() && *t != '\0'; ++t) {
    if (idset_is_wildchar(set, *t) != 0) {
      while (code[s] != '\0' && idset_is_separator(set, code[s]) == 0) ++s;
      --s;
    } else if (code[s] != *t) {
      return 0;
    }
    if (!at_end()) ++s;
  }
  return at_end() && *t == '\0' ? 1 : 0;
}

int idset_compare(const IdSet* set, const IdSetItem* a, const IdSetItem* b) {
  if (a->matches == 0) return kAfter;
  if (b->matches == 0) return kBefore;
  if (std::strncmp(a->id, b->id, sizeof a->id) == 0) return 0;
  const Wildcards of_a = count_wildcards(set, a->id);
  const Wildcards of_b = count_wildcards(set, b->id);
  if (of_a.count != of_b.count) return of_a.count < of_b.count ? kBefore : kAfter;
  if (of_a.separators_before != of_b.separators_before) {
    return of_a.separators_before < of_b.separators_before ? kAfter : kBefore;
  }
  for (int i = 0; i < TAVDIDSET_ID_CHARS && a->id[i] != '\0' && b->id[i] != '\0'; ++i) {
    const bool wild_a = idset_is_wildchar(set, a->id[i]) != 0;
    const bool wild_b = idset_is_wildchar(set, b->id[i]) != 0;
    if (wild_a != wild_b) return wild_b ? kBefore : kAfter;
  }
  return 0;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdidset_init(IdSet* set) {
  if (set == nullptr) return;
  *set = {};
  gwarray_init(&set->subs, sizeof(IdSetItem));
  tavdidset_set_wildchars(set, "*");
  tavdidset_set_separators(set, "-+");
}

void tavdidset_reset(IdSet* set) {
  if (set == nullptr) return;
  std::memset(set->classId, 0, sizeof set->classId);
  std::memset(set->mainId, 0, sizeof set->mainId);
  std::memset(set->curId, 0, sizeof set->curId);
  set->adjusted = 0;
  release_and_forget(&set->mainRec);
  release_and_forget(&set->curRec);
  for (std::int32_t i = 0; i < set->subs.count; ++i) release_and_forget(&items_of(set)[i].rec);
  gwarray_reset(&set->subs);
}

void tavdidset_release(IdSet* set) {
  if (set == nullptr) return;
  tavdidset_reset(set);
  gwarray_release(&set->subs);
}

int32_t tavdidset_set_wildchars(IdSet* set, const char* chars) {
  return set != nullptr ? set_signs(set->wildchars, chars) : TAVDIDSET_REFUSED;
}

int32_t tavdidset_set_separators(IdSet* set, const char* chars) {
  return set != nullptr ? set_signs(set->separators, chars) : TAVDIDSET_REFUSED;
}

int32_t tavdidset_read(IdSet* set, int16_t db, const char* classId, const char* id) {
  if (set == nullptr) return TAVDIDSET_NO_PRODUCT;
  const Prefix prefix = prefix_of(set, classId, id);
  tavdidset_reset(set);
  if (prefix.length == 0 || !is_ready(set)) return TAVDIDSET_NO_PRODUCT;
  std::memcpy(set->classId, prefix.classId, sizeof set->classId);
  return read_layers(set, db, prefix);
}

int32_t tavdidset_adjust(IdSet* set, int16_t db, const char* id) {
  if (set == nullptr) return TAVDIDSET_NO_PRODUCT;
  set->adjusted = 0;
  if (set->mainId[0] == '\0') return TAVDIDSET_NO_PRODUCT;
  release_and_forget(&set->curRec);
  // The id as the host gives it, copied: the text may lie in an item, and the items will move.
  char key[kIdRoom] = {};
  gwstrcpyfield(key, id, kIdChars + 1);
  gwstrtrimcpy(set->curId, key, kIdChars);
  if (idset_match(set, set->curId, set->mainId) == 0) {
    std::memset(set->curId, 0, sizeof set->curId);
    return TAVDIDSET_NOT_ADJUSTED;
  }
  for (std::int32_t i = 0; i < set->subs.count; ++i) {
    IdSetItem& item = items_of(set)[i];
    item.matches = static_cast<char>(idset_match(set, set->curId, item.id));
  }
  sort_items(set);
  set->curRec = tavbfindrec(db, set->classId, key, TAVB_FIND_EXACT);
  set->adjusted = 1;
  return 0;
}

int32_t tavdidset_findatt(IdSet* set, int16_t db, int16_t attId, int16_t* count, void* buffer,
                          int16_t capacity) {
  std::int16_t ignored = 0;
  if (count == nullptr) count = &ignored;
  *count = 0;
  if (set == nullptr || set->mainId[0] == '\0') return TAVDIDSET_NO_PRODUCT;
  if (set->adjusted == 0) return TAVDIDSET_NOT_ADJUSTED;
  // Without a buffer the service would hand out a block that nobody gives back.
  char no_room = 0;
  if (buffer == nullptr) capacity = 0;
  void* to = buffer != nullptr ? buffer : &no_room;
  const auto found_in = [&](tavb_rec rec) {
    return rec != nullptr && tavbcopyatt(db, rec, attId, count, to, capacity) != nullptr;
  };
  if (found_in(set->curRec)) return TAVDIDSET_FOUND;
  for (std::int32_t i = 0; i < set->subs.count && items_of(set)[i].matches != 0; ++i) {
    if (found_in(items_of(set)[i].rec)) return TAVDIDSET_FOUND;
  }
  return found_in(set->mainRec) ? TAVDIDSET_FOUND : TAVDIDSET_NOT_FOUND;
}
