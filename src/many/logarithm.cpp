#include "many/logarithm.h"

#include "gwmath.h"

namespace tavd {

LogTable::LogTable() {
  for (int i = 0; i < kLogPlaces; ++i) {
    const double middle = 1.0 + (i + 0.5) / kLogPlaces;
    inverse[i] = wide(narrow(1.0 / middle));
    lg[i] = -gwlog10(inverse[i]);
  }
}

const LogTable kLogTable;

}  // namespace tavd
