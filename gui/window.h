// Windows and what they are made of.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gui/guard.h"
#include "tavdgui/tavdgui.h"

namespace tgui {

struct WindowClass {
  tgui_class record;  // its name points to `name`
  std::string name;
  std::uint32_t id;
};

// What a window without a procedure of its own does with messages.
enum class Kind { kPlain, kDialog, kButton, kStatic, kListBox, kComboBox };

// The rows of a list or combo box.
struct Rows {
  std::vector<std::u16string> texts;
  std::int32_t selected = -1;
};

// Styles that the library looks at.
inline constexpr std::uint32_t kPopup = 0x80000000;
inline constexpr std::uint32_t kChild = 0x40000000;
inline constexpr std::uint32_t kTabStop = 0x00010000;

// How a window is to be made.
struct WindowPlan {
  Kind kind = Kind::kPlain;
  std::shared_ptr<WindowClass> window_class;  // null for dialogs and controls
  tgui_procedure procedure = nullptr;
  std::string title;  // UTF-8
  std::uint32_t style = 0;
  std::int32_t x = 0, y = 0, width = 0, height = 0;
  tgui_window* parent = nullptr;
  std::int32_t id = 0;
};

// The class that a module (null: the main one) registered, or, with `any`, another module; null if there
// is none.
std::shared_ptr<WindowClass> find_class(std::string_view name, tgui_module* module, bool any);

// Makes a window, alive and marked as to be painted; nothing is sent. Null if the parent is on its way out or
// too deep.
tgui_window* make_window(WindowPlan plan);

// Makes a window of the plan's class and sends WM_CREATE; null if the window did not live through that.
tgui_window* make_window_of_class(WindowPlan plan);

// Sends a message to the window's procedure, or lets a control deal with it; texts behind `lparam` are wide
// or narrow.
std::intptr_t dispatch(tgui_window* window, unsigned message, std::uintptr_t wparam, std::intptr_t lparam,
                       bool wide);

// What a control does with a message.
std::intptr_t control_message(tgui_window* control, unsigned message, std::uintptr_t wparam,
                              std::intptr_t lparam, bool wide);

// A sum of coordinates, held at the ends of their range.
std::int32_t add(std::int32_t a, std::int32_t b);

}  // namespace tgui

struct tgui_module {
  std::string name;
};

struct tgui_window {
  tgui::WindowPlan plan;
  std::vector<tgui_window*> children;
  std::vector<unsigned char> extra;
  tgui::Rows rows;
  tgui::Weak<tgui_surface> surface;
  tgui::Weak<tgui_surface> painted_on;  // between tgui_begin_paint and tgui_end_paint
  std::uint64_t serial = 0;
  int depth = 0;  // number of ancestors
  bool invalid = true;
  bool dying = false;

  // Of a dialog that tgui_dialog_box runs.
  bool running = false;
  bool ended = false;
  std::intptr_t result = 0;
};
