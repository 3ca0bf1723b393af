// A host's dialog with a list box and a combo box.
#pragma once

#include <string>
#include <vector>

#include "tavdgui/tavdgui.h"

namespace tavdtest {

inline constexpr int kList = 101;
inline constexpr int kCombo = 102;

class Dialog {
 public:
  Dialog() : window_(tgui_create_dialog("test")) {
    tgui_create_list_box(window_, kList);
    tgui_create_combo_box(window_, kCombo);
  }
  ~Dialog() { tgui_destroy_window(window_); }
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  tgui_window* window() const { return window_; }

  intptr_t send(int id, unsigned message, uintptr_t wparam = 0, intptr_t lparam = 0) const {
    return tgui_send_item_message(window_, id, message, wparam, lparam);
  }
  void add(int id, const char* text) const {
    send(id, id == kList ? TGUI_LB_ADDSTRING : TGUI_CB_ADDSTRING, 0, reinterpret_cast<intptr_t>(text));
  }
  // -1 selects none.
  void select(int id, int row) const {
    send(id, id == kList ? TGUI_LB_SETCURSEL : TGUI_CB_SETCURSEL, static_cast<uintptr_t>(row));
  }
  int selected(int id) const {
    return static_cast<int>(send(id, id == kList ? TGUI_LB_GETCURSEL : TGUI_CB_GETCURSEL));
  }
  std::vector<std::string> rows(int id) const {
    const bool list = id == kList;
    std::vector<std::string> all;
    const intptr_t count = send(id, list ? TGUI_LB_GETCOUNT : TGUI_CB_GETCOUNT);
    for (intptr_t i = 0; i < count; ++i) {
      char text[256] = "";
      send(id, list ? TGUI_LB_GETTEXT : TGUI_CB_GETLBTEXT, static_cast<uintptr_t>(i),
           reinterpret_cast<intptr_t>(text));
      all.emplace_back(text);
    }
    return all;
  }

 private:
  tgui_window* window_;
};

}  // namespace tavdtest
