#include "diagram/hostdialog.h"

#include "base/gwlist.h"
#include "base/gwtext.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "db/sizelist.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr int kNoParameter = -1;

// The parameter that a combo box shows: the first of the product's that has a name.
int named_parameter(const FlowData& fd) {
  for (int i = 0; i < TAVD_PARAMETERS; ++i) {
    if (fd.par[i].name[0] != 0) return i;
  }
  return kNoParameter;
}

}  // namespace

void build_selected_size(tavd_hwnd dialog, ProductDiagram* diagram, int (*build)(tavb_rec rec)) {
  const tavb_rec record = selected_record(dialog, diagram->listid, &diagram->familylist, diagram->db,
                                          diagram->classID, diagram->title, kChartTitleSize);
  if (record != nullptr) {
    diagram->failed = false;
    build(record);
    tavbreleaserec(record);
  }
}

int fill_parameter_values(tavd_hwnd dialog, int item, const FlowData& fd) {
  const int parameter = named_parameter(fd);
  if (parameter == kNoParameter) return 0;
  const int rows = row_count(fd.par[parameter].count, TAVD_PARAMETER_ROWS);
  for (int i = 0; i < rows; ++i) {
    char value[TAVD_PARAMETER_CHARS + 1];
    gwstrtrimcpy(value, fd.par[parameter].table[i].value, TAVD_PARAMETER_CHARS);
    strip_quotes(value);
    gwcb_add(dialog, item, value);
  }
  return rows;
}

void choose_parameter_value(tavd_hwnd dialog, int item, FlowData* fd) {
  char value[80];
  const int parameter = named_parameter(*fd);
  if (gwcb_gettext(dialog, item, -1, value, sizeof value) >= 0 && parameter != kNoParameter) {
    tavca_param_setvalue(fd, fd->par[parameter].name, value);
  }
}

}  // namespace tavd
