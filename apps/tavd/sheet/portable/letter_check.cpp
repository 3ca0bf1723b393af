#include "sheet/portable/letter_check.h"

#include <pango/pango.h>

#include <algorithm>
#include <iostream>

#include "base/text.h"
#include "sheet/portable/text_shaper.h"

namespace tavdhost {
namespace {

constexpr std::size_t kMostKnown = 4096;
constexpr double kAnySize = 3;  // mm: fonts have a letter or not, at any size

bool is_ascii(const std::string& text) {
  return std::ranges::all_of(text, [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

bool has_unknown(const PangoGlyphItem& run) {
  for (int i = 0; i < run.glyphs->num_glyphs; ++i) {
    if ((run.glyphs->glyphs[i].glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0) return true;
  }
  return false;
}

bool is_complete(const std::string& text, const std::string& language) {
  const PangoLayoutLine* const line = shaped_line(text, {kAnySize}, language);
  for (const GSList* run = line->runs; run != nullptr; run = run->next) {
    if (has_unknown(*static_cast<const PangoGlyphItem*>(run->data))) return false;
  }
  return true;
}

}  // namespace

void LetterCheck::add(const Painter& painter) {
  for (const PlacedText& placed : painter.texts()) add(placed.text);
}

void LetterCheck::add(const std::string& text) {
  if (is_ascii(text)) return;
  if (known_.size() >= kMostKnown) known_.clear();
  if (!known_.insert(text).second || is_complete(text, language_)) return;
  if (texts_ == 0) first_ = text;
  ++texts_;
}

void LetterCheck::tell() const {
  if (texts_ == 0) return;
  std::cerr << "tavd: no installed font has all letters of " << in_quotes(first_);
  if (texts_ > 1) std::cerr << " and of " << texts_ - 1 << (texts_ == 2 ? " other text" : " other texts");
  std::cerr << ", boxes stand in their places; fonts-dejavu-core has Arabic, fonts-droid-fallback Chinese\n";
}

}  // namespace tavdhost
