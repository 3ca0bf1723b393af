// Charts of many products, and what stands on them that should not.
#pragma once

#include <string>
#include <vector>

#include "product/product.h"
#include "sheet/chart/flow_chart.h"
#include "sheet/painter.h"

namespace charts {

// Words and units as an English sheet has them, or with other words.
tavdhost::ChartForm english();

// A duty in the middle of the product's limits, at their edge, outside of them, and none.
std::vector<tavdhost::ChartDuty> duties(const FlowData& flow);

// Boxes of sheets, from small to large.
std::vector<tavdhost::Box> rooms();

// All pairs of texts that overlap, texts that leave their room, and labels on the duty, on its values or
// beyond the limits: told in words. None if all is well.
std::vector<std::string> faults(const std::vector<tavdhost::PlacedText>& texts,
                                const tavdhost::ChartLayout& layout);

// All products with flow data of a database.
std::vector<tavdhost::Product> products_of(const std::string& path);

}  // namespace charts
