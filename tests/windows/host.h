// What a host has: a dialog with a list box and a combo box, and metafiles to draw on.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace tavdtest {

inline constexpr int kList = 101;
inline constexpr int kCombo = 102;

// A dialog made from a template in memory, narrow or wide. Its procedure calls `selected` with the control's
// id when the user has chosen a row: at the notification of a list box or a combo box.
class Dialog {
 public:
  enum class Characters { narrow, wide };

  explicit Dialog(Characters characters = Characters::narrow);
  ~Dialog();
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  HWND window() const { return window_; }
  LRESULT send(int id, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendDlgItemMessageW(window_, id, message, wparam, lparam);
  }
  // As a click of the user's does: the row is selected and the dialog is notified.
  void choose(int id, int row) const;
  std::vector<std::wstring> rows(int id) const;

  std::function<void(int)> selected;

 private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  HWND window_;
};

// The texts of a drawing, in the order in which they were drawn, and how many lines it has.
struct Drawn {
  std::vector<std::wstring> texts;
  std::vector<std::string> lines;  // "move x y" and "line x y", in logical units
};

// What `draw` draws on a metafile's device context.
Drawn drawn(const std::function<void(HDC)>& draw);

}  // namespace tavdtest
