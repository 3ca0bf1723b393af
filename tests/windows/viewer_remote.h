// The viewer as its user meets it, driven from another process: through its windows and their messages alone.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

namespace drive {

// A running viewer. It is ended, if it has not ended by itself, with this object.
class Viewer {
 public:
  // Starts the program; `arguments` as on a command line. Throws std::runtime_error if no window comes up.
  Viewer(const std::wstring& program, const std::wstring& arguments);
  ~Viewer();
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  HWND window() const { return window_; }
  HWND control(int id) const { return GetDlgItem(window_, id); }
  bool is_running() const;
  SIZE_T private_bytes() const;  // memory of the process

  // Waits for a message box or a dialog of the viewer, null if none comes in time.
  HWND wait_for_dialog() const;

  // A command as the menu sends it. It is posted where a dialog may follow.
  void command(int id) const;
  void post_command(int id) const;

  // Replaces the text of a field as if typed.
  void type(int id, const std::wstring& text) const;

  // Selects a row by its text, and tells the window as the control does. False if there is no such row.
  bool pick_in_list(int id, const std::wstring& row) const;
  bool pick_in_combo(int id, const std::wstring& row) const;
  std::vector<std::wstring> rows_of_list(int id) const;
  std::vector<std::wstring> rows_of_combo(int id) const;

  // Branches of the tree, by the beginning of their texts.
  std::vector<HTREEITEM> children(int id, HTREEITEM parent) const;  // a null parent: the roots; opens it
  HTREEITEM find_branch(int id, HTREEITEM parent, const std::wstring& begin) const;
  std::wstring branch_text(int id, HTREEITEM item) const;
  void select_branch(int id, HTREEITEM item) const;

  // A list in columns: its cells row by row, its columns' titles, and a click with the left button on a row.
  std::vector<std::vector<std::wstring>> cells_of(HWND list) const;
  std::vector<std::wstring> titles_of(HWND list) const;
  void click_row(HWND list, int row) const;

  // What the window gets when it comes onto a display of another resolution.
  void change_dpi(int dpi, const RECT& suggested) const;

  // Closes the window; the process's exit code, none if it does not end in time.
  std::optional<DWORD> close();

 private:
  PROCESS_INFORMATION process_{};
  HWND window_ = nullptr;
};

// The same in any of its windows: as if typed, and chosen.
void type_into(HWND field, const std::wstring& text);
bool pick_in_combo_of(HWND window, int id, const std::wstring& row);
std::vector<std::wstring> rows_of_combo_of(HWND window, int id);

std::wstring text_of(HWND window);

// The text of a message box.
std::wstring message_of(HWND dialog);

// Presses a button, or sends a dialog a command.
void press(HWND dialog, int id);

// Waits until `true_at_last` is; false if it is not in time.
template <typename Condition>
bool wait_until(Condition true_at_last, DWORD limit_ms = 20000) {
  for (DWORD waited = 0; waited < limit_ms; waited += 50) {
    if (true_at_last()) return true;
    Sleep(50);
  }
  return false;
}

}  // namespace drive
