// Parameter choices that a diagram remembers from one product to the next.
#pragma once

#include "tavd/flowdata.h"

namespace tavd {

struct SavedParameter {
  char name[10];   // at most 6 characters count
  char value[10];  // the same
};

struct SavedParameters {
  SavedParameter slots[TAVD_PARAMETERS];

  // Remembers a choice: in the slot of that name, else in the first one if it is free, else in the second
  // one. Returns the slot.
  const SavedParameter& set(const char* name, const char* value);
  void reset();
  void apply(FlowData* fd) const;  // first slot first
};

}  // namespace tavd
