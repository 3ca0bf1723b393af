#include "sheet/layout.h"

#include <algorithm>
#include <iterator>

namespace tavdhost {
namespace {

// A part's box where all is there, and where something is not, whose room it then takes.
struct Place {
  SheetPart part;
  Box box;
  Box without;
  bool SheetParts::*needed;  // null: `box` always
};

constexpr Box kNowhere = {0, 0, 0, 0};

constexpr Place kPlaces[] = {
    {SheetPart::kTitle, {15, 13, 180, 17}, {}, nullptr},
    {SheetPart::kProduct, {15, 33, 102, 58}, {}, nullptr},
    {SheetPart::kAnswers, {15, 92, 102, 66}, {}, nullptr},
    {SheetPart::kSketch, {122, 33, 73, 68}, kNowhere, &SheetParts::sketch},
    {SheetPart::kBands, {122, 103, 73, 55}, kNowhere, &SheetParts::bands},
    {SheetPart::kFlowChart, {15, 160, 104, 84}, {15, 160, 180, 84}, &SheetParts::throw_chart},
    {SheetPart::kThrowChart, {122, 160, 73, 84}, kNowhere, &SheetParts::throw_chart},
    {SheetPart::kBandTable, {15, 246, 180, 14}, kNowhere, &SheetParts::band_table},
    {SheetPart::kNotes, {15, 261, 180, 20}, {15, 247, 180, 34}, &SheetParts::band_table},
    {SheetPart::kFoot, {15, 284, 180, 5}, {}, nullptr},
};

}  // namespace

Box sheet_box(SheetPart part, const SheetParts& parts) {
  const Place& place = *std::ranges::find(kPlaces, part, &Place::part);
  return place.needed == nullptr || parts.*place.needed ? place.box : place.without;
}

}  // namespace tavdhost
