#include "diagram/savedparameters.h"

#include <cstring>

#include "base/gwtext.h"
#include "tavd/tavca.h"

namespace tavd {

const SavedParameter& SavedParameters::set(const char* name, const char* value) {
  SavedParameter choice{};
  if (name != nullptr) gwstrtrimcpy(choice.name, name, TAVD_PARAMETER_CHARS);
  if (value != nullptr) gwstrtrimcpy(choice.value, value, TAVD_PARAMETER_CHARS);
  const bool first = gwstricmp(choice.name, slots[0].name) == 0;
  const bool second = !first && gwstricmp(choice.name, slots[1].name) == 0;
  const bool free = slots[0].name[0] == 0;
  SavedParameter& slot = slots[first || (!second && free) ? 0 : 1];
  slot = choice;
  return slot;
}

void SavedParameters::reset() {
  std::memset(slots, 0, sizeof slots);
}

void SavedParameters::apply(FlowData* fd) const {
  for (const SavedParameter& slot : slots) {
    if (slot.name[0] != 0 && slot.value[0] != 0) tavca_param_setvalue(fd, slot.name, slot.value);
  }
}

}  // namespace tavd
