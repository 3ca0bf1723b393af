#include "sheet/layout.h"

#include <algorithm>
#include <iterator>

namespace tavdhost {
namespace {

enum class If { kAny, kThere, kMissing };

bool holds(If wanted, bool is_there) {
  return wanted == If::kAny || (wanted == If::kThere) == is_there;
}

// Where a part stands on sheets that have, or lack, other parts: the first row that fits.
struct Place {
  SheetPart part;
  If sketch, bands, band_table, throw_chart;
  Box box;
};

constexpr Place kPlaces[] = {
    {SheetPart::kTitle, If::kAny, If::kAny, If::kAny, If::kAny, {15, 13, 180, 17}},
    {SheetPart::kFacts, If::kAny, If::kAny, If::kAny, If::kAny, {15, 33, 102, 125}},
    {SheetPart::kSketch, If::kThere, If::kThere, If::kAny, If::kAny, {122, 33, 73, 67}},
    {SheetPart::kSketch, If::kThere, If::kMissing, If::kAny, If::kAny, {122, 33, 73, 100}},
    {SheetPart::kBands, If::kThere, If::kThere, If::kAny, If::kAny, {122, 102, 73, 56}},
    {SheetPart::kBands, If::kMissing, If::kThere, If::kAny, If::kAny, {122, 33, 73, 66}},
    {SheetPart::kFlowChart, If::kAny, If::kAny, If::kThere, If::kThere, {15, 160, 104, 84}},
    {SheetPart::kFlowChart, If::kAny, If::kAny, If::kThere, If::kMissing, {15, 160, 180, 84}},
    {SheetPart::kFlowChart, If::kAny, If::kAny, If::kMissing, If::kThere, {15, 160, 104, 92}},
    {SheetPart::kFlowChart, If::kAny, If::kAny, If::kMissing, If::kMissing, {15, 160, 180, 92}},
    {SheetPart::kThrowChart, If::kAny, If::kAny, If::kThere, If::kThere, {122, 160, 73, 84}},
    {SheetPart::kThrowChart, If::kAny, If::kAny, If::kMissing, If::kThere, {122, 160, 73, 92}},
    {SheetPart::kBandTable, If::kAny, If::kAny, If::kThere, If::kAny, {15, 246, 180, 14}},
    {SheetPart::kNotes, If::kAny, If::kAny, If::kThere, If::kAny, {15, 260.5, 180, 22}},
    {SheetPart::kNotes, If::kAny, If::kAny, If::kMissing, If::kAny, {15, 254, 180, 28}},
    {SheetPart::kFoot, If::kAny, If::kAny, If::kAny, If::kAny, {15, 284, 180, 5}},
};

}  // namespace

Box sheet_box(SheetPart part, const SheetParts& parts) {
  const auto* const place = std::ranges::find_if(kPlaces, [&](const Place& row) {
    return row.part == part && holds(row.sketch, parts.sketch) && holds(row.bands, parts.bands) &&
           holds(row.band_table, parts.band_table) && holds(row.throw_chart, parts.throw_chart);
  });
  return place == std::end(kPlaces) ? Box{0, 0, 0, 0} : place->box;
}

}  // namespace tavdhost
