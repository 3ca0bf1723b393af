#include "many/power.h"

namespace tavd {

PowerTable::PowerTable() {
  for (int j = 0; j < kPowerPlaces; ++j) places[j] = std::exp2(static_cast<double>(j) / kPowerPlaces);
}

const PowerTable kPowerTable;

}  // namespace tavd
