#include "gui/cairo/png.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

namespace tavdcairo {

namespace {

constexpr std::uint32_t kColourBits = 0xFFFFFF;
constexpr std::size_t kMostColours = 256;  // of a palette with a byte a pixel

// Colour types of the header, and the only filter that is used: each byte less the one above it. Most of a
// diagram is as it is one row above, white or an upright line, and so becomes zero.
constexpr unsigned char kTrueColour = 2;
constexpr unsigned char kPaletteColour = 3;
constexpr unsigned char kUpFilter = 2;

// The picture as the file has it before compression: each row begins with its filter.
struct Image {
  // Not set to zero first, which would touch memory that a picture of too many colours never fills.
  Image(const PixelRows& pixels, std::size_t bytes_of_pixel)
      : size((1 + bytes_of_pixel * static_cast<std::size_t>(pixels.width)) *
             static_cast<std::size_t>(pixels.height)),
        rows(std::make_unique_for_overwrite<unsigned char[]>(size)) {}

  std::size_t size;  // bytes: fewer than 2^32, as cairo has no picture wider or higher than 32767 pixels
  std::unique_ptr<unsigned char[]> rows;
  std::string palette;  // three bytes a colour; empty for true colour
};

std::optional<Image> with_palette(const PixelRows& pixels);
Image with_true_colour(const PixelRows& pixels);
bool append_compressed(std::string& bytes, const Image& image);

void append_number(std::string& bytes, std::size_t value) {
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift & 0xFF);
}

void append_colour(std::string& bytes, std::uint32_t colour) {
  for (const int shift : {16, 8, 0}) bytes += static_cast<char>(colour >> shift & 0xFF);
}

// A chunk whose content follows its beginning: length and check sum are known at its end.
class Chunk {
 public:
  Chunk(std::string& bytes, std::string_view type) : bytes_(bytes), start_(bytes.size()) {
    append_number(bytes_, 0);
    bytes_ += type;
  }
  void end() {
    std::string length;
    append_number(length, bytes_.size() - start_ - 8);
    bytes_.replace(start_, 4, length);
    const auto* const summed = reinterpret_cast<const unsigned char*>(bytes_.data()) + start_ + 4;
    append_number(bytes_, crc32_gzip_refl(0, summed, bytes_.size() - start_ - 4));
  }

 private:
  std::string& bytes_;
  std::size_t start_;
};

}  // namespace

