#include "drawing/win32/records.h"

namespace tavdhost {
namespace {

// A text without the widths of its letters. mingw has no structure for it.
struct SmallText {
  EMR emr;
  LONG x, y;
  DWORD count, options, mode;
  FLOAT x_scale, y_scale;
};
constexpr DWORD kSmallText = 108;      // EMR_SMALLTEXTOUT
constexpr DWORD kNoRectangle = 0x100;  // ETO_NO_RECT: none stands in front of the letters
constexpr DWORD kNarrow = 0x200;       // ETO_SMALL_CHARS: a byte for each letter

TextRecord small_text(const ENHMETARECORD* record) {
  const auto& given = as<SmallText>(record);
  const auto* letters = reinterpret_cast<const char*>(record) + sizeof given +
                        ((given.options & kNoRectangle) != 0 ? 0 : sizeof(RECTL));
  return {{given.x, given.y}, (given.options & kNarrow) != 0, letters, static_cast<int>(given.count)};
}

}  // namespace

std::optional<TextRecord> text_of(const ENHMETARECORD* record) {
  if (record->iType == kSmallText) return small_text(record);
  if (record->iType != EMR_EXTTEXTOUTW && record->iType != EMR_EXTTEXTOUTA) return {};
  const EMRTEXT& given = as<EMREXTTEXTOUTW>(record).emrtext;
  return TextRecord{given.ptlReference, record->iType == EMR_EXTTEXTOUTA,
                    reinterpret_cast<const char*>(record) + given.offString, static_cast<int>(given.nChars)};
}

}  // namespace tavdhost
