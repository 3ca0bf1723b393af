#include "gui/cairo/deflate.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "gui/cairo/huffman.h"

namespace tavdcairo {

namespace {

// Limits and symbols of the format.
constexpr std::size_t kShortestMatch = 4;  // 3 would be allowed, and seldom pays
constexpr std::size_t kLongestMatch = 258;
constexpr std::size_t kFarthestMatch = 32768;
constexpr std::size_t kLiteralSymbols = 286;  // literals, the end of a block, lengths
constexpr std::size_t kDistanceSymbols = 30;
constexpr std::size_t kEndOfBlock = 256;
constexpr std::size_t kLongestMatchSymbol = 285;

constexpr std::size_t kTokensOfBlock = 1 << 15;  // each block has codes of its own
constexpr std::size_t kMostTokenBytes = 6;       // 15 + 5 + 15 + 13 bits
constexpr std::size_t kMostHeadBytes = 1024;     // lengths of 316 codes, 14 bits each at most, and the end

// A piece of the rows: a byte as it is, or `length` bytes copied from `distance` before.
struct Token {
  std::uint16_t length;  // 0: a byte
  std::uint16_t value;   // the byte, or the distance
};

// How the format writes a length or a distance: a symbol, and bits that tell which of its values.
struct Written {
  std::size_t symbol;
  int bits;
  std::uint32_t extra;
};
Written written_length(std::size_t length);
Written written_distance(std::size_t distance);

// Bits behind each other, each number from its lowest bit up.
class BitWriter {
 public:
  explicit BitWriter(std::string& bytes) : bytes_(bytes) {}

  // Room for so many bytes more: put() does not look.
  void reserve(std::size_t most) {
    buffer_.resize(most + sizeof bits_);
    size_ = 0;
  }
  void put(std::uint32_t bits, int count) {
    bits_ |= static_cast<std::uint64_t>(bits) << count_;
    count_ += count;
    while (count_ >= 32) {
      std::memcpy(buffer_.data() + size_, &bits_, 4);
      size_ += 4;
      bits_ >>= 32;
      count_ -= 32;
    }
  }
  void put(PrefixCode code) { put(code.bits, code.length); }
  // Hands over what is whole; the last bits wait for those that follow.
  void hand_over() { bytes_.append(buffer_.data(), size_); }
  void end() {
    for (; count_ > 0; count_ -= 8, bits_ >>= 8) bytes_ += static_cast<char>(bits_ & 0xFF);
  }

 private:
  std::string& bytes_;
  std::vector<char> buffer_;
  std::size_t size_ = 0;
  std::uint64_t bits_ = 0;
  int count_ = 0;  // below 32 between calls
};

// The tokens of a block and how often each symbol occurs in them.
class Block {
 public:
  Block() { tokens_.reserve(kTokensOfBlock); }

  bool is_full() const { return tokens_.size() >= kTokensOfBlock; }
  void add_byte(unsigned char byte) {
    tokens_.push_back({0, byte});
    ++literals_[byte];
  }
  void add_match(std::size_t length, std::size_t distance) {
    tokens_.push_back({static_cast<std::uint16_t>(length), static_cast<std::uint16_t>(distance)});
    ++literals_[written_length(length).symbol];
    ++distances_[written_distance(distance).symbol];
  }
  void write(BitWriter& out, bool is_last);

 private:
  std::vector<Token> tokens_;
  std::array<std::uint32_t, kLiteralSymbols> literals_ = {};
  std::array<std::uint32_t, kDistanceSymbols> distances_ = {};
};

// Where bytes like those to come stood last, found by hashing four of them.
class Memory {
 public:
  // The place of the last four bytes of that hash; remembers the new one.
  std::size_t replace(std::uint32_t four, std::size_t place) {
    constexpr std::uint32_t kSpread = 2654435761;  // 2^32 over the golden ratio
    std::uint32_t& slot = places_[four * kSpread >> (32 - kBits)];
    const std::size_t former = slot;
    slot = static_cast<std::uint32_t>(place);
    return former;
  }

