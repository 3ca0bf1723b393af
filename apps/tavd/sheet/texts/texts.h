// What stands on a sheet beside a product's own texts, a table for each language. All UTF-8.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "shared/units.h"

namespace tavdhost {

// A result code of the library, or a kind of product, in words.
struct NumberedText {
  int number;
  const char* text;
};

// How a language writes a unit, where it does not take the international sign.
struct UnitSign {
  const char* name;  // as hosts::Unit has it, or "dB", "dB(A)", "Hz", "mm", "m"
  const char* sign;
};

// A member without a value does not compile: every language has all of them. "{}" in a sentence is the place
// of a number with its unit, or of a name.
struct SheetTexts {
  const char* language;  // BCP 47, for readers of the document
  bool right_to_left;
  char decimal;  // sign between a number and its decimals

  struct Headings {
    const char *sheet, *schedule, *duty, *answers, *bands, *flow_chart, *throw_chart, *sketch, *notes;
  } headings;
  struct Words {
    const char *page, *code, *id, *kind, *size, *database, *unknown, *not_calculated, *no_data;
  } words;
  // Of the product and its duty.
  struct Names {
    const char *flow, *velocity, *pressure, *flow_limits, *pressure_limits, *parameter, *room_damping,
        *end_reflection;
  } names;
  // What is answered.
  struct Answers {
    const char *lowest_pressure, *highest_pressure, *position, *setting, *pressure_there, *fan_total,
        *fan_static, *fan_dynamic, *fan_point, *throw_length, *sound_power, *room_level, *octave_band,
        *band_power, *attenuation;
  } answers;
  struct Notes {
    const char *flow_outside, *pressure_outside, *unreachable, *takes, *levels_elsewhere, *position_between,
        *sound_between, *curve_between, *throw_between, *parameter_between, *total_pressure, *throw_velocity,
        *millimetres;
  } notes;
  struct EndReflection {
    const char *in_table, *taken_off, *none;
  } end_reflection;
  // Columns of a schedule beside those above, and what stands where nothing fits.
  struct Schedule {
    const char *room, *terminal, *name, *line, *product, *available, *takes, *level, *nothing_fits, *duties,
        *without;
  } schedule;
  // In charts: the curves, the limits of the product, and what stands where there is no curve.
  struct Chart {
    const char *curve, *fan_curve, *fan_limits, *position, *limits, *point, *total_A, *any_pressure;
  } chart;

  std::span<const NumberedText> kinds;         // TAVD_KIND_
  std::span<const NumberedText> range_codes;   // tavca_minmaxdptot
  std::span<const NumberedText> damper_codes;  // tavca_damper_pos
  std::span<const NumberedText> fan_codes;     // tavca_fan_dp
  std::span<const NumberedText> check_codes;   // tavca_fan_op_check
  std::span<const NumberedText> sound_codes;   // tavca_lw
  std::span<const UnitSign> units;             // that differ from the international ones
};

extern const SheetTexts kArabicSheet, kChineseSheet, kEnglishSheet, kFinnishSheet, kGermanSheet,
    kRussianSheet, kSwedishSheet;

// All of them, English first.
std::span<const SheetTexts* const> all_sheet_texts();

// Of a language by the library's number, TAVD_LANGUAGE_; null where there is no table.
const SheetTexts* sheet_texts_of(std::int16_t language);

// The text of a number; empty where the list has none.
std::string_view text_of(std::span<const NumberedText> list, int number);

// The sign of a unit by its name, as this language writes it.
std::string unit_sign(const SheetTexts& texts, const hosts::Unit& unit);
std::string unit_sign(const SheetTexts& texts, const char* name);

// The number with the language's decimal sign: of one that is written with a point.
std::string localized(const SheetTexts& texts, std::string number);
// The same with the sign of its unit, which stands to its right in every language: within a text that runs
// from the right it is a piece of its own.
std::string with_unit(const SheetTexts& texts, const std::string& number, const std::string& sign);

// The sentence with its "{}" replaced.
std::string filled(const char* sentence, std::string_view by);

}  // namespace tavdhost
