// A sheet as texts and numbers, in its language, before anything has a place.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sheet/subject.h"

namespace tavdhost {

// A line of a table: "Lowest pressure", "8.3", "Pa", and a remark beneath it, if there is one.
struct SheetLine {
  std::string name, value, unit, remark;
};

struct SheetContents {
  std::string code, description;
  std::vector<SheetLine> product;  // what it is, and its limits
  std::vector<SheetLine> duty;     // what is asked of it
  std::vector<SheetLine> answers;
  std::optional<Bands> sound_power;                // dB, where it was calculated
  std::optional<float> sound_power_A, room_level;  // dB(A)
  std::optional<Bands> attenuation;                // dB
  std::vector<std::string> notes;
};

SheetContents sheet_contents(const SheetSubject& subject, const SheetForm& form);

// The lines of text that an SVG has for those who do not see it, and a document for lists of files.
std::string sheet_summary(const SheetContents& contents);

}  // namespace tavdhost