 private:
  static constexpr int kBits = 13;  // of a hash: a table that the nearest cache holds
  std::array<std::uint32_t, std::size_t{1} << kBits> places_ = {};
};

struct Match {
  std::size_t length = 0;
  std::size_t distance = 0;
};
Match best_match(const Rows& rows, std::size_t at, Memory& memory);

}  // namespace

void append_zlib(std::string& bytes, const Rows& rows) {
  bytes += "\x78\x01";  // deflate with distances up to 32768, compressed fast
  BitWriter out(bytes);
  Block block;
  Memory memory;
  for (std::size_t at = 0; at < rows.size;) {
    if (block.is_full()) {
      block.write(out, false);
      block = {};
    }
    const Match match = best_match(rows, at, memory);
    if (match.length > 0) {
      block.add_match(match.length, match.distance);
      at += match.length;
    } else {
      block.add_byte(rows.data[at++]);
    }
  }
  block.write(out, true);
  out.end();
  const std::uint32_t sum = libdeflate_adler32(1, rows.data, rows.size);
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(sum >> shift & 0xFF);
}

namespace {

std::uint32_t four_at(const unsigned char* place) {
  std::uint32_t four;
  std::memcpy(&four, place, sizeof four);
  return four;
}

// How many bytes agree with those `distance` before, `most` at most.
std::size_t agreeing(const unsigned char* place, std::size_t distance, std::size_t most) {
  std::size_t length = 0;
  for (std::uint64_t here, there; length + sizeof here <= most; length += sizeof here) {
    std::memcpy(&here, place + length, sizeof here);
    std::memcpy(&there, place - distance + length, sizeof there);
    if (here != there) return length + static_cast<std::size_t>(std::countr_zero(here ^ there) / 8);
  }
  while (length < most && place[length] == *(place - distance + length)) ++length;
  return length;
}

// The neighbour to the left, the one above, and where the same stood last. A farther one has to be longer to
// be worth the bits of its distance.
Match best_match(const Rows& rows, std::size_t at, Memory& memory) {
  constexpr std::size_t kWorth = 2;  // bytes
  const std::size_t most = std::min(kLongestMatch, rows.size - at);
  Match best;
  if (most < kShortestMatch) return best;
  const unsigned char* place = rows.data + at;
  const std::uint32_t four = four_at(place);
  const auto consider = [&](std::size_t distance) {
    if (distance == 0 || distance > std::min(at, kFarthestMatch) || four_at(place - distance) != four) return;
    const std::size_t length = agreeing(place, distance, most);
    if (best.length == 0 || length > best.length + kWorth) best = {length, distance};
  };
  consider(rows.pixel);
  if (best.length == most) return best;
  consider(rows.row);
  const std::size_t last = memory.replace(four, at);
  if (best.length < most) consider(at - last);
  return best;
}

Written written_length(std::size_t length) {
  const auto beyond = static_cast<std::uint32_t>(length - 3);
  if (length == kLongestMatch) return {kLongestMatchSymbol, 0, 0};
  if (beyond < 8) return {kEndOfBlock + 1 + beyond, 0, 0};
  const int bits = std::bit_width(beyond) - 3;
  return {kEndOfBlock + 1 + 4 * static_cast<std::size_t>(bits) + (beyond >> bits), bits,
          beyond & ((1U << bits) - 1)};
}

Written written_distance(std::size_t distance) {
  const auto beyond = static_cast<std::uint32_t>(distance - 1);
  if (beyond < 4) return {beyond, 0, 0};
  const int bits = std::bit_width(beyond) - 2;
  return {2 * static_cast<std::size_t>(bits) + (beyond >> bits), bits, beyond & ((1U << bits) - 1)};
}

// The lengths of the codes, with which a block begins; runs of equal ones are told as runs.
class CodeLengths {
 public:
  void add(std::span<const PrefixCode> codes) {
    for (const PrefixCode& code : codes) lengths_.push_back(code.length);
  }
  void write(BitWriter& out);

 private:
  static constexpr std::size_t kSymbols = 19;
  static constexpr int kMostBits = 7;
  struct Item {
    std::size_t symbol;
    int bits;
    std::uint32_t extra;
  };

