#include "db/sizelist.h"

#include "base/gwlist.h"
#include "base/gwtext.h"
#include "db/ids.h"
#include "tavd/tavb.h"

namespace tavd {
namespace {

// The member of the selected row; false if there is none.
bool selected_member(tavd_hwnd dialog, int item, const FamilyList* list, FamilyMember* member) {
  if (dialog == nullptr) {  // a missing control answers 0, the first row
    return false;
  }
  const int row = gwlb_gettext(dialog, item, -1, nullptr, 0);
  return row >= 0 && tavfm_get(list, row, member) == 0;
}

}  // namespace

void fill_size_list(tavd_hwnd dialog, int item, FamilyList* list, std::int16_t db, tavb_rec rec) {
  if (rec == nullptr) return;
  char class_id[kClassRoom] = {};
  char object_id[kIdRoom] = {};
  tavbgetID(db, rec, class_id, object_id);
  const std::int32_t members = tavfm_read(list, db, class_id, object_id);
  gwlb_clear(dialog, item);
  for (std::int32_t i = 0; i < members; ++i) {
    FamilyMember member;
    tavfm_get(list, i, &member);
    gwlb_add(dialog, item, member.pcode);
  }
  if (members > 0) gwlb_select(dialog, item, 0);
}

tavb_rec selected_record(tavd_hwnd dialog, int item, const FamilyList* list, std::int16_t db,
                         const char* class_id, char* title, int title_size) {
  FamilyMember member;
  if (!selected_member(dialog, item, list, &member)) return nullptr;
  gwstrcpyfield(title, member.pcode, title_size);
  return tavbfindrec(db, class_id, member.objId, TAVB_FIND_EXACT);
}

}  // namespace tavd
