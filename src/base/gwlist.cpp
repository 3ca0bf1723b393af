#include "base/gwlist.h"

#include <cstddef>
#include <memory>
#include <new>

#include "base/gwwindow.h"

namespace tavd {
namespace {

// Message numbers of one kind of control.
struct Messages {
  unsigned add, clear, selection, text, text_length;
};

constexpr Messages kListBox{0x0180, 0x0184, 0x0188, 0x0189, 0x018A};
constexpr Messages kComboBox{0x0143, 0x014B, 0x0147, 0x0148, 0x0149};
constexpr unsigned kListBoxSelect = 0x0186;

constexpr int kNoRow = -1;
constexpr int kHighestRow = 99'999'999;

std::intptr_t address(const void* p) {
  return reinterpret_cast<std::intptr_t>(p);
}

std::intptr_t send(char /*narrow*/, tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                   std::intptr_t lparam) {
  return gwsenditem(dialog, item, message, wparam, lparam);
}

std::intptr_t send(tavd_wchar /*wide*/, tavd_hwnd dialog, int item, unsigned message, std::uintptr_t wparam,
                   std::intptr_t lparam) {
  return gwsenditemw(dialog, item, message, wparam, lparam);
}

// A cut must not leave half a character; only the first half of a surrogate pair can be one.
void drop_half(char* /*text*/, int /*length*/) {}
void drop_half(tavd_wchar* text, int length) {
  if (length > 0 && text[length - 1] >= 0xD800 && text[length - 1] <= 0xDBFF) text[length - 1] = 0;
}

// The control writes a whole text and asks for no bound: a text that the buffer cannot hold goes through a
// block of its own.
template <typename Char>
void fetch(const Messages& messages, tavd_hwnd dialog, int item, int row, Char* buffer, int size) {
  const auto wparam = static_cast<std::uintptr_t>(row);
  const std::intptr_t length = send(Char{}, dialog, item, messages.text_length, wparam, 0);
  if (length <= 0) return;
  if (length < size) {
    send(Char{}, dialog, item, messages.text, wparam, address(buffer));
    return;
  }
  const std::unique_ptr<Char[]> whole(new (std::nothrow) Char[static_cast<std::size_t>(length) + 1]());
  if (!whole) return;
  send(Char{}, dialog, item, messages.text, wparam, address(whole.get()));
  for (int i = 0; i < size - 1; ++i) buffer[i] = whole[static_cast<std::size_t>(i)];
  buffer[size - 1] = 0;
  drop_half(buffer, size - 1);
}

template <typename Char>
int gettext(const Messages& messages, tavd_hwnd dialog, int item, int index, Char* buffer, int size) {
  const bool wanted = buffer != nullptr && size > 0;
  if (wanted) *buffer = 0;
  if (index < 0) {
    const std::intptr_t selected = send(Char{}, dialog, item, messages.selection, 0, 0);
    if (selected < 0 || selected > kHighestRow) return kNoRow;
    index = static_cast<int>(selected);
  }
  if (index > kHighestRow) return kNoRow;
  if (wanted) fetch(messages, dialog, item, index, buffer, size);
  return index;
}

}  // namespace

void gwlb_add(tavd_hwnd dialog, int item, const char* text) {
  gwsenditem(dialog, item, kListBox.add, 0, address(text));
}

void gwlb_addw(tavd_hwnd dialog, int item, const tavd_wchar* text) {
  gwsenditemw(dialog, item, kListBox.add, 0, address(text));
}

void gwlb_clear(tavd_hwnd dialog, int item) {
  gwsenditem(dialog, item, kListBox.clear, 0, 0);
}

void gwlb_select(tavd_hwnd dialog, int item, int row) {
  gwsenditem(dialog, item, kListBoxSelect, static_cast<std::uintptr_t>(row), 0);
}

void gwcb_add(tavd_hwnd dialog, int item, const char* text) {
  gwsenditem(dialog, item, kComboBox.add, 0, address(text));
}

void gwcb_addw(tavd_hwnd dialog, int item, const tavd_wchar* text) {
  gwsenditemw(dialog, item, kComboBox.add, 0, address(text));
}

void gwcb_clear(tavd_hwnd dialog, int item) {
  gwsenditem(dialog, item, kComboBox.clear, 0, 0);
}

int gwlb_gettext(tavd_hwnd dialog, int item, int index, char* buffer, int size) {
  return gettext(kListBox, dialog, item, index, buffer, size);
}

int gwlb_gettextw(tavd_hwnd dialog, int item, int index, tavd_wchar* buffer, int size) {
  return gettext(kListBox, dialog, item, index, buffer, size);
}

int gwcb_gettext(tavd_hwnd dialog, int item, int index, char* buffer, int size) {
  return gettext(kComboBox, dialog, item, index, buffer, size);
}

int gwcb_gettextw(tavd_hwnd dialog, int item, int index, tavd_wchar* buffer, int size) {
  return gettext(kComboBox, dialog, item, index, buffer, size);
}

}  // namespace tavd
