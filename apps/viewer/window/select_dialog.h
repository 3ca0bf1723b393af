// The dialog that selects: what is needed in, a ranked list out, and a row shown in the main window. It stays
// beside the main window until it is closed, and then keeps what it holds.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "model/selection.h"
#include "window/session.h"

namespace viewer {

class SelectDialog {
 public:
  SelectDialog(HINSTANCE module, Session& session) : module_(module), session_(session) {}
  ~SelectDialog();
  SelectDialog(const SelectDialog&) = delete;
  SelectDialog& operator=(const SelectDialog&) = delete;

  // Shows it over `owner`. Throws UserError if no database is open.
  void show(HWND owner);

  // Whether the message was one of the dialog's, and has been handled.
  bool takes(MSG& message) const {
    return window_ != nullptr && IsDialogMessageW(window_, &message) != FALSE;
  }

  // What was found is of another database, or of what this one was.
  void database_changed();

 private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam);
  void on_create();
  bool on_command(int id);
  void on_enter();
  void hide() const;

  void list_classes();
  DutyTexts texts() const;
  void select();
  void tell(const FieldError& error);
  void list(const Selection& selection, const Unit& pressure_unit);
  void list_titles(const Unit& pressure_unit) const;
  void show_row(int row) const;
  HWND products() const;

  HINSTANCE module_;
  Session& session_;
  HWND window_ = nullptr;
  std::vector<std::string> classes_;  // rows of the combo box behind "all"
  std::vector<Found> found_;          // rows of the list
};

}  // namespace viewer
