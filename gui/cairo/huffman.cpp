#include "gui/cairo/huffman.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace tavdcairo {

namespace {

using Leaf = std::pair<std::uint32_t, std::size_t>;                   // count, symbol
using LengthCounts = std::array<std::uint32_t, kMostPrefixBits + 1>;  // codes of each length

std::vector<Leaf> used_symbols(std::span<const std::uint32_t> counts);
LengthCounts length_counts(const std::vector<Leaf>& leaves, int most_bits);
void shorten(LengthCounts& counts, int most_bits);
std::uint16_t reversed(std::uint32_t bits, int length);

}  // namespace

void make_prefix_codes(std::span<const std::uint32_t> counts, int most_bits, std::span<PrefixCode> codes) {
  const std::vector<Leaf> leaves = used_symbols(counts);
  const LengthCounts of_length = length_counts(leaves, most_bits);

  std::fill(codes.begin(), codes.end(), PrefixCode{});
  auto rarest = leaves.begin();
  for (int length = most_bits; length > 0; --length) {
    for (std::uint32_t n = of_length[static_cast<std::size_t>(length)]; n > 0; --n) {
      codes[(rarest++)->second].length = static_cast<std::uint8_t>(length);
    }
  }
  // Codes of one length follow each other in the order of the symbols, and the shorter ones come first.
  std::array<std::uint32_t, kMostPrefixBits + 1> next = {};
  for (std::size_t length = 1; length < kMostPrefixBits; ++length) {
    next[length + 1] = (next[length] + of_length[length]) << 1;
  }
  for (PrefixCode& code : codes) {
    if (code.length > 0) code.bits = reversed(next[code.length]++, code.length);
  }
}

namespace {

// From the rarest to the most frequent.
std::vector<Leaf> used_symbols(std::span<const std::uint32_t> counts) {
  std::vector<Leaf> leaves;
  for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
    if (counts[symbol] > 0) leaves.emplace_back(counts[symbol], symbol);
  }
  for (std::size_t symbol = 0; leaves.size() < 2; ++symbol) {
    if (counts[symbol] == 0) leaves.emplace_back(1, symbol);
  }
  std::sort(leaves.begin(), leaves.end());
  return leaves;
}

// Huffman's tree. The joints are made in the order of their weight, so that two queues suffice: the leaves,
// and the joints that have no parent yet.
LengthCounts length_counts(const std::vector<Leaf>& leaves, int most_bits) {
  const std::size_t n = leaves.size();
  std::vector<std::uint64_t> weight(2 * n - 1);
  std::vector<std::size_t> parent(2 * n - 1);
  for (std::size_t i = 0; i < n; ++i) weight[i] = leaves[i].first;
  std::size_t leaf = 0;
  std::size_t joint = n;
  for (std::size_t made = n; made < 2 * n - 1; ++made) {
    for (int child = 0; child < 2; ++child) {
      const bool take_leaf = leaf < n && (joint == made || weight[leaf] <= weight[joint]);
      const std::size_t lighter = take_leaf ? leaf++ : joint++;
      weight[made] += weight[lighter];
      parent[lighter] = made;
    }
  }
  std::vector<int> depth(2 * n - 1);
  LengthCounts counts = {};
  for (std::size_t i = 2 * n - 2; i-- > 0;) {
    depth[i] = depth[parent[i]] + 1;
    if (i < n) ++counts[static_cast<std::size_t>(std::min(depth[i], most_bits))];
  }
  shorten(counts, most_bits);
  return counts;
}

// Codes that were cut to the longest length allowed leave too many of it: each step takes one away, makes a
// shorter code one longer, and puts the one taken away beside it.
void shorten(LengthCounts& counts, int most_bits) {
  const auto most = static_cast<std::size_t>(most_bits);
  std::uint64_t taken = 0;  // of 2^most places
  for (std::size_t length = 1; length <= most; ++length) {
    taken += static_cast<std::uint64_t>(counts[length]) << (most - length);
  }
  for (; taken > std::uint64_t{1} << most; --taken) {
    std::size_t length = most - 1;
    while (counts[length] == 0) --length;
    --counts[most];
    --counts[length];
    counts[length + 1] += 2;
  }
}

std::uint16_t reversed(std::uint32_t bits, int length) {
  std::uint32_t result = 0;
  for (int i = 0; i < length; ++i) result |= (bits >> i & 1) << (length - 1 - i);
  return static_cast<std::uint16_t>(result);
}

}  // namespace

}  // namespace tavdcairo