  void find_items();
  std::size_t add_repetition(std::size_t run, Item symbol, std::size_t least, std::size_t most);

  std::vector<std::uint8_t> lengths_;
  std::vector<Item> items_;
};

void CodeLengths::write(BitWriter& out) {
  static constexpr std::array<std::size_t, kSymbols> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                               11, 4,  12, 3, 13, 2, 14, 1, 15};
  find_items();
  std::array<std::uint32_t, kSymbols> counts = {};
  for (const Item& item : items_) ++counts[item.symbol];
  std::array<PrefixCode, kSymbols> codes;
  make_prefix_codes(counts, kMostBits, codes);
  std::size_t told = kSymbols;
  while (told > 4 && codes[kOrder[told - 1]].length == 0) --told;
  out.put(static_cast<std::uint32_t>(told - 4), 4);
  for (std::size_t i = 0; i < told; ++i) out.put(codes[kOrder[i]].length, 3);
  for (const Item& item : items_) {
    out.put(codes[item.symbol]);
    out.put(item.extra, item.bits);
  }
}

void CodeLengths::find_items() {
  constexpr Item kRepeat = {16, 2, 0};
  constexpr Item kFewZeros = {17, 3, 0};
  constexpr Item kManyZeros = {18, 7, 0};
  for (std::size_t at = 0; at < lengths_.size();) {
    const std::uint8_t length = lengths_[at];
    std::size_t run = 1;
    while (at + run < lengths_.size() && lengths_[at + run] == length) ++run;
    at += run;
    if (length == 0) {
      run = add_repetition(run, kManyZeros, 11, 138);
      run = add_repetition(run, kFewZeros, 3, 10);
    } else {
      items_.push_back({length, 0, 0});
      run = add_repetition(run - 1, kRepeat, 3, 6);
    }
    items_.insert(items_.end(), run, Item{length, 0, 0});
  }
}

// Tells of a run what can be told with that symbol; returns what is left.
std::size_t CodeLengths::add_repetition(std::size_t run, Item symbol, std::size_t least, std::size_t most) {
  while (run >= least) {
    const std::size_t told = std::min(run, most);
    symbol.extra = static_cast<std::uint32_t>(told - least);
    items_.push_back(symbol);
    run -= told;
  }
  return run;
}

// How many codes have to be told: the last ones that have no length are left out.
std::size_t told_codes(std::span<const PrefixCode> codes, std::size_t least) {
  std::size_t n = codes.size();
  while (n > least && codes[n - 1].length == 0) --n;
  return n;
}

void Block::write(BitWriter& out, bool is_last) {
  literals_[kEndOfBlock] = 1;
  std::array<PrefixCode, kLiteralSymbols> literals;
  std::array<PrefixCode, kDistanceSymbols> distances;
  make_prefix_codes(literals_, kMostPrefixBits, literals);
  make_prefix_codes(distances_, kMostPrefixBits, distances);

  out.reserve(tokens_.size() * kMostTokenBytes + kMostHeadBytes);
  constexpr std::uint32_t kOwnCodes = 2;
  const std::size_t literal_codes = told_codes(literals, kEndOfBlock + 1);
  const std::size_t distance_codes = told_codes(distances, 1);
  out.put((is_last ? 1U : 0U) | kOwnCodes << 1, 3);
  out.put(static_cast<std::uint32_t>(literal_codes - (kEndOfBlock + 1)), 5);
  out.put(static_cast<std::uint32_t>(distance_codes - 1), 5);
  CodeLengths lengths;
  lengths.add(std::span(literals).first(literal_codes));
  lengths.add(std::span(distances).first(distance_codes));
  lengths.write(out);
  for (const Token& token : tokens_) {
    if (token.length == 0) {
      out.put(literals[token.value]);
      continue;
    }
    const Written length = written_length(token.length);
    out.put(literals[length.symbol]);
    out.put(length.extra, length.bits);
    const Written distance = written_distance(token.value);
    out.put(distances[distance.symbol]);
    out.put(distance.extra, distance.bits);
  }
  out.put(literals[kEndOfBlock]);
  out.hand_over();
}

}  // namespace

}  // namespace tavdcairo
