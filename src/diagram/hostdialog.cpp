#include "diagram/hostdialog.h"

#include "base/gwlist.h"
#include "base/gwtext.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

// The parameter that a combo box shows: the first of the product's that has a name.
int named_parameter(const FlowData& fd) {
  for (int i = 0; i < TAVD_PARAMETERS; ++i) {
    if (fd.par[i].name[0] != 0) {
      return i;
    }
  }
  return -1;
}

// The member of the selected row; false if there is none.
bool selected_member(tavd_hwnd dialog, int item, const FamilyList* list, FamilyMember* member) {
  if (dialog == nullptr) {  // a missing control answers 0, the first row
    return false;
  }
  const int row = gwlb_gettext(dialog, item, -1, nullptr, 0);
  return row >= 0 && tavfm_get(list, row, member) == 0;
}

}  // namespace

void fill_size_list(tavd_hwnd dialog, ProductDiagram* diagram) {
  if (diagram->rec == nullptr) {
    return;
  }
  FamilyList* const list = &diagram->familylist;
  const int item = diagram->listid;
  char class_id[8] = {};
  char object_id[32] = {};
  tavbgetID(diagram->db, diagram->rec, class_id, object_id);
  const std::int32_t members = tavfm_read(list, diagram->db, class_id, object_id);
  gwlb_clear(dialog, item);
  for (std::int32_t i = 0; i < members; ++i) {
    FamilyMember member;
    tavfm_get(list, i, &member);
    gwlb_add(dialog, item, member.pcode);
  }
  if (members > 0) {
    gwlb_select(dialog, item, 0);
  }
}

void build_selected_size(tavd_hwnd dialog, ProductDiagram* diagram, int (*build)(tavb_rec rec)) {
  FamilyMember member;
  if (!selected_member(dialog, diagram->listid, &diagram->familylist, &member)) {
    return;
  }
  gwstrcpyfield(diagram->title, member.pcode, kChartTitleSize);
  const tavb_rec record = tavbfindrec(diagram->db, diagram->classID, member.objId, 0);
  if (record != nullptr) {
    diagram->error = 0;
    build(record);
    tavbreleaserec(record);
  }
}

int fill_parameter_values(tavd_hwnd dialog, int item, const FlowData& fd) {
  const int parameter = named_parameter(fd);
  if (parameter < 0) {
    return 0;
  }
  const int rows = row_count(fd.par[parameter].count, TAVD_PARAMETER_ROWS);
  for (int i = 0; i < rows; ++i) {
    char value[TAVD_PARAMETER_CHARS + 1];
    gwstrtrimcpy(value, fd.par[parameter].table[i].value, TAVD_PARAMETER_CHARS);
    tavca_strip_quotes(value);
    gwcb_add(dialog, item, value);
  }
  return rows;
}

void choose_parameter_value(tavd_hwnd dialog, int item, FlowData* fd) {
  char value[80];
  const int parameter = named_parameter(*fd);
  if (gwcb_gettext(dialog, item, -1, value, sizeof value) >= 0 && parameter >= 0) {
    tavca_param_setvalue(fd, fd->par[parameter].name, value);
  }
}

}  // namespace tavd
