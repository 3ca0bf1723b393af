// Selection as both hosts ask for it and tell it.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "shared/units.h"
#include "tavd/tavdn_select.h"

namespace hosts {

// What a level in the room is calculated with unless a user says otherwise, dB: the library's own beginning.
inline constexpr float kRoomDamping = 4.0F;

// How many answers are given unless a user says otherwise, and how many at most.
inline constexpr int kUsualHits = 5;
inline constexpr int kMostHits = 1000;

// A word of the user's, and what stands for it in a duty.
struct DutyWord {
  const char* name;
  unsigned value;
};
std::span<const DutyWord> rankings();  // TAVDN_RANK_, in their order

// What a duty was answered with.
struct Selected {
  std::size_t products = 0;            // that fit
  std::vector<tavdn_hit> hits;         // the best of them
  std::vector<unsigned char> reasons;  // of all products of the catalogue, where they were asked for
};

// Asks for one duty. Throws std::logic_error if it cannot be asked, see tavdn_check_duty.
Selected select_one(const tavdn_catalogue* catalogue, const tavdn_duty& duty, bool with_reasons);

// "14 of 66 products fit", "none of 66 products fit".
std::string fitting_text(std::size_t fitting, std::size_t all);

const char* reason_text(int reason);

// What hinders the products that come nearest to fitting, with their number: "it is too loud in the room: 12
// products".
std::string nearest_reason(const std::vector<unsigned char>& reasons);

// The numbers of a hit as tables show them, without units; empty where there is none, or "unknown" where one
// is expected.
struct HitTexts {
  std::string flow;
  std::string pressure;  // that the product takes or, a fan, gives
  std::string lowest_pressure;
  std::string level;  // in the room, dB(A)
  std::string throw_length;
};

// `flow_unit` is that of the product's flows, which may be air velocities.
HitTexts hit_texts(const tavdn_hit& hit, const FlowData& flow, const Unit& flow_unit,
                   const Unit& pressure_unit);

}  // namespace hosts
