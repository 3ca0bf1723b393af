// The options of tavd diagram: as they are typed, and as the library takes them.
#pragma once

#include <CLI/App.hpp>

#include <cstdint>
#include <string>
#include <vector>

#include "drawing.h"
#include "picture.h"

namespace tavdhost {

struct DiagramOptions : DrawingOptions {
  std::string qv, dp;
  std::string xunit = "l/s";
  std::string yunit = "Pa";
  std::string units;                  // FLOW,PRESSURE in place of the two
  std::string limits;                 // QV1,QV2
  std::string lp;                     // MIN,MAX,STEP
  std::string parameter_list;         // NAME=VALUE,...
  std::vector<std::string> a_labels;  // POSITION=TEXT
  bool static_pressure = false;
};

// A text for one damper position.
struct PositionLabel {
  float position;
  std::string text;  // windows-1252, percent signs doubled
};

// The options as numbers: nothing is opened before all of them are good.
struct DiagramSettings {
  PictureSize size;
  std::int16_t xunit, yunit;
  float qv = 0;                            // 0: no operating point
  float dp = 0;                            // 0: the flow alone is marked
  float qvlimit1 = 0, qvlimit2 = 0;        // 0: no limits
  float lpmin = 0, lpmax = 0, lpstep = 0;  // dB(A); 0: as the diagram chooses
  std::vector<PositionLabel> a_labels;
  std::vector<std::string> parameters;  // NAME=VALUE
};

void add_diagram_options(CLI::App& command, DiagramOptions& options);

// Settings where nothing was asked for: l/s, Pa, and nothing marked.
DiagramSettings default_diagram_settings(PictureSize size);

// Throws UserError for the first option that is not as it should be.
DiagramSettings diagram_settings(const DiagramOptions& options);

}  // namespace tavdhost
