// A flow diagram with sound tables, on the axes of FlowDiagram: x = 1955 + 7045 * lg(qv / 100) and
// y = 8045 - 3241.5 * lg(dp / 100).
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"
#include "oracle/reference/level_search.h"

namespace tavdtest {

inline constexpr float kRoomdamp = 4.0F;  // dB, what the library starts with

inline constexpr char kSoundPen[] = "select pen solid width=20 colour=#FF0000";
inline constexpr char kLabelFont[] =
    "select font height=-400 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 "
    "face=\"Microsoft Sans Serif\"";

// A row whose bands are alike; its level in the room is 2.99 dB(A) more.
inline LwPoint flat(float qv, float dp, int level) {
  LwPoint row{};
  row.qv = qv;
  row.dp = dp;
  std::fill(row.lw, row.lw + TAVD_BANDS, static_cast<std::uint8_t>(level));
  return row;
}

class SoundCurves : public FlowDiagram {
 protected:
  void build(Record& product) { ASSERT_EQ(0, tavdg_initdiagramdata(product.rec())); }

  static int x(double qv) { return static_cast<int>(1955 + 7045 * std::log10(qv / 100)); }
  static int y(double dp) { return static_cast<int>(8045 - 3241.5 * std::log10(dp / 100)); }

  // Where a search finds a level on a table: its `val` is the flow or the pressure.
  static float found(const std::vector<LwPoint>& rows, bool along_flow, float L) {
    std::vector<transcription::LevelSearchRow> table;
    for (const LwPoint& row : rows) {
      transcription::LevelSearchRow copy{0, along_flow ? row.qv : row.dp, {}};
      std::copy(row.lw, row.lw + TAVD_BANDS, copy.lw);
      table.push_back(copy);
    }
    return transcription::lp_find(static_cast<int>(table.size()), table.data(), L, 0, kRoomdamp);
  }

  // The levels that are written, whatever stands behind the number.
  std::vector<int> labels() {
    std::vector<int> all;
    for (const std::string& line : curves("text")) {
      all.push_back(std::atoi(line.c_str() + line.find('"') + 1));
    }
    return all;
  }
  std::vector<Segment> segments() {
    std::vector<Segment> all;
    for (const std::string& line : curves("line")) {
      Segment s{};
      std::sscanf(line.c_str(), "line %d %d %d %d", &s[0], &s[1], &s[2], &s[3]);
      all.push_back(s);
    }
    return all;
  }
};

}  // namespace tavdtest
