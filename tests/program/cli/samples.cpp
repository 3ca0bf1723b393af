#include "samples.h"

#include <cstring>

namespace clitest {

using tavdtest::Database;
using tavdtest::Record;

SoundRow::SoundRow(float flow, float pressure, unsigned char level) : qv(flow), dp(pressure) {
  std::memset(lw, level, sizeof lw);
}

ParameterRow::ParameterRow(const char* text, float coefficient, std::int16_t level)
    : dk(coefficient), dlw(level), ddlw(0), factor(0) {
  std::memset(value, ' ', sizeof value);
  std::memcpy(value, text, std::strlen(text));
}

namespace {

void add_damper(const Database& database) {
  Record("ASD", "DAMPER-200")
      .header(120, 200, 0, 20, 200, 10, 500)
      .floats(1652, {1, 100, 400, 2, 100, 100, 3, 100, 25})
      .rows<SoundRow>(1653, {{100, 400, 60}, {50, 100, 48}, {100, 100, 45}, {50, 25, 33}})
      .rows<ParameterRow>(1661, {{"100", 0, 0}, {"200", 0.001F, 2}, {"300", 0.004F, 4}})
      .text(1514, "blade")
      .text(kCode, "Damper 200")
      .text(kCodeFinland, "S\xE4\xE4t\xF6pelti 200")
      .text(kDescriptionEnglish, "Round damper")
      .text(kDescriptionSwedish, "Runt spj\xE4ll")
      .save(database.handle());
}

void add_fixed(const Database& database) {
  Record("ASD", "FIXED-100")
      .header(110, 400, 200, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .rows<ParameterRow>(1661, {{"A", 0, 0}, {"B", 0.01F, 0}})
      .text(1514, "colour")
      .text(kCode, "\xE5\x9B\xBA\xE5\xAE\x9A 100")  // two wide characters
      .text(kDescriptionEnglish, "Fixed")
      .save(database.handle());
}

void add_fan(const Database& database) {
  Record("FAN", "FAN-315")
      .header(140, 315, 0, 0, 400, 0, 500)
      .floats(1666, {100, 400, 0, 200, 300, 0, 300, 100, 0})
      .text(kCode, "Fan 315")
      .save(database.handle());
}

void add_grille(const Database& database) {
  Record("AEX", "GRILLE-400x200")
      .header(111, 400, 200, 1, 10, 5, 800)
      .floats(1651, {4, 100})
      .text(kCode, "Grille")
      .save(database.handle());
}

void add_other_records(const Database& database) {
  Record("TVM", "MODEL").text(kCode, "Model").save(database.handle());
  Record("000", "FILEHEADER").words(1049, {0}).save(database.handle());
}

}  // namespace

void add_samples(const Database& database) {
  add_damper(database);
  add_fixed(database);
  add_fan(database);
  add_grille(database);
  add_other_records(database);
}

}  // namespace clitest
