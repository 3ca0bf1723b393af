// The sound power of a product at many points: its sound table with all worked out that no point changes.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "calc/soundtable.h"
#include "many/limits.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavd {

// The levels of two rows as lines over the logarithm of pressure: level + slope*(lg dp - lg_dp).
struct LevelLine {
  double lg_dp;                // of the row that `level` is of
  double slope[TAVD_BANDS];    // dB a decade; 0 where both rows count as one place
  float level[TAVD_BANDS];     // dB
  float distance[TAVD_BANDS];  // of the quick level from the exact one, dB (many/nearly.h)
};

// Which pair of rows of a curve or group a target chooses. The choice looks at the target only by comparing
// it with the keys of the rows, so that it is the same for all targets between two neighbouring keys. Keys
// and lines stand in common arrays.
struct RowChoice {
  bool complete = false;  // at least two rows
  std::uint32_t keys;     // first of its distinct keys, which rise
  std::uint32_t blocks;   // so many times kKeysOfBlock of them, the last filled up with infinities
  std::uint32_t lines;    // for a target below the first key, on it, above it and below the next, ...
};
constexpr std::uint32_t kKeysOfBlock = 8;

// The distance of a level on a line of this slope, dB a decade (levels.cpp).
inline double distance_on_line(double slope) {
  constexpr double kOfSlope = 1.6e-13;
  constexpr double kOfLevel = 6e-14;
  return slope == 0.0 ? 0.0 : std::fabs(slope) * kOfSlope + kOfLevel;
}

class Levels {
 public:
  Levels(const FlowData& fd, const Limits& limits, const DuctSize* duct);

  // As sound_power point by point, without a warning, for N points or fewer: `code` of kRefused where Steps
  // are not certain of the result, or where the table holds what has to be asked of sound_power.
  template <typename Steps, std::size_t N>
  void at(std::size_t n, const float* qv, const float* dp, const Limits& limits, float* lw,
          std::int32_t* codes) const;

 private:
  enum class Search { none, fixed_curve, resistance_curves, flow_groups };

  void prepare_fixed_curve(const sound::Table& table);
  void prepare_curves(const sound::Table& table);
  void prepare_groups(const sound::Table& table);
  template <typename Key>
  RowChoice choice(const sound::Table& table, const sound::Rows& rows, Key key);
  std::uint16_t line_of(const sound::Table& table, sound::Pair pair);

  template <typename Steps, std::size_t N>
  struct Block;
  template <typename Steps, std::size_t N>
  void place_on_fixed_curve(Limits limits, Block<Steps, N>& block) const;
  template <typename Steps, std::size_t N>
  void place_on_curves(Limits limits, Block<Steps, N>& block) const;
  template <typename Steps, std::size_t N>
  void place_in_groups(Limits limits, Block<Steps, N>& block) const;
  const LevelLine& line(const RowChoice& choice, float target) const;
  template <typename Steps, std::size_t N>
  bool levels_of(const Block<Steps, N>& block, std::size_t i, float* lw) const;

  Search search_ = Search::none;
  int failure_ = 0;  // of every point that has a flow
  sound::Corrections corrections_;
  float qvmin_, qvmax_;

  // Curves of one resistance or groups of one flow, in table order, and between which of them a point lies:
  // at the place that tells how many of `steps_` are passed.
  sound::Distinct values_;
  float steps_[sound::kMostCurves];
  double lg_values_[sound::kMostCurves];
  int codes_[sound::kMostCurves];  // of the place between a value and the next
  std::vector<RowChoice> choices_;
  std::vector<float> keys_;
  std::vector<std::uint16_t> choice_lines_;
  std::vector<LevelLine> lines_;
  std::vector<sound::Pair> pairs_;  // of the lines
};

// A product's sound: what is asked of it, at n points, n x 8 levels and n codes.
struct LevelSource {
  const Levels& levels;
  const Limits& limits;
  const FlowData& fd;
  const DuctSize* duct;
};

// As sound_power point by point. Returns for how many the exact steps were taken.
std::size_t levels_at(const LevelSource& source, std::size_t n, const float* qv, const float* dp, float* lw,
                      std::int32_t* codes);

// The same by a path of many/paths.h.
std::size_t levels_by(std::size_t path, const LevelSource& source, std::size_t n, const float* qv,
                      const float* dp, float* lw, std::int32_t* codes);

}  // namespace tavd
