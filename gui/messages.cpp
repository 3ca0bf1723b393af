#include "gui/messages.h"

#include <algorithm>

#include "gui/guard.h"
#include "gui/window.h"

namespace {

tgui_message_callback message_callback = nullptr;
void* message_context = nullptr;

constexpr std::int32_t kIdAbort = 3;
constexpr std::int32_t kIdRetry = 4;
constexpr std::int32_t kIdIgnore = 5;
constexpr std::int32_t kIdYes = 6;
constexpr std::int32_t kIdNo = 7;
constexpr std::int32_t kIdTryAgain = 10;
constexpr std::int32_t kIdContinue = 11;

// Sets of buttons by the low four bits of the flags.
constexpr std::uint32_t kButtonBits = 0xF;
constexpr struct {
  std::int32_t count;
  std::int32_t ids[3];
} kButtonSets[] = {
    {1, {tgui::kIdOk}},
    {2, {tgui::kIdOk, tgui::kIdCancel}},
    {3, {kIdAbort, kIdRetry, kIdIgnore}},
    {3, {kIdYes, kIdNo, tgui::kIdCancel}},
    {2, {kIdYes, kIdNo}},
    {2, {kIdRetry, tgui::kIdCancel}},
    {3, {tgui::kIdCancel, kIdTryAgain, kIdContinue}},
};

// The number of the default button, counted from 0, in the flags.
constexpr std::uint32_t kDefaultBits = 0xF00;
constexpr int kDefaultShift = 8;

}  // namespace

void tgui_set_message_callback(tgui_message_callback callback, void* context) {
  message_callback = callback;
  message_context = context;
}

int32_t tgui_message_box(tgui_window* owner, const char* text, const char* caption, uint32_t flags) {
  const std::uint32_t set = flags & kButtonBits;
  if (set >= std::size(kButtonSets)) {
    return 0;
  }
  tgui_message message{};
  message.owner = tgui::alive(owner) ? owner : nullptr;
  message.text = text;
  message.caption = caption;
  message.flags = flags;
  message.button_count = kButtonSets[set].count;
  std::ranges::copy(kButtonSets[set].ids, message.buttons);
  const std::uint32_t number = (flags & kDefaultBits) >> kDefaultShift;
  const auto count = static_cast<std::uint32_t>(message.button_count);
  return tgui::ask(message, {message.buttons, count}, message.buttons[number < count ? number : 0]);
}

namespace tgui {

std::int32_t ask(const tgui_message& message, std::span<const std::int32_t> answers, std::int32_t otherwise) {
  if (message_callback == nullptr) {
    return otherwise;
  }
  const std::int32_t answer = guarded(otherwise, [&] { return message_callback(&message, message_context); });
  return std::ranges::find(answers, answer) == answers.end() ? otherwise : answer;
}

}  // namespace tgui
