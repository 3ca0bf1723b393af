// Sound power by octave band as bars, and beside them the A-weighted level.
#pragma once

#include <array>

#include "sheet/chart/chart_form.h"
#include "sheet/painter.h"
#include "tavd/flowdata.h"

namespace tavdhost {

struct BandLevels {
  std::array<float, TAVD_BANDS> bands;  // sound power level, dB, 63 Hz to 8 kHz
  float total_A;                        // A-weighted, dB(A)
};

void draw_band_chart(Painter& painter, const Box& box, const BandLevels& levels, const ChartForm& form);

}  // namespace tavdhost
