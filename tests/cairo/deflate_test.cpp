// The encoder of pictures, read back by zlib.
#include "gui/cairo/deflate.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <numeric>
#include <queue>
#include <random>
#include <string>
#include <vector>

#include "gui/cairo/huffman.h"

namespace {

using Bytes = std::vector<unsigned char>;

std::string compressed(const Bytes& bytes, std::size_t row, std::size_t pixel) {
  std::string out;
  tavdcairo::append_zlib(out, {bytes.data(), bytes.size(), row, pixel});
  return out;
}

// What zlib reads; nothing if it finds a fault, or bytes behind the end.
Bytes read_back(const std::string& stream, std::size_t size) {
  Bytes result(size + 1);
  z_stream z = {};
  inflateInit(&z);
  z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(stream.data()));
  z.avail_in = static_cast<uInt>(stream.size());
  z.next_out = result.data();
  z.avail_out = static_cast<uInt>(result.size());
  const bool good = inflate(&z, Z_FINISH) == Z_STREAM_END && z.avail_in == 0;
  EXPECT_TRUE(good) << (z.msg != nullptr ? z.msg : "");
  result.resize(good ? z.total_out : 0);
  inflateEnd(&z);
  return result;
}

void expect_same(const Bytes& bytes, std::size_t row, std::size_t pixel) {
  EXPECT_TRUE(read_back(compressed(bytes, row, pixel), bytes.size()) == bytes)
      << bytes.size() << " bytes, rows of " << row << ", pixels of " << pixel;
}

// As many as the library makes of them, from a seed.
Bytes filled(std::size_t size, const std::function<unsigned()>& next) {
  Bytes bytes(size);
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<unsigned char>(next()); });
  return bytes;
}

TEST(Deflate, NothingAndAFewBytesComeBack) {
  for (std::size_t size = 0; size < 20; ++size) {
    expect_same(Bytes(size, 7), 5, 1);
    unsigned n = 0;
    expect_same(filled(size, [&] { return n++; }), 5, 3);
  }
}

TEST(Deflate, RunsOfEveryLengthAroundTheLongestMatchComeBack) {
  for (const std::size_t size :
       {256U, 257U, 258U, 259U, 260U, 261U, 262U, 263U, 515U, 516U, 517U, 518U, 774U}) {
    expect_same(Bytes(size, 0xFF), 101, 1);
    expect_same(Bytes(size, 0xFF), 301, 3);
  }
}

TEST(Deflate, MatchesOfEveryLengthAndDistanceComeBack) {
  std::mt19937 random(1);
  Bytes bytes = filled(33000, [&] { return static_cast<unsigned>(random()); });
  for (std::size_t length = 3; length <= 300; ++length) {
    const std::size_t distance = 300 + random() % 32700;
    for (std::size_t i = 0; i < length; ++i) bytes.push_back(bytes[bytes.size() - distance]);
    bytes.push_back(static_cast<unsigned char>(random()));
  }
  expect_same(bytes, 1001, 3);
  // Each distance where the symbol changes, as the row above.
  for (const std::size_t row :
       {1U,    2U,    3U,    4U,     5U,     6U,     7U,     8U,     9U,     12U,    13U,   16U,
        17U,   24U,   25U,   32U,    33U,    48U,    49U,    64U,    65U,    96U,    97U,   1024U,
        1025U, 8192U, 8193U, 16384U, 16385U, 24576U, 24577U, 32767U, 32768U, 32769U, 49153U}) {
    Bytes rows = filled(row, [&] { return static_cast<unsigned>(random()); });
    rows.reserve(3 * row);
    rows.insert(rows.end(), rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(row));
    rows.insert(rows.end(), rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(row));
    expect_same(rows, row, 1);
    expect_same(rows, row, 3);
  }
}

TEST(Deflate, BytesOfEveryKindComeBackOverManyBlocks) {
  std::mt19937 random(2);
  for (const unsigned different : {1U, 2U, 3U, 17U, 200U, 256U}) {
    for (const std::size_t pixel : {1U, 3U}) {
      const Bytes bytes = filled(300001, [&] { return static_cast<unsigned>(random() % different); });
      expect_same(bytes, 2101, pixel);
    }
  }
}

TEST(Deflate, BytesWithoutAnyOrderHardlyGrow) {
  std::mt19937 random(3);
  const Bytes bytes = filled(1 << 20, [&] { return static_cast<unsigned>(random()); });
  EXPECT_LT(compressed(bytes, 2101, 3).size(), bytes.size() + bytes.size() / 200);
}

TEST(Deflate, WhiteRowsTakeNextToNothing) {
  Bytes bytes(std::size_t{700} * 2101, 0xFF);
  for (std::size_t i = 0; i < bytes.size(); i += 2101) bytes[i] = 0;
  expect_same(bytes, 2101, 3);
  EXPECT_LT(compressed(bytes, 2101, 3).size(), 4000U);
}

