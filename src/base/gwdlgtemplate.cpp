#include "base/gwdlgtemplate.h"

#include <cstring>
#include <initializer_list>

#include "codepage/codepage.h"

namespace tavd {
namespace {

constexpr std::uint32_t kDialogStyle = 0x80C80080;  // WS_POPUP, WS_CAPTION, WS_SYSMENU, DS_MODALFRAME
constexpr std::uint32_t kStaticStyle = 0x50000000;  // WS_CHILD, WS_VISIBLE
constexpr std::uint32_t kButtonStyle = 0x50010000;  // WS_CHILD, WS_VISIBLE, WS_TABSTOP
constexpr std::uint16_t kAtomFollows = 0xFFFF;
constexpr std::uint16_t kButtonAtom = 0x80;
constexpr std::uint16_t kStaticAtom = 0x82;

constexpr std::size_t kTitleLimit = 2000;  // characters
constexpr std::size_t kNoLimit = DialogTemplate::kSize;

// Bytes of an item with an empty text: alignment, the record, class, terminator, creation data.
constexpr std::size_t kItemBytes = 3 + 18 + 4 + 2 + 2;
constexpr std::size_t kLabelBytes = std::size_t{31} * 2;
constexpr std::size_t kButtonsBytes = 3 * (kItemBytes + kLabelBytes);
constexpr std::size_t kTerminator = 2;

}  // namespace

void DialogTemplate::header(int item_count, const Place& place, const char* title) {
  dword(kDialogStyle);
  dword(0);
  word(static_cast<std::uint16_t>(item_count));
  this->place(place);
  word(0);  // menu
  word(0);  // class
  text(title, kTitleLimit, kItemBytes + kButtonsBytes);
}

void DialogTemplate::static_text(int id, const Place& place, const char* text) {
  item(kStaticStyle, place, id, kStaticAtom, text, kButtonsBytes);
}

void DialogTemplate::button(int id, const Place& place, const char* label) {
  item(kButtonStyle, place, id, kButtonAtom, label, 0);
}

void DialogTemplate::item(std::uint32_t style, const Place& place, int id, std::uint16_t class_atom,
                          const char* text, std::size_t reserved) {
  used_ = (used_ + 3) & ~std::size_t{3};
  dword(style);
  dword(0);
  this->place(place);
  word(static_cast<std::uint16_t>(id));
  word(kAtomFollows);
  word(class_atom);
  this->text(text, kNoLimit, reserved + sizeof(std::uint16_t));
  word(0);  // creation data
}

void DialogTemplate::word(std::uint16_t value) {
  if (kSize - used_ < sizeof value) return;
  std::memcpy(block_ + used_, &value, sizeof value);
  used_ += sizeof value;
}

void DialogTemplate::dword(std::uint32_t value) {
  word(static_cast<std::uint16_t>(value & 0xFFFF));
  word(static_cast<std::uint16_t>(value >> 16));
}

void DialogTemplate::place(const Place& place) {
  for (const int value : {place.x, place.y, place.width, place.height}) {
    word(static_cast<std::uint16_t>(static_cast<std::int16_t>(value)));
  }
}

void DialogTemplate::text(const char* text, std::size_t limit, std::size_t reserved) {
  const std::size_t taken = used_ + reserved + kTerminator;
  if (text != nullptr && taken < kSize) {
    // The block is zeroed and what is free of it starts on a 2-byte boundary.
    auto* wide = reinterpret_cast<tavd_wchar*>(block_ + used_);
    const std::size_t room = (kSize - taken) / sizeof(tavd_wchar);
    used_ += codepage::widen(codepage::kDefault, text, strnlen(text, limit), wide, room) * sizeof(tavd_wchar);
  }
  word(0);
}

}  // namespace tavd
