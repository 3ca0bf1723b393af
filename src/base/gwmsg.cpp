#include "base/gwmsg.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>

#include "base/gwdlgtemplate.h"
#include "base/gwgdi.h"
#include "base/gwplace.h"
#include "base/gwsys.h"
#include "base/gwtext.h"
#include "base/gwwindow.h"

namespace tavd {
namespace {

// Message box flags.
constexpr std::uint32_t kIconInformation = 0x40;
constexpr std::uint32_t kQuestionOkCancel = 0x21;
constexpr std::uint32_t kQuestionYesNo = 0x24;
constexpr std::uint32_t kQuestionYesNoCancel = 0x23;
constexpr std::uint32_t kTaskModal = 0x2000;

constexpr int kOk = 1;
constexpr int kCancel = 2;
constexpr int kYes = 6;
constexpr int kNo = 7;
constexpr int kStaticText = 100;

constexpr int kMessageSize = 512;  // bytes that gwmsgf prints into
constexpr int kLabelSize = 32;

bool own_dialog = false;
const char* caption = nullptr;
char label_ok[kLabelSize] = "&Ok";
char label_cancel[kLabelSize] = "&Cancel";
char label_yes[kLabelSize] = "&Yes";
char label_no[kLabelSize] = "&No";

// The buttons of the dialog on show, for its procedure.
struct Buttons {
  std::array<std::int32_t, 3> ids;
  std::int32_t count;
  [[nodiscard]] std::span<const std::int32_t> all() const {
    return {ids.data(), static_cast<std::size_t>(count)};
  }
};
Buttons buttons{};

Buttons choose_buttons(std::uint32_t flags) {
  if ((flags & 3) == 3) return {{kYes, kNo, kCancel}, 3};
  if ((flags & 4) != 0) return {{kYes, kNo}, 2};
  if ((flags & 1) != 0) return {{kOk, kCancel}, 2};
  return {{kOk}, 1};
}

const char* label(std::int32_t id) {
  switch (id) {
    case kOk:
      return label_ok;
    case kCancel:
      return label_cancel;
    case kYes:
      return label_yes;
    default:
      return label_no;
  }
}

// Dialog units.
constexpr int kDialogX = 10;
constexpr int kDialogY = 15;
constexpr int kDialogHeight = 62;
constexpr int kLeastWidth = 120;
constexpr int kButtonStep = 44;

int dialog_width(const char* text, int button_count) {
  constexpr int kLongLine = 32;
  constexpr int kGreatestTextWidth = 200;
  const int width = std::max(kButtonStep * button_count + 4, kLeastWidth);
  const std::int32_t line = gwmaxlinelen(text);
  if (line <= kLongLine) return width;
  const int text_width = 3 * (std::min(line, kGreatestTextWidth) + 8);
  return std::max(width, std::min(text_width, kGreatestTextWidth));
}

void build(DialogTemplate& dialog, const char* text, const Buttons& shown) {
  const int width = dialog_width(text, shown.count);
  // Half the width of one, two and three buttons with the gaps between them.
  constexpr std::array<int, 4> kHalfRow{0, 20, 42, 64};
  int x = width / 2 - kHalfRow[static_cast<std::size_t>(shown.count)];

  dialog.header(shown.count + 1, {kDialogX, kDialogY, width, kDialogHeight}, caption);
  dialog.static_text(kStaticText, {6, 8, width - 12, 32}, text);
  for (const std::int32_t id : shown.all()) {
    dialog.button(id, {x, 44, 40, 12}, label(id));
    x += kButtonStep;
  }
}

std::intptr_t dialog_procedure(tavd_hwnd dialog, unsigned message, std::uintptr_t wparam,
                               std::intptr_t /*lparam*/) {
  if (message == kWmInitDialog) {
    gwwnd_center(dialog);
    const auto font = reinterpret_cast<std::uintptr_t>(gwstockobject(kAnsiVarFont));
    gwsenditem(dialog, kStaticText, kWmSetFont, font, 0);
    for (const std::int32_t id : buttons.all()) gwsenditem(dialog, id, kWmSetFont, font, 0);
    return 1;
  }
  if (message == kWmCommand) {
    const auto id = static_cast<int>(wparam & 0xFFFF);
    if (id == kOk || id == kCancel || id == kYes || id == kNo) gwenddialog(dialog, id);
    return 1;
  }
  return 0;
}

void set_label(char* to, const char* text) {
  if (text != nullptr) gwstrtrimcpy(to, text, kLabelSize - 1);
}

}  // namespace

int gwmsg(tavd_hwnd owner, const char* text) {
  return gwmsgbox(owner, text, kIconInformation);
}

int gwmsg_okcancel(tavd_hwnd owner, const char* text) {
  return gwmsgbox(owner, text, kQuestionOkCancel);
}

int gwmsg_yesno(tavd_hwnd owner, const char* text) {
  return gwmsgbox(owner, text, kQuestionYesNo);
}

int gwmsg_yesnocancel(tavd_hwnd owner, const char* text) {
  return gwmsgbox(owner, text, kQuestionYesNoCancel);
}

int gwmsgf(tavd_hwnd owner, const char* format, ...) {
  char text[kMessageSize] = "";
  if (format != nullptr) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
  }
  return gwmsg(owner, text);
}

int gwmsgbox(tavd_hwnd owner, const char* text, std::uint32_t flags) {
  if (own_dialog) return gwmsgdialog(owner, text, flags);
  if (owner == nullptr) flags |= kTaskModal;
  tavd_hwnd focus = gwfocus();
  const int button = gwmessagebox(owner, text, caption, flags);
  if (focus != nullptr && gwfocus() != focus) gwsetfocus(focus);
  return button;
}

int gwmsgdialog(tavd_hwnd owner, const char* text, std::uint32_t flags) {
  using Free = decltype([](void* block) { std::free(block); });
  std::unique_ptr<void, Free> block(std::calloc(1, DialogTemplate::kSize));
  if (!block) return kCancel;
  buttons = choose_buttons(flags);
  DialogTemplate dialog(block.get());
  build(dialog, text, buttons);

  tavd_hwnd focus = gwfocus();
  const std::intptr_t result = gwrundialog(gwmodule(), block.get(), owner, dialog_procedure);
  block.reset();
  if (focus == nullptr) focus = owner;
  if (focus != nullptr) gwsetfocus(focus);
  return result > 0 ? static_cast<int>(result) : kCancel;
}

void gwset_own_dialog(std::int32_t on) {
  own_dialog = on == 1;
}

void gwset_dialog_labels(const char* ok, const char* cancel, const char* yes, const char* no) {
  set_label(label_ok, ok);
  set_label(label_cancel, cancel);
  set_label(label_yes, yes);
  set_label(label_no, no);
}

void gwset_message_caption(const char* text) {
  caption = text;
}

}  // namespace tavd
