// What marks and lines of equal sound level share.
#pragma once

#include "base/gwgdi.h"
#include "diagram/soundlevels.h"

namespace tavd {

// Red text for the time of a block.
class RedText {
 public:
  explicit RedText(tavd_hdc hdc) : hdc_(hdc), former_(gwtextcolour(hdc, kRed)) {
    gwtextalign(hdc, kAlignLeftTop);
  }
  ~RedText() { gwtextcolour(hdc_, former_); }
  RedText(const RedText&) = delete;
  RedText& operator=(const RedText&) = delete;

 private:
  tavd_hdc hdc_;
  std::uint32_t former_;
};

// Writes levels; the first one has the host's label behind it.
class LevelTexts {
 public:
  explicit LevelTexts(const char* label) : label_(label) {}
  void draw(tavd_hdc hdc, int x, int y, float L);

 private:
  const char* label_;
  bool first_ = true;
};

}  // namespace tavd
