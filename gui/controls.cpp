// Dialogs made by hosts, and what list and combo boxes in them do.
#include <algorithm>
#include <cstring>

#include "gui/text.h"
#include "gui/window.h"

using tgui::alive;
using tgui::guarded;
using tgui::Kind;
using tgui::Rows;

namespace {

// Answers of list and combo boxes that a host may get instead of a row or a length.
constexpr std::intptr_t kError = -1;
constexpr std::intptr_t kNoSpace = -2;

// Until the host moves it.
constexpr std::int32_t kDialogWidth = 320;
constexpr std::int32_t kDialogHeight = 240;

struct Request {
  Rows& rows;
  std::uintptr_t wparam;
  std::intptr_t lparam;
  bool wide;
};

using Action = std::intptr_t (*)(const Request&);

std::intptr_t add_text(const Request& request);
std::intptr_t reset(const Request& request);
std::intptr_t select_row(const Request& request);
std::intptr_t selected_row(const Request& request);
std::intptr_t copy_text(const Request& request);
std::intptr_t text_length(const Request& request);
std::intptr_t row_count(const Request& request);

constexpr struct {
  Kind kind;
  unsigned message;
  Action action;
} kActions[] = {
    {Kind::kListBox, TGUI_LB_ADDSTRING, add_text},     {Kind::kComboBox, TGUI_CB_ADDSTRING, add_text},
    {Kind::kListBox, TGUI_LB_RESETCONTENT, reset},     {Kind::kComboBox, TGUI_CB_RESETCONTENT, reset},
    {Kind::kListBox, TGUI_LB_SETCURSEL, select_row},   {Kind::kComboBox, TGUI_CB_SETCURSEL, select_row},
    {Kind::kListBox, TGUI_LB_GETCURSEL, selected_row}, {Kind::kComboBox, TGUI_CB_GETCURSEL, selected_row},
    {Kind::kListBox, TGUI_LB_GETTEXT, copy_text},      {Kind::kComboBox, TGUI_CB_GETLBTEXT, copy_text},
    {Kind::kListBox, TGUI_LB_GETTEXTLEN, text_length}, {Kind::kComboBox, TGUI_CB_GETLBTEXTLEN, text_length},
    {Kind::kListBox, TGUI_LB_GETCOUNT, row_count},     {Kind::kComboBox, TGUI_CB_GETCOUNT, row_count},
};

tgui_window* create_control(tgui_window* dialog, std::int32_t id, Kind kind);
std::intptr_t send_item(tgui_window* dialog, std::int32_t id, unsigned message, std::uintptr_t wparam,
                        std::intptr_t lparam, bool wide);

}  // namespace

tgui_window* tgui_create_dialog(const char* title) {
  return guarded<tgui_window*>(nullptr, [&] {
    tgui::WindowPlan plan;
    plan.kind = Kind::kDialog;
    plan.title = tgui::title_text(title);
    plan.width = kDialogWidth;
    plan.height = kDialogHeight;
    return tgui::make_window(std::move(plan));
  });
}

tgui_window* tgui_create_list_box(tgui_window* dialog, int32_t id) {
  return create_control(dialog, id, Kind::kListBox);
}

tgui_window* tgui_create_combo_box(tgui_window* dialog, int32_t id) {
  return create_control(dialog, id, Kind::kComboBox);
}

tgui_window* tgui_dialog_item(const tgui_window* dialog, int32_t id) {
  if (!alive(dialog)) {
    return nullptr;
  }
  const auto& children = dialog->children;
  const auto found =
      std::ranges::find_if(children, [id](const tgui_window* child) { return child->plan.id == id; });
  return found == children.end() ? nullptr : *found;
}

intptr_t tgui_send_item_message(tgui_window* dialog, int32_t id, unsigned int message, uintptr_t wparam,
                                intptr_t lparam) {
  return send_item(dialog, id, message, wparam, lparam, false);
}

intptr_t tgui_send_item_messagew(tgui_window* dialog, int32_t id, unsigned int message, uintptr_t wparam,
                                 intptr_t lparam) {
  return send_item(dialog, id, message, wparam, lparam, true);
}

namespace tgui {

std::intptr_t control_message(tgui_window* control, unsigned message, std::uintptr_t wparam,
                              std::intptr_t lparam, bool wide) {
  for (const auto& each : kActions) {
    if (each.kind == control->plan.kind && each.message == message) {
      return each.action({control->rows, wparam, lparam, wide});
    }
  }
  return tgui_default_procedure(control, message, wparam, lparam);
}

}  // namespace tgui

namespace {

tgui_window* create_control(tgui_window* dialog, std::int32_t id, Kind kind) {
  if (!alive(dialog)) {
    return nullptr;
  }
  return guarded<tgui_window*>(nullptr, [&] {
    tgui::WindowPlan plan;
    plan.kind = kind;
    plan.style = tgui::kChild | tgui::kTabStop;
    plan.parent = dialog;
    plan.id = id;
    return tgui::make_window(std::move(plan));
  });
}

std::intptr_t send_item(tgui_window* dialog, std::int32_t id, unsigned message, std::uintptr_t wparam,
                        std::intptr_t lparam, bool wide) {
  return guarded<std::intptr_t>(
      0, [&] { return tgui::dispatch(tgui_dialog_item(dialog, id), message, wparam, lparam, wide); });
}

// The row that a host names; null if there is none. Negative numbers arrive as large ones.
const std::u16string* row_text(const Request& request) {
  const auto& texts = request.rows.texts;
  return request.wparam < texts.size() ? &texts[request.wparam] : nullptr;
}

std::intptr_t add_text(const Request& request) {
  if (request.lparam == 0) {
    return kError;
  }
  return guarded(kNoSpace, [&] {
    auto& texts = request.rows.texts;
    if (request.wide) {
      texts.emplace_back(reinterpret_cast<const tavd_wchar*>(request.lparam));
    } else {
      texts.push_back(tgui::to_wide(reinterpret_cast<const char*>(request.lparam)));
    }
    return static_cast<std::intptr_t>(texts.size()) - 1;
  });
}

std::intptr_t reset(const Request& request) {
  request.rows = {};
  return 0;
}

std::intptr_t select_row(const Request& request) {
  const bool exists = row_text(request) != nullptr;
  request.rows.selected = exists ? static_cast<std::int32_t>(request.wparam) : -1;
  return request.rows.selected;
}

std::intptr_t selected_row(const Request& request) {
  return request.rows.selected;
}

// The text with its terminator goes to the host's buffer, whose size nobody gives.
template <class Text>
std::intptr_t copy_out(const Text& text, std::intptr_t buffer) {
  std::memcpy(reinterpret_cast<void*>(buffer), text.c_str(),
              (text.size() + 1) * sizeof(typename Text::value_type));
  return static_cast<std::intptr_t>(text.size());
}

std::intptr_t copy_text(const Request& request) {
  const std::u16string* const text = row_text(request);
  if (text == nullptr || request.lparam == 0) {
    return kError;
  }
  return guarded(kError, [&] {
    return request.wide ? copy_out(*text, request.lparam) : copy_out(tgui::to_narrow(*text), request.lparam);
  });
}

std::intptr_t text_length(const Request& request) {
  // Each unit of UTF-16 becomes one byte of narrow text, so that both lengths are the same.
  const std::u16string* const text = row_text(request);
  return text == nullptr ? kError : static_cast<std::intptr_t>(text->size());
}

std::intptr_t row_count(const Request& request) {
  return static_cast<std::intptr_t>(request.rows.texts.size());
}

}  // namespace
