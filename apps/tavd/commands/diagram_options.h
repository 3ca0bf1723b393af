// The options of tavd diagram as they are typed.
#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

#include "commands/drawing_arguments.h"
#include "drawing/diagram_settings.h"

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

void add_diagram_options(CLI::App& command, DiagramOptions& options);

// Throws UserError for the first option that is not as it should be. The flows to mark are checked, and still
// 0: what they are in the product's own measure place_flows() tells.
DiagramSettings diagram_settings(const DiagramOptions& options);

// Throws UserError if a flow goes by the product's size and that is not known.
void place_flows(const DiagramOptions& options, const Product& product, DiagramSettings& settings);

}  // namespace tavdhost
