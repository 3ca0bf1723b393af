// Dialogs run from a template in memory.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "gui/ascii.h"
#include "gui/messages.h"
#include "gui/template.h"
#include "gui/text.h"
#include "gui/window.h"

using tgui::alive;
using tgui::DialogTemplate;
using tgui::guarded;
using tgui::Kind;
using tgui::TemplateItem;
using tgui::Weak;

namespace {

constexpr std::intptr_t kFailed = -1;

// A dialog whose procedure leaves this many answers alone will never end; no call blocks.
constexpr int kMostAnswers = 1000;

constexpr std::uint32_t kAbsolutePlace = 0x1;  // dialog style: placed on the screen, not over its owner

// Of a button's style, its kind.
constexpr std::uint32_t kButtonKind = 0xF;
constexpr std::uint32_t kDefaultButton = 1;

// What the user is asked, made from a template.
struct Question {
  std::string text, caption;
  tgui_message message{};
  std::vector<std::int32_t> answers;
  std::int32_t default_answer = tgui::kIdCancel;
};

tgui_window* make_dialog(const DialogTemplate& form, tgui_window* owner);
bool make_items(const DialogTemplate& form, tgui_window* dialog, tgui_module* module);
void make_question(const DialogTemplate& form, Question& question);
std::intptr_t run(const Weak<tgui_window>& dialog, tgui_procedure procedure, Question& question);

}  // namespace

intptr_t tgui_dialog_box(tgui_module* module, const void* dialog_template, tgui_window* owner,
                         tgui_procedure procedure) {
  if (procedure == nullptr) {
    return kFailed;
  }
  return guarded<std::intptr_t>(kFailed, [&] {
    const std::optional<DialogTemplate> form = tgui::read_template(dialog_template);
    if (!form) {
      return kFailed;
    }
    Question question;
    make_question(*form, question);
    question.message.owner = alive(owner) ? owner : nullptr;
    question.message.dialog_template = dialog_template;
    const Weak<tgui_window> former_focus(tgui_focus());
    const Weak<tgui_window> dialog(make_dialog(*form, question.message.owner));
    const std::intptr_t result =
        make_items(*form, dialog.get(), module) ? run(dialog, procedure, question) : kFailed;
    tgui_destroy_window(dialog.get());
    if (tgui_focus() == nullptr) {
      tgui_set_focus(former_focus.get());
    }
    return result;
  });
}

int32_t tgui_end_dialog(tgui_window* dialog, intptr_t result) {
  if (!alive(dialog) || !dialog->running) {
    return 0;
  }
  dialog->ended = true;
  dialog->result = result;
  return 1;
}

