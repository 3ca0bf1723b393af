// Prefix codes for symbols of which some are more frequent than others (RFC 1951).
#pragma once

#include <cstdint>
#include <span>

namespace tavdcairo {

struct PrefixCode {
  std::uint16_t bits = 0;   // first bit lowest, as deflate packs them
  std::uint8_t length = 0;  // bits; 0: the symbol has no code
};

constexpr int kMostPrefixBits = 15;

// The codes of symbols that occur so often, none longer than `most_bits` (up to kMostPrefixBits, and enough
// for as many symbols). Symbols that do not occur get none, except where fewer than two occur: others then
// fill up to two, because readers want a complete code.
void make_prefix_codes(std::span<const std::uint32_t> counts, int most_bits, std::span<PrefixCode> codes);

}  // namespace tavdcairo
