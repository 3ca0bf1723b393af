// Pixels as a PNG file, lossless and fast: the diagrams are lines and letters on white.
#pragma once

#include <cstdint>
#include <string>

namespace tavdcairo {

// Rows of 0x00RRGGBB pixels from the top, `stride` bytes apart; the upper byte is ignored.
struct PixelRows {
  const unsigned char* data;
  int stride;
  int width, height;

  const std::uint32_t* row(int y) const {
    return reinterpret_cast<const std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
  }
};

// Appends the file to `bytes`. Pictures of up to 256 colours are written with a palette, the others with
// three bytes a pixel. False if memory ran out; `bytes` may then hold a part.
bool write_png(const PixelRows& pixels, std::string& bytes);

}  // namespace tavdcairo