namespace {

// Dialog units to device units: a quarter of the base unit across, an eighth down.
std::int32_t across(std::int16_t units) {
  std::int32_t base = 0;
  tgui_dialog_base_units(&base, nullptr);
  return units * base / 4;
}

std::int32_t down(std::int16_t units) {
  std::int32_t base = 0;
  tgui_dialog_base_units(nullptr, &base);
  return units * base / 8;
}

template <class Placed>
void place(const Placed& placed, tgui::WindowPlan& plan) {
  plan.style = placed.style;
  plan.x = across(placed.x);
  plan.y = down(placed.y);
  plan.width = across(placed.width);
  plan.height = down(placed.height);
}

tgui_window* make_dialog(const DialogTemplate& form, tgui_window* owner) {
  tgui::WindowPlan plan;
  plan.kind = Kind::kDialog;
  plan.title = tgui::to_utf8(form.title);
  plan.parent = owner;
  place(form, plan);
  if (owner != nullptr && (form.style & (kAbsolutePlace | tgui::kChild)) == 0) {
    tgui_rect over{};
    tgui_window_rect(owner, &over);
    plan.x = tgui::add(plan.x, over.left);
    plan.y = tgui::add(plan.y, over.top);
  }
  return tgui::make_window(std::move(plan));
}

constexpr struct {
  const char16_t* name;
  Kind kind;
  std::uint16_t atom;
} kControls[] = {
    {u"BUTTON", Kind::kButton, tgui::kAtomButton},      {u"EDIT", Kind::kPlain, tgui::kAtomEdit},
    {u"STATIC", Kind::kStatic, tgui::kAtomStatic},      {u"LISTBOX", Kind::kListBox, tgui::kAtomListBox},
    {u"SCROLLBAR", Kind::kPlain, tgui::kAtomScrollBar}, {u"COMBOBOX", Kind::kComboBox, tgui::kAtomComboBox},
};

// What control of the platform's an item is; nothing if its class is a host's, or no class.
std::optional<Kind> control_kind(const TemplateItem& item) {
  for (const auto& each : kControls) {
    const std::u16string_view name = each.name;
    const bool named = std::ranges::equal(item.class_name, name, {}, tgui::ascii_upper<char16_t>);
    if (item.class_name.empty() ? item.atom == each.atom : named) {
      return each.kind;
    }
  }
  return std::nullopt;
}

bool make_item(const TemplateItem& item, tgui_window* dialog, tgui_module* module) {
  tgui::WindowPlan plan;
  place(item, plan);
  plan.style |= tgui::kChild;
  plan.title = tgui::to_utf8(item.text);
  plan.parent = dialog;
  plan.id = item.id;
  if (const std::optional<Kind> kind = control_kind(item)) {
    plan.kind = *kind;
    return tgui::make_window(std::move(plan)) != nullptr;
  }
  if (item.class_name.empty()) {
    return false;
  }
  plan.window_class = tgui::find_class(tgui::to_narrow(item.class_name), module, true);
  return plan.window_class != nullptr && tgui::make_window_of_class(std::move(plan)) != nullptr;
}

bool make_items(const DialogTemplate& form, tgui_window* dialog, tgui_module* module) {
  const Weak<tgui_window> parent(dialog);
  return parent.get() != nullptr && std::ranges::all_of(form.items, [&](const TemplateItem& item) {
           return parent.get() != nullptr && make_item(item, parent.get(), module);
         });
}

bool is_push_button(const TemplateItem& item) {
  return control_kind(item) == Kind::kButton && (item.style & kButtonKind) <= kDefaultButton;
}

// The message's text is the first static text, its buttons the push buttons in the order of the template. A
// dialog can always be answered with Cancel, as by closing it.
void make_question(const DialogTemplate& form, Question& question) {
  tgui_message& message = question.message;
  std::optional<std::int32_t> default_answer;
  const TemplateItem* shown = nullptr;
  for (const TemplateItem& item : form.items) {
    if (shown == nullptr && control_kind(item) == Kind::kStatic) {
      shown = &item;
    }
    if (!is_push_button(item)) {
      continue;
    }
    if (message.button_count < static_cast<std::int32_t>(std::size(message.buttons))) {
      message.buttons[message.button_count++] = item.id;
    }
    question.answers.push_back(item.id);
    if ((item.style & kButtonKind) == kDefaultButton && !default_answer) {
      default_answer = item.id;
    }
  }
  if (!question.answers.empty()) {
    question.default_answer = default_answer.value_or(question.answers.front());
  }
  question.answers.push_back(tgui::kIdCancel);
  question.caption = tgui::to_narrow(form.title);
  message.caption = question.caption.c_str();
  if (shown != nullptr) {
    question.text = tgui::to_narrow(shown->text);
    message.text = question.text.c_str();
  }
  message.template_size = form.size;
}

tgui_window* first_tab_stop(const tgui_window* dialog) {
  const auto found = std::ranges::find_if(
      dialog->children, [](const tgui_window* child) { return (child->plan.style & tgui::kTabStop) != 0; });
  return found == dialog->children.end() ? nullptr : *found;
}

// Whether the dialog waits for an answer.
bool waits(const Weak<tgui_window>& dialog) {
  return dialog.get() != nullptr && !dialog.get()->ended;
}

void begin(const Weak<tgui_window>& dialog) {
  const Weak<tgui_window> first(first_tab_stop(dialog.get()));
  const std::intptr_t takes_focus = tgui::dispatch(dialog.get(), TGUI_WM_INITDIALOG,
                                                   reinterpret_cast<std::uintptr_t>(first.get()), 0, false);
  if (takes_focus != 0 && waits(dialog) && first.get() != nullptr) {
    tgui_set_focus(first.get());
  }
}

std::intptr_t run(const Weak<tgui_window>& dialog, tgui_procedure procedure, Question& question) {
  const Weak<tgui_window> owner(question.message.owner);
  // Only a dialog that is complete gets to know its procedure.
  dialog.get()->plan.procedure = procedure;
  dialog.get()->running = true;
  begin(dialog);
  for (int answers = 0; waits(dialog) && answers < kMostAnswers; ++answers) {
    question.message.owner = owner.get();
    const std::int32_t answer = tgui::ask(question.message, question.answers, question.default_answer);
    tgui::dispatch(dialog.get(), TGUI_WM_COMMAND, static_cast<std::uintptr_t>(answer),
                   reinterpret_cast<std::intptr_t>(tgui_dialog_item(dialog.get(), answer)), false);
  }
  const tgui_window* const left = dialog.get();
  return left != nullptr && left->ended ? left->result : kFailed;
}

}  // namespace
