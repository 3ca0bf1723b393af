// Sound levels in the room along a product's sound table, and the search for the flow or pressure at which
// the level is a wanted one. Levels are dB(A).
#pragma once

#include <cstdint>

#include "tavd/flowdata.h"

namespace tavd {

// A row of the sound table. Rows of one curve stand next to one another and share a group.
struct LevelRow {
  std::int16_t group;
  float qv;              // flow, l/s or m/s
  float dp;              // pressure with the parameter term, Pa
  float k;               // resistance dp/qv^2
  float val;             // what a search runs along: the flow or the pressure
  float lw[TAVD_BANDS];  // sound power with the parameter term, dB
  float lpa;             // level in the room
};

class LevelTable {
 public:
  explicit LevelTable(float roomdamp);  // level difference between sound power and room, dB

  void add(const LevelRow& row);  // further rows than the record holds are dropped; works `lpa` out itself

  int count() const { return count_; }
  const LevelRow& row(int i) const { return rows_[i]; }
  LevelRow& row(int i) { return rows_[i]; }
  // The lowest and highest level of all rows; 999.9 and -999.9 without any.
  float lowest() const { return lowest_; }
  float highest() const { return highest_; }
  // What a band alone adds to its sound power in the room.
  const float* band_terms() const { return band_terms_; }
  float roomdamp() const { return roomdamp_; }

 private:
  LevelRow rows_[TAVD_LW_ROWS];
  int count_ = 0;
  float lowest_ = 999.9F;
  float highest_ = -999.9F;
  float band_terms_[TAVD_BANDS];
  float roomdamp_;
};

// Reads a product's sound table, all rows in group 0. `val` is the flow if `along_flow` is set, else the
// pressure. False if a row has no flow or pressure: then nothing of it is drawn.
bool read_levels(const FlowData& fd, bool along_flow, LevelTable* table);

// The `val` at which the level of group `g` is L, within 0.1 dB; 0 if there is none, or if the group has
// fewer than two rows. Levels between and beyond the rows are those of bands that are linear in the logarithm
// of `val`.
float lp_find(const LevelTable& table, float L, int g);

}  // namespace tavd