bool write_png(const PixelRows& pixels, std::string& bytes) try {
  std::optional<Image> image = with_palette(pixels);
  if (!image) image = with_true_colour(pixels);

  bytes += "\x89PNG\r\n\x1A\n";
  Chunk header(bytes, "IHDR");
  append_number(bytes, static_cast<std::size_t>(pixels.width));
  append_number(bytes, static_cast<std::size_t>(pixels.height));
  constexpr char kBits = 8;  // of a colour, or of a place in the palette
  const char colour_type = image->palette.empty() ? kTrueColour : kPaletteColour;
  for (const char value : {kBits, colour_type, '\0', '\0', '\0'}) bytes += value;  // deflate, no interlacing
  header.end();
  if (!image->palette.empty()) {
    Chunk palette(bytes, "PLTE");
    bytes += image->palette;
    palette.end();
  }
  Chunk data(bytes, "IDAT");
  if (!append_compressed(bytes, *image)) return false;
  data.end();
  Chunk(bytes, "IEND").end();
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

namespace {

// The places of colours in a palette, found by hashing.
class Palette {
 public:
  Palette() { colours_.fill(kNoColour); }

  // Tells the place of a colour, which is added if it is new. False if the palette is full.
  bool find(std::uint32_t colour, unsigned char& place) {
    std::size_t slot = colour * kSpread >> 22;
    while (colours_[slot] != colour) {
      if (colours_[slot] != kNoColour) {
        slot = (slot + 1) % kSlots;
      } else if (!add(colour, slot)) {
        return false;
      }
    }
    place = places_[slot];
    return true;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  static constexpr std::size_t kSlots = 1024;               // as many as 10 bits tell apart
  static constexpr std::uint32_t kSpread = 2654435761;      // 2^32 over the golden ratio
  static constexpr std::uint32_t kNoColour = ~kColourBits;  // of a free slot

  bool add(std::uint32_t colour, std::size_t slot) {
    if (count_ == kMostColours) return false;
    colours_[slot] = colour;
    places_[slot] = static_cast<unsigned char>(count_++);
    append_colour(bytes_, colour);
    return true;
  }

  std::array<std::uint32_t, kSlots> colours_;
  std::array<unsigned char, kSlots> places_ = {};
  std::size_t count_ = 0;
  std::string bytes_;
};

// Pixels that are compared at once with those above them.
constexpr std::size_t kBlock = 16;

bool same_block(const std::uint32_t* a, const std::uint32_t* b) {
  using Four [[gnu::vector_size(16)]] = std::uint64_t;  // pixels
  Four difference = {};
  for (std::size_t i = 0; i < kBlock; i += 4) {
    Four left;
    Four right;
    std::memcpy(&left, a + i, sizeof left);
    std::memcpy(&right, b + i, sizeof right);
    difference |= left ^ right;
  }
  return (difference[0] | difference[1]) == 0;
}

// The rows of pixels that `tell` gives kBytes bytes each, filtered; nothing if it cannot.
template <std::size_t kBytes, typename Tell>
std::optional<Image> filtered(const PixelRows& pixels, Tell tell) {
  Image image(pixels, kBytes);
  const auto width = static_cast<std::size_t>(pixels.width);
  std::vector<unsigned char> bytes_above(kBytes * width);  // not filtered
  unsigned char* const above = bytes_above.data();
  unsigned char* out = image.rows.get();
  for (int y = 0; y < pixels.height; ++y) {
    *out++ = kUpFilter;
    const std::uint32_t* const row = pixels.row(y);
    const std::uint32_t* const row_above = y == 0 ? nullptr : pixels.row(y - 1);
    for (std::size_t x = 0; x < width;) {
      const std::size_t end = std::min(x + kBlock, width);
      if (row_above != nullptr && end == x + kBlock && same_block(row + x, row_above + x)) {
        std::memset(out + kBytes * x, 0, kBytes * kBlock);
        x = end;
      }
      for (; x < end; ++x) {
        unsigned char bytes[kBytes];
        if (!tell(row[x] & kColourBits, bytes)) return std::nullopt;
        for (std::size_t i = 0; i < kBytes; ++i) {
          out[kBytes * x + i] = static_cast<unsigned char>(bytes[i] - above[kBytes * x + i]);
          above[kBytes * x + i] = bytes[i];
        }
      }
    }
    out += kBytes * width;
  }
  return image;
}

// Nothing if there are too many colours.
std::optional<Image> with_palette(const PixelRows& pixels) {
  Palette palette;
  std::optional<Image> image = filtered<1>(pixels, [&palette](std::uint32_t colour, unsigned char* place) {
    return palette.find(colour, *place);
  });
  if (image) image->palette = palette.bytes();
  return image;
}

Image with_true_colour(const PixelRows& pixels) {
  return *filtered<3>(pixels, [](std::uint32_t colour, unsigned char* red_green_blue) {
    for (const int shift : {16, 8, 0}) *red_green_blue++ = static_cast<unsigned char>(colour >> shift);
    return true;
  });
}

// A block that is not the last and is not compressed: its bytes, fewer than 256, after their number and what
// that leaves of 65535.
void append_stored(std::string& bytes, const unsigned char* data, std::size_t size) {
  const auto length = static_cast<char>(size);
  bytes += {'\0', length, '\0', static_cast<char>(~length), '\xFF'};
  bytes.append(reinterpret_cast<const char*>(data), size);
}

// The image as a zlib stream, of a level that finds repetitions of rows and pixels: of the time that a
// picture takes, more would be the longest part. The first bytes are stored as they are and told to the
// compressor as what came before. Without that the vectorised code of ISA-L 2.30 takes the hash of the third
// byte from bits of the address of `stream`, so that about one place in a thousand gives other bytes for the
// same pixels. False if the bytes do not fit, which those of blocks that are not compressed would do.
bool append_compressed(std::string& bytes, const Image& image) {
  constexpr std::size_t kBlock = 65535;  // bytes of a block that is not compressed, with a head of 5
  constexpr std::size_t kFirst = 8;      // bytes: at least the four that make a hash, and those behind it
  constexpr std::size_t kEnds = 64;      // more than the heads of file and first block, and the check sum
  constexpr std::uint32_t kWork = ISAL_DEF_LVL1_SMALL;  // bytes: stays in caches, and a diagram fills no more
  unsigned char* const rows = image.rows.get();
  const std::size_t first = std::min(image.size, kFirst);
  bytes += {'\x78', '\x01'};  // deflate, 32 kB of history, fastest level
  append_stored(bytes, rows, first);

  const auto work = std::make_unique_for_overwrite<unsigned char[]>(kWork);
  isal_zstream stream = {};  // what stands in its tables would decide between equal matches
  isal_deflate_init(&stream);
  stream.level = 1;
  stream.level_buf = work.get();
  stream.level_buf_size = kWork;
  stream.end_of_stream = 1;
  if (isal_deflate_set_dict(&stream, rows, static_cast<std::uint32_t>(first)) != COMP_OK) return false;
  stream.next_in = rows + first;
  stream.avail_in = static_cast<std::uint32_t>(image.size - first);
  const std::size_t most = image.size + 5 * (image.size / kBlock + 1) + kEnds;
  const auto out = std::make_unique_for_overwrite<unsigned char[]>(most);
  stream.next_out = out.get();
  stream.avail_out = static_cast<std::uint32_t>(most);
  if (isal_deflate(&stream) != COMP_OK || stream.internal_state.state != ZSTATE_END) return false;
  bytes.append(reinterpret_cast<const char*>(out.get()), stream.total_out);
  append_number(bytes, isal_adler32(1, rows, image.size));
  return true;
}

}  // namespace

}  // namespace tavdcairo
