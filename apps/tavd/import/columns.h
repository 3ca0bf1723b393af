// Columns of a table with measured values: what their headings mean, and in which unit they are.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/source.h"
#include "import/csv.h"
#include "shared/units.h"

namespace tavdhost {

enum class Field {
  kId,           // of the product that the row belongs to
  kDescription,  // of that product, in English
  kSize,         // of its connection, mm: 160 or 400x200
  kSetting,      // of a damper, as the maker labels it
  kFlow,         // or air velocity, by its unit
  kPressure,
  kBand,   // sound power in one octave band, dB
  kLevel,  // of all bands together, A-weighted
  kThrow,
  kAux,     // a fan's number of the host's own
  kNothing  // a column without a heading, which is not read
};

struct Heading {
  Field field;
  std::size_t band;         // of kBand, from 0
  const hosts::Unit* unit;  // of kFlow and kPressure
  double metres;            // of kThrow: one of its unit
};

// Headings such as "qv [m3/h]", "dp [kPa]", "63 Hz" or "LwA [dB(A)]", in any case and order. What is no known
// heading, has no unit where it needs one, or stands twice goes into `faults`; then the answer is empty.
std::vector<Heading> headings_of(const Source& source, const CsvRow& row, Faults& faults);

// "qv [m3/h]" in its two parts; without a unit that is empty.
struct HeadingParts {
  std::string name, unit;
};
HeadingParts heading_parts(const std::string& heading);

// "id, description, size, ...", for messages and the help.
std::string column_names();

}  // namespace tavdhost
