// Products with round numbers, one of each kind that the commands treat apart.
#pragma once

#include <cstdint>
#include <vector>

#include "support/database.h"

namespace clitest {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
inline constexpr int kCode = 1562;                 // product code for all markets, UTF-8
inline constexpr int kCodeFinland = 9500;          // windows-1252
inline constexpr int kDescriptionEnglish = 9552;   // windows-1252
inline constexpr int kDescriptionSwedish = 9551;   // windows-1252
inline constexpr int kDescriptionJapanese = 9592;  // UTF-8

// A row of the sound table, the same level in all bands.
struct SoundRow {
  float qv, dp;
  unsigned char lw[8];
  SoundRow(float flow, float pressure, unsigned char level);
};
static_assert(sizeof(SoundRow) == 16);

// A row of a parameter table.
#pragma pack(push, 1)
struct ParameterRow {
  char value[6];
  float dk;
  std::int16_t dlw, ddlw;
  float factor;
  ParameterRow(const char* text, float coefficient, std::int16_t level);
};
#pragma pack(pop)
static_assert(sizeof(ParameterRow) == 18);

// Adds to the database:
// - class "ASD", id "DAMPER-200": 20 to 200 l/s, 10 to 500 Pa, settings 1, 2, 3 of 400, 100, 25 Pa at 100
// l/s; sound
//   tables of the first two; parameter "blade" with the values 100, 200, 300; codes and descriptions;
// - class "ASD", id "FIXED-100": 100 Pa at 100 l/s; parameter "colour" with the values A and B;
// - class "FAN", id "FAN-315": curve (100, 400), (200, 300), (300, 100);
// - class "AEX", id "GRILLE-400x200": 100 Pa at 4 m/s;
// - class "TVM", id "MODEL", and the file header, which says that texts are in the default code page.
void add_samples(const tavdtest::Database& database);

}  // namespace clitest
