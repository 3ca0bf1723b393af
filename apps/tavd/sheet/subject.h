// What a sheet is about: a product at a duty, with all that is answered and drawn of it. Nothing of the
// database is asked after that.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "drawing/own_drawings.h"
#include "product/amount.h"
#include "product/chosen.h"
#include "product/operating_point.h"
#include "product/shown_units.h"
#include "sheet/texts/texts.h"

namespace tavdhost {

// How sheets tell what they tell.
struct SheetForm {
  const SheetTexts* texts = &kEnglishSheet;
  ShownUnits units;
  float room_damping = kRoomDamping;  // dB
  bool without_end_reflection = false;
  // The file's name and when it was last changed, UTC: the only time that a document tells.
  std::string database, database_time;
};

struct SheetSubject {
  Chosen chosen;
  OperatingPoint point;
  // None where the product has no record of its own, or no shape.
  std::optional<DrawingSource> sketch;
};

// The flow and pressure that a product is to have.
struct SheetDuty {
  Amount qv;
  std::optional<float> dp;  // total pressure, Pa
};

// A product that a sheet can be about: with flow data, its parameters chosen. Throws UserError if it is none,
// and for what of the duty is not possible.
SheetSubject sheet_subject(const Database& database, ProductChooser& chooser, const RecordKey& key,
                           std::span<const std::string> parameters, const SheetDuty& duty,
                           const SheetForm& form);

// The units that a market area's engineers expect: m3/h where flows are told by the hour, otherwise l/s.
ShownUnits units_of_market(const std::string& market);

// The database as the foot of a page names it, with its time as "2026-11-22 15:50 UTC".
void name_database(const std::string& path, SheetForm& form);

}  // namespace tavdhost