TEST(Deflate, LinesOnWhiteTakeNoMoreThanZlibsFastest) {
  std::mt19937 random(4);
  constexpr std::size_t kRow = 1 + 3 * 500;
  Bytes bytes(400 * kRow, 0xFF);
  for (std::size_t y = 0; y < 400; ++y) {
    bytes[y * kRow] = 0;
    for (std::size_t n = 1; n < 8; ++n) {
      for (std::size_t i = 0; i < 6; ++i) {
        const std::size_t x = 60 * n + (n % 2 == 0 ? y / n : 0) + i / 3;
        bytes[y * kRow + 1 + 3 * x + i % 3] = static_cast<unsigned char>(n % 2 == 0 ? random() % 64 : 0);
      }
    }
  }
  expect_same(bytes, kRow, 3);
  Bytes other(compressBound(static_cast<uLong>(bytes.size())));
  uLongf size = static_cast<uLongf>(other.size());
  compress2(other.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), 1);
  EXPECT_LE(compressed(bytes, kRow, 3).size(), size);
}

// Codes worked out a second time, the plain way: bits that all symbols take together.
std::uint64_t least_bits(const std::vector<std::uint32_t>& counts) {
  std::priority_queue<std::uint64_t, std::vector<std::uint64_t>, std::greater<>> weights;
  for (const std::uint32_t count : counts) {
    if (count > 0) weights.push(count);
  }
  std::uint64_t bits = 0;
  while (weights.size() > 1) {
    std::uint64_t both = weights.top();
    weights.pop();
    both += weights.top();
    weights.pop();
    bits += both;
    weights.push(both);
  }
  return bits;
}

struct Made {
  std::vector<tavdcairo::PrefixCode> codes;
  std::uint64_t bits = 0;   // of all symbols together
  std::uint64_t taken = 0;  // of 2^15 places
  int longest = 0;
};

Made make(const std::vector<std::uint32_t>& counts, int most_bits) {
  Made made;
  made.codes.resize(counts.size());
  tavdcairo::make_prefix_codes(counts, most_bits, made.codes);
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const int length = made.codes[i].length;
    made.bits += static_cast<std::uint64_t>(counts[i]) * static_cast<std::uint64_t>(length);
    made.taken += length > 0 ? std::uint64_t{1} << (15 - length) : 0;
    made.longest = std::max(made.longest, length);
    if (counts[i] > 0) {
      EXPECT_GT(length, 0);
    }
  }
  return made;
}

constexpr std::uint64_t kComplete = 1 << 15;

TEST(PrefixCodes, TakeNoMoreBitsThanHuffmansTree) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    std::vector<std::uint32_t> counts(2 + random() % 285);
    for (std::uint32_t& count : counts)
      count = static_cast<std::uint32_t>(random() % 3 == 0 ? 0 : random() % 900);
    counts[0] = counts[1] = 1;
    const Made made = make(counts, 15);
    EXPECT_EQ(made.taken, kComplete);
    if (made.longest < 15) {
      EXPECT_EQ(made.bits, least_bits(counts));
    }
  }
}

TEST(PrefixCodes, NoCodeBeginsAnother) {
  const Made made = make({5, 0, 1, 1, 90, 12, 33, 2, 0, 7}, 15);
  for (const tavdcairo::PrefixCode& a : made.codes) {
    for (const tavdcairo::PrefixCode& b : made.codes) {
      if (&a == &b || a.length == 0 || a.length > b.length) continue;
      EXPECT_NE(a.bits, b.bits & ((1 << a.length) - 1));  // the first bit is the lowest
    }
  }
}

TEST(PrefixCodes, StayWithinTheirLimitAndComplete) {
  std::vector<std::uint32_t> fibonacci = {1, 1};
  while (fibonacci.size() < 40) fibonacci.push_back(fibonacci.end()[-1] + fibonacci.end()[-2]);
  EXPECT_EQ(make(fibonacci, 15).longest, 15);
  EXPECT_EQ(make(fibonacci, 15).taken, kComplete);
  fibonacci.resize(19);
  EXPECT_EQ(make(fibonacci, 7).longest, 7);
  EXPECT_EQ(make(fibonacci, 7).taken, kComplete);
}

TEST(PrefixCodes, OneSymbolOrNoneStillMakeACompleteCode) {
  for (const std::vector<std::uint32_t>& counts :
       {std::vector<std::uint32_t>{0, 0, 0}, {9, 0, 0}, {0, 9, 0}, {0, 0, 9}}) {
    const Made made = make(counts, 15);
    EXPECT_EQ(made.taken, kComplete);
    EXPECT_EQ(made.longest, 1);
  }
}

}  // namespace
